"""Belgium (nl_BE, fr_BE): the ten legal holidays plus Easter and Whit Sunday.

The days of the three language communities are days off only for the staff of
those communities, so they are shown, not marked free. ISO 3166-2 has no codes
for the communities; the provinces use the community codes of the OpenHolidays
data ("NL", "FR", "DE"), which is also how its school vacations are keyed.
King's Feast (15 Nov) is a day off for federal civil servants only: shown.
"""
from common import fixed, rule

# (how, Dutch, French, honor)
NATIONWIDE = [
    (19, "Nieuwjaar", "Jour de l'An", "free"),
    (4, "Pasen", "Pâques", "free"),
    (5, "Paasmaandag", "Lundi de Pâques", "free"),
    (6, "Dag van de Arbeid", "Fête du Travail", "free"),
    (7, "Onze-Lieve-Heer-Hemelvaart", "Ascension", "free"),
    (8, "Pinksteren", "Pentecôte", "free"),
    (9, "Pinkstermaandag", "Lundi de Pentecôte", "free"),
    ((7, 21), "Nationale feestdag", "Fête nationale", "free"),
    (11, "Onze-Lieve-Vrouw-Hemelvaart", "Assomption", "free"),
    (13, "Allerheiligen", "Toussaint", "free"),
    ((11, 11), "Wapenstilstand", "Armistice", "free"),
    ((11, 15), "Koningsfeest", "Fête du Roi", "show"),
    (16, "Kerstmis", "Noël", "free"),
]

# (code, Dutch title, French title, (month, day), Dutch name, French name)
COMMUNITIES = [
    ("DE", "Duitstalige Gemeenschap", "Communauté germanophone", (11, 15),
     "Feest van de Duitstalige Gemeenschap", "Fête de la Communauté germanophone"),
    ("FR", "Franse Gemeenschap", "Fédération Wallonie-Bruxelles", (9, 27),
     "Feest van de Franse Gemeenschap", "Fête de la Fédération Wallonie-Bruxelles"),
    ("NL", "Vlaamse Gemeenschap", "Communauté flamande", (7, 11),
     "Feest van de Vlaamse Gemeenschap", "Fête de la Communauté flamande"),
]


def make(how, name, honor):
    return rule(how, name, honor) if isinstance(how, int) else fixed(how[0], how[1], name, honor)


def build():
    out = {}
    for locale, idx, title in (("nl_BE", 0, "België"), ("fr_BE", 1, "Belgique")):
        nationwide = [make(how, names[idx], honor) for how, *names, honor in NATIONWIDE]
        provinces = [{"code": code, "title": (nl_t, fr_t)[idx],
                      "days": [fixed(md[0], md[1], (nl_n, fr_n)[idx], "show")]}
                     for code, nl_t, fr_t, md, nl_n, fr_n in COMMUNITIES]
        out[locale] = {"code": "BE", "title": title, "nationwide": nationwide, "provinces": provinces}
    return out


TESTS = {
    ("", 2024): "01-01 03-31 04-01 05-01 05-09 05-19 05-20 07-21 08-15 11-01 11-11 12-25",
    ("NL", 2025): "01-01 04-20 04-21 05-01 05-29 06-08 06-09 07-21 08-15 11-01 11-11 12-25",
}
