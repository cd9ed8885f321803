"""Public holidays of Slovakia (sk_SK).

Constitution Day (1 September) stopped being a day off in 2025 (consolidation
law of 2024). The consolidation law of September 2025 ended 17 November as a
day off from 2025 on and made 8 May and 15 September working days in 2026
only; all of them remain state holidays or days of rest by name and are shown.
17 November has been a state holiday only since 2001 (law 2001 amending act
241/1993), so 2000 has no entry. 30 October 2018 was a single extra state
holiday for the centenary of the Declaration of the Slovak Nation.
"""
import datetime as dt

from common import YEARS, dated, fixed, flatten, rule

_LAST = YEARS[-1] + 1
_EXCEPT_2026 = [y for y in YEARS if y != 2026]


def build():
    days = flatten([
        rule(19, "Deň vzniku Slovenskej republiky"),
        rule(1, "Zjavenie Pána (Traja králi)"),
        rule(3, "Veľký piatok"),
        rule(5, "Veľkonočný pondelok"),
        rule(6, "Sviatok práce"),
        fixed(5, 8, "Deň víťazstva nad fašizmom", years=_EXCEPT_2026),
        fixed(5, 8, "Deň víťazstva nad fašizmom", "show", years=[2026]),
        fixed(7, 5, "Sviatok svätého Cyrila a Metoda"),
        fixed(8, 29, "Výročie Slovenského národného povstania"),
        fixed(9, 1, "Deň Ústavy Slovenskej republiky", years=range(2000, 2025)),
        fixed(9, 1, "Deň Ústavy Slovenskej republiky", "show", years=range(2025, _LAST)),
        fixed(9, 15, "Sedembolestná Panna Mária", years=_EXCEPT_2026),
        fixed(9, 15, "Sedembolestná Panna Mária", "show", years=[2026]),
        dated(dt.date(2018, 10, 30), "Výročie Deklarácie slovenského národa"),
        rule(13, "Sviatok všetkých svätých"),
        fixed(11, 17, "Deň boja za slobodu a demokraciu", years=range(2001, 2025)),
        fixed(11, 17, "Deň boja za slobodu a demokraciu", "show", years=range(2025, _LAST)),
        rule(15, "Štedrý deň"),
        rule(16, "Prvý sviatok vianočný"),
        rule(17, "Druhý sviatok vianočný"),
    ])
    return {"sk_SK": {"code": "SK", "title": "Slovensko", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2000): "01-01 01-06 04-21 04-24 05-01 05-08 07-05 08-29 09-01 09-15 11-01 12-24 12-25 12-26",
    ("", 2024): "01-01 01-06 03-29 04-01 05-01 05-08 07-05 08-29 09-01 09-15 11-01 11-17 12-24 12-25 12-26",
    ("", 2025): "01-01 01-06 04-18 04-21 05-01 05-08 07-05 08-29 09-15 11-01 12-24 12-25 12-26",
    ("", 2026): "01-01 01-06 04-03 04-06 05-01 07-05 08-29 11-01 12-24 12-25 12-26",
    ("", 2027): "01-01 01-06 03-26 03-29 05-01 05-08 07-05 08-29 09-15 11-01 12-24 12-25 12-26",
}
