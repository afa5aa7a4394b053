#include "cli/Usage.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

QString usageText() {
    return uR"(Usage: lumora [--demo [--scenario NAME]]
       lumora status [--follow] [--format FORMAT]
       lumora agenda [--format text|json]
       lumora join
       lumora capture [TEXT]
       lumora habit ID|NAME|--list
       lumora chore ID|NAME|--list
       lumora toggle|show|hide|settings
       lumora refresh
       lumora quit
       lumora check FILE|-|URL [--now TIME]
       lumora doctor [--json]

Keeps your day in view: a live label in the status area, fed by your own dashboard service.
Started a second time, it opens the panel of the program that already runs.

  --demo            show an invented day from a service of its own; touches no settings
  --scenario NAME   which day: busy, empty, quiet, unauthorized, flaky, slow, malformed or html
  status            print the label of the running program
  --follow          print it again whenever it changes, until nobody reads it
  --format FORMAT   for whom: text, json, waybar, polybar, i3blocks or i3status-rust
  agenda            print what is left of the day: events, habits and chores
  join              open the link of the meeting that is on or comes next
  capture [TEXT]    put a thought into the inbox; without TEXT what is on standard input
  habit, chore      toggle a habit, mark a chore done; --list prints their ids and names
  toggle            open the panel of the running program, or close it
  show, hide        open the panel, or close it; fine when it is already so
  settings          open the settings of the running program
  refresh           fetch the briefing now and wait for it
  quit              end the running program
  check             read a briefing as the program does: where is its first fault, or what would
                    be shown of it at TIME, such as 2025-03-04T09:30:00Z
  doctor            look at everything between the service and the screen: what is wrong, and what
                    helps; --json for bug reports
  --help            print this
  --version         print the version

Exit status: 0 success, 1 failure, 2 wrong arguments, 3 Lumora is not running.
)"_s;
}

} // namespace lumora
