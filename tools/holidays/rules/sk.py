"""Public holidays of Slovakia (sk_SK).

Constitution Day (1 September) stopped being a day off in 2025 and the Day of
the Struggle for Freedom and Democracy (17 November) in 2026; both remain state
holidays and are shown by name.  30 October 2018 was a single extra state
holiday for the centenary of the Declaration of the Slovak Nation.
"""
import datetime as dt

from common import YEARS, dated, fixed, flatten, rule

_LAST = YEARS[-1] + 1


def build():
    days = flatten([
        rule(19, "Deň vzniku Slovenskej republiky"),
        rule(1, "Zjavenie Pána (Traja králi)"),
        rule(3, "Veľký piatok"),
        rule(5, "Veľkonočný pondelok"),
        rule(6, "Sviatok práce"),
        fixed(5, 8, "Deň víťazstva nad fašizmom"),
        fixed(7, 5, "Sviatok svätého Cyrila a Metoda"),
        fixed(8, 29, "Výročie Slovenského národného povstania"),
        fixed(9, 1, "Deň Ústavy Slovenskej republiky", years=range(2000, 2025)),
        fixed(9, 1, "Deň Ústavy Slovenskej republiky", "show", years=range(2025, _LAST)),
        fixed(9, 15, "Sedembolestná Panna Mária"),
        dated(dt.date(2018, 10, 30), "Výročie Deklarácie slovenského národa"),
        rule(13, "Sviatok všetkých svätých"),
        fixed(11, 17, "Deň boja za slobodu a demokraciu", years=range(2000, 2026)),
        fixed(11, 17, "Deň boja za slobodu a demokraciu", "show", years=range(2026, _LAST)),
        rule(15, "Štedrý deň"),
        rule(16, "Prvý sviatok vianočný"),
        rule(17, "Druhý sviatok vianočný"),
    ])
    return {"sk_SK": {"code": "SK", "title": "Slovensko", "nationwide": days, "provinces": []}}
