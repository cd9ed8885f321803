"""Luxembourg (fr_LU, lb_LU, de_LU): the legal holidays, the same in every file.

Good Friday is a bank holiday only, so it is shown without being a day off.
Europe Day (9 May) became a legal holiday in 2019.
"""
from common import fixed, rule

# (how, French, Luxembourgish, German, honor, years); how is a rule id or (month, day)
DAYS = [
    (19, "Jour de l'An", "Neijoerschdag", "Neujahr", "free", None),
    (3, "Vendredi saint", "Karfreideg", "Karfreitag", "show", None),
    (4, "Pâques", "Ouschtersonndeg", "Ostersonntag", "show", None),
    (5, "Lundi de Pâques", "Ouschterméindeg", "Ostermontag", "free", None),
    (6, "Fête du Travail", "Dag vun der Aarbecht", "Tag der Arbeit", "free", None),
    ((5, 9), "Journée de l'Europe", "Europadag", "Europatag", "free", range(2019, 2101)),
    (7, "Ascension", "Christi Himmelfaart", "Christi Himmelfahrt", "free", None),
    (8, "Pentecôte", "Péngschtsonndeg", "Pfingstsonntag", "show", None),
    (9, "Lundi de Pentecôte", "Péngschtméindeg", "Pfingstmontag", "free", None),
    ((6, 23), "Fête nationale", "Nationalfeierdag", "Nationalfeiertag", "free", None),
    (11, "Assomption", "Léiffrawëschdag", "Mariä Himmelfahrt", "free", None),
    (13, "Toussaint", "Allerhellgen", "Allerheiligen", "free", None),
    (16, "Noël", "Chrëschtdag", "Weihnachten", "free", None),
    (17, "Saint-Étienne", "Stiefesdag", "Stephanstag", "free", None),
]


def build():
    out = {}
    for locale, idx, title in (("fr_LU", 1, "Luxembourg"), ("lb_LU", 2, "Lëtzebuerg"), ("de_LU", 3, "Luxemburg")):
        days = []
        for item in DAYS:
            how, name, honor, years = item[0], item[idx], item[4], item[5]
            if isinstance(how, int):
                days.append(rule(how, name, honor))
            else:
                days.append(fixed(how[0], how[1], name, honor, years))
        out[locale] = {"code": "LU", "title": title, "nationwide": days, "provinces": []}
    return out


TESTS = {
    ("", 2018): "01-01 04-02 05-01 05-10 05-21 06-23 08-15 11-01 12-25 12-26",
    ("", 2019): "01-01 04-22 05-01 05-09 05-30 06-10 06-23 08-15 11-01 12-25 12-26",
    ("", 2025): "01-01 04-21 05-01 05-09 05-29 06-09 06-23 08-15 11-01 12-25 12-26",
}
