"""Where a panel is that has opened, in relation to the bar."""
from collections import Counter

BESIDE_ITEM = 16  # pixels; so far from the label the bar may draw that it was pressed


def covered(before, now, panel, item, bar):
    """How many rows of the bar the panel covers, given its rectangle outside the bar, the label's,
    and the bar's rows from the panel on. The bar's own changes are told from it by colour: what is
    the panel's has its ground or its edge for the greater part, and was otherwise before."""
    left, top, right, bottom = panel
    counts = Counter(color for row in now.colors(panel) for color in row)
    edge = next(now.colors((left, (top + bottom) // 2, left + 1, bottom)))[0]
    own = {counts.most_common(1)[0][0], edge}
    beside = range(item[0] - BESIDE_ITEM, item[2] + BESIDE_ITEM)

    def is_covered(y):
        old, new = (next(picture.colors((left, y, right, y + 1))) for picture in (before, now))
        pairs = enumerate(zip(old, new, strict=True), left)
        changed = any(one != other for x, (one, other) in pairs if x not in beside)
        return changed and 2 * sum(color in own for color in new) > len(new)

    count = 0
    for y in bar:
        if not is_covered(y):
            break
        count += 1
    return count


def gap(before, now, panel, item, bar):
    """How far the panel is from the bar, given as its rows; negative where it covers some."""
    below = panel[3] > bar.stop
    distance = panel[1] - bar.stop if below else bar.start - panel[3]
    if distance > 0:
        return distance
    return -covered(before, now, panel, item, reversed(bar) if below else bar)
