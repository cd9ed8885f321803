"""Public holidays of Denmark (da_DK).

Great Prayer Day (fourth Friday after Easter) was abolished as a holiday from
2024.  Constitution Day, Christmas Eve and New Year's Eve are not public
holidays and are shown by name only.
"""
import datetime as dt

from common import library_easter, fixed, flatten, rule, yearly


def build():
    days = flatten([
        rule(19, "Nytårsdag"),
        rule(2, "Skærtorsdag"),
        rule(3, "Langfredag"),
        rule(4, "Påskedag"),
        rule(5, "2. påskedag"),
        yearly(lambda y: library_easter(y) + dt.timedelta(days=26), "Store bededag",
               years=range(2000, 2024)),
        rule(7, "Kristi himmelfartsdag"),
        rule(8, "Pinsedag"),
        rule(9, "2. pinsedag"),
        fixed(6, 5, "Grundlovsdag", "show"),
        rule(15, "Juleaften", "show"),
        rule(16, "Juledag"),
        rule(17, "2. juledag"),
        rule(18, "Nytårsaften", "show"),
    ])
    return {"da_DK": {"code": "DK", "title": "Danmark", "nationwide": days, "provinces": []}}
