"""Estonia (et_EE): the public holidays (riigipühad) of the Holidays and
Anniversaries Act.

Christmas Eve has been a public holiday since 2005. The shortened working days
before some holidays are not marked.
"""
from common import YEARS, fixed, flatten, rule

_LAST = YEARS[-1] + 1


def build():
    days = flatten([
        rule(19, "Uusaasta"),
        fixed(2, 24, "Iseseisvuspäev, Eesti Vabariigi aastapäev"),
        rule(3, "Suur reede"),
        rule(4, "Ülestõusmispühade 1. püha"),
        rule(6, "Kevadpüha"),
        rule(8, "Nelipühade 1. püha"),
        fixed(6, 23, "Võidupüha"),
        fixed(6, 24, "Jaanipäev"),
        fixed(8, 20, "Taasiseseisvumispäev"),
        fixed(12, 24, "Jõululaupäev", "show", years=range(2000, 2005)),
        fixed(12, 24, "Jõululaupäev", years=range(2005, _LAST)),
        rule(16, "Esimene jõulupüha"),
        rule(17, "Teine jõulupüha"),
    ])
    return {"et_EE": {"code": "EE", "title": "Eesti", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2004): "01-01 02-24 04-09 04-11 05-01 05-30 06-23 06-24 08-20 12-25 12-26",
    ("", 2025): "01-01 02-24 04-18 04-20 05-01 06-08 06-23 06-24 08-20 12-24 12-25 12-26",
}
