"""Pictures of the screen, and what can be measured in them."""
import subprocess
from collections import Counter

COLORS = 96  # in a saved picture: enough for shadows, and a third of the bytes
STANDS_OUT = 2  # n in n : 1; what is nearer to its ground is smoothing


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


def difference(before, after, rows, least=1):
    """The rectangle in which two pictures differ, within some rows: left, top, right, bottom, the
    last two outside; None where they do not differ. Smaller differences of a colour than the least
    do not count: shadows, for example."""
    row_bytes = 3 * before.width
    left, right, touched = before.width, 0, []
    for y in rows:
        one = before.pixels[y * row_bytes : (y + 1) * row_bytes]
        other = after.pixels[y * row_bytes : (y + 1) * row_bytes]
        if one == other:
            continue
        columns = [at // 3 for at in range(row_bytes) if abs(one[at] - other[at]) >= least]
        if not columns:
            continue
        touched.append(y)
        left, right = min(left, columns[0]), max(right, columns[-1] + 1)
    return (left, touched[0], right, touched[-1] + 1) if touched else None


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


def ink(picture, rectangle):
    """The rectangle of what stands out in a rectangle; None where nothing does."""
    left, top = rectangle[:2]
    inks = {color for color, (ratio, _) in ratios(picture, rectangle).items() if ratio > STANDS_OUT}
    rows, columns = [], []
    for y, row in enumerate(picture.colors(rectangle)):
        marked = [x for x, color in enumerate(row) if color in inks]
        if marked:
            rows.append(top + y)
            columns += [left + marked[0], left + marked[-1] + 1]
    return (min(columns), rows[0], max(columns), rows[-1] + 1) if rows else None
