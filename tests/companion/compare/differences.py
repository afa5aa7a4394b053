"""Every kind of difference that is known, each with its reason: a function that says whether it
explains one occurrence that only one side has."""

import datetime
import zoneinfo


HOUR = 3600


class Case:
    """A calendar, and what both sides make of it: counters of (start, end, kind)."""

    def __init__(self, calendar, own, other, zone):
        self.own = own
        self.other = other
        self.events = list(calendar.walk("VEVENT"))
        self.zones = {zoneinfo.ZoneInfo(zone)} | {
            found for event in self.events for found in zones_of(event)}

    def lines(self, name):
        """The properties of a name in all events."""
        found = []
        for event in self.events:
            value = event.get(name) or []
            found += value if isinstance(value, list) else [value]
        return found

    def change_between(self, start, end):
        """Whether a clock that the calendar names is changed meanwhile."""
        def offset(zone, time):
            return datetime.datetime.fromtimestamp(time, zone).utcoffset()
        return any(
            offset(zone, time) != offset(zone, time + HOUR)
            for zone in self.zones for time in range(start - start % HOUR, end + 1, HOUR))


def zones_of(event):
    for _, value in event.property_items():
        name = getattr(value, "params", {}).get("TZID")
        if name:
            try:
                yield zoneinfo.ZoneInfo(str(name))
            except (ValueError, zoneinfo.ZoneInfoNotFoundError):
                pass


def day_without_end(case, occurrence, is_ours):
    """an all-day event without an end, which lasts its day, lasts no time to the package"""
    start, end, kind = occurrence
    return kind == "DAY" and (
        (start == end and not is_ours) or (is_ours and case.other[(start, start, kind)] > 0))


def twice(case, occurrence, is_ours):
    """a date that a rule and a list both have comes twice out of the package, over a clock change"""
    return not is_ours and case.own[occurrence] > 0 and "RDATE" in str(
        [event.keys() for event in case.events])


def replaced_by_day(case, occurrence, is_ours):
    """the package finds what a RECURRENCE-ID replaces by its day, as written: another time of it, or another day"""
    start = occurrence[0]
    replaced = [moved.dt for moved in case.lines("RECURRENCE-ID")
                if isinstance(moved.dt, datetime.datetime)]
    if not is_ours:
        return any(
            int((time if time.tzinfo else time.replace(tzinfo=zone)).timestamp()) == start
            for time in replaced for zone in case.zones)
    days = {datetime.datetime.fromtimestamp(start, zone).date() for zone in case.zones}
    return any(time.date() in days for time in replaced)


def changed_clocks(case, occurrence, is_ours):
    """where clocks change, the package takes the second of two times, or a length by clocks for one by hours"""
    start, end, kind = occurrence
    others = case.other if is_ours else case.own
    near = [(one, other) for one, other, its in others
            if its == kind and abs(one - start) <= HOUR and abs(other - end) <= 2 * HOUR]
    half_day = 14 * HOUR  # more than any zone is off
    own_length = any(
        one == start and case.change_between(
            instant(event) - half_day, instant(event) + end - start + half_day)
        for one, _ in near for event in case.events)
    return own_length or any(
        case.change_between(min(start, one) - 3 * HOUR, max(end, other) + 3 * HOUR)
        for one, other in near)


def until_a_date(case, occurrence, is_ours):
    """a rule that ends on a date without a time includes that day; to the package it ends at midnight UTC"""
    def last_days():
        for rule in case.lines("RRULE"):
            for until in (rule or {}).get("UNTIL", []):
                if not isinstance(until, datetime.datetime):
                    yield until
    day = 24 * HOUR
    return is_ours and occurrence[2] == "TIME" and any(
        0 <= occurrence[0] + day - datetime.datetime.combine(
            last, datetime.time(), datetime.timezone.utc).timestamp() <= 3 * day
        for last in last_days())


def last_in_another_season(case, occurrence, is_ours):
    """a rule that ends exactly at its last date: the package compares by the offset of its first date"""
    ends = [until for rule in case.lines("RRULE") for until in (rule or {}).get("UNTIL", [])
            if isinstance(until, datetime.datetime) and until.tzinfo]
    starts = [instant(event) for event in case.events]
    return is_ours and any(
        0 <= until.timestamp() - occurrence[0] <= HOUR and
        case.change_between(min(starts), occurrence[0]) for until in ends)


def instant(event):
    """Roughly when an event begins, for looking at zones."""
    start = event["DTSTART"].dt
    if not isinstance(start, datetime.datetime):
        start = datetime.datetime.combine(start, datetime.time())
    return int(start.replace(tzinfo=datetime.timezone.utc).timestamp())


def unread_rule(case, occurrence, is_ours):
    """the package does not read the rule: it knows no twentieth Monday of a year"""
    return is_ours and any(name == "RRULE" for event in case.events for name, _ in event.errors)


def swallowed(case, occurrence, is_ours):
    """a listed date in summer swallows what a rule of winter has an hour before, in the package"""
    def listed():
        for dates in case.lines("RDATE"):
            yield from (date.dt for date in dates.dts)
    return is_ours and any(
        isinstance(date, datetime.datetime) and date.tzinfo
        and abs(date.timestamp() - occurrence[0]) <= HOUR for date in listed())


def week_of_the_next_year(case, occurrence, is_ours):
    """every other year: the first week may begin in the year before, which the package counts by"""
    day = datetime.datetime.fromtimestamp(occurrence[0] + 12 * HOUR, datetime.timezone.utc)
    return (day.month, day.day) > (12, 26) and any(
        "BYWEEKNO" in (rule or {}) and "INTERVAL" in rule for rule in case.lines("RRULE"))


def replacement_of_excluded(case, occurrence, is_ours):
    """an event that takes the place of an excluded date goes with that date, in newer packages"""
    excluded = {date.dt for dates in case.lines("EXDATE") for date in dates.dts}

    def starts():
        for event in case.events:
            if "RECURRENCE-ID" in event and event["RECURRENCE-ID"].dt in excluded:
                yield event["DTSTART"].dt
    return is_ours and any(
        occurrence[0] == int(datetime.datetime.combine(
            start, getattr(start, "time", datetime.time)(),
            getattr(start, "tzinfo", None) or zone).timestamp())
        for start in starts() for zone in case.zones)


KINDS = [unread_rule, day_without_end, twice, replaced_by_day, changed_clocks, until_a_date,
         last_in_another_season, swallowed, week_of_the_next_year, replacement_of_excluded]


def explain(case, mine, their):
    """The kinds that explain a difference, in words; None if any part of it has none."""
    found = set()
    for occurrences, is_ours in ((mine, True), (their, False)):
        for occurrence in occurrences:
            kind = next((kind for kind in KINDS if kind(case, occurrence, is_ours)), None)
            if kind is None:
                return None
            found.add(kind.__doc__)
    return "; and ".join(sorted(found))
