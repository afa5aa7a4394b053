"""Every kind of difference that is known, with its reason: see explain()."""

KINDS = []


def explain(calendar, mine, their):
    """The name of the kind that explains all of a difference; None if none does."""
    for kind in KINDS:
        if kind(calendar, mine, their):
            return kind.__doc__.splitlines()[0]
    return None
