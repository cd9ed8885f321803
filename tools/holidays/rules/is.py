"""Iceland (is_IS): the public holidays (almennir frídagar) of the Working
Hours Act.

The First Day of Summer is the Thursday between 19 and 25 April; Commerce Day
the first Monday of August (a day off for most employees, by collective
agreements). Christmas Eve and New Year's Eve are holidays from 13:00 only:
shown.
"""
import datetime as dt

from common import MON, THU, fixed, flatten, nth_weekday, rule, weekday_on_or_after, yearly


def build():
    days = flatten([
        rule(19, "Nýársdagur"),
        rule(2, "Skírdagur"),
        rule(3, "Föstudagurinn langi"),
        rule(4, "Páskadagur"),
        rule(5, "Annar í páskum"),
        yearly(lambda y: weekday_on_or_after(dt.date(y, 4, 19), THU), "Sumardagurinn fyrsti"),
        rule(6, "Verkalýðsdagurinn"),
        rule(7, "Uppstigningardagur"),
        rule(8, "Hvítasunnudagur"),
        rule(9, "Annar í hvítasunnu"),
        fixed(6, 17, "Þjóðhátíðardagurinn"),
        yearly(lambda y: nth_weekday(y, 8, MON, 1), "Frídagur verslunarmanna"),
        rule(15, "Aðfangadagur jóla", "show"),
        rule(16, "Jóladagur"),
        rule(17, "Annar í jólum"),
        rule(18, "Gamlársdagur", "show"),
    ])
    return {"is_IS": {"code": "IS", "title": "Ísland", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2025): "01-01 04-17 04-18 04-20 04-21 04-24 05-01 05-29 06-08 06-09 06-17 08-04 12-25 12-26",
    ("", 2026): "01-01 04-02 04-03 04-05 04-06 04-23 05-01 05-14 05-24 05-25 06-17 08-03 12-25 12-26",
}
