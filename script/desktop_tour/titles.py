"""script/bars [BAR...]: has real bars follow the label, with titles made of what they take for markup.

For each bar (all of them by default) it makes a private desktop with the module that
docs/INTERFACES.md has for that bar, and looks at pictures of the screen: whether each title is shown
character for character, whether a press on it runs what stands in it, whether the label goes when the
program is killed and comes back with the next one, and whether what follows it ends with the bar. The
pictures are in build/bars/; with --keep they become those of docs/INTERFACES.md.
"""
import argparse
import os
import signal
import subprocess
import sys
from pathlib import Path

from .modules import GROUND, MODULE_HOSTS, STALE
from .pictures import Picture, difference
from .rest import settled
from .service import MeetingService
from .session import Session, wait_until

ROOT = Path(__file__).resolve().parent.parent.parent
PROGRAMS = ROOT / "build/release/bin"
TRAP = "p"  # the file that comes to be where a title is obeyed

# Each as long as a label may be, and between two letters: shown as they stand, in a font in which all
# characters are equally wide, they are all as wide as the first.
PLAIN = "HHHHHHHHHHHHHHHH"
TITLES = {
    "Pango": "H<b>R&D</b>&lt;H",
    "entities": "H&#65;&bogus;&HH",
    "commands": f"H%{{A:>{TRAP}:}}te%{{A}}H",
    "colours": "H%%{F#f00}%{T2}H",
    "JSON": 'H"},{"text":"x"H',
    "shell": f"H$(>{TRAP})`>{TRAP}`;>{TRAP}&&H",
    "placeholders": "H{icon}{} %s%%\\H",
}


class Trial:
    """One bar's."""

    def __init__(self, name, host, folder):
        self.name, self.host, self.folder = name, host, folder
        self.faults = []
        self.service = MeetingService()

    def expect(self, holds, fault):
        if not holds:
            self.faults.append(fault)
        return holds

    def run(self):
        with Session(self.host.desktop, self.folder / "log" / self.name) as session:
            self.session = session
            path = f"{PROGRAMS}:{session.environment['PATH']}"
            session.environment |= {"PATH": path, "QT_QPA_PLATFORMTHEME": ""}
            session.write("lumora/lumora.conf", "[General]\ntoldOfNoStatusArea=true\n"
                          f"endpointURL={self.service.endpoint}\n")
            if self.host.for_users:
                session.become_ordinary_user()
            session.start_bus()
            session.store_token("a token")
            self.bar = self.host.start(session)
            there = wait_until(self.bar_is_there, 40)
            self.save("start")
            if self.expect(there, "the bar does not start"):
                self.bare = self.settled()
                self.try_titles()
                self.try_restart()
                self.try_failure()
                self.try_end()

    def rows(self):
        return range(self.host.thickness)

    def picture(self):
        return Picture.of_screen(self.session)

    def bar_is_there(self):
        return next(self.picture().colors((10, 3, 11, 4))) == [GROUND]

    def settled(self):
        return settled(self.session)[0]

    def label(self):
        """The label's rectangle; None while there is none."""
        return difference(self.bare, self.picture(), self.rows())

    def start_program(self):
        self.program = self.session.start("lumora", "lumora", **self.session.inside)

    def lumora(self, *arguments):
        self.session.run("lumora", *arguments)

    def save(self, what):
        picture = self.settled()
        end = (picture.width - 320, 0, picture.width, self.host.thickness)
        picture.save(self.folder / f"{self.name}-{what}.png", end)

    def try_titles(self):
        self.service.title = PLAIN
        self.start_program()
        if not self.expect(wait_until(self.label, 30), "nothing is shown"):
            return
        self.settled()
        left, _, right, _ = self.label()
        self.expect(right - left > 100, "the title is not shown")
        for what, title in TITLES.items():
            before = self.picture()
            self.service.title = title
            self.lumora("refresh")
            wait_until(lambda: difference(before, self.picture(), self.rows()), 15)
            self.settled()
            shown = self.label()
            self.save(what.lower())
            self.expect(shown and (shown[0], shown[2]) == (left, right),
                        f"{what}: shown from {shown and shown[0]} to {shown and shown[2]}, "
                        f"not from {left} to {right}")
            self.try_press(what, *(shown[::2] if shown else (left, right)))
        trap = Path(self.session.environment["HOME"]) / TRAP
        self.expect(not trap.exists(), "a title was obeyed")

    def try_press(self, what, left, right):
        """Presses the label's letters one after another, with the panel opening and closing."""
        below = range(self.host.thickness + 20, 800)
        y = self.host.thickness // 2
        for step in (6, 10):
            before = self.settled()
            x = left + (right - left) * step // 16
            self.session.run("xdotool", "mousemove", str(x - 1), str(y), "mousemove", str(x), str(y),
                             "click", "1")
            if self.host.opens:
                self.expect(wait_until(lambda: difference(before, self.picture(), below), 15),
                            f"{what}: a press does nothing")
        self.session.run("xdotool", "mousemove", "100", "600")

    def try_restart(self):
        os.kill(self.program.pid, signal.SIGKILL)
        self.expect(wait_until(lambda: not self.label(), 15),
                    "the label stays when the program is killed")
        self.save("killed")
        self.start_program()
        self.expect(wait_until(self.label, 30), "the label is not back with the next program")
        self.save("back")

    def try_failure(self):
        if not self.host.styled:
            return
        self.service.stop()
        self.lumora("refresh")
        self.expect(wait_until(self.is_red, 15), "the style does not go by a failure")
        self.save("stale")

    def is_red(self):
        picture = self.picture()
        return any(STALE in row for row in picture.colors(self.label() or (0, 0, 0, 0)))

    def processes(self, belongs):
        """The ids of this session's processes whose name and command line belong."""
        home = f"HOME={self.session.environment['HOME']}".encode()
        found = []
        for process in Path("/proc").glob("[0-9]*"):
            try:
                name = (process / "comm").read_text().strip()
                if belongs(name, (process / "cmdline").read_bytes().split(b"\0")):
                    environment = (process / "environ").read_bytes().split(b"\0")
                    found += [int(process.name)] if home in environment else []
            except OSError:
                pass  # it has ended meanwhile
        return found

    def try_end(self):
        def followers():
            return self.processes(lambda name, line: name == "lumora" and b"--follow" in line)

        self.expect(followers(), "nothing follows the label")
        for process in self.processes(lambda name, _: name == self.name):
            os.kill(process, signal.SIGKILL)
        self.expect(wait_until(lambda: not followers(), 15), "something follows a bar that is gone")


def main():
    parser = argparse.ArgumentParser(
        prog="bars", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--keep", action="store_true", help="renew the pictures of the docs")
    parser.add_argument("bars", nargs="*", metavar="BAR", choices=[[], *MODULE_HOSTS], default=[],
                        help=", ".join(MODULE_HOSTS))
    arguments = parser.parse_args()
    subprocess.run([ROOT / "script/setup", "build", "desktops"], check=True)
    subprocess.run(
        ["bash", "-c", "source script/lib.sh; build_preset release lumora"], check=True, cwd=ROOT)
    folder = ROOT / "build/bars"
    folder.mkdir(parents=True, exist_ok=True)
    failed = False
    for name in arguments.bars or MODULE_HOSTS:
        trial = Trial(name, MODULE_HOSTS[name], folder)
        trial.run()
        print(f"{name}: {'; '.join(trial.faults) or 'as it should be'}", flush=True)
        failed = failed or bool(trial.faults)
        if arguments.keep and not trial.faults:
            kept = ROOT / "docs/images/bars"
            kept.mkdir(parents=True, exist_ok=True)
            for what in ("pango", "commands"):
                picture = folder / f"{name}-{what}.png"
                (kept / picture.name).write_bytes(picture.read_bytes())
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
