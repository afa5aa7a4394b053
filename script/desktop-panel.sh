# Lumora's panel on the private desktop, worked at by pointer and keys as a user works at it, with a
# service that can be asked what came of it. Sourced after lib.sh.
# shellcheck shell=bash
# shellcheck source=script/desktop.sh
source "$(dirname "${BASH_SOURCE[0]}")/desktop.sh"

# The program that is run.
lumora=build/release/bin/lumora

# start_service: runs the demo's service; sets $service, $endpoint and $token.
start_service() {
    start service "${lumora%/*}/lumora-demo-service"
    service=$started
    wait_until read_address || die "the demo's service did not start, see $desktop_log/"
}

read_address() {
    { read -r _ endpoint && read -r _ token; } 2>/dev/null <"$desktop_log/service.log"
}

# configure_lumora: what a user does once: the address into the preferences, the token into a
# keyring.
configure_lumora() {
    mkdir -p "$XDG_CONFIG_HOME/lumora"
    printf '[General]\nendpointURL=%s\n' "$endpoint" >"$XDG_CONFIG_HOME/lumora/lumora.conf"
    start_keyring
    wait_until store_token || die "the keyring took no token, see $desktop_log/"
}

# start_keyring: a keyring, which is unlocked as after a login.
start_keyring() {
    echo 'a password' >"$work/password"
    start keyring run_listening "$work/password" \
        gnome-keyring-daemon --unlock --foreground --components=secrets
    # Asked any sooner, the bus would start a second one, which asks for a password.
    wait_until keyring_runs || die "the keyring did not start, see $desktop_log/"
}

keyring_runs() {
    [[ $(gdbus call --session -d org.freedesktop.DBus -o /org/freedesktop/DBus \
        -m org.freedesktop.DBus.NameHasOwner org.freedesktop.secrets) == '(true,)' ]]
}

store_token() {
    secret-tool store --label="Lumora briefing token" service com.lumora.app \
        account briefingToken <<<"$token" 2>>"$desktop_log/secret-tool.log"
}

# ask_service PATH [CURL-ARGUMENT...]: what the service answers.
ask_service() {
    local path=$1
    shift
    # shellcheck disable=SC2154 # lib.sh sets it
    curl -fsS -m "$patience" -H "X-Api-Key: $token" "$@" "${endpoint%/api/briefing}$path"
}

# briefing_has FILTER, inbox_has FILTER: whether the jq filter holds for what the service has.
briefing_has() { ask_service /api/briefing | jq -e "$1" >/dev/null; }
inbox_has() { ask_service /api/inbox | jq -e "$1" >/dev/null; }

# have_scenario NAME: the service pretends to be something else from now on.
have_scenario() { ask_service /control -d "{\"scenario\":\"$1\"}" >/dev/null; }

# start_lumora [ARGUMENT...]: starts it and waits for its place in the status area; its pid is in
# $program.
start_lumora() {
    wait_until status_area_is_empty || die "the status area is not empty"
    # The invented day's dollars are at home there.
    start lumora env LC_ALL=en_US.UTF-8 QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 "$lumora" "$@"
    program=$started
    wait_until status_area_has_item || die "nothing came up in the status area"
}

# status_json: what the running program says of itself; fails when nothing runs.
status_json() { "$lumora" status --format json 2>"$desktop_log/status.log"; }

in_countdown() { status_json | jq -e '.mode == "countdown"' >/dev/null; }

quit_lumora() {
    "$lumora" quit || die "lumora quit failed"
    wait_until has_ended "$program" || die "lumora still runs after lumora quit"
}

# on_screen NAME...: all of these are to be seen in the panel, see script/find-on-screen.
on_screen() { script/find-on-screen "$@" &>"$desktop_log/find-on-screen.log"; }

# off_screen NAME: it is not to be seen, which is more than that it could not be found out.
off_screen() {
    local status=0
    on_screen "$1" || status=$?
    ((status == 3))
}

# comes_up NAME, goes_away NAME: waits for that, or ends the script.
comes_up() { wait_until on_screen "$1" || fail "the panel does not come to show \"$1\""; }
goes_away() { wait_until off_screen "$1" || fail "the panel still shows \"$1\""; }

# fail REASON: ends the script and leaves a picture of how it came to that.
fail() {
    take_desktop "$desktop_log/failure.png" || true
    die "$1, see $desktop_log/failure.png"
}

# locate NAME: sets X, Y, WIDTH and HEIGHT, which the caller declares, to a part of the panel, in
# pixels.
locate() {
    local place rest
    place=$(script/find-on-screen "$1" 2>"$desktop_log/find-on-screen.log") || return 1
    read -r X Y WIDTH HEIGHT rest <<<"$place"
    : "$rest"
    X=$((X * desktop_scale)) Y=$((Y * desktop_scale))
    WIDTH=$((WIDTH * desktop_scale)) HEIGHT=$((HEIGHT * desktop_scale))
}

# point_at NAME: takes the pointer to the middle of a part of the panel, once it stays in its place.
point_at() {
    local X Y WIDTH HEIGHT
    comes_up "$1"
    wait_until rests "$1" || fail "\"$1\" does not come to rest"
    xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2))
}

# rests NAME: locates it, and finds it in the same place again.
rests() {
    local before
    locate "$1" || return 1
    before="$X $Y $WIDTH $HEIGHT"
    locate "$1" && [[ "$X $Y $WIDTH $HEIGHT" == "$before" ]]
}

# click_on NAME: a left click there.
click_on() {
    point_at "$1"
    xdotool click 1
}

# take_panel FILE: a picture of the panel, the bar above it and some desktop around, as far as the
# right edge of the screen.
take_panel() {
    local X Y WIDTH HEIGHT around=$((24 * desktop_scale))
    locate panel || return 1
    take_picture "$1" "$((${desktop_size%x*} - X + around))x$((Y + HEIGHT + around))+$((
        X - around))+0"
}

# take_settled_panel FILE: the same, once nothing moves in it any more.
take_settled_panel() {
    park_pointer
    comes_up panel
    take_settled "$1" take_panel || fail "the panel does not come to rest"
}

# show_loading FOLDER: the panel before the first briefing, which a service that stands still keeps
# away; then that briefing.
show_loading() {
    kill -STOP "$service"
    start_lumora
    open_panel || fail "a click on the item opened no panel"
    comes_up "Loading…"
    take_panel "$1/panel-loading.png" || fail "there is no panel to be seen"
    kill -CONT "$service"
    comes_up "Join Team sync"
}

toggle_habit() {
    briefing_has '.habits.items[] | select(.id == "read") | .done | not' ||
        fail "the habit is done already"
    click_on "Read twenty pages, not done"
    comes_up "Read twenty pages, done"
    wait_until briefing_has '.habits.items[] | select(.id == "read") | .done' ||
        fail "the service does not know that the habit is done"
}

mark_chore_done() {
    click_on "Descale the kettle"
    goes_away "Descale the kettle"
    wait_until briefing_has '.chores.top | all(.id != "kettle")' ||
        fail "the service does not know that the chore is done"
}

# fold_section: the preferences have it, too.
fold_section() {
    click_on "Habits"
    goes_away "Read twenty pages"
    wait_until grep -qx 'section.collapsed.habits=true' "$XDG_CONFIG_HOME/lumora/lumora.conf" ||
        fail "the folded section is not in the preferences"
}

reveal_spending() {
    click_on "Show month-to-date"
    comes_up "Hide again"
}

capture_thought() {
    click_on "Capture a thought"
    xdotool type "A bell for the bicycle"
    xdotool key Return
    wait_until inbox_has 'any(.text == "A bell for the bicycle")' ||
        fail "the thought did not reach the inbox"
}

# change_colours COMMAND: changes light and dark with the panel open and waits until panel and bar
# have followed.
change_colours() {
    local bar="100x10+10+4" X Y WIDTH HEIGHT corner
    park_pointer
    locate panel || fail "there is no panel to be seen"
    corner="20x8+$((X + 30 * desktop_scale))+$((Y + 2))"
    take_picture "$work/bar-before.png" "$bar"
    take_picture "$work/corner-before.png" "$corner"
    "$1"
    wait_until has_changed "$work/corner-before.png" "$corner" ||
        fail "the panel does not follow the desktop's colours"
    wait_until has_changed "$work/bar-before.png" "$bar" ||
        fail "the bar does not follow the desktop's colours"
}

# drive_panel FOLDER: a morning with the panel, in pictures.
drive_panel() {
    start_service
    configure_lumora
    show_loading "$1"
    toggle_habit
    mark_chore_done
    capture_thought
    close_panel || fail "Escape did not close the panel"
    open_panel || fail "the panel did not open again"
    fold_section
    change_colours go_dark
    reveal_spending
    take_settled_panel "$1/panel-spending.png"
    have_scenario unauthorized
    click_on "Refresh"
    comes_up "Token rejected (401)"
    take_settled_panel "$1/panel-error.png"
    change_colours go_light
    have_scenario empty
    click_on "Refresh"
    comes_up "Nothing scheduled"
    take_settled_panel "$1/panel-empty.png"
    close_panel || fail "Escape did not close the panel"
    quit_lumora
}

# show_at_single_scale FOLDER: the panel where a point is a pixel, in light and in dark.
show_at_single_scale() {
    start_lumora --demo
    wait_until in_countdown || fail "no countdown"
    open_panel || fail "a click on the label opened no panel"
    take_settled_panel "$1/panel-light.png"
    change_colours go_dark
    take_settled_panel "$1/panel-dark.png"
    quit_lumora
}
