"""The screen of a session, and where on it the bar, the label and the panel are."""
from .panels import gap
from .pictures import Picture, contrast, difference, highest_piece
from .rest import settled

DARKEST_SHADOW = 60  # what it takes off a colour of the empty desktop, of 255


class Screen:
    """As one host lays it out."""

    def __init__(self, session, host):
        self.session, self.host = session, host

    def now(self):
        return Picture.of_screen(self.session)

    def bar_rows(self, picture):
        rows = range(self.host.thickness)
        return range(picture.height - len(rows), picture.height) if self.host.at_bottom else rows

    def rest(self, picture):
        """The rows without the bar."""
        rows = self.bar_rows(picture)
        return range(rows.start) if self.host.at_bottom else range(rows.stop, picture.height)

    def bar_is_there(self):
        """Whether something is written on it, be it a clock."""
        picture = self.now()
        rows = self.bar_rows(picture)
        return contrast(picture, (0, rows.start, picture.width, rows.stop)) > 2

    def settled(self):
        """A picture of a screen that does not change any more, and whether it was one."""
        return settled(self.session, self.host.patience, 30)

    def item(self, bare, picture):
        """The label's rectangle, given the bar without it."""
        return difference(bare, picture, self.bar_rows(bare))

    def panel(self, before):
        """The panel's rectangle, bar aside, if something as high as one, and in one piece, came."""
        found = highest_piece(before, self.now(), self.rest(before), DARKEST_SHADOW)
        return found if found and found[3] - found[1] > before.height / 2 else None

    def gap(self, before, picture, panel, item):
        """How many pixels are between panel and bar; negative where it covers some of it."""
        return gap(before, picture, panel, item, self.bar_rows(before))
