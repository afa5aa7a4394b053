"""What presses and keys do to the panel."""
from .menus import Menu
from .pictures import difference
from .screen import DARKEST_SHADOW
from .session import wait_until

REACH = 8  # points between bar and panel
PANEL_WIDTH = 320  # points, where texts have 10 of them
WIDEST = 1.5  # as many times; what is wider is more than the panel
CAPTURE_FIELD = 47  # points above the panel's lower edge
MARGIN = 24  # points around what is kept of a picture
DOUBLE = ("click", "--repeat", "2", "--delay", "90", "1")
OPEN_LIMIT = 15  # seconds
STAYS_OPEN = 3  # seconds after which what is still there stays


class Presses:
    """On one label, given a picture without the panel and where the label is in it."""

    def __init__(self, screen, findings, before, item):
        self.screen, self.findings, self.before, self.item = screen, findings, before, item
        self.session, self.host = screen.session, screen.host
        self.place = (item[0] + item[2]) // 2, (item[1] + item[3]) // 2
        self.empty = before.width // 8, before.height * 3 // 4

    def run(self, path):
        """Tries them all; a picture of the panel, and of the bar beside it, is saved there."""
        self.click(self.place, *self.host.press)
        if not self.findings.expect(self.opens(), "a press opens no panel"):
            self.before.save(path, (0, 0, self.before.width, self.before.height))
            return
        picture, _ = self.screen.settled()
        panel = self.screen.panel(self.before)
        self.save(path, picture, panel)
        self.measure(picture, panel)
        self.click(self.place, *(self.host.closes or self.host.press))
        self.expect_closed("a second press does not close the panel")
        if not self.host.closes:
            self.double_click()
        if self.host.layered:
            self.work(panel)
        if self.host.has_menu:
            Menu(self).run(path.with_name(f"{path.stem}-menu.png"))

    def measure(self, picture, panel):
        gap = self.screen.gap(self.before, picture, panel, self.item)
        self.findings.facts["panel"] = f"{panel[2] - panel[0]} px wide, " + (
            f"{gap} px from the bar" if gap >= 0 else f"{-gap} px over the bar")
        scale = self.host.scale
        self.findings.expect(gap >= -self.host.covered, "the panel covers the bar")
        self.findings.expect(gap <= REACH * scale, "the panel is not at the bar")
        self.findings.expect(panel[0] <= self.place[0] <= panel[2],
                             "the panel is not under the pointer")
        self.findings.expect(panel[2] - panel[0] <= WIDEST * PANEL_WIDTH * scale,
                             "what opens is wider than the panel")

    def save(self, path, picture, panel):
        margin = int(MARGIN * self.host.scale)
        top = panel[1] - margin if self.host.at_bottom else 0
        bottom = picture.height if self.host.at_bottom else panel[3] + margin
        picture.save(path, (
            max(0, panel[0] - margin), max(0, top),
            min(picture.width, panel[2] + margin), min(picture.height, bottom)))

    def click(self, place, *how):
        # A pointer that has not moved may not be known to be over what has just appeared.
        for x, y in ((place[0] - 1, place[1]), place):
            self.session.run("xdotool", "mousemove", str(x), str(y))
        self.session.run("xdotool", *(how or ("click", "1")))

    def press_escape(self):
        self.session.run("xdotool", "key", "Escape")

    def opens(self):
        return wait_until(lambda: self.screen.panel(self.before), OPEN_LIMIT)

    def closes(self, patience=OPEN_LIMIT):
        # The bar may have something to say where the pointer is, which is no panel.
        return wait_until(lambda: not self.screen.panel(self.before), patience)

    def expect_closed(self, fault):
        self.findings.expect(self.closes(), fault)

    def reopen(self):
        self.click(self.place)
        self.findings.expect(self.opens(), "the panel does not open again")
        return self.screen.settled()[0]

    def double_click(self):
        """It leaves the panel open; what a press on the desktop does then differs."""
        self.click(self.place, *DOUBLE)
        self.screen.settled()
        if not self.findings.expect(self.screen.panel(self.before),
                                    "a double click does not leave the panel open"):
            return
        self.click(self.empty)
        closed = self.closes(STAYS_OPEN)
        self.findings.facts["a press on the desktop"] = "closes" if closed else "leaves it open"
        if self.host.layered:
            self.findings.expect(closed, "a press outside does not close the panel")
        if not closed:
            self.click(self.place)
            self.expect_closed("a press does not close the panel after a double click")

    def work(self, panel):
        """Opens it again and again, for all that keys do."""
        self.reopen()
        self.press_escape()
        self.expect_closed("Escape does not close the panel")
        empty = self.reopen()
        line = panel[3] - int(CAPTURE_FIELD * self.host.scale)
        self.click(((panel[0] + panel[2]) // 2, line))
        self.session.run("xdotool", "type", "A bell for the bicycle")
        height = int(6 * self.host.scale)
        rows = range(line - height, line + height)

        def is_written():
            typed = difference(empty, self.screen.now(), rows, DARKEST_SHADOW)
            return typed and typed[2] - typed[0] > 40

        self.findings.expect(wait_until(is_written, OPEN_LIMIT), "nothing can be typed")
        self.click(self.empty)
        self.expect_closed("a press outside does not close the panel")
        self.findings.facts["Escape, typing, a press outside"] = "tried"
