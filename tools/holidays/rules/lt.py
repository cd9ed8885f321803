"""Lithuania (lt_LT): the holidays (days off) of the Labour Code (art. 123).

St John's Day (24 June) has been a day off since 2003, All Souls' Day
(2 November) since 2020. Mother's Day and Father's Day (the first Sundays of
May and June) are holidays by law; they always fall on a Sunday.
"""
import datetime as dt

from common import SUN, YEARS, fixed, flatten, nth_weekday, rule, yearly

_LAST = YEARS[-1] + 1


def build():
    days = flatten([
        rule(19, "Naujųjų metų diena"),
        fixed(2, 16, "Lietuvos valstybės atkūrimo diena"),
        fixed(3, 11, "Lietuvos nepriklausomybės atkūrimo diena"),
        rule(4, "Velykos"),
        rule(5, "Antroji Velykų diena"),
        rule(6, "Tarptautinė darbo diena"),
        yearly(lambda y: nth_weekday(y, 5, SUN, 1), "Motinos diena"),
        yearly(lambda y: nth_weekday(y, 6, SUN, 1), "Tėvo diena"),
        fixed(6, 24, "Rasos ir Joninių diena", years=range(2003, _LAST)),
        fixed(7, 6, "Valstybės (Lietuvos karaliaus Mindaugo karūnavimo) diena"),
        rule(11, "Žolinė (Švč. Mergelės Marijos ėmimo į dangų diena)"),
        rule(13, "Visų šventųjų diena"),
        fixed(11, 2, "Mirusiųjų atminimo (Vėlinių) diena", years=range(2020, _LAST)),
        rule(15, "Kūčių diena"),
        rule(16, "Šv. Kalėdos"),
        rule(17, "Antroji Kalėdų diena"),
    ])
    return {"lt_LT": {"code": "LT", "title": "Lietuva", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2019): "01-01 02-16 03-11 04-21 04-22 05-01 05-05 06-02 06-24 07-06 08-15 11-01 12-24 12-25 12-26",
    ("", 2025): "01-01 02-16 03-11 04-20 04-21 05-01 05-04 06-01 06-24 07-06 08-15 11-01 11-02 "
                "12-24 12-25 12-26",
}
