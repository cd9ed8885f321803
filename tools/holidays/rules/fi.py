"""Public holidays of Finland (fi_FI, sv_FI: the same days in Finnish and Swedish).

Midsummer Day and All Saints' Day fall on the Saturday of a fixed week.
Midsummer Eve and Christmas Eve are customary days off but not public holidays
and are shown by name only.
"""
import datetime as dt

from common import FRI, SAT, fixed, flatten, rule, weekday_on_or_after, yearly


# (how, Finnish, Swedish, honor); how is a rule id, (month, day) or a function year -> date
DAYS = [
    (19, "Uudenvuodenpäivä", "Nyårsdagen", "free"),
    (1, "Loppiainen", "Trettondagen", "free"),
    (3, "Pitkäperjantai", "Långfredagen", "free"),
    (4, "Pääsiäispäivä", "Påskdagen", "free"),
    (5, "2. pääsiäispäivä", "Annandag påsk", "free"),
    (6, "Vappu", "Första maj", "free"),
    (7, "Helatorstai", "Kristi himmelsfärdsdag", "free"),
    (8, "Helluntaipäivä", "Pingstdagen", "free"),
    (lambda y: weekday_on_or_after(dt.date(y, 6, 19), FRI), "Juhannusaatto", "Midsommarafton", "show"),
    (lambda y: weekday_on_or_after(dt.date(y, 6, 20), SAT), "Juhannuspäivä", "Midsommardagen", "free"),
    (lambda y: weekday_on_or_after(dt.date(y, 10, 31), SAT), "Pyhäinpäivä", "Alla helgons dag", "free"),
    ((12, 6), "Itsenäisyyspäivä", "Självständighetsdagen", "free"),
    (15, "Jouluaatto", "Julafton", "show"),
    (16, "Joulupäivä", "Juldagen", "free"),
    (17, "Tapaninpäivä", "Annandag jul", "free"),
]


def make(how, name, honor):
    if isinstance(how, int):
        return rule(how, name, honor)
    if isinstance(how, tuple):
        return fixed(how[0], how[1], name, honor)
    return yearly(how, name, honor)


def build():
    out = {}
    for locale, idx, title in (("fi_FI", 1, "Suomi"), ("sv_FI", 2, "Finland")):
        days = flatten([make(d[0], d[idx], d[3]) for d in DAYS])
        out[locale] = {"code": "FI", "title": title, "nationwide": days, "provinces": []}
    return out
