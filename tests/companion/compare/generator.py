"""Random calendars: a series each, with rules, left out and added dates, moved dates, zones, and
times at which clocks change. Equal seeds make equal calendars."""

import datetime
import random

from dateutil import rrule

DAYS = ["MO", "TU", "WE", "TH", "FR", "SA", "SU"]
ZONES = ["Europe/Berlin", "Europe/London", "America/New_York", "America/Sao_Paulo",
         "America/Santiago", "Asia/Tokyo", "Asia/Kolkata", "Australia/Sydney", "Pacific/Auckland"]
# Nights in which clocks change somewhere.
CHANGES = [datetime.date(2025, 3, 30), datetime.date(2025, 10, 26), datetime.date(2025, 3, 9),
           datetime.date(2025, 11, 2), datetime.date(2025, 4, 6), datetime.date(2025, 10, 5)]
DAY = datetime.timedelta(days=1)


def date_text(day):
    return day.strftime("%Y%m%d")


def time_text(time):
    return time.strftime("%Y%m%dT%H%M%S")


class Series:
    """One series while it is made."""

    def __init__(self, chance):
        self.chance = chance
        self.is_date = chance.random() < 0.2
        self.zone = None if self.is_date or chance.random() < 0.1 else chance.choice(
            ZONES + ["UTC"])
        day = datetime.date(2023, 1, 1) + chance.randrange(900) * DAY
        if chance.random() < 0.25:
            day = chance.choice(CHANGES) - chance.randrange(-1, 4) * DAY
        hour = chance.choice([0, 1, 2, 2, 3, 23]) if chance.random() < 0.3 else chance.randrange(24)
        minutes = 0 if self.is_date else 60 * hour + chance.choice([0, 15, 30, 45])
        self.start = datetime.datetime.combine(day, datetime.time()) + datetime.timedelta(
            minutes=minutes)
        self.rule = self.make_rule() if chance.random() < 0.9 else None
        self.dates = self.first_dates()

    def stamped(self, name, time, as_utc=False):
        """A line with a time of the series, which in UTC only UTC series have."""
        if self.is_date:
            return f"{name};VALUE=DATE:{date_text(time)}"
        if self.zone is None:
            return f"{name}:{time_text(time)}"
        if self.zone == "UTC":
            return f"{name}:{time_text(time)}Z"
        if as_utc:
            return f"{name}:{time_text(in_utc(time, self.zone))}Z"
        return f"{name};TZID={self.zone}:{time_text(time)}"

    def length(self):
        chance = self.chance
        kind = chance.random()
        if self.is_date:
            days = chance.choice([1, 1, 2, 3])
            if kind < 0.7:
                return [self.stamped("DTEND", self.start + days * DAY)]
            return [f"DURATION:P{days}D"] if kind < 0.9 else []
        minutes = chance.choice([0, 15, 30, 60, 90, 480, 1500])
        if kind < 0.6:
            return [self.stamped("DTEND", self.start + datetime.timedelta(minutes=minutes))]
        if kind < 0.9:
            return [f"DURATION:PT{minutes}M" if minutes < 1500 else "DURATION:P1DT1H"]
        return []

    def make_rule(self):
        chance = self.chance
        freq = chance.choice(["DAILY", "WEEKLY", "WEEKLY", "MONTHLY", "MONTHLY", "YEARLY"])
        parts = [f"FREQ={freq}"]
        if chance.random() < 0.4:
            parts.append(f"INTERVAL={chance.randrange(2, 6)}")
        parts += getattr(self, freq.lower())()
        if chance.random() < 0.2:
            parts.append(f"WKST={chance.choice(DAYS)}")
        end = chance.random()
        if end < 0.3:
            parts.append(f"COUNT={chance.randrange(1, 40)}")
        elif end < 0.6:
            parts.append(f"UNTIL={self.until()}")
        return ";".join(parts)

    def until(self):
        last = self.start + self.chance.randrange(1, 700) * DAY
        if self.is_date:
            return date_text(last)
        if self.zone is None:
            return time_text(last)
        if self.chance.random() < 0.1:
            return date_text(last)
        return time_text(in_utc(last, self.zone)) + "Z"

    def some(self, values, most=3):
        return ",".join(str(value) for value in sorted(
            self.chance.sample(values, self.chance.randrange(1, most + 1)), key=values.index))

    def daily(self):
        kind = self.chance.random()
        if kind < 0.2:
            return ["BYDAY=" + self.some(DAYS)]
        if kind < 0.3:
            return ["BYMONTH=" + self.some(list(range(1, 13)))]
        if kind < 0.4:
            return ["BYMONTHDAY=" + self.some(list(range(1, 32)) + [-1, -2])]
        if kind < 0.5 and not self.is_date:
            return ["BYHOUR=" + self.some(list(range(24)), 2)]
        return []

    def weekly(self):
        kind = self.chance.random()
        if kind < 0.6:
            return ["BYDAY=" + self.some(DAYS)]
        return ["BYMONTH=" + self.some(list(range(1, 13)))] if kind < 0.7 else []

    def monthly(self):
        kind = self.chance.random()
        if kind < 0.25:
            return ["BYMONTHDAY=" + self.some([1, 2, 15, 28, 29, 30, 31, -1, -2])]
        if kind < 0.6:
            return ["BYDAY=" + self.some([f"{n}{day}" for n in [1, 2, 3, 4, 5, -1] for day in DAYS], 2)]
        if kind < 0.75:
            return ["BYDAY=" + self.some(DAYS, 5), f"BYSETPOS={self.chance.choice([1, 2, -1, -2])}"]
        return ["BYDAY=FR", "BYMONTHDAY=13"] if kind < 0.8 else []

    def yearly(self):
        kind = self.chance.random()
        month = f"BYMONTH={self.chance.randrange(1, 13)}"
        if kind < 0.2:
            return [month]
        if kind < 0.4:
            return [month, f"BYDAY={self.chance.choice([1, 2, 3, 4, -1])}{self.chance.choice(DAYS)}"]
        if kind < 0.5:
            return [month, "BYMONTHDAY=" + self.some(list(range(1, 32)))]
        if kind < 0.6:
            return ["BYYEARDAY=" + self.some([1, 60, 100, 200, 366, -1, -100])]
        if kind < 0.7:
            return [f"BYWEEKNO={self.chance.randrange(1, 53)}", f"BYDAY={self.chance.choice(DAYS)}"]
        return [f"BYDAY={self.chance.choice([20, -10])}MO"] if kind < 0.75 else []

    def first_dates(self):
        """Dates of the series to leave out or move: not all that it has, nor only such."""
        if not self.rule:
            return [self.start]
        rule = ";".join(part for part in self.rule.split(";") if not part.startswith("UNTIL"))
        try:
            dates = rrule.rrulestr(rule, dtstart=self.start)
        except ValueError:
            return [self.start]
        found = []
        for date in dates:
            if len(found) == 30 or date.year > 2026:
                break
            found.append(date)
        return found or [self.start]


def in_utc(time, zone):
    import zoneinfo
    return time.replace(tzinfo=zoneinfo.ZoneInfo(zone)).astimezone(datetime.timezone.utc)


def event(lines):
    return ["BEGIN:VEVENT", "UID:series"] + lines + ["END:VEVENT"]


def moved(series, date):
    """What replaces a date of a series."""
    chance = series.chance
    lines = [series.stamped("RECURRENCE-ID", date, as_utc=chance.random() < 0.3)]
    start = date
    if chance.random() < 0.8:
        start += chance.choice([DAY, -DAY, 7 * DAY] if series.is_date else [
            DAY, datetime.timedelta(hours=1), -datetime.timedelta(minutes=45)])
    lines.append(series.stamped("DTSTART", start))
    if chance.random() < 0.15:
        lines.append("STATUS:CANCELLED")
    lines.append("DURATION:P1D" if series.is_date else "DURATION:PT20M")
    return event(lines)


def calendar(seed):
    """The calendar number `seed`, as text."""
    chance = random.Random(seed)
    series = Series(chance)
    master = [series.stamped("DTSTART", series.start)] + series.length()
    if series.rule:
        master.append("RRULE:" + series.rule)
    if chance.random() < 0.4:
        for date in chance.sample(series.dates, min(len(series.dates), chance.randrange(1, 4))):
            master.append(series.stamped("EXDATE", date, as_utc=chance.random() < 0.3))
    if chance.random() < 0.25:
        for _ in range(chance.randrange(1, 3)):
            extra = series.start + chance.randrange(1, 300) * DAY
            master.append(series.stamped("RDATE", extra))
    lines = event(master)
    if series.rule and chance.random() < 0.35:
        for date in chance.sample(series.dates, min(len(series.dates), chance.randrange(1, 3))):
            lines += moved(series, date)
    return "\r\n".join(
        ["BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Lumora//Random//EN"] + lines
        + ["END:VCALENDAR", ""])
