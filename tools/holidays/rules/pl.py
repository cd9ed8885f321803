"""Public holidays of Poland (pl_PL).

Days off follow the Polish act on non-working days: Epiphany became a day off
again in 2011, Christmas Eve in 2025.  12 November 2018 was a single extra day
off for the centenary of independence.
"""
import datetime as dt

from common import YEARS, dated, fixed, flatten, rule


def build():
    days = flatten([
        rule(19, "Nowy Rok"),
        # Epiphany: a named church feast before 2011, a day off since.
        fixed(1, 6, "Święto Trzech Króli", "show", years=range(2000, 2011)),
        fixed(1, 6, "Święto Trzech Króli", years=range(2011, YEARS[-1] + 1)),
        rule(4, "Wielkanoc"),
        rule(5, "Poniedziałek Wielkanocny"),
        rule(6, "Święto Pracy"),
        fixed(5, 3, "Święto Narodowe Trzeciego Maja"),
        rule(8, "Zielone Świątki"),
        rule(10, "Boże Ciało"),
        rule(11, "Wniebowzięcie Najświętszej Maryi Panny"),
        rule(13, "Wszystkich Świętych"),
        fixed(11, 11, "Narodowe Święto Niepodległości"),
        dated(dt.date(2018, 11, 12), "Dzień wolny – 100-lecie odzyskania niepodległości"),
        fixed(12, 24, "Wigilia Bożego Narodzenia", "show", years=range(2000, 2025)),
        fixed(12, 24, "Wigilia Bożego Narodzenia", years=range(2025, YEARS[-1] + 1)),
        rule(16, "Boże Narodzenie"),
        rule(17, "Drugi dzień Bożego Narodzenia"),
    ])
    return {"pl_PL": {"code": "PL", "title": "Polska", "nationwide": days, "provinces": []}}
