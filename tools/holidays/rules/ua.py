"""Ukraine (uk_UA): the holidays and non-working days of the Labour Code, art. 73.

Law changes followed: Labour Day 1-2 May up to 2017, 1 May only from 2018;
Western Christmas 25 December a day off from 2017; Defenders' Day 14 October
from 2015, moved to 1 October from 2023; from 2023 (law 3225-IX of 14 July
2023) Christmas is 25 December only, 7 January no longer a holiday, and the
day of remembrance and victory over Nazism is 8 May instead of 9 May.
Orthodox Easter and Trinity are Sundays; their Mondays, like any day off on
which a holiday falls, are off by the transfer rule of art. 67 (marked with a
name of their own).  Bridge days the Cabinet recommends are left out.
Martial law, in force since 24 February 2022, suspends art. 73 and the
transfers: the holidays are worked.  From that day through 2026 the holidays
are therefore named days ("show"); from 2027 on the file gives the law's
regular days off, as the end of martial law is not known.
"""
import datetime as dt

from common import SAT, SUN, YEARS, dated, flatten, orthodox_easter, rule

DAY = dt.timedelta(days=1)
MARTIAL_LAW = (dt.date(2022, 2, 24), dt.date(2026, 12, 31))

FILE_NOTE = ("Ukraine: martial law since 24 February 2022 suspends the days off; from then through 2026 "
        "the holidays are named days, not days off")
DAY_OFF = "Вихідний день (перенесений)"


def holidays(y):
    d = lambda m, day: dt.date(y, m, day)  # noqa: E731
    e = orthodox_easter(y)
    out = [(d(1, 1), "Новий рік")]
    if y <= 2023:
        out.append((d(1, 7), "Різдво Христове"))
    out.append((d(3, 8), "Міжнародний жіночий день"))
    out += [(e, "Великдень"), (e + 49 * DAY, "Трійця")]
    out.append((d(5, 1), "День праці"))
    if y <= 2017:
        out.append((d(5, 2), "День праці"))
    if y >= 2023:
        out.append((d(5, 8), "День пам'яті та перемоги над нацизмом у Другій світовій війні 1939–1945 років"))
    else:
        out.append((d(5, 9), "День перемоги над нацизмом у Другій світовій війні" if y >= 2016 else "День Перемоги"))
    out += [(d(6, 28), "День Конституції України"), (d(8, 24), "День Незалежності України")]
    if 2015 <= y <= 2022:
        out.append((d(10, 14), "День захисника України" if y <= 2020 else "День захисників і захисниць України"))
    elif y >= 2023:
        out.append((d(10, 1), "День захисників і захисниць України"))
    if y >= 2017:
        out.append((d(12, 25), "Різдво Христове"))
    return out


def at_war(d):
    return MARTIAL_LAW[0] <= d <= MARTIAL_LAW[1]


def days(y):
    """[(date, name, honor)] of year y: holidays, then the days off moved to weekdays."""
    hol = holidays(y)
    out = [(d, name, "show" if at_war(d) else "free") for d, name in hol]
    taken = {d for d, _ in hol}
    for d in sorted(taken):   # two holidays on one date move one day off
        if d.weekday() not in (SAT, SUN):
            continue
        s = d + DAY
        while s.weekday() in (SAT, SUN) or s in taken:
            s += DAY
        taken.add(s)
        if not at_war(s):
            out.append((s, DAY_OFF, "free"))
    return out


NATIONWIDE = flatten([
    [dated(d, name, honor) for y in YEARS for d, name, honor in days(y)],
    rule(18, "Переддень Нового року", "show"),
])


def build():
    return {"uk_UA": {"code": "UA", "title": "Україна",
                      "nationwide": NATIONWIDE, "provinces": []}}


# Days off from the yearly lists of the Ministry of Social Policy, without the
# recommended bridge days (weekend days that are holidays included).
TESTS = {
    ("", 2016): "01-01 01-07 03-08 05-01 05-01 05-02 05-03 05-09 06-19 06-20 06-28 08-24 10-14",
    ("", 2019): "01-01 01-07 03-08 04-28 04-29 05-01 05-09 06-16 06-17 06-28 08-24 08-26 10-14 12-25",
    ("", 2022): "01-01 01-03 01-07",
}
