"""Public holidays of Norway (nb_NO).

The church holidays plus the two official days of celebration, 1 May and
Constitution Day on 17 May.  Christmas Eve and New Year's Eve are not public
holidays and are shown by name only.
"""
from common import fixed, flatten, rule


def build():
    days = flatten([
        rule(19, "1. nyttårsdag"),
        rule(2, "Skjærtorsdag"),
        rule(3, "Langfredag"),
        rule(4, "1. påskedag"),
        rule(5, "2. påskedag"),
        rule(6, "Offentlig høytidsdag"),
        fixed(5, 17, "Grunnlovsdag"),
        rule(7, "Kristi himmelfartsdag"),
        rule(8, "1. pinsedag"),
        rule(9, "2. pinsedag"),
        rule(15, "Julaften", "show"),
        rule(16, "1. juledag"),
        rule(17, "2. juledag"),
        rule(18, "Nyttårsaften", "show"),
    ])
    return {"nb_NO": {"code": "NO", "title": "Norge", "nationwide": days, "provinces": []}}
