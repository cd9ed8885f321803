"""Public holidays of Finland (fi_FI).

Midsummer Day and All Saints' Day fall on the Saturday of a fixed week.
Midsummer Eve and Christmas Eve are customary days off but not public holidays
and are shown by name only.
"""
import datetime as dt

from common import FRI, SAT, fixed, flatten, rule, weekday_on_or_after, yearly


def build():
    days = flatten([
        rule(19, "Uudenvuodenpäivä"),
        rule(1, "Loppiainen"),
        rule(3, "Pitkäperjantai"),
        rule(4, "Pääsiäispäivä"),
        rule(5, "2. pääsiäispäivä"),
        rule(6, "Vappu"),
        rule(7, "Helatorstai"),
        rule(8, "Helluntaipäivä"),
        yearly(lambda y: weekday_on_or_after(dt.date(y, 6, 19), FRI), "Juhannusaatto", "show"),
        yearly(lambda y: weekday_on_or_after(dt.date(y, 6, 20), SAT), "Juhannuspäivä"),
        yearly(lambda y: weekday_on_or_after(dt.date(y, 10, 31), SAT), "Pyhäinpäivä"),
        fixed(12, 6, "Itsenäisyyspäivä"),
        rule(15, "Jouluaatto", "show"),
        rule(16, "Joulupäivä"),
        rule(17, "Tapaninpäivä"),
    ])
    return {"fi_FI": {"code": "FI", "title": "Suomi", "nationwide": days, "provinces": []}}
