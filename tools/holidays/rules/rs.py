"""Serbia (sr_RS): the Law on State and Other Holidays in the Republic of Serbia
(Закон о државним и другим празницима у Републици Србији, Службени гласник
43/2001, 101/2007, 92/2011).

Days off: New Year 1-2 January, Orthodox Christmas 7 January, Statehood Day
(Сретење) 15-16 February from 2002, Orthodox Easter from Good Friday to Easter
Monday, Labour Day 1-2 May and, from 2012, Armistice Day 11 November.  When a
day of a state holiday falls on a Sunday, the next working day is off
(art. 3); such days are marked with the holiday's name.  Saint Sava, Victory
Day and Vidovdan are working holidays (named days).  Up to 2001 the Republic
Day of the federal state, 29-30 November, was a day off; the other Yugoslav
holidays of 2000-2001 are left out.  Days off for the believers of other
churches and faiths only are left out.
"""
import datetime as dt

from common import SUN, YEARS, dated, fixed, flatten, orthodox_easter, rule

DAY = dt.timedelta(days=1)

NEW_YEAR = "Нова година"
STATEHOOD = "Сретење — Дан државности Србије"
LABOUR = "Празник рада"
ARMISTICE = "Дан примирја у Првом светском рату"


def state_days(y):
    out = [(dt.date(y, 1, 1), NEW_YEAR), (dt.date(y, 1, 2), NEW_YEAR),
           (dt.date(y, 5, 1), LABOUR), (dt.date(y, 5, 2), LABOUR)]
    if y >= 2002:
        out += [(dt.date(y, 2, 15), STATEHOOD), (dt.date(y, 2, 16), STATEHOOD)]
    if y >= 2012:
        out.append((dt.date(y, 11, 11), ARMISTICE))
    return out


def easter_days(y):
    e = orthodox_easter(y)
    return [(e - 2 * DAY, "Велики петак"), (e - DAY, "Велика субота"), (e, "Васкрс"),
            (e + DAY, "Васкршњи понедељак")]


def days_of(y):
    """Every day off of the year: (date, name), substitutes for Sundays included."""
    days = state_days(y) + [(dt.date(y, 1, 7), "Божић")] + easter_days(y)
    if y <= 2001:
        days += [(dt.date(y, 11, 29), "Дан Републике"), (dt.date(y, 11, 30), "Дан Републике")]
    taken = {d for d, _ in days}
    for d, name in state_days(y):
        if d.weekday() != SUN:
            continue
        s = d + DAY
        while s.weekday() == SUN or s in taken:
            s += DAY
        taken.add(s)
        days.append((s, name))
    return days


NATIONWIDE = flatten([
    [dated(d, name) for y in YEARS for d, name in days_of(y)],
    fixed(1, 27, "Свети Сава", "show"),
    fixed(5, 9, "Дан победе", "show"),
    fixed(6, 28, "Видовдан", "show"),
    rule(18, "Дочек Нове године", "show"),
])


def build():
    return {"sr_RS": {"code": "RS", "title": "Србија", "nationwide": NATIONWIDE, "provinces": []}}


# Non-working days as announced by the Government of Serbia.
TESTS = {
    ("", 2018): "01-01 01-02 01-07 02-15 02-16 04-06 04-07 04-08 04-09 05-01 05-02 11-11 11-12",
    ("", 2020): "01-01 01-02 01-07 02-15 02-16 02-17 04-17 04-18 04-19 04-20 05-01 05-02 11-11",
    ("", 2021): "01-01 01-02 01-07 02-15 02-16 04-30 05-01 05-01 05-02 05-02 05-03 05-04 11-11",
    ("", 2025): "01-01 01-02 01-07 02-15 02-16 02-17 04-18 04-19 04-20 04-21 05-01 05-02 11-11",
    ("", 2011): "01-01 01-02 01-03 01-07 02-15 02-16 04-22 04-23 04-24 04-25 05-01 05-02 05-03",
}
