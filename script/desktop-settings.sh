# Lumora's settings on the private desktop, as somebody meets them who has just installed it.
# Sourced after lib.sh.
# shellcheck shell=bash
# shellcheck source=script/desktop-panel.sh
source "$(dirname "${BASH_SOURCE[0]}")/desktop-panel.sh"

# forget_configuration: nothing has ever been set up.
forget_configuration() {
    rm -f "$XDG_CONFIG_HOME/lumora/lumora.conf"
    secret-tool clear service com.lumora.app account briefingToken
}

find_settings() {
    settings_window=$(xdotool search --onlyvisible --name '^Settings' 2>/dev/null | tail -n 1)
    [[ -n $settings_window ]]
}

settings_are_gone() { ! find_settings; }

# open_settings: opens them and puts the window into the middle of the screen.
open_settings() {
    "$lumora" settings || fail "lumora settings failed"
    wait_until find_settings || fail "the settings did not open"
    xdotool windowmove --sync "$settings_window" $((430 * desktop_scale)) $((100 * desktop_scale))
    wait_until focus_settings || fail "the settings do not get the focus"
    park_pointer
}

focus_settings() {
    xdotool windowfocus "$settings_window"
    has_focus "$settings_window"
}

# enter MNEMONIC TEXT: goes to a field of the settings by its key and replaces what is in it.
enter() {
    xdotool key "alt+$1" ctrl+a
    xdotool type --delay 2 "$2"
}

# test_connection RESULT: presses the button and waits for a line that begins so.
test_connection() {
    xdotool key alt+t
    comes_up "$1"
}

# take_settings FILE: a picture of the window with its frame and some desktop around, once nothing
# moves in it any more: not even a text cursor, because a control without one gets the focus.
take_settings() {
    xdotool key alt+v
    take_settled "$1" take_settings_now || fail "the settings do not come to rest"
}

take_settings_now() {
    local WINDOW SCREEN X Y WIDTH HEIGHT around=$((24 * desktop_scale)) title=$((24 * desktop_scale))
    eval "$(xdotool getwindowgeometry --shell "$settings_window")"
    : "$WINDOW" "$SCREEN"
    take_picture "$1" "$((WIDTH + 2 * around))x$((HEIGHT + 2 * around + title))+$((X - around))+$((
        Y - around - title))"
}

# change_settings_colours COMMAND: changes light and dark and waits until the window has followed.
change_settings_colours() {
    take_settings_now "$work/settings-other.png"
    "$1"
    wait_until settings_have_changed || fail "the settings do not follow the desktop's colours"
}

settings_have_changed() {
    take_settings_now "$work/settings-now.png" &&
        ! look_alike "$work/settings-now.png" "$work/settings-other.png"
}

# drive_settings FOLDER: a new user's way to the first briefing, and what becomes of a wrong turn.
drive_settings() {
    have_scenario busy
    forget_configuration
    start_lumora
    open_settings
    enter e "$endpoint"
    enter a "$token"
    test_connection "✓ "
    wait_until in_countdown || fail "the label shows nothing of the briefing"
    take_settings "$1/settings-light.png"
    change_settings_colours go_dark
    take_settings "$1/settings-dark.png"
    change_settings_colours go_light
    enter e "http://dashboard.example/api/briefing"
    test_connection "✗ The endpoint must start with https://"
    take_settings "$1/settings-failed.png"
    enter e "$endpoint"
    test_connection "✓ "
    xdotool key Escape
    wait_until settings_are_gone || fail "Escape did not close the settings"
    quit_lumora
}
