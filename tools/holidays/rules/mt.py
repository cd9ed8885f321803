"""Malta (mt_MT, en_MT): the fourteen public holidays of the National Holidays
and Other Public Holidays Act, the same days in Maltese and English.

Holidays falling on a weekend are not moved (since 2021 employees get the day
as leave instead).
"""
from common import fixed, rule

# (rule id or (month, day), Maltese, English)
DAYS = [
    (19, "L-Ewwel tas-Sena", "New Year's Day"),
    ((2, 10), "In-Nawfraġju ta' San Pawl", "Feast of St Paul's Shipwreck"),
    ((3, 19), "San Ġużepp", "Feast of St Joseph"),
    ((3, 31), "Jum il-Ħelsien", "Freedom Day"),
    (3, "Il-Ġimgħa l-Kbira", "Good Friday"),
    (6, "Jum il-Ħaddiem", "Worker's Day"),
    ((6, 7), "Sette Giugno", "Sette Giugno"),
    ((6, 29), "L-Imnarja", "Feast of St Peter and St Paul"),
    (11, "Santa Marija", "Feast of the Assumption"),
    ((9, 8), "Jum il-Vitorja", "Victory Day"),
    ((9, 21), "Jum l-Indipendenza", "Independence Day"),
    ((12, 8), "Il-Kunċizzjoni", "Feast of the Immaculate Conception"),
    ((12, 13), "Jum ir-Repubblika", "Republic Day"),
    (16, "Il-Milied", "Christmas Day"),
]


def build():
    out = {}
    for locale, idx, title in (("mt_MT", 1, "Malta"), ("en_MT", 2, "Malta")):
        days = [rule(d[0], d[idx]) if isinstance(d[0], int) else fixed(d[0][0], d[0][1], d[idx])
                for d in DAYS]
        out[locale] = {"code": "MT", "title": title, "nationwide": days, "provinces": []}
    return out


TESTS = {
    ("", 2025): "01-01 02-10 03-19 03-31 04-18 05-01 06-07 06-29 08-15 09-08 09-21 12-08 12-13 12-25",
}
