"""Public holidays of Ireland (en_IE, ga_IE: the same days in English and Irish).

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


# English and Irish names
NAMES = {
    "newyear": ("New Year's Day", "Lá Caille"),
    "brigid": ("St Brigid's Day", "Lá Fhéile Bríde"),
    "patrick": ("St Patrick's Day", "Lá Fhéile Pádraig"),
    "covid": ("Public Holiday (COVID-19 Remembrance and Recognition)",
              "Lá Saoire Poiblí (Cuimhneachán agus Aitheantas COVID-19)"),
    "eastermonday": ("Easter Monday", "Luan Cásca"),
    "may": ("May Bank Holiday", "Lá Saoire i mí na Bealtaine"),
    "june": ("June Bank Holiday", "Lá Saoire i mí an Mheithimh"),
    "august": ("August Bank Holiday", "Lá Saoire i mí Lúnasa"),
    "october": ("October Bank Holiday", "Lá Saoire i mí Dheireadh Fómhair"),
    "christmas": ("Christmas Day", "Lá Nollag"),
    "stephen": ("St Stephen's Day", "Lá Fhéile Stiofáin"),
}


def build():
    out = {}
    for locale, idx, title in (("en_IE", 0, "Ireland"), ("ga_IE", 1, "Éire")):
        n = {key: names[idx] for key, names in NAMES.items()}
        days = flatten([
            rule(19, n["newyear"]),
            yearly(st_brigids_day, n["brigid"], years=range(2023, YEARS[-1] + 1)),
            fixed(3, 17, n["patrick"]),
            dated(dt.date(2022, 3, 18), n["covid"]),
            rule(5, n["eastermonday"]),
            yearly(lambda y: nth_weekday(y, 5, MON, 1), n["may"]),
            yearly(lambda y: nth_weekday(y, 6, MON, 1), n["june"]),
            yearly(lambda y: nth_weekday(y, 8, MON, 1), n["august"]),
            yearly(lambda y: nth_weekday(y, 10, MON, -1), n["october"]),
            rule(16, n["christmas"]),
            rule(17, n["stephen"]),
        ])
        out[locale] = {"code": "IE", "title": title, "nationwide": days, "provinces": []}
    return out
