"""What is tried in each bar, and measured."""
import time

from .pictures import Picture, contrast, difference, highest_piece, ink
from .session import Session, wait_until

LEAST_CONTRAST = 3
DARKEST_SHADOW = 90  # what it takes off a colour, of 255
REACH = 8  # points between bar and panel
CAPTURE_FIELD = 47  # points above the panel's lower edge
SHORTEST_TEXT = 60  # points; what is narrower is no more than four characters
WIDER_THAN_HIGH = 1.25  # a few characters are; a symbol fills its square
MINUTE_IS_YOUNG = 25  # seconds; until it is over only the label changes
MARGIN = 24  # points around what is kept of a picture


class Tour:
    """One bar's: `facts` and `faults` are what was found, once it has run."""

    def __init__(self, name, host, lumora, folder):
        self.name, self.host, self.lumora, self.folder = name, host, lumora, folder
        self.faults = []
        self.facts = {}

    def expect(self, holds, fault):
        if not holds:
            self.faults.append(fault)
        return bool(holds)

    def run(self):
        log_folder = self.folder / "log" / self.name
        with Session(self.host.desktop, log_folder, "%dx%d" % self.host.screen) as self.session:
            if self.host.ordinary_user:
                self.lumora = self.session.copy_program(self.lumora)
                self.session.become_ordinary_user()
            self.session.start_bus()
            self.host.prepare(self.session)
            self.bar = self.start_bar()
            if self.host.has_clock:
                wait_until(lambda: time.localtime().tm_sec < MINUTE_IS_YOUNG)
            bare = self.take_settled()
            self.session.start("lumora", str(self.lumora), "--demo", **self.session.inside)
            item, picture = self.find_item(bare)
            if not item:
                self.faults.append("nothing is shown")
                bare.save(self.folder / f"{self.name}.png", (0, 0, bare.width, bare.height))
                return
            self.look_at_label(picture, item)
            self.press_label(picture, item)
            if self.host.restart:
                self.restart_bar(item)

    # Where things are on the screen

    def bar_rows(self, picture):
        rows = range(self.host.thickness)
        return range(picture.height - len(rows), picture.height) if self.host.at_bottom else rows

    def rest(self, picture):
        """The rows without the bar."""
        rows = self.bar_rows(picture)
        return range(rows.start) if self.host.at_bottom else range(rows.stop, picture.height)

    def panel_in(self, before):
        """The panel's rectangle, if something as high as one, and in one piece, has come."""
        now = Picture.of_screen(self.session)
        found = highest_piece(before, now, self.rest(before), DARKEST_SHADOW)
        return found if found and found[3] - found[1] > before.height / 2 else None

    # Waiting

    def bar_is_there(self):
        """Whether something is written on it, be it a clock."""
        picture = Picture.of_screen(self.session)
        rows = self.bar_rows(picture)
        return contrast(picture, (0, rows.start, picture.width, rows.stop)) > 2

    def start_bar(self):
        bar = self.host.start(self.host, self.session)
        if self.host.stands_alone:
            self.expect(wait_until(self.bar_is_there), "the bar does not start")
        return bar

    def take_settled(self):
        """A picture of a screen that does not change any more."""
        def settled():
            one = Picture.of_screen(self.session)
            for _ in range(self.host.patience):
                time.sleep(0.4)
                other = Picture.of_screen(self.session)
                if one.pixels != other.pixels:
                    return None
            return other

        picture = wait_until(settled, 30)
        self.expect(picture, "the screen does not come to rest")
        return picture or Picture.of_screen(self.session)

    def find_item(self, bare):
        """The label's rectangle, once it is there, and the picture."""
        rows = self.bar_rows(bare)
        if not wait_until(lambda: difference(bare, Picture.of_screen(self.session), rows)):
            return None, None
        picture = self.take_settled()
        return difference(bare, picture, rows), picture

    # What is tried

    def look_at_label(self, picture, item):
        marks = ink(picture, item) or (0, 0, 0, 1)
        width, height = marks[2] - marks[0], marks[3] - marks[1]
        self.width = width
        self.facts["label"] = f"{width}x{height} px"
        ratio = contrast(picture, item)
        self.facts["contrast"] = f"{ratio:.1f} : 1"
        self.expect(ratio >= LEAST_CONTRAST, "the label does not stand out")
        self.expect(width > height * WIDER_THAN_HIGH, "only the symbol is shown")
        if self.host.expects == "text":
            self.expect(width > SHORTEST_TEXT * self.host.scale, "the text is not shown")
        width, height = int(400 * self.host.scale), int(48 * self.host.scale)
        edge = picture.height - height if self.host.at_bottom else 0
        right = min(picture.width, max(width, item[2] + width // 2))
        picture.save(
            self.folder / f"{self.name}-bar.png", (right - width, edge, right, edge + height))

    def press_label(self, before, item):
        x, y = (item[0] + item[2]) // 2, (item[1] + item[3]) // 2
        self.click((x, y), *self.host.press)
        opened = wait_until(lambda: self.panel_in(before), 15)
        if not self.expect(opened, "a press opens no panel"):
            self.save_panel(before, (0, 0, before.width, before.height))
            return
        picture = self.take_settled()
        panel = highest_piece(before, picture, self.rest(before), DARKEST_SHADOW)
        self.save_panel(picture, panel)
        rest = self.rest(before)
        gap = rest.stop - panel[3] if self.host.at_bottom else panel[1] - rest.start
        self.facts["panel"] = f"{gap} px from the bar"
        self.expect(gap <= REACH * self.host.scale, "the panel is not at the bar")
        self.expect(panel[0] <= x <= panel[2], "the panel is not under the pointer")
        self.click((x, y), *(self.host.closes or self.host.press))
        self.expect_closed(before, "a second press does not close the panel")
        if self.host.layered:
            self.work(before, panel, (x, y))

    def save_panel(self, picture, panel):
        """A picture of it, and of the bar beside it."""
        margin = int(MARGIN * self.host.scale)
        top = panel[1] - margin if self.host.at_bottom else 0
        bottom = picture.height if self.host.at_bottom else panel[3] + margin
        picture.save(self.folder / f"{self.name}.png", (
            max(0, panel[0] - margin), max(0, top),
            min(picture.width, panel[2] + margin), min(picture.height, bottom)))

    def expect_closed(self, before, fault):
        # The bar may have something to say where the pointer is, which is no panel.
        self.expect(wait_until(lambda: not self.panel_in(before), 15), fault)

    def click(self, place, *how):
        # A pointer that has not moved may not be known to be over what has just appeared.
        for x, y in ((place[0] - 1, place[1]), place):
            self.session.run("xdotool", "mousemove", str(x), str(y))
        self.session.run("xdotool", *(how or ("click", "1")))

    def work(self, before, panel, item):
        """Opens it again and again, for all that keys and presses outside do."""
        def reopen():
            self.click(item)
            opened = wait_until(lambda: self.panel_in(before), 15)
            self.expect(opened, "the panel does not open again")
            return self.take_settled()

        reopen()
        self.session.run("xdotool", "key", "Escape")
        self.expect_closed(before, "Escape does not close the panel")
        empty = reopen()
        line = panel[3] - int(CAPTURE_FIELD * self.host.scale)
        self.click(((panel[0] + panel[2]) // 2, line))
        self.session.run("xdotool", "type", "A bell for the bicycle")
        height = int(6 * self.host.scale)
        rows = range(line - height, line + height)

        def is_written():
            now = Picture.of_screen(self.session)
            typed = difference(empty, now, rows, DARKEST_SHADOW)
            return typed and typed[2] - typed[0] > 40

        self.expect(wait_until(is_written, 15), "nothing can be typed")
        self.click((before.width // 8, before.height * 3 // 4))
        self.expect_closed(before, "a press outside does not close the panel")
        self.facts["Escape, typing, a press outside"] = "tried"

    def restart_bar(self, item):
        self.bar = self.host.restart(self.host, self.session, self.bar)
        fault = "the label is not back after the bar was restarted"

        def label_is_back():
            marks = ink(Picture.of_screen(self.session), item)
            return marks and marks[2] - marks[0] >= self.width

        back = wait_until(label_is_back, 30)
        if not self.expect(back, fault):
            return
        with_item = self.take_settled()
        self.session.run(str(self.lumora), "quit")
        rows = self.bar_rows(with_item)
        # What was there may have been something else.
        gone = wait_until(
            lambda: difference(with_item, Picture.of_screen(self.session), rows), 15)
        self.expect(gone, fault)
        self.facts["restart"] = "back" if gone else "not back"
