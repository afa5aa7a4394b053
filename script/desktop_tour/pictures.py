"""Pictures of the screen, and what can be measured in them."""
import subprocess
from collections import Counter

COLORS = 96  # in a saved picture: enough for shadows, and a third of the bytes
STANDS_OUT = 2  # n in n : 1; what is nearer to its ground is smoothing
LOWEST_LINE = 5  # pixels; what is lower separates lines of text, or is an edge
TIP = 4  # how many times narrower than the rest of it what sticks out of a window is


class Picture:
    """Pixels as bytes, three each."""

    def __init__(self, ppm):
        head, self.pixels = ppm.split(b"\n255\n", 1)
        self.width, self.height = map(int, head.split()[1:3])

    @staticmethod
    def of_screen(session):
        shot = subprocess.run(
            ["import", "-window", "root", "-depth", "8", "ppm:-"],
            env=session.environment, capture_output=True, check=True,
        )
        return Picture(shot.stdout)

    def colors(self, rectangle):
        """The rectangle's pixels, row by row."""
        left, top, right, bottom = rectangle
        for y in range(top, bottom):
            row = self.pixels[3 * (y * self.width + left) : 3 * (y * self.width + right)]
            yield list(zip(row[0::3], row[1::3], row[2::3], strict=True))

    def save(self, path, rectangle):
        left, top, right, bottom = rectangle
        geometry = f"{right - left}x{bottom - top}+{left}+{top}"
        subprocess.run(
            ["convert", "ppm:-", "-crop", geometry, "+repage", "-strip", "+dither",
             "-colors", str(COLORS), "-define", "png:compression-level=9", f"png8:{path}"],
            input=b"P6\n%d %d\n255\n" % (self.width, self.height) + self.pixels, check=True,
        )


def differing_columns(before, after, y, least):
    """Where two pictures differ in a row, from left to right."""
    row = slice(3 * y * before.width, 3 * (y + 1) * before.width)
    one, other = before.pixels[row], after.pixels[row]
    if one == other:
        return []
    return sorted({at // 3 for at in range(len(one)) if abs(one[at] - other[at]) >= least})


def difference(before, after, rows, least=1):
    """The rectangle in which two pictures differ, within some rows: left, top, right, bottom, the
    last two outside; None where they do not differ. Smaller differences of a colour than the least
    do not count: shadows, for example."""
    found = {y: columns for y in rows if (columns := differing_columns(before, after, y, least))}
    return around(found) if found else None


def around(found):
    """The rectangle around columns, sorted, each under its row."""
    left = min(columns[0] for columns in found.values())
    right = max(columns[-1] for columns in found.values())
    return left, min(found), right + 1, max(found) + 1


def runs(numbers):
    """Sorted numbers as ranges, one for all that follow each other without a gap."""
    found = []
    for number in numbers:
        if found and found[-1].stop == number:
            found[-1] = range(found[-1].start, number + 1)
        else:
            found.append(range(number, number + 1))
    return found


def highest_piece(before, after, rows, least=1):
    """Of what differs the highest piece, as a rectangle; None where nothing does. What has an
    unchanged row or column between it and the rest is a piece of its own: a window that came is one,
    and the pointer that went from another place is another."""
    found = {y: columns for y in rows if (columns := differing_columns(before, after, y, least))}
    pieces = []
    for together in runs(sorted(found)):
        touched = {column for y in together for column in found[y]}
        for side in runs(sorted(touched)):
            inside = {y: [x for x in found[y] if x in side] for y in together}
            pieces.append(around(without_tips(inside)))
    return max(pieces, key=lambda piece: piece[3] - piece[1], default=None)


def without_tips(found):
    """A piece without the rows in which there is little of it: a pointer over its edge, for one."""
    widest = max(len(columns) for columns in found.values())
    return {y: columns for y, columns in found.items() if len(columns) * TIP > widest}


def luminance(color):
    parts = [part / 255 for part in color]
    linear = [p / 12.92 if p <= 0.04045 else ((p + 0.055) / 1.055) ** 2.4 for p in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def ratios(picture, rectangle):
    """For each colour in the rectangle, how it stands out against the commonest one there, as n in
    n : 1, and how often it is there."""
    counts = Counter(color for row in picture.colors(rectangle) for color in row)
    ground = luminance(counts.most_common(1)[0][0])
    found = {}
    for color, count in counts.items():
        ink = luminance(color)
        found[color] = ((max(ink, ground) + 0.05) / (min(ink, ground) + 0.05), count)
    return found


def contrast(picture, rectangle):
    """Of what stands out most in the rectangle against its commonest colour, as n in n : 1."""
    needed = 8  # a single pixel is no letter
    ratio = 1
    for ratio, count in sorted(ratios(picture, rectangle).values(), reverse=True):
        needed -= count
        if needed <= 0:
            break
    return ratio


def marks(picture, rectangle):
    """Under each row of a rectangle in which something stands out, the columns in which it does."""
    left, top = rectangle[:2]
    inks = {color for color, (ratio, _) in ratios(picture, rectangle).items() if ratio > STANDS_OUT}
    columns = ([left + x for x, color in enumerate(row) if color in inks]
               for row in picture.colors(rectangle))
    return {top + y: marked for y, marked in enumerate(columns) if marked}


def ink(picture, rectangle):
    """The rectangle of what stands out in a rectangle; None where nothing does."""
    found = marks(picture, rectangle)
    return around(found) if found else None


def lines(picture, rectangle):
    """How many lines of text are in a rectangle, one below the other."""
    rows = runs(sorted(marks(picture, rectangle)))
    return sum(len(line) >= LOWEST_LINE for line in rows)


def rules(picture, rectangle):
    """How many lines are drawn across a rectangle."""
    counts = [Counter(row) for row in picture.colors(rectangle)]
    ground = sum(counts, Counter()).most_common(1)[0][0]
    return len(runs([y for y, row in enumerate(counts) if row.most_common(1)[0][0] != ground]))
