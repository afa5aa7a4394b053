"""Compares what calendars hold with what a Python package makes of them; see script/compare-calendars."""

import collections
import datetime
import pathlib
import signal
import subprocess
import zoneinfo

import icalendar
import recurring_ical_events

import differences

FROM = datetime.date(2024, 6, 1)
TO = datetime.date(2026, 8, 10)
ZONE = "Europe/Berlin"
PATIENCE = 20  # seconds for one calendar


class TookTooLong(Exception):
    """The package did not come to an end."""


def stop(*_):
    raise TookTooLong


class Ours:
    """The program of this project."""

    def __init__(self, program):
        self.process = subprocess.Popen(
            [program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def occurrences(self, path):
        """A counter of (start, end, kind); None for what is no calendar."""
        self.process.stdin.write(f"{path} {FROM} {TO} {ZONE}\n")
        self.process.stdin.flush()
        head = self.process.stdout.readline().strip()
        if not head:
            raise RuntimeError(f"the program ended over {path}")
        lines = list(iter(lambda: self.process.stdout.readline().strip(), ""))
        if head == "no calendar":
            return None
        return collections.Counter(
            (int(start), int(end), kind) for start, end, kind in (line.split() for line in lines))


def midnight(day):
    return datetime.datetime.combine(day, datetime.time(), zoneinfo.ZoneInfo(ZONE))


def instant(time):
    """A date or time of the package's, in seconds."""
    if not isinstance(time, datetime.datetime):
        time = midnight(time)
    elif time.tzinfo is None:
        time = time.replace(tzinfo=zoneinfo.ZoneInfo(ZONE))
    return int(time.timestamp())


def theirs(calendar):
    """What the package says, as a counter of (start, end, kind)."""
    signal.signal(signal.SIGALRM, stop)
    signal.alarm(PATIENCE)
    try:
        found = collections.Counter()
        # A day more, because it takes what lies at the edges otherwise.
        day = datetime.timedelta(days=1)
        for event in recurring_ical_events.of(calendar).between(FROM - day, TO + day):
            if str(event.get("STATUS", "")).upper() == "CANCELLED":
                continue
            start = event["DTSTART"].dt
            end = event["DTEND"].dt if "DTEND" in event else start
            kind = "TIME" if isinstance(start, datetime.datetime) else "DAY"
            found[(instant(start), instant(end), kind)] += 1
        return found
    finally:
        signal.alarm(0)


def inside(found):
    """Only what lies wholly within the days: at their edges the two may differ."""
    first, last = instant(FROM), instant(TO)
    return collections.Counter({
        key: count for key, count in found.items() if key[0] > first and key[1] < last})


def compare(ours, path, text):
    """None where both agree, else (kind of the difference or None, only ours, only theirs)."""
    own = ours.occurrences(path)
    try:
        calendar = icalendar.Calendar.from_ical(text)
        other = theirs(calendar)
    except TookTooLong:
        return "the package does not end", set(), set()
    except Exception as error:  # whatever it is that the package cannot read
        return "the package gives up", set(), {repr(error)[:100]}
    if own is None:
        return None, set(), set(other)
    own, other = inside(own), inside(other)
    if own == other:
        return None
    mine, their = own - other, other - own
    case = differences.Case(calendar, own, other, ZONE)
    return differences.explain(case, set(mine), set(their)), set(mine), set(their)


def readable(occurrence):
    if isinstance(occurrence, str):
        return occurrence
    start, end, kind = occurrence
    form = "%Y-%m-%d %H:%M UTC"
    times = [datetime.datetime.fromtimestamp(time, datetime.timezone.utc).strftime(form)
             for time in (start, end)]
    return f"{kind} {times[0]} to {times[1]}"


def run(program, files, report=print):
    """Compares `files`, an iterable of (name, path, text). The number that nobody explains."""
    ours = Ours(program)
    kinds = collections.Counter()
    for name, path, text in files:
        result = compare(ours, path, text)
        if result is None:
            kinds["equal"] += 1
            continue
        kind, mine, their = result
        kinds[kind or "NOT EXPLAINED"] += 1
        if kind is None:
            report(f"{name}:")
            for title, found in (("only here", mine), ("only there", their)):
                for occurrence in sorted(found)[:5]:
                    report(f"    {title}: {readable(occurrence)}")
    for kind, count in kinds.most_common():
        report(f"{count:7} {kind}")
    return kinds["NOT EXPLAINED"]


def folder_files(folder):
    for path in sorted(pathlib.Path(folder).rglob("*.ics")):
        yield path.name, path.resolve(), path.read_bytes()
