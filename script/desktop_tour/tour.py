"""What is tried in each bar, and measured."""
import time

from .findings import Findings
from .pictures import contrast, difference, ink
from .presses import Presses
from .program import Program
from .restarts import Restarts
from .screen import Screen
from .session import Session, wait_until

LEAST_CONTRAST = 3
SHORTEST_TEXT = 60  # points; what is narrower is no more than four characters
WIDER_THAN_HIGH = 1.25  # a few characters are; a symbol fills its square
MINUTE_IS_YOUNG = 25  # seconds; until it is over only the label changes


class Tour:
    """One bar's: `facts` and `faults` are what was found, once it has run."""

    def __init__(self, name, host, lumora, folder):
        self.name, self.host, self.lumora, self.folder = name, host, lumora, folder
        self.findings = Findings()

    @property
    def facts(self):
        return self.findings.facts

    @property
    def faults(self):
        return self.findings.faults

    def run(self, restarts):
        """All of it, with so many restarts of each kind."""
        log_folder = self.folder / "log" / self.name
        with Session(self.host.desktop, log_folder, "%dx%d" % self.host.screen) as session:
            if self.host.ordinary_user:
                self.lumora = session.copy_program(self.lumora)
                session.become_ordinary_user()
            session.start_bus()
            self.program = Program(session, self.lumora, self.host.preferences)
            self.host.prepare(session)
            session.share_settings()
            self.screen = Screen(session, self.host)
            bar = self.start_bar(session)
            if self.host.has_clock:
                wait_until(lambda: time.localtime().tm_sec < MINUTE_IS_YOUNG)
            bare = self.take_settled()
            self.program.start()
            if not wait_until(lambda: self.screen.item(bare, self.screen.now())):
                self.faults.append("nothing is shown")
                bare.save(self.picture(), (0, 0, bare.width, bare.height))
                return
            picture = self.take_settled()
            item = self.screen.item(bare, picture)
            width = self.look_at_label(picture, item)
            self.look_at_symbol(bare, picture, item)
            Presses(self.screen, self.findings, self.take_settled(), item).run(self.picture())
            self.restart(Restarts(session, self.host, self.program, bar), restarts, item, width)

    def picture(self, kind=""):
        return self.folder / f"{self.name}{kind}.png"

    def start_bar(self, session):
        bar = self.host.start(self.host, session)
        if self.host.stands_alone:
            there = wait_until(self.screen.bar_is_there)
            self.findings.expect(there, "the bar does not start")
        return bar

    def take_settled(self):
        picture, came_to_rest = self.screen.settled()
        self.findings.expect(came_to_rest, "the screen does not come to rest")
        return picture

    def look_at_label(self, picture, item):
        """How wide it is."""
        marks = ink(picture, item) or (0, 0, 0, 1)
        width, height = marks[2] - marks[0], marks[3] - marks[1]
        self.facts["label"] = f"{width}x{height} px"
        ratio = contrast(picture, item)
        self.facts["contrast"] = f"{ratio:.1f} : 1"
        self.findings.expect(ratio >= LEAST_CONTRAST, "the label does not stand out")
        self.findings.expect(width > height * WIDER_THAN_HIGH, "only the symbol is shown")
        if self.host.expects == "text":
            is_text = width > SHORTEST_TEXT * self.host.scale
            self.findings.expect(is_text, "the text is not shown")
        self.save_bar(picture, item, "-bar")
        return width

    def save_bar(self, picture, item, kind):
        width, height = int(400 * self.host.scale), int(48 * self.host.scale)
        edge = picture.height - height if self.host.at_bottom else 0
        right = min(picture.width, max(width, item[2] + width // 2))
        picture.save(self.picture(kind), (right - width, edge, right, edge + height))

    def look_at_symbol(self, bare, with_text, item):
        """What is asked for alone, for the text that is mostly beside it may be the bar's own."""
        rows = self.screen.bar_rows(with_text)
        self.program.prefer(label="symbol")
        wait_until(lambda: difference(with_text, self.screen.now(), rows), 15)
        picture = self.take_settled()
        self.save_bar(picture, item, "-symbol")
        # Something else may have moved since the bar was bare.
        left, top, right, bottom = self.screen.item(bare, picture) or item
        changed = self.screen.item(with_text, picture) or item
        place = max(left, changed[0]), top, min(right, changed[2]), bottom
        marks = ink(picture, place) or (0, 0, 2, 1)
        is_alone = marks[2] - marks[0] <= (marks[3] - marks[1]) * WIDER_THAN_HIGH
        if self.findings.expect(is_alone, "the symbol is not shown alone"):
            ratio = contrast(picture, place)
            self.facts["symbol"] = f"{ratio:.1f} : 1"
            self.findings.expect(ratio >= LEAST_CONTRAST, "the symbol does not stand out")
        self.program.prefer()
        wait_until(lambda: difference(picture, self.screen.now(), rows), 15)

    def restart(self, restarts, times, item, width):
        restarts.run(times, item, width)
        for way, count in restarts.counts.items():
            self.facts[f"back {way}"] = f"{count} of {times}"
            self.findings.expect(count == times, f"the label is not always back {way}")
