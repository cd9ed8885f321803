"""Australia (en_AU): national days and those of the states and territories.

Sources: the public holiday acts of the states and territories (NSW Public
Holidays Act 2010, Vic Public Holidays Act 1993, Qld Holidays Act 1983, SA
Holidays Act 1910, WA Public and Bank Holidays Act 1972, Tas Statutory
Holidays Act 2000, ACT Holidays Act 1958, NT Public Holidays Act 1981) and
their yearly lists.
A holiday of 1 Jan, 26 Jan, 25 or 26 Dec on a weekend gives a substitute
weekday (the day itself stays marked).  ANZAC Day is substituted only in WA.
The Sovereign's Birthday is "Queen's Birthday" up to 2022, "King's Birthday"
from 2023.  Western Australia's is set each year by proclamation, usually on
the last Monday of September; that rule is used.  Melbourne Cup Day is a day
off in all of Victoria unless a country council picks another day, so it is
marked free for the state.  The Friday before the AFL Grand Final (Victoria,
from 2015) is only known once the match is scheduled: the dates up to 2025
are listed.  Local days (Hobart Regatta, Brisbane's Show day, town cups) are
left out; the evening part-days of Christmas Eve and New Year's Eve (SA, NT,
Qld) are named days.  Days relative to Easter that have no rule id of their
own (Easter Saturday, Easter Tuesday) follow the library's Easter, as the
rule-id days do.
"""
import datetime as dt

from common import (MON, SAT, SUN, TUE, YEARS, dated, library_easter, fixed, flatten, nth_weekday,
                    rule, substitute_days, yearly)

DAY = dt.timedelta(days=1)


def since(first):
    return range(first, YEARS[-1] + 1)


def observed(pairs, years=YEARS, weekend=(SAT, SUN)):
    out = []
    for y in years:
        for d, name in substitute_days(pairs(y), weekend):
            if d.year in YEARS:
                out.append(dated(d, name + " (substitute)"))
    return out


def monday(month, n, years=YEARS):
    return lambda name: yearly(lambda y: nth_weekday(y, month, MON, n), name, years=years)


def sovereign(func, years=YEARS):
    """The Sovereign's Birthday on func(year): Queen's up to 2022, King's after."""
    return (yearly(func, "Queen's Birthday", years=[y for y in years if y <= 2022])
            + yearly(func, "King's Birthday", years=[y for y in years if y >= 2023]))


EASTER_SATURDAY = yearly(lambda y: library_easter(y) - DAY, "Easter Saturday")
EASTER_SUNDAY = rule(4, "Easter Sunday")
SECOND_MONDAY_JUNE = sovereign(lambda y: nth_weekday(y, 6, MON, 2))
LABOUR_DAY = "Labour Day"
CHRISTMAS_EVE_PART = rule(15, "Christmas Eve (from 7 pm)", "show")
NYE_PART = rule(18, "New Year's Eve (from 7 pm)", "show")

NATIONWIDE = flatten([
    rule(19, "New Year's Day"),
    observed(lambda y: [(dt.date(y, 1, 1), "New Year's Day")]),
    fixed(1, 26, "Australia Day"),
    observed(lambda y: [(dt.date(y, 1, 26), "Australia Day")]),
    rule(3, "Good Friday"),
    rule(4, "Easter Sunday", "show"),
    rule(5, "Easter Monday"),
    fixed(4, 25, "ANZAC Day"),
    rule(16, "Christmas Day"),
    rule(17, "Boxing Day"),
    observed(lambda y: [(dt.date(y, 12, 25), "Christmas Day"), (dt.date(y, 12, 26), "Boxing Day")]),
    rule(18, "New Year's Eve", "show"),
])

GRAND_FINAL_EVE = ["2015-10-02", "2016-09-30", "2017-09-29", "2018-09-28", "2019-09-27",
                   "2020-10-23", "2021-09-24", "2022-09-23", "2023-09-29", "2024-09-27",
                   "2025-09-26"]


def canberra_day(y):
    return nth_weekday(y, 3, MON, 2 if y >= 2008 else 3)


def reconciliation_day(y):
    d = dt.date(y, 5, 27)
    return d + dt.timedelta(days=(MON - d.weekday()) % 7)


def qld_labour_day(y):
    return nth_weekday(y, 10, MON, 1) if 2013 <= y <= 2015 else nth_weekday(y, 5, MON, 1)


def qld_sovereign(y):
    if y == 2012:   # Diamond Jubilee: moved to 1 October, 11 June kept as well
        return [dt.date(2012, 6, 11), dt.date(2012, 10, 1)]
    return nth_weekday(y, 10, MON, 1) if y >= 2016 else nth_weekday(y, 6, MON, 2)


def adelaide_cup(y):
    return nth_weekday(y, 3, MON, 2) if y >= 2006 else nth_weekday(y, 5, MON, 3)


STATES = [
    ("ACT", "Australian Capital Territory", [
        EASTER_SATURDAY, EASTER_SUNDAY, yearly(canberra_day, "Canberra Day"),
        yearly(reconciliation_day, "Reconciliation Day", years=since(2018)),
        SECOND_MONDAY_JUNE, monday(10, 1)(LABOUR_DAY)]),
    ("NSW", "New South Wales", [
        EASTER_SATURDAY, EASTER_SUNDAY, SECOND_MONDAY_JUNE,
        yearly(lambda y: nth_weekday(y, 8, MON, 1), "Bank Holiday", "show"),
        monday(10, 1)(LABOUR_DAY)]),
    ("NT", "Northern Territory", [
        EASTER_SATURDAY, monday(5, 1)("May Day"), SECOND_MONDAY_JUNE, monday(8, 1)("Picnic Day"),
        CHRISTMAS_EVE_PART, NYE_PART]),
    ("QLD", "Queensland", [
        EASTER_SATURDAY,
        yearly(lambda y: library_easter(y), "Easter Sunday", years=since(2017)),
        yearly(qld_labour_day, LABOUR_DAY), sovereign(qld_sovereign),
        rule(15, "Christmas Eve (from 6 pm)", "show")]),
    ("SA", "South Australia", [
        EASTER_SATURDAY, yearly(adelaide_cup, "Adelaide Cup Day"), SECOND_MONDAY_JUNE,
        monday(10, 1)(LABOUR_DAY), rule(17, "Proclamation Day"), CHRISTMAS_EVE_PART, NYE_PART]),
    ("TAS", "Tasmania", [
        monday(3, 2)("Eight Hours Day"), yearly(lambda y: library_easter(y) + 2 * DAY, "Easter Tuesday", "show"),
        SECOND_MONDAY_JUNE]),
    ("VIC", "Victoria", [
        monday(3, 2)(LABOUR_DAY), EASTER_SATURDAY, EASTER_SUNDAY, SECOND_MONDAY_JUNE,
        [dated(dt.date.fromisoformat(d), "Friday before the AFL Grand Final") for d in GRAND_FINAL_EVE],
        yearly(lambda y: nth_weekday(y, 11, TUE, 1), "Melbourne Cup Day")]),
    ("WA", "Western Australia", [
        monday(3, 1)(LABOUR_DAY),
        observed(lambda y: [(dt.date(y, 4, 25), "ANZAC Day")]),
        monday(6, 1)("Western Australia Day"),
        sovereign(lambda y: nth_weekday(y, 9, MON, -1))]),
]


def build():
    return {"en_AU": {"code": "AU", "title": "Australia", "nationwide": NATIONWIDE,
                      "provinces": [{"code": c, "title": t, "days": d} for c, t, d in STATES]}}


# Public holidays from the states' and territories' published lists.
TESTS = {
    ("NSW", 2025): "01-01 01-26 01-27 04-18 04-19 04-20 04-21 04-25 06-09 10-06 12-25 12-26",
    ("VIC", 2024): "01-01 01-26 03-11 03-29 03-30 03-31 04-01 04-25 06-10 09-27 11-05 12-25 12-26",
    ("QLD", 2026): "01-01 01-26 04-03 04-04 04-05 04-06 04-25 05-04 10-05 12-25 12-26 12-28",
    ("QLD", 2014): "01-01 01-26 01-27 04-18 04-19 04-21 04-25 06-09 10-06 12-25 12-26",
    ("WA", 2020): "01-01 01-26 01-27 03-02 04-10 04-13 04-25 04-27 06-01 09-28 12-25 12-26 12-28",
    ("SA", 2025): "01-01 01-26 01-27 03-10 04-18 04-19 04-21 04-25 06-09 10-06 12-25 12-26",
    ("ACT", 2025): "01-01 01-26 01-27 03-10 04-18 04-19 04-20 04-21 04-25 06-02 06-09 10-06 12-25 12-26",
    ("TAS", 2025): "01-01 01-26 01-27 03-10 04-18 04-21 04-25 06-09 12-25 12-26",
    ("NT", 2025): "01-01 01-26 01-27 04-18 04-19 04-21 04-25 05-05 06-09 08-04 12-25 12-26",
}
