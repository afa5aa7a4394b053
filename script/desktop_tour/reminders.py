"""script/reminders [SERVER...]: has real notification servers show Lumora's reminders.

For each server (the small ones by default) it makes a private desktop, starts the server as it comes
and the program, which is told of meetings that begin in five minutes. In pictures of the screen it
looks for the reminder: whether one is shown, is still there when nobody has touched it for a while,
has a button that opens the meeting's link, what a click on the rest does, and that there are reminders
after do-not-disturb. Fails where a server does less than it can. The pictures are in build/reminders/.
"""
import argparse
import subprocess
import sys
import time
from pathlib import Path

from .reminder_servers import SERVERS
from .reminder_trial import ReminderTrial

ROOT = Path(__file__).resolve().parent.parent.parent
LARGE = ("plasma", "gnome")


def prepare(names, preset):
    """Installs what those servers need and builds the program."""
    groups = ["build"] + (["shells"] if any(name in LARGE for name in names) else [])
    subprocess.run([ROOT / "script/setup", *groups], check=True)
    build = f"source script/lib.sh; build_preset {preset} lumora"
    subprocess.run(["bash", "-c", build], check=True, cwd=ROOT)


def main():
    parser = argparse.ArgumentParser(
        prog="reminders", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--preset", default="release", choices=["release", "dev"],
                        help="the build that reminds")
    parser.add_argument("--unseen", type=int, default=12, metavar="SECONDS",
                        help="for how long nobody touches one (default: 12)")
    parser.add_argument("servers", nargs="*", metavar="SERVER", choices=[[], *SERVERS], default=[],
                        help=f"{', '.join(SERVERS)}; {' and '.join(LARGE)} take longer")
    arguments = parser.parse_args()
    names = arguments.servers or [name for name in SERVERS if name not in LARGE]
    prepare(names, arguments.preset)
    folder = ROOT / "build/reminders"
    folder.mkdir(parents=True, exist_ok=True)
    failed = False
    for name in names:
        begin = time.monotonic()
        lumora = ROOT / f"build/{arguments.preset}/bin/lumora"
        trial = ReminderTrial(name, SERVERS[name], lumora, folder, arguments.unseen)
        trial.run()
        facts = ", ".join(f"{what}: {fact}" for what, fact in trial.facts.items())
        verdict = "; ".join(trial.faults) or "as it should be"
        print(f"{name}: {facts}; {verdict} ({time.monotonic() - begin:.0f} s)", flush=True)
        failed = failed or bool(trial.faults)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
