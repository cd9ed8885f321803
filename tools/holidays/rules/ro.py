"""Romania (ro_RO): the legal days off of the Labour Code (art. 139).

Easter and Whitsun are the Orthodox ones (orthodox_easter), written as one-off
days. Introduced inside the range: Whitsun (both days) and the Assumption in
2008, St Andrew (30 November) in 2012, the Union of the Principalities
(24 January) and Children's Day (1 June) in 2017, Good Friday in 2018,
Epiphany and St John the Baptist (6 and 7 January) in 2024. Days off for the
feasts of other religious denominations apply only to their members and are
left out; so are the days the government bridges by decision.
"""
from common import YEARS, fixed, flatten, orthodox_day

_LAST = YEARS[-1] + 1


def since(year):
    return range(year, _LAST)


def build():
    days = flatten([
        fixed(1, 1, "Anul Nou"),
        fixed(1, 2, "A doua zi de Anul Nou"),
        fixed(1, 6, "Boboteaza", years=since(2024)),
        fixed(1, 7, "Sfântul Ioan Botezătorul", years=since(2024)),
        fixed(1, 24, "Ziua Unirii Principatelor Române", years=since(2017)),
        orthodox_day(-2, "Vinerea Mare", years=since(2018)),
        orthodox_day(0, "Paștele"),
        orthodox_day(1, "A doua zi de Paște"),
        fixed(5, 1, "Ziua Muncii"),
        fixed(6, 1, "Ziua Copilului", years=since(2017)),
        orthodox_day(49, "Rusaliile", years=since(2008)),
        orthodox_day(50, "A doua zi de Rusalii", years=since(2008)),
        fixed(8, 15, "Adormirea Maicii Domnului", years=since(2008)),
        fixed(11, 30, "Sfântul Apostol Andrei", years=since(2012)),
        fixed(12, 1, "Ziua Națională a României"),
        fixed(12, 25, "Crăciunul"),
        fixed(12, 26, "A doua zi de Crăciun"),
    ])
    return {"ro_RO": {"code": "RO", "title": "România", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2007): "01-01 01-02 04-08 04-09 05-01 12-01 12-25 12-26",
    ("", 2016): "01-01 01-02 05-01 05-01 05-02 06-19 06-20 08-15 11-30 12-01 12-25 12-26",
    ("", 2024): "01-01 01-02 01-06 01-07 01-24 05-01 05-03 05-05 05-06 06-01 06-23 06-24 08-15 11-30 "
                "12-01 12-25 12-26",
    ("", 2026): "01-01 01-02 01-06 01-07 01-24 04-10 04-12 04-13 05-01 05-31 06-01 06-01 08-15 11-30 "
                "12-01 12-25 12-26",
}
