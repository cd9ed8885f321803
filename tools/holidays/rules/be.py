"""Belgium (nl_BE, fr_BE, de_BE): the ten legal holidays plus Easter and Whit Sunday.

The days of the three language communities are days off only for the staff of
those communities, so they are shown, not marked free. ISO 3166-2 has no codes
for the communities; the provinces use the community codes of the OpenHolidays
data ("NL", "FR", "DE"), which is also how its school vacations are keyed.
King's Feast (15 Nov) is a day off for federal civil servants only: shown.
"""
from common import fixed, rule

# (how, Dutch, French, German, honor)
NATIONWIDE = [
    (19, "Nieuwjaar", "Jour de l'An", "Neujahr", "free"),
    (4, "Pasen", "Pâques", "Ostern", "free"),
    (5, "Paasmaandag", "Lundi de Pâques", "Ostermontag", "free"),
    (6, "Dag van de Arbeid", "Fête du Travail", "Tag der Arbeit", "free"),
    (7, "Onze-Lieve-Heer-Hemelvaart", "Ascension", "Christi Himmelfahrt", "free"),
    (8, "Pinksteren", "Pentecôte", "Pfingsten", "free"),
    (9, "Pinkstermaandag", "Lundi de Pentecôte", "Pfingstmontag", "free"),
    ((7, 21), "Nationale feestdag", "Fête nationale", "Nationalfeiertag", "free"),
    (11, "Onze-Lieve-Vrouw-Hemelvaart", "Assomption", "Mariä Himmelfahrt", "free"),
    (13, "Allerheiligen", "Toussaint", "Allerheiligen", "free"),
    ((11, 11), "Wapenstilstand", "Armistice", "Waffenstillstand", "free"),
    ((11, 15), "Koningsfeest", "Fête du Roi", "Festtag des Königs", "show"),
    (16, "Kerstmis", "Noël", "Weihnachten", "free"),
]

# (code, Dutch title, French title, German title, (month, day), Dutch, French, German name)
COMMUNITIES = [
    ("DE", "Duitstalige Gemeenschap", "Communauté germanophone", "Deutschsprachige Gemeinschaft",
     (11, 15), "Feest van de Duitstalige Gemeenschap", "Fête de la Communauté germanophone",
     "Tag der Deutschsprachigen Gemeinschaft"),
    ("FR", "Franse Gemeenschap", "Fédération Wallonie-Bruxelles", "Französische Gemeinschaft",
     (9, 27), "Feest van de Franse Gemeenschap", "Fête de la Fédération Wallonie-Bruxelles",
     "Fest der Französischen Gemeinschaft"),
    ("NL", "Vlaamse Gemeenschap", "Communauté flamande", "Flämische Gemeinschaft",
     (7, 11), "Feest van de Vlaamse Gemeenschap", "Fête de la Communauté flamande",
     "Fest der Flämischen Gemeinschaft"),
]


def make(how, name, honor):
    return rule(how, name, honor) if isinstance(how, int) else fixed(how[0], how[1], name, honor)


def build():
    out = {}
    for locale, idx, title in (("nl_BE", 0, "België"), ("fr_BE", 1, "Belgique"), ("de_BE", 2, "Belgien")):
        nationwide = [make(how, names[idx], honor) for how, *names, honor in NATIONWIDE]
        provinces = [{"code": c[0], "title": c[1 + idx], "days": [fixed(c[4][0], c[4][1], c[5 + idx], "show")]}
                     for c in COMMUNITIES]
        out[locale] = {"code": "BE", "title": title, "nationwide": nationwide, "provinces": provinces}
    return out


TESTS = {
    ("", 2024): "01-01 03-31 04-01 05-01 05-09 05-19 05-20 07-21 08-15 11-01 11-11 12-25",
    ("NL", 2025): "01-01 04-20 04-21 05-01 05-29 06-08 06-09 07-21 08-15 11-01 11-11 12-25",
}
