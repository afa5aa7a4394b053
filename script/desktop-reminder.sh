# A reminder on the private desktop, shown by a real notification server. Sourced after
# lib.sh; needs the service and the settings of desktop-panel.sh.
# shellcheck shell=bash
# shellcheck source=script/desktop-panel.sh
source "$(dirname "${BASH_SOURCE[0]}")/desktop-panel.sh"

# start_notification_server: starts dunst below the bar's right end, with Lumora's own icon. Before
# Lumora: the bus would start one without these settings for the first question.
start_notification_server() {
    local icons=$XDG_DATA_HOME/icons
    mkdir -p "$icons/hicolor/scalable/apps" "$XDG_CONFIG_HOME/dunst"
    cp data/icons/com.lumora.app.svg "$icons/hicolor/scalable/apps/"
    cat >"$XDG_CONFIG_HOME/dunst/dunstrc" <<SETTINGS
[global]
    scale = $desktop_scale
    width = 340
    height = 120
    origin = top-right
    offset = 12x38
    padding = 14
    horizontal_padding = 16
    text_icon_padding = 14
    frame_width = 1
    frame_color = "#00000022"
    corner_radius = 12
    font = Inter $((21 * desktop_scale / 2))
    line_height = 2
    format = "<b>%s</b>\n<span foreground='#5e6567'>%b</span>"
    markup = full
    icon_position = left
    vertical_alignment = center
    min_icon_size = 40
    max_icon_size = 40
    icon_path = "$icons/hicolor/scalable/apps"
    show_indicators = no
[urgency_normal]
    background = "#fafafaf8"
    foreground = "#2e3436"
    timeout = 0
SETTINGS
    start dunst dunst
    wait_until server_answers || die "dunst did not start, see $desktop_log/"
}

server_answers() { dunstctl is-paused &>"$desktop_log/dunstctl.log"; }

reminder_is_shown() { (($(dunstctl count displayed 2>"$desktop_log/dunstctl.log") > 0)); }

# lead_time: how far ahead something must be for lumora to be told of it in time, in seconds: some
# times as long as telling it takes now.
lead_time() {
    local start=$EPOCHSECONDS
    "$lumora" refresh || return 1
    echo $((5 + 4 * (EPOCHSECONDS - start)))
}

take_reminder() {
    take_picture "$1" "$((440 * desktop_scale))x$((130 * desktop_scale))+$((
        ${desktop_size%x*} - 440 * desktop_scale))+0"
}

# show_reminder FOLDER: the day is moved to five minutes and a few seconds before a meeting.
show_reminder() {
    local lead day below="300x60+$((${desktop_size%x*} - 340))+$((60 * desktop_scale))"
    start_lumora
    park_pointer
    take_picture "$work/no-reminder.png" "$below"
    lead=$(lead_time) || fail "the day could not be fetched"
    day=$(date -u -d "7 minutes ago $lead seconds" +%FT%TZ) # the meeting is in its minute 12
    ask_service /control -d "{\"scenario\":\"busy\",\"dayFrom\":\"$day\"}" >/dev/null
    "$lumora" refresh || fail "the day could not be fetched"
    wait_until reminder_is_shown || fail "no reminder came"
    wait_until has_changed "$work/no-reminder.png" "$below" || fail "the reminder is not drawn"
    take_settled "$1/reminder.png" take_reminder || fail "the reminder does not come to rest"
    dunstctl close-all
    quit_lumora
}
