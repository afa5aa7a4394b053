"""The menu that some bars open in place of the panel, and the press that opens the panel there."""
from .pictures import highest_piece, lines, rules
from .screen import DARKEST_SHADOW
from .session import wait_until

ROWS = 6  # with a meeting: open, when it is, join, refresh, settings, quit
RULES = 3  # between those that belong together
CORNER = 16  # pixels at the menu's edges that may be round
LOWEST = 100  # pixels; what is lower is no menu
OPEN_LIMIT = 15  # seconds


class Menu:
    """Opened with the presses' pointer, from their picture without a panel."""

    def __init__(self, presses):
        self.presses, self.screen, self.findings = presses, presses.screen, presses.findings
        self.before = presses.before

    def run(self, path):
        """A picture of the menu is saved there."""
        self.presses.click(self.presses.place)
        if not self.findings.expect(self.opens(), "a press opens no menu"):
            return
        picture, _ = self.screen.settled()
        menu = self.rectangle(picture)
        self.read(picture, menu)
        self.presses.save(path, picture, menu)
        self.presses.press_escape()
        self.findings.expect(wait_until(lambda: not self.rectangle(self.screen.now()), OPEN_LIMIT),
                             "Escape does not close the menu")
        self.presses.click(self.presses.place, "click", "2")
        self.findings.expect(self.presses.opens(), "a middle click opens no panel")
        self.presses.press_escape()
        self.presses.expect_closed("Escape does not close the panel after a middle click")

    def read(self, picture, menu):
        left, top, right, bottom = menu
        inside = left + CORNER, top + CORNER, right - CORNER, bottom - CORNER
        found = lines(picture, inside), rules(picture, inside)
        self.findings.facts["menu"] = "%d rows, %d rules" % found
        self.findings.expect(found == (ROWS, RULES), "the menu is not that of a meeting")

    def opens(self):
        return wait_until(lambda: self.rectangle(self.screen.now()), OPEN_LIMIT)

    def rectangle(self, picture):
        """The menu's, if something as high as one came below the bar."""
        found = highest_piece(self.before, picture, self.screen.rest(self.before), DARKEST_SHADOW)
        return found if found and found[3] - found[1] >= LOWEST else None
