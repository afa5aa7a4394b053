"""Pictures of the screen, and what can be measured in them."""
import subprocess
from collections import Counter


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

    def color(self, x, y):
        at = 3 * (y * self.width + x)
        return tuple(self.pixels[at : at + 3])

    def save(self, path, x, y, width, height):
        subprocess.run(
            ["convert", "ppm:-", "-crop", f"{width}x{height}+{x}+{y}", "+repage", str(path)],
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


def contrast(picture, rectangle):
    """Of what stands out most in the rectangle against its commonest colour, as n in n : 1."""
    left, top, right, bottom = rectangle
    colors = [picture.color(x, y) for y in range(top, bottom) for x in range(left, right)]
    ground = luminance(Counter(colors).most_common(1)[0][0])
    inks = map(luminance, colors)
    ratios = [(max(ink, ground) + 0.05) / (min(ink, ground) + 0.05) for ink in inks]
    # A single pixel is no letter.
    return sorted(ratios)[-min(8, len(ratios))]
