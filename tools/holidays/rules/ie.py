"""Public holidays of Ireland (en_IE).

Irish public holidays have no substitute days: a holiday on a weekend stays on
its date (employees get a day in lieu instead).  St Brigid's Day was added in
2023; 18 March 2022 was a single extra public holiday.
"""
import datetime as dt

from common import FRI, MON, YEARS, dated, fixed, flatten, nth_weekday, rule, yearly


def st_brigids_day(y):
    """1 February when that is a Friday, otherwise the first Monday of February."""
    first = dt.date(y, 2, 1)
    return first if first.weekday() == FRI else nth_weekday(y, 2, MON, 1)


def build():
    days = flatten([
        rule(19, "New Year's Day"),
        yearly(st_brigids_day, "St Brigid's Day", years=range(2023, YEARS[-1] + 1)),
        fixed(3, 17, "St Patrick's Day"),
        dated(dt.date(2022, 3, 18), "Public Holiday (COVID-19 Remembrance and Recognition)"),
        rule(5, "Easter Monday"),
        yearly(lambda y: nth_weekday(y, 5, MON, 1), "May Bank Holiday"),
        yearly(lambda y: nth_weekday(y, 6, MON, 1), "June Bank Holiday"),
        yearly(lambda y: nth_weekday(y, 8, MON, 1), "August Bank Holiday"),
        yearly(lambda y: nth_weekday(y, 10, MON, -1), "October Bank Holiday"),
        rule(16, "Christmas Day"),
        rule(17, "St Stephen's Day"),
    ])
    return {"en_IE": {"code": "IE", "title": "Ireland", "nationwide": days, "provinces": []}}
