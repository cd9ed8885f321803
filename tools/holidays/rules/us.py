"""Federal holidays of the United States (en_US).

A federal holiday on a Saturday is observed on the Friday before, one on a
Sunday on the Monday after; the holiday itself stays marked on its date.  New
Year's Day on a Saturday is therefore observed on 31 December of the year
before.  Juneteenth became a federal holiday in 2021.  Inauguration Day is a
holiday in the Washington area only and is left out.  A few widely printed
observances that are not days off are shown by name.
"""
import datetime as dt

from common import MON, SUN, THU, YEARS, dated, fixed, flatten, nth_weekday, rule, yearly

_DAY = dt.timedelta(days=1)


def observed(d):
    """The weekday on which a federal holiday falling on `d` is observed."""
    if d.weekday() == 5:
        return d - _DAY
    if d.weekday() == 6:
        return d + _DAY
    return d


def observed_days(month, day, name, years=YEARS):
    """'(observed)' records for a fixed-date holiday in the given years.

    The observed day can fall in the year before (New Year's Day); only days
    inside the generated range are kept.
    """
    out = []
    for y in years:
        d = dt.date(y, month, day)
        o = observed(d)
        if o != d and o.year in YEARS:
            out.append(dated(o, name + " (observed)"))
    return out


def build():
    juneteenth = range(2021, YEARS[-1] + 1)
    # New Year's Day of the year after the range can be observed on 31 Dec 2100.
    new_year_years = range(YEARS[0], YEARS[-1] + 2)
    days = flatten([
        rule(19, "New Year's Day"),
        observed_days(1, 1, "New Year's Day", new_year_years),
        yearly(lambda y: nth_weekday(y, 1, MON, 3), "Martin Luther King Jr. Day"),
        fixed(2, 14, "Valentine's Day", "show"),
        yearly(lambda y: nth_weekday(y, 2, MON, 3), "Washington's Birthday"),
        fixed(3, 17, "St. Patrick's Day", "show"),
        rule(4, "Easter Sunday", "show"),
        yearly(lambda y: nth_weekday(y, 5, SUN, 2), "Mother's Day", "show"),
        yearly(lambda y: nth_weekday(y, 5, MON, -1), "Memorial Day"),
        yearly(lambda y: nth_weekday(y, 6, SUN, 3), "Father's Day", "show"),
        fixed(6, 19, "Juneteenth", years=juneteenth),
        observed_days(6, 19, "Juneteenth", juneteenth),
        fixed(7, 4, "Independence Day"),
        observed_days(7, 4, "Independence Day"),
        yearly(lambda y: nth_weekday(y, 9, MON, 1), "Labor Day"),
        yearly(lambda y: nth_weekday(y, 10, MON, 2), "Columbus Day"),
        rule(12, "Halloween", "show"),
        fixed(11, 11, "Veterans Day"),
        observed_days(11, 11, "Veterans Day"),
        yearly(lambda y: nth_weekday(y, 11, THU, 4), "Thanksgiving Day"),
        rule(15, "Christmas Eve", "show"),
        rule(16, "Christmas Day"),
        observed_days(12, 25, "Christmas Day"),
        rule(18, "New Year's Eve", "show"),
    ])
    return {"en_US": {"code": "US", "title": "United States", "nationwide": days, "provinces": []}}
