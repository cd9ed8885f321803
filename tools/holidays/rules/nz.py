"""New Zealand (en_NZ): the public holidays of the Holidays Act 2003 and the
provincial anniversary days.

A holiday on a weekend is observed on the next working day ("Mondayised"):
New Year's Day, 2 January, Christmas and Boxing Day always; Waitangi Day and
ANZAC Day from 2014 on (Holidays (Full Recognition of Waitangi Day and ANZAC
Day) Amendment Act 2013).  The holiday stays marked on its own date too.
Matariki is a holiday from 2022 on the dates in the schedule of Te Kāhui o
Matariki Public Holiday Act 2022 (listed up to 2052; later dates are not yet
fixed and left out).
Anniversary days are observed on the dates the regional councils and the
employment ministry publish: mostly the Monday nearest the anniversary.  Each
applies in the regions of its old province: Auckland's in Northland, Auckland,
Waikato, Bay of Plenty and Gisborne; Wellington's in Wellington and
Manawatū-Whanganui; Nelson's in Nelson and Tasman.  South Canterbury's
Dominion Day covers only part of Canterbury and is left out.
"""
import datetime as dt

from common import (FRI, MON, TUE, YEARS, dated, library_easter, fixed, flatten, nearest_weekday,
                    nth_weekday, rule, substitute_days, weekday_on_or_after, yearly)

DAY = dt.timedelta(days=1)

MATARIKI = [
    "2022-06-24", "2023-07-14", "2024-06-28", "2025-06-20", "2026-07-10", "2027-06-25",
    "2028-07-14", "2029-07-06", "2030-06-21", "2031-07-11", "2032-07-02", "2033-06-24",
    "2034-07-07", "2035-06-29", "2036-07-18", "2037-07-10", "2038-06-25", "2039-07-15",
    "2040-07-06", "2041-07-19", "2042-07-11", "2043-07-03", "2044-06-24", "2045-07-07",
    "2046-06-29", "2047-07-19", "2048-07-03", "2049-06-25", "2050-07-15", "2051-06-30",
    "2052-06-21",
]


def observed(pairs, name_suffix=" (observed)", years=YEARS):
    """Substitute days for weekend holidays: pairs(year) -> [(date, name)]."""
    out = []
    for y in years:
        for d, name in substitute_days(pairs(y)):
            if d.year in YEARS:
                out.append(dated(d, name + name_suffix))
    return out


def labour_day(y):
    return nth_weekday(y, 10, MON, 4)


NEW_YEAR, DAY_AFTER = "New Year's Day", "Day after New Year's Day"
CHRISTMAS, BOXING = "Christmas Day", "Boxing Day"

NATIONWIDE = flatten([
    rule(19, NEW_YEAR),
    fixed(1, 2, DAY_AFTER),
    observed(lambda y: [(dt.date(y, 1, 1), NEW_YEAR), (dt.date(y, 1, 2), DAY_AFTER)]),
    fixed(2, 6, "Waitangi Day"),
    observed(lambda y: [(dt.date(y, 2, 6), "Waitangi Day")], years=range(2014, YEARS[-1] + 1)),
    rule(3, "Good Friday"),
    rule(4, "Easter Sunday", "show"),
    rule(5, "Easter Monday"),
    fixed(4, 25, "ANZAC Day"),
    observed(lambda y: [(dt.date(y, 4, 25), "ANZAC Day")], years=range(2014, YEARS[-1] + 1)),
    yearly(lambda y: nth_weekday(y, 6, MON, 1), "Queen's Birthday", years=range(YEARS[0], 2023)),
    yearly(lambda y: nth_weekday(y, 6, MON, 1), "King's Birthday", years=range(2023, YEARS[-1] + 1)),
    [dated(dt.date.fromisoformat(d), "Matariki") for d in MATARIKI],
    yearly(labour_day, "Labour Day"),
    rule(16, CHRISTMAS),
    rule(17, BOXING),
    observed(lambda y: [(dt.date(y, 12, 25), CHRISTMAS), (dt.date(y, 12, 26), BOXING)]),
    rule(18, "New Year's Eve", "show"),
])


def nearest_monday(month, day):
    return lambda y: nearest_weekday(dt.date(y, month, day), MON)


def christchurch_show_day(y):
    first_tuesday = nth_weekday(y, 11, TUE, 1)
    return first_tuesday + dt.timedelta(days=10)


AUCKLAND = yearly(nearest_monday(1, 29), "Auckland Anniversary Day")
WELLINGTON = yearly(nearest_monday(1, 22), "Wellington Anniversary Day")
NELSON = yearly(nearest_monday(2, 1), "Nelson Anniversary Day")

REGIONS = [
    ("AUK", "Auckland", AUCKLAND),
    ("BOP", "Bay of Plenty", AUCKLAND),
    ("CAN", "Canterbury", yearly(christchurch_show_day, "Canterbury Anniversary Day")),
    ("CIT", "Chatham Islands", yearly(nearest_monday(11, 30), "Chatham Islands Anniversary Day")),
    ("GIS", "Gisborne", AUCKLAND),
    ("HKB", "Hawke's Bay", yearly(lambda y: labour_day(y) - 3 * DAY, "Hawke's Bay Anniversary Day")),
    ("MBH", "Marlborough", yearly(lambda y: labour_day(y) + 7 * DAY, "Marlborough Anniversary Day")),
    ("MWT", "Manawatū-Whanganui", WELLINGTON),
    ("NSN", "Nelson", NELSON),
    ("NTL", "Northland", AUCKLAND),
    ("OTA", "Otago", yearly(nearest_monday(3, 23), "Otago Anniversary Day")),
    # Easter Tuesday since 2012; before, the Monday nearest 17 January.
    ("STL", "Southland", yearly(lambda y: library_easter(y) + 2 * DAY if y >= 2012 else
                                nearest_weekday(dt.date(y, 1, 17), MON), "Southland Anniversary Day")),
    ("TAS", "Tasman", NELSON),
    ("TKI", "Taranaki", yearly(lambda y: nth_weekday(y, 3, MON, 2), "Taranaki Anniversary Day")),
    ("WGN", "Wellington", WELLINGTON),
    ("WKO", "Waikato", AUCKLAND),
    ("WTC", "West Coast", yearly(nearest_monday(12, 1), "Westland Anniversary Day")),
]


def build():
    return {"en_NZ": {"code": "NZ", "title": "New Zealand", "nationwide": NATIONWIDE,
                      "provinces": [{"code": c, "title": t, "days": d} for c, t, d in REGIONS]}}


# Public holidays and anniversary days as listed by Employment New Zealand.
TESTS = {
    ("", 2021): "01-01 01-02 01-04 02-06 02-08 04-02 04-05 04-25 04-26 06-07 10-25 12-25 12-26 12-27 12-28",
    ("", 2022): "01-01 01-02 01-03 01-04 02-06 02-07 04-15 04-18 04-25 06-06 06-24 10-24 12-25 12-26 12-27",
    ("WGN", 2026): "01-01 01-02 01-19 02-06 04-03 04-06 04-25 04-27 06-01 07-10 10-26 12-25 12-26 12-28",
    ("AUK", 2025): "01-01 01-02 01-27 02-06 04-18 04-21 04-25 06-02 06-20 10-27 12-25 12-26",
    ("CAN", 2025): "01-01 01-02 02-06 04-18 04-21 04-25 06-02 06-20 10-27 11-14 12-25 12-26",
    ("STL", 2025): "01-01 01-02 02-06 04-18 04-21 04-22 04-25 06-02 06-20 10-27 12-25 12-26",
    ("", 2013): "01-01 01-02 02-06 03-29 04-01 04-25 06-03 10-28 12-25 12-26",
}
