"""Slovenia (sl_SI): the holidays that are days off, by the Holidays and Days
Off Act.

2 January was no day off from 2013 to 2016. 14 August 2023 was a one-off day
off after the floods. Whit Sunday is a day off (always a Sunday).
"""
import datetime as dt

from common import YEARS, dated, fixed, flatten, rule

_LAST = YEARS[-1] + 1


def build():
    days = flatten([
        rule(19, "Novo leto"),
        fixed(1, 2, "Novo leto", years=[y for y in YEARS if not 2013 <= y <= 2016]),
        fixed(2, 8, "Prešernov dan, slovenski kulturni praznik"),
        rule(4, "Velikonočna nedelja"),
        rule(5, "Velikonočni ponedeljek"),
        fixed(4, 27, "Dan upora proti okupatorju"),
        rule(6, "Praznik dela"),
        fixed(5, 2, "Praznik dela"),
        rule(8, "Binkoštna nedelja"),
        fixed(6, 25, "Dan državnosti"),
        dated(dt.date(2023, 8, 14), "Dan solidarnosti"),
        rule(11, "Marijino vnebovzetje"),
        rule(12, "Dan reformacije"),
        rule(13, "Dan spomina na mrtve"),
        rule(16, "Božič"),
        fixed(12, 26, "Dan samostojnosti in enotnosti"),
    ])
    return {"sl_SI": {"code": "SI", "title": "Slovenija", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2014): "01-01 02-08 04-20 04-21 04-27 05-01 05-02 06-08 06-25 08-15 10-31 11-01 12-25 12-26",
    ("", 2023): "01-01 01-02 02-08 04-09 04-10 04-27 05-01 05-02 05-28 06-25 08-14 08-15 10-31 11-01 "
                "12-25 12-26",
}
