"""Public holidays of Sweden (sv_SE).

Midsummer Day and All Saints' Day fall on the Saturday of a fixed week.  The
National Day became a holiday in 2005, replacing Whit Monday.  Midsummer Eve,
Christmas Eve and New Year's Eve are not public holidays by law and are shown
by name only.
"""
import datetime as dt

from common import FRI, SAT, YEARS, library_easter, fixed, flatten, rule, weekday_on_or_after, yearly

_LAST = YEARS[-1] + 1


def midsummer_eve(y):
    """The Friday between 19 and 25 June."""
    return weekday_on_or_after(dt.date(y, 6, 19), FRI)


def midsummer_day(y):
    """The Saturday between 20 and 26 June."""
    return weekday_on_or_after(dt.date(y, 6, 20), SAT)


def all_saints(y):
    """The Saturday between 31 October and 6 November."""
    return weekday_on_or_after(dt.date(y, 10, 31), SAT)


def build():
    days = flatten([
        rule(19, "Nyårsdagen"),
        rule(1, "Trettondedag jul"),
        rule(3, "Långfredagen"),
        rule(4, "Påskdagen"),
        rule(5, "Annandag påsk"),
        rule(6, "Första maj"),
        rule(7, "Kristi himmelsfärds dag"),
        rule(8, "Pingstdagen"),
        yearly(lambda y: library_easter(y) + dt.timedelta(days=50), "Annandag pingst",
               years=range(2000, 2005)),
        fixed(6, 6, "Sveriges nationaldag", "show", years=range(2000, 2005)),
        fixed(6, 6, "Sveriges nationaldag", years=range(2005, _LAST)),
        yearly(midsummer_eve, "Midsommarafton", "show"),
        yearly(midsummer_day, "Midsommardagen"),
        yearly(all_saints, "Alla helgons dag"),
        rule(15, "Julafton", "show"),
        rule(16, "Juldagen"),
        rule(17, "Annandag jul"),
        rule(18, "Nyårsafton", "show"),
    ])
    return {"sv_SE": {"code": "SE", "title": "Sverige", "nationwide": days, "provinces": []}}
