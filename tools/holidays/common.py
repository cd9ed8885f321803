"""Date helpers and record types shared by the holiday rule modules.

A rule module (tools/holidays/rules/<cc>.py) describes the public holidays of
one country and returns plain dictionaries; generate.py turns them into the
XML files under data/holidays/.
"""
import datetime as _dt

FIRST_YEAR = 2000
LAST_YEAR = 2100
YEARS = range(FIRST_YEAR, LAST_YEAR + 1)

MON, TUE, WED, THU, FRI, SAT, SUN = range(7)  # datetime.weekday() numbering


def easter(year):
    """Gregorian Easter Sunday (anonymous Gregorian algorithm)."""
    a = year % 19
    b, c = divmod(year, 100)
    d, e = divmod(b, 4)
    f = (b + 8) // 25
    g = (b - f + 1) // 3
    h = (19 * a + b - d - g + 15) % 30
    i, k = divmod(c, 4)
    l = (32 + 2 * e + 2 * i - h - k) % 7
    m = (a + 11 * h + 22 * l) // 451
    month, day = divmod(h + l - 7 * m + 114, 31)
    return _dt.date(year, month, day + 1)


def library_easter(year):
    """Easter as the calendar library computes it (one week late in a few years)."""
    g = year % 19
    c = year // 100
    h = (c - year // 400 - (8 * c + 13) // 25 + 19 * g + 15) % 30
    i = h - ((21 - g) // 11) * (h // 28) * (1 - 29 // (h + 1))
    j = (year + year // 4 + i + 2 - c + year // 400) % 7
    l = i - j
    if l < 4:
        return _dt.date(year, 3, 28 + l)
    return _dt.date(year, 4, l - 3)


def orthodox_easter(year):
    """Orthodox Easter Sunday as a Gregorian date.

    The Julian computus (Meeus) gives the date in the Julian calendar; the
    Julian calendar lags the Gregorian one by 13 days in 1900-2099 and by 14
    days from March 2100 on (Easter is always after February).
    """
    a, b, c = year % 4, year % 7, year % 19
    d = (19 * c + 15) % 30
    e = (2 * a + 4 * b - d + 34) % 7
    month, day = divmod(d + e + 114, 31)
    lag = year // 100 - year // 400 - 2
    return _dt.date(year, month, day + 1) + _dt.timedelta(days=lag)


def quirk_years():
    return [y for y in YEARS if easter(y) != library_easter(y)]


def nth_weekday(year, month, weekday, n):
    """n-th (1-based) weekday of a month; n = -1 gives the last one."""
    if n > 0:
        d = _dt.date(year, month, 1)
        d += _dt.timedelta(days=(weekday - d.weekday()) % 7)
        return d + _dt.timedelta(weeks=n - 1)
    nxt = _dt.date(year + (month == 12), month % 12 + 1, 1)
    d = nxt - _dt.timedelta(days=1)
    return d - _dt.timedelta(days=(d.weekday() - weekday) % 7)


def weekday_on_or_after(date, weekday):
    return date + _dt.timedelta(days=(weekday - date.weekday()) % 7)


def weekday_on_or_before(date, weekday):
    return date - _dt.timedelta(days=(date.weekday() - weekday) % 7)


def advent_sundays(year):
    """The four Advent Sundays; the fourth is the Sunday on or before 24 December."""
    fourth = weekday_on_or_before(_dt.date(year, 12, 24), SUN)
    return [fourth - _dt.timedelta(weeks=3 - k) for k in range(4)]


# Records returned by rule modules ------------------------------------------

def rule(day_id, name, honor="free"):
    """A day computed by the library from its id (see generate.py for the ids)."""
    return {"id": day_id, "name": name, "honor": honor}


def fixed(month, day, name, honor="free", years=None):
    """A day on the same date every year; with `years` only in those years."""
    if years is None:
        return {"date": "xxxx-%02d-%02d" % (month, day), "name": name, "honor": honor}
    return [dated(_dt.date(y, month, day), name, honor) for y in years]


def dated(date, name, honor="free"):
    """A one-off day in the year of `date`."""
    return {"date": date.isoformat(), "name": name, "honor": honor}


def yearly(func, name, honor="free", years=YEARS):
    """One-off days for every year: func(year) returns a date, a list of dates or None."""
    out = []
    for y in years:
        r = func(y)
        if r is None:
            continue
        for d in (r if isinstance(r, (list, tuple)) else [r]):
            out.append(dated(d, name, honor))
    return out


def orthodox_day(offset, name, honor="free", years=YEARS):
    """One-off days `offset` days from Orthodox Easter (orthodox_easter), for every year."""
    return yearly(lambda y: orthodox_easter(y) + _dt.timedelta(days=offset), name, honor, years)


def flatten(items):
    """Rule modules may mix single records and lists of records."""
    out = []
    for it in items:
        if isinstance(it, list):
            out.extend(it)
        elif it is not None:
            out.append(it)
    return out


_E = _dt.timedelta
RULE_DAYS = {
    1: lambda y, e: _dt.date(y, 1, 6),
    2: lambda y, e: e - _E(3),
    3: lambda y, e: e - _E(2),
    4: lambda y, e: e,
    5: lambda y, e: e + _E(1),
    6: lambda y, e: _dt.date(y, 5, 1),
    7: lambda y, e: e + _E(39),
    8: lambda y, e: e + _E(49),
    9: lambda y, e: e + _E(50),
    10: lambda y, e: e + _E(60),
    11: lambda y, e: _dt.date(y, 8, 15),
    12: lambda y, e: _dt.date(y, 10, 31),
    13: lambda y, e: _dt.date(y, 11, 1),
    14: lambda y, e: weekday_on_or_before(_dt.date(y, 11, 22), WED),
    15: lambda y, e: _dt.date(y, 12, 24),
    16: lambda y, e: _dt.date(y, 12, 25),
    17: lambda y, e: _dt.date(y, 12, 26),
    18: lambda y, e: _dt.date(y, 12, 31),
    19: lambda y, e: _dt.date(y, 1, 1),
    20: lambda y, e: e - _E(48),
    21: lambda y, e: e - _E(46),
    22: lambda y, e: e - _E(7),
}


def expand(nationwide, province, year, library=False):
    """The marked days of one region in one year: a set of (date, name, honor).

    Follows the library's rules: a rule id listed for the province overrides the
    nationwide entry; dated days of both lists are used; honor "" marks nothing.
    With library=True Easter is the library's own (quirky) one.
    """
    e = library_easter(year) if library else easter(year)
    ids = {}
    for rec in flatten(nationwide):
        if "id" in rec:
            ids[rec["id"]] = rec
    for rec in flatten(province or []):
        if "id" in rec:
            ids[rec["id"]] = rec
    out = set()
    for day_id, rec in ids.items():
        if rec["honor"]:
            out.add((RULE_DAYS[day_id](year, e), rec["name"], rec["honor"]))
    for rec in flatten(province or []) + flatten(nationwide):
        if "date" not in rec or not rec["honor"]:
            continue
        y, m, d = rec["date"].split("-")
        if y != "xxxx" and int(y) != year:
            continue
        out.add((_dt.date(year, int(m), int(d)), rec["name"], rec["honor"]))
    return out


def substitute_days(days, weekend=(SAT, SUN)):
    """Substitute days off for holidays that fall on a weekend.

    `days` is a list of (date, name), usually holidays close together (25 and
    26 December). Each one on a weekend day moves to the first later weekday
    that is neither one of the days nor already taken by an earlier one.
    Returns [(substitute date, name)] in the order of `days`.
    """
    taken = {d for d, _ in days if d.weekday() not in weekend}
    out = []
    for d, name in days:
        if d.weekday() not in weekend:
            continue
        s = d + _dt.timedelta(days=1)
        while s.weekday() in weekend or s in taken:
            s += _dt.timedelta(days=1)
        taken.add(s)
        out.append((s, name))
    return out


def nearest_weekday(date, weekday):
    """The `weekday` nearest to `date` (on a tie, 3.5 days, impossible; ties go later)."""
    before = weekday_on_or_before(date, weekday)
    after = weekday_on_or_after(date, weekday)
    return before if (date - before) < (after - date) else after
