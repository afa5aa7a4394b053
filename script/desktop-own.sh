# A service of one's own on the private desktop, set up as a new user sets it up. Sourced after
# lib.sh.
# shellcheck shell=bash
# shellcheck source=script/desktop-panel.sh
source "$(dirname "${BASH_SOURCE[0]}")/desktop-panel.sh"

shows_briefing() { status_json | jq -e '.state == "loaded"' >/dev/null; }

# show_own CALENDAR FOLDER: from an empty home to a live label, and pictures of it.
show_own() {
    local begin end tool=${lumora%/*}/lumora-service
    mkdir -p "$2"
    start_keyring
    start_lumora # as it is after a login: nothing is set up
    begin=$(date +%s%N)
    "$tool" init --calendar "$1" --habit "Read twenty pages" --habit "Walk outside" \
        --chore "Water the plants:7" --inbox "$HOME/inbox.md" --connect \
        >"$desktop_log/init.log" 2>&1 || die "init failed: $(<"$desktop_log/init.log")"
    start own-service "$tool" run
    wait_until shows_briefing || die "no briefing came: $(status_json)"
    end=$(date +%s%N)
    say "From an empty home to a live label in $(((end - begin) / 1000000)) ms"
    "$tool" check
    status_json
    take_settled "$2/own-label.png" take_status_area || die "the label does not come to rest"
    open_panel || die "a click on the label opened no panel, see $desktop_log/"
    take_settled_panel "$2/own-panel.png"
    take_settled "$2/own-desktop.png" take_desktop || die "the desktop does not come to rest"
    quit_lumora
}
