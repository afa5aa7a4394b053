"""script/desktops [HOST...]: shows Lumora in real bars and looks at what comes of it.

For each bar (the small ones by default) it makes a private desktop, starts the bar and the program
with made-up data, and measures in pictures of the screen: how much of the bar the label takes, its
contrast and that of the symbol alone, whether a press opens the panel at the bar, over nothing of it
and under the pointer, what further presses do, and whether the label is back after bar and program
were started again, in either order. Fails where a bar shows less than it can. The pictures are in
build/desktops/; with --keep they become those of docs/DESKTOPS.md.
"""
import argparse
import subprocess
import sys
import time
from pathlib import Path

from .bars import BARS
from .shells import SHELLS
from .tour import Tour

ROOT = Path(__file__).resolve().parent.parent.parent
HOSTS = BARS | SHELLS


def prepare(names, preset):
    """Installs what those hosts need and builds the program."""
    groups = ["build"] + (["shells"] if any(name in SHELLS for name in names) else [])
    subprocess.run([ROOT / "script/setup", *groups], check=True)
    build = f"source script/lib.sh; build_preset {preset} lumora lumora-demo-service"
    subprocess.run(["bash", "-c", build], check=True, cwd=ROOT)


def keep(folder, name):
    kept = ROOT / "docs/images/desktops"
    kept.mkdir(parents=True, exist_ok=True)
    kinds = ("", "-bar") + (("-menu",) if HOSTS[name].has_menu else ())
    for kind in kinds:
        (kept / f"{name}{kind}.png").write_bytes((folder / f"{name}{kind}.png").read_bytes())


def main():
    parser = argparse.ArgumentParser(
        prog="desktops", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--keep", action="store_true", help="renew the pictures of the docs")
    parser.add_argument("--restarts", type=int, default=1, metavar="N",
                        help="how often bar and program are started again, each way (default: 1)")
    parser.add_argument("--preset", default="release", choices=["release", "dev"],
                        help="the build that is shown")
    parser.add_argument("hosts", nargs="*", metavar="HOST", choices=[[], *HOSTS], default=[],
                        help=f"{', '.join(BARS)}; and, which take longer, {', '.join(SHELLS)}")
    arguments = parser.parse_args()
    names = arguments.hosts or list(BARS)
    prepare(names, arguments.preset)
    folder = ROOT / "build/desktops"
    folder.mkdir(parents=True, exist_ok=True)
    failed = False
    for name in names:
        begin = time.monotonic()
        tour = Tour(name, HOSTS[name], ROOT / f"build/{arguments.preset}/bin/lumora", folder)
        tour.run(arguments.restarts)
        facts = ", ".join(f"{what}: {fact}" for what, fact in tour.facts.items())
        verdict = "; ".join(tour.faults) or "as it should be"
        print(f"{name}: {facts}; {verdict} ({time.monotonic() - begin:.0f} s)", flush=True)
        failed = failed or bool(tour.faults)
        if arguments.keep and not tour.faults:
            keep(folder, name)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
