# A private desktop for programs with a place in the status area: X server, window manager, session
# bus and mate-panel, in a home folder of their own. Sourced after lib.sh.
# shellcheck shell=bash

desktop_scale=
desktop_size=
desktop_log=
desktop_pids=()
started=
work=

# start NAME COMMAND...: runs a program of the desktop; its pid is in $started, its output in a log.
start() {
    local name=$1
    shift
    "$@" >"$desktop_log/$name.log" 2>&1 &
    started=$!
    desktop_pids+=("$started")
}

# run_with_answer FILE COMMAND...: runs a program that answers on descriptor 3, into the file.
run_with_answer() {
    exec 3>"$1"
    shift
    exec "$@"
}

# run_listening FILE COMMAND...: runs a program that reads its standard input from the file.
run_listening() {
    exec <"$1"
    shift
    exec "$@"
}

has_ended() { ! kill -0 "$1" 2>/dev/null; }

# start_desktop LOG_FOLDER SCALE: brings a desktop of 1280x800 points up, at so many pixels a point,
# and points the environment at it. Everything ends with the script, or at end_desktop.
start_desktop() {
    desktop_log=$1
    desktop_scale=$2
    desktop_size=$((1280 * desktop_scale))x$((800 * desktop_scale))
    mkdir -p "$desktop_log"
    work=$(mktemp -d)
    trap end_desktop EXIT
    use_private_home
    start_x_server
    start_session_bus
    start_settings
    start openbox openbox --sm-disable
    start picom picom --config /dev/null --backend xrender
    wait_until compositor_runs || die "the compositor did not start, see $desktop_log/"
    start_panel
}

# end_desktop: ends what `start` started, the latest first, and removes the private home.
end_desktop() {
    local i
    for ((i = ${#desktop_pids[@]} - 1; i >= 0; --i)); do
        kill "${desktop_pids[i]}" 2>/dev/null || true
        patience=5 wait_until has_ended "${desktop_pids[i]}" || kill -KILL "${desktop_pids[i]}" || true
    done
    desktop_pids=()
    rm -rf "$work"
}

use_private_home() {
    export HOME=$work/home XDG_RUNTIME_DIR=$work/run
    export XDG_CONFIG_HOME=$HOME/.config XDG_DATA_HOME=$HOME/.local/share
    export XDG_CACHE_HOME=$HOME/.cache XDG_STATE_HOME=$HOME/.local/state
    mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_STATE_HOME"
    mkdir -m 0700 "$XDG_RUNTIME_DIR"
    export LC_ALL=C.UTF-8 XDG_SESSION_TYPE=x11 XDG_CURRENT_DESKTOP=MATE
    export NO_AT_BRIDGE=1 GIO_USE_VFS=local GSETTINGS_BACKEND=keyfile
    export GDK_BACKEND=x11 QT_QPA_PLATFORM=xcb
    export GDK_SCALE=$desktop_scale QT_SCALE_FACTOR=$desktop_scale
    unset WAYLAND_DISPLAY SESSION_MANAGER DBUS_SESSION_BUS_ADDRESS XAUTHORITY GTK_THEME
    unset QT_STYLE_OVERRIDE QT_QPA_PLATFORMTHEME
}

start_x_server() {
    local never=3600000
    # The server picks a free display by itself and says which.
    start xvfb run_with_answer "$work/display" \
        Xvfb -displayfd 3 -screen 0 "${desktop_size}x24" -dpi 96 -noreset -nolisten tcp \
        -ardelay "$never" # or a busy machine, late with the release of a key, types it twice
    wait_until test -s "$work/display" || die "the X server did not start, see $desktop_log/"
    DISPLAY=:$(<"$work/display")
    export DISPLAY
    convert -size "$desktop_size" gradient:'#7f97ba-#a892b2' "$work/wallpaper.png"
    hsetroot -cover "$work/wallpaper.png" >/dev/null
}

start_session_bus() {
    start bus run_with_answer "$work/bus" \
        dbus-daemon --session --nofork --nosyslog --print-address=3
    wait_until test -s "$work/bus" || die "the session bus did not start, see $desktop_log/"
    DBUS_SESSION_BUS_ADDRESS=$(<"$work/bus")
    export DBUS_SESSION_BUS_ADDRESS
}

# It opens a window that stays out of sight. Programs ask once whether there is one.
compositor_runs() { [[ -n $(xdotool search --name '^picom$' 2>/dev/null) ]]; }

# The settings that all programs of the desktop share: their font and their colours.
start_settings() {
    # The toolkit has a dark theme of its own, but no name for it.
    mkdir -p "$XDG_DATA_HOME/themes/Adwaita-dark/gtk-3.0"
    echo '@import url("resource:///org/gtk/libgtk/theme/Adwaita/gtk-contained-dark.css");' \
        >"$XDG_DATA_HOME/themes/Adwaita-dark/gtk-3.0/gtk.css"
    write_settings Adwaita
    start xsettingsd xsettingsd -c "$work/xsettings"
    settings=$started
}

# write_settings THEME
write_settings() {
    cat >"$work/xsettings" <<SETTINGS
Gtk/FontName "Inter 10"
Net/ThemeName "$1"
Xft/Antialias 1
Xft/Hinting 1
Xft/HintStyle "hintslight"
Xft/RGBA "none"
SETTINGS
}

# go_dark, go_light: changes the colours of all programs, also of those that run.
go_dark() { change_theme Adwaita-dark; }
go_light() { change_theme Adwaita; }

change_theme() {
    write_settings "$1"
    kill -HUP "$settings"
}

# A bar at the top with a clock and, left of it, the status area.
start_panel() {
    mkdir -p "$XDG_CONFIG_HOME/glib-2.0/settings" "$XDG_CONFIG_HOME/gtk-3.0"
    cat script/mate-panel.keyfile - >"$XDG_CONFIG_HOME/glib-2.0/settings/keyfile" <<'CLOCK'

[org/mate/panel/objects/clock/prefs]
format='24-hour'
show-weather=false
show-temperature=false
CLOCK
    cat >"$XDG_CONFIG_HOME/gtk-3.0/gtk.css" <<'STYLE'
/* Room around the items. */
button, sn-item label { padding: 0 10px; }
STYLE
    start mate-panel mate-panel
    wait_until find_status_area || die "the panel showed no status area, see $desktop_log/"
}

# status_area_is_empty: there is one colour in it.
status_area_is_empty() {
    take_status_area "$work/status-area-now.png" &&
        (($(identify -format '%k' "$work/status-area-now.png") == 1))
}

status_area_has_item() { ! status_area_is_empty; }

# find_status_area: sets $status_area to the window of the panel's status area.
find_status_area() {
    status_area=$(xdotool search --onlyvisible --class notification-area-applet 2>/dev/null |
        tail -n 1)
    [[ -n $status_area ]]
}

# take_status_area FILE: a picture of the status area as it is on the screen.
take_status_area() {
    local X Y WIDTH HEIGHT
    locate_status_area || return 1
    take_picture "$1" "${WIDTH}x${HEIGHT}+${X}+${Y}"
}

# take_desktop FILE: a picture of everything.
take_desktop() { take_picture "$1" "$desktop_size+0+0"; }

# take_picture FILE GEOMETRY: a picture of a part of the screen.
take_picture() {
    import -window root -crop "$2" +repage "$1" 2>>"$desktop_log/import.log"
}

# locate_status_area: sets X, Y, WIDTH and HEIGHT, which the caller declares.
locate_status_area() {
    local WINDOW SCREEN
    find_status_area || return 1
    eval "$(xdotool getwindowgeometry --shell "$status_area")"
    : "$WINDOW" "$SCREEN"
}

# open_menu: a right click on the item; fails when no menu comes up below the bar.
open_menu() {
    local X Y WIDTH HEIGHT below
    locate_status_area || return 1
    below="200x100+$X+$((Y + HEIGHT + 8))"
    take_picture "$work/below-before.png" "$below"
    xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2)) click 3
    wait_until has_changed "$work/below-before.png" "$below" || return 1
    park_pointer
}

# park_pointer: takes the pointer to where it is over nothing.
park_pointer() { xdotool mousemove $((50 * desktop_scale)) $((450 * desktop_scale)); }

# find_panel: sets $panel to the window of Lumora's own panel; fails while it is not open.
find_panel() {
    panel=$(xdotool search --onlyvisible --name '^Lumora$' 2>/dev/null | tail -n 1)
    [[ -n $panel ]]
}

panel_is_gone() { ! find_panel; }

# has_focus WINDOW: what is typed goes there.
has_focus() { [[ $(xdotool getwindowfocus 2>/dev/null) == "$1" ]]; }

# open_panel: a left click on the item, then the pointer out of the way; waits for the panel and
# until what is typed goes there.
open_panel() {
    local X Y WIDTH HEIGHT
    locate_status_area || return 1
    xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2)) click 1
    wait_until find_panel || return 1
    park_pointer
    wait_until has_focus "$panel"
}

close_panel() {
    xdotool key Escape
    wait_until panel_is_gone
}

# close_menu: waits until the desktop below the bar looks as before it was opened.
close_menu() {
    local X Y WIDTH HEIGHT below
    locate_status_area || return 1
    below="200x100+$X+$((Y + HEIGHT + 8))"
    xdotool key Escape
    wait_until is_unchanged "$work/below-before.png" "$below"
}

# has_changed FILE GEOMETRY: the part of the screen no longer looks as it does in the picture.
has_changed() {
    take_picture "$work/part-now.png" "$2" && ! look_alike "$1" "$work/part-now.png"
}

is_unchanged() { take_picture "$work/part-now.png" "$2" && look_alike "$1" "$work/part-now.png"; }

# look_alike FILE FILE: both pictures have the same pixels, whatever else their files hold.
look_alike() { [[ $(identify -format '%#' "$1") == "$(identify -format '%#' "$2")" ]]; }

# take_settled FILE COMMAND...: has the command, which gets the file as its argument, take the
# picture until it looks the same three times in a row; fails when it never does.
take_settled() {
    "${@:2}" "$1" && wait_until looks_settled "$@"
}

looks_settled() {
    local turn
    for turn in second third; do
        mv "$1" "$work/$turn-before.png"
        sleep 0.2
        "${@:2}" "$1" && look_alike "$1" "$work/$turn-before.png" || return 1
    done
}
