"""Latvia (lv_LV): the public holidays of the Holidays, Commemoration Days and
Celebration Days Act.

When 4 May or 18 November falls on a Saturday or Sunday, the next working day
is a holiday (written per year from 2008). Christmas Eve and New Year's Eve are
holidays from 2007. The day after the closing of the Song and Dance Festival
(2018, 2023) and 29 May 2023 (the ice hockey bronze medal) were one-off
holidays by law; the festival days of later years are added when they are
known.
"""
import datetime as dt

from common import MON, SAT, YEARS, dated, fixed, flatten, rule, weekday_on_or_after, yearly

_LAST = YEARS[-1] + 1


def moved(month, day):
    """The Monday after, when the day falls on a weekend (None otherwise)."""
    def func(y):
        d = dt.date(y, month, day)
        return weekday_on_or_after(d, MON) if d.weekday() >= SAT else None
    return func


def build():
    days = flatten([
        rule(19, "Jaungada diena"),
        rule(3, "Lielā Piektdiena"),
        rule(4, "Pirmās Lieldienas"),
        rule(5, "Otrās Lieldienas"),
        rule(6, "Darba svētki, Latvijas Republikas Satversmes sapulces sasaukšanas diena"),
        fixed(5, 4, "Latvijas Republikas Neatkarības deklarācijas pasludināšanas diena"),
        yearly(moved(5, 4), "Latvijas Republikas Neatkarības deklarācijas pasludināšanas diena "
                            "(pārceltā brīvdiena)", years=range(2008, _LAST)),
        dated(dt.date(2023, 5, 29), "Latvijas hokeja izlases bronzas medaļas izcīņas diena"),
        rule(8, "Vasarsvētki"),
        fixed(6, 23, "Līgo diena"),
        fixed(6, 24, "Jāņu diena"),
        dated(dt.date(2018, 7, 9), "Dziesmu un deju svētku noslēguma diena"),
        dated(dt.date(2023, 7, 10), "Dziesmu un deju svētku noslēguma diena"),
        fixed(11, 18, "Latvijas Republikas proklamēšanas diena"),
        yearly(moved(11, 18), "Latvijas Republikas proklamēšanas diena (pārceltā brīvdiena)",
               years=range(2008, _LAST)),
        fixed(12, 24, "Ziemassvētku vakars", years=range(2007, _LAST)),
        rule(16, "Pirmie Ziemassvētki"),
        rule(17, "Otrie Ziemassvētki"),
        fixed(12, 31, "Vecgada diena", years=range(2007, _LAST)),
    ])
    return {"lv_LV": {"code": "LV", "title": "Latvija", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2023): "01-01 04-07 04-09 04-10 05-01 05-04 05-28 05-29 06-23 06-24 07-10 11-18 11-20 "
                "12-24 12-25 12-26 12-31",
    ("", 2025): "01-01 04-18 04-20 04-21 05-01 05-04 05-05 06-08 06-23 06-24 11-18 12-24 12-25 12-26 12-31",
}
