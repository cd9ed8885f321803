"""The Netherlands (nl_NL).

King's Day (from 2014) is 27 April, or Saturday 26 April when the 27th is a
Sunday; Queen's Day (until 2013) was 30 April, or Saturday 29 April when the
30th was a Sunday. Good Friday is a recognised holiday but rarely a day off, and
Liberation Day (5 May) is a day off for most people only in lustrum years (every
five years) and by collective agreement: both are shown, not marked free.
"""
import datetime as dt

from common import SUN, fixed, rule, yearly


def royal_day(year):
    month_day = 27 if year >= 2014 else 30
    d = dt.date(year, 4, month_day)
    return d - dt.timedelta(days=1) if d.weekday() == SUN else d


NATIONWIDE = [
    rule(19, "Nieuwjaarsdag"),
    rule(3, "Goede Vrijdag", "show"),
    rule(4, "Eerste Paasdag"),
    rule(5, "Tweede Paasdag"),
    yearly(royal_day, "Koninginnedag", years=range(2000, 2014)),
    yearly(royal_day, "Koningsdag", years=range(2014, 2101)),
    fixed(5, 5, "Bevrijdingsdag", "show"),
    rule(7, "Hemelvaartsdag"),
    rule(8, "Eerste Pinksterdag"),
    rule(9, "Tweede Pinksterdag"),
    rule(16, "Eerste Kerstdag"),
    rule(17, "Tweede Kerstdag"),
    rule(18, "Oudejaarsdag", "show"),
]


def build():
    return {"nl_NL": {"code": "NL", "title": "Nederland", "nationwide": NATIONWIDE, "provinces": []}}


TESTS = {
    ("", 2000): "01-01 04-23 04-24 04-29 06-01 06-11 06-12 12-25 12-26",
    ("", 2013): "01-01 03-31 04-01 04-30 05-09 05-19 05-20 12-25 12-26",
    ("", 2014): "01-01 04-20 04-21 04-26 05-29 06-08 06-09 12-25 12-26",
    ("", 2025): "01-01 04-20 04-21 04-26 05-29 06-08 06-09 12-25 12-26",
    ("", 2026): "01-01 04-05 04-06 04-27 05-14 05-24 05-25 12-25 12-26",
}


def _royal_days(built):
    got = [royal_day(y).isoformat() for y in (2006, 2012, 2014, 2020, 2025, 2031)]
    assert got == ["2006-04-29", "2012-04-30", "2014-04-26", "2020-04-27", "2025-04-26",
                   "2031-04-26"], got


EXTRA_TESTS = [_royal_days]
