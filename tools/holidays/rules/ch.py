"""Switzerland (de_CH, fr_CH, it_CH): federal and cantonal days off.

Only 1 August is a day off by federal law; New Year, Ascension and Christmas are
days off in every canton, so they are listed as nationwide. Everything else is
cantonal. Where a canton makes a day a holiday only in some of its districts or
communes (Aargau and Fribourg by confession, the afternoon of 1 May in Solothurn,
Berchtoldstag in Zurich by custom), the day is shown for the canton but not
marked free. Days of single communes (Sechseläuten, patron saints) are left out.
"""
import datetime as dt

from common import FRI, MON, SUN, THU, library_easter, fixed, nth_weekday, rule, yearly

# key: (German, French, Italian)
NAMES = {
    "newyear": ("Neujahrstag", "Nouvel An", "Capodanno"),
    "berchtold": ("Berchtoldstag", "Saint-Berchtold", "San Bertoldo"),
    "epiphany": ("Dreikönigstag", "Épiphanie", "Epifania"),
    "republic_ne": ("Jahrestag der Ausrufung der Republik", "Instauration de la République",
                    "Anniversario della Repubblica"),
    "joseph": ("Josefstag", "Saint-Joseph", "San Giuseppe"),
    "naefels": ("Näfelser Fahrt", "Näfelser Fahrt", "Näfelser Fahrt"),
    "goodfriday": ("Karfreitag", "Vendredi saint", "Venerdì santo"),
    "easter": ("Ostersonntag", "Pâques", "Pasqua"),
    "eastermonday": ("Ostermontag", "Lundi de Pâques", "Lunedì di Pasqua"),
    "labour": ("Tag der Arbeit", "Fête du travail", "Festa del lavoro"),
    "ascension": ("Auffahrt", "Ascension", "Ascensione"),
    "whitsun": ("Pfingstsonntag", "Pentecôte", "Pentecoste"),
    "whitmonday": ("Pfingstmontag", "Lundi de Pentecôte", "Lunedì di Pentecoste"),
    "corpus": ("Fronleichnam", "Fête-Dieu", "Corpus Domini"),
    "jura": ("Fest der Unabhängigkeit", "Commémoration du plébiscite jurassien",
             "Commemorazione del plebiscito giurassiano"),
    "peterpaul": ("Peter und Paul", "Saint-Pierre et Saint-Paul", "Santi Pietro e Paolo"),
    "national": ("Bundesfeiertag", "Fête nationale", "Festa nazionale"),
    "assumption": ("Mariä Himmelfahrt", "Assomption", "Assunzione"),
    "jeune_ge": ("Genfer Bettag", "Jeûne genevois", "Digiuno ginevrino"),
    "bettag": ("Eidgenössischer Dank-, Buss- und Bettag", "Jeûne fédéral", "Digiuno federale"),
    "bettag_monday": ("Bettagsmontag", "Lundi du Jeûne fédéral", "Lunedì del Digiuno federale"),
    "mauritius": ("Mauritiustag", "Saint-Maurice", "San Maurizio"),
    "klaus": ("Bruder-Klausen-Fest", "Saint-Nicolas de Flüe", "San Nicolao della Flüe"),
    "allsaints": ("Allerheiligen", "Toussaint", "Ognissanti"),
    "immaculate": ("Mariä Empfängnis", "Immaculée Conception", "Immacolata Concezione"),
    "christmas": ("Weihnachtstag", "Noël", "Natale"),
    "stephen": ("Stephanstag", "Saint-Étienne", "Santo Stefano"),
    "restoration": ("Wiederherstellung der Republik", "Restauration de la République",
                    "Restaurazione della Repubblica"),
}

CANTONS = {
    "AG": ("Aargau", "Argovie", "Argovia"),
    "AI": ("Appenzell Innerrhoden", "Appenzell Rhodes-Intérieures", "Appenzello Interno"),
    "AR": ("Appenzell Ausserrhoden", "Appenzell Rhodes-Extérieures", "Appenzello Esterno"),
    "BE": ("Bern", "Berne", "Berna"),
    "BL": ("Basel-Landschaft", "Bâle-Campagne", "Basilea Campagna"),
    "BS": ("Basel-Stadt", "Bâle-Ville", "Basilea Città"),
    "FR": ("Freiburg", "Fribourg", "Friburgo"),
    "GE": ("Genf", "Genève", "Ginevra"),
    "GL": ("Glarus", "Glaris", "Glarona"),
    "GR": ("Graubünden", "Grisons", "Grigioni"),
    "JU": ("Jura", "Jura", "Giura"),
    "LU": ("Luzern", "Lucerne", "Lucerna"),
    "NE": ("Neuenburg", "Neuchâtel", "Neuchâtel"),
    "NW": ("Nidwalden", "Nidwald", "Nidvaldo"),
    "OW": ("Obwalden", "Obwald", "Obvaldo"),
    "SG": ("St. Gallen", "Saint-Gall", "San Gallo"),
    "SH": ("Schaffhausen", "Schaffhouse", "Sciaffusa"),
    "SO": ("Solothurn", "Soleure", "Soletta"),
    "SZ": ("Schwyz", "Schwytz", "Svitto"),
    "TG": ("Thurgau", "Thurgovie", "Turgovia"),
    "TI": ("Tessin", "Tessin", "Ticino"),
    "UR": ("Uri", "Uri", "Uri"),
    "VD": ("Waadt", "Vaud", "Vaud"),
    "VS": ("Wallis", "Valais", "Vallese"),
    "ZG": ("Zug", "Zoug", "Zugo"),
    "ZH": ("Zürich", "Zurich", "Zurigo"),
}
ALL = sorted(CANTONS)


def bettag(year):
    """Federal Fast: the third Sunday of September."""
    return nth_weekday(year, 9, SUN, 3)


def naefelser_fahrt(year):
    """First Thursday of April, a week later when that is Maundy Thursday."""
    d = nth_weekday(year, 4, THU, 1)
    return d + dt.timedelta(weeks=1) if d == library_easter(year) - dt.timedelta(days=3) else d


def jeune_genevois(year):
    """Thursday after the first Sunday of September."""
    return nth_weekday(year, 9, SUN, 1) + dt.timedelta(days=4)


def stephen_ai(year):
    # Appenzell Innerrhoden: no St Stephen's day when Christmas is a Monday or a Friday
    return None if dt.date(year, 12, 25).weekday() in (MON, FRI) else dt.date(year, 12, 26)


def jan2_ne(year):
    # Neuchâtel: 2 January is a day off when New Year falls on a Sunday
    return dt.date(year, 1, 2) if dt.date(year, 1, 1).weekday() == SUN else None


def dec26_ne(year):
    # Neuchâtel: 26 December is a day off when Christmas falls on a Sunday
    return dt.date(year, 12, 26) if dt.date(year, 12, 25).weekday() == SUN else None


def cantons_except(*codes):
    return [c for c in ALL if c not in codes]


# (key, how the day is made, {"free": cantons, "show": cantons})
# `how` is a rule id, a (month, day) pair or a function year -> date | None.
CANTONAL = [
    ("berchtold", (1, 2), {"free": "BE GL JU LU NW OW SG SH SO TG VD VS ZG".split(),
                           "show": "AG FR ZH".split()}),
    ("berchtold", jan2_ne, {"free": ["NE"]}),
    ("epiphany", 1, {"free": "SZ TI UR".split()}),
    ("republic_ne", (3, 1), {"free": ["NE"]}),
    ("joseph", (3, 19), {"free": "NW SZ TI UR VS".split()}),
    ("naefels", naefelser_fahrt, {"free": ["GL"]}),
    ("goodfriday", 3, {"free": cantons_except("TI", "VS")}),
    ("eastermonday", 5, {"free": ALL}),
    ("labour", 6, {"free": "AG BL BS JU NE SH TG TI ZH".split(), "show": ["SO"]}),
    ("whitmonday", 9, {"free": ALL}),
    ("corpus", 10, {"free": "AI FR JU LU NE NW OW SO SZ TI UR VS ZG".split(), "show": ["AG"]}),
    ("jura", (6, 23), {"free": ["JU"]}),
    ("peterpaul", (6, 29), {"free": ["TI"]}),
    ("assumption", 11, {"free": "AI FR JU LU NW OW SO SZ TI UR VS ZG".split(), "show": ["AG"]}),
    ("jeune_ge", jeune_genevois, {"free": ["GE"]}),
    ("bettag", bettag, {"free": "BE BL BS GL GR LU NE NW OW SG SH SZ TG UR VS ZG ZH".split(),
                        "show": "AG AI AR FR GE JU SO TI VD".split()}),
    ("bettag_monday", lambda y: bettag(y) + dt.timedelta(days=1), {"free": ["VD"]}),
    ("mauritius", (9, 22), {"free": ["AI"]}),
    ("klaus", (9, 25), {"free": ["OW"]}),
    ("allsaints", 13, {"free": "AI FR GL GR JU LU NW OW SG SO SZ TI UR VS ZG".split(), "show": ["AG"]}),
    ("immaculate", (12, 8), {"free": "AI FR LU NW OW SZ TI UR VS ZG".split(), "show": ["AG"]}),
    ("stephen", 17, {"free": "AG AR BE BL BS FR GL GR LU NW OW SG SH SO SZ TG TI UR VS ZG ZH".split()}),
    ("stephen", stephen_ai, {"free": ["AI"]}),
    ("stephen", dec26_ne, {"free": ["NE"]}),
    ("restoration", 18, {"free": ["GE"]}),
]

NATIONWIDE = [
    ("newyear", 19, "free"),
    ("easter", 4, "show"),
    ("ascension", 7, "free"),
    ("whitsun", 8, "show"),
    ("national", (8, 1), "free"),   # federal holiday since 1994
    ("christmas", 16, "free"),
]


def make(how, name, honor):
    if isinstance(how, int):
        return [rule(how, name, honor)]
    if isinstance(how, tuple):
        return [fixed(how[0], how[1], name, honor)]
    return yearly(how, name, honor)


def build():
    out = {}
    for lang, idx, title in (("de", 0, "Schweiz"), ("fr", 1, "Suisse"), ("it", 2, "Svizzera")):
        nationwide = [r for key, how, honor in NATIONWIDE for r in make(how, NAMES[key][idx], honor)]
        provinces = []
        for code in ALL:
            days = []
            for key, how, where in CANTONAL:
                for honor in ("free", "show"):
                    if code in where.get(honor, ()):
                        days += make(how, NAMES[key][idx], honor)
            provinces.append({"code": code, "title": CANTONS[code][idx], "days": days})
        out[lang + "_CH"] = {"code": "CH", "title": title, "nationwide": nationwide,
                             "provinces": provinces}
    return out


# Free days of a canton in a year, from the cantonal lists.
TESTS = {
    ("ZH", 2024): "01-01 03-29 04-01 05-01 05-09 05-20 08-01 09-15 12-25 12-26",
    ("GE", 2025): "01-01 04-18 04-21 05-29 06-09 08-01 09-11 12-25 12-31",
    ("VD", 2026): "01-01 01-02 04-03 04-06 05-14 05-25 08-01 09-21 12-25",
    ("TI", 2023): "01-01 01-06 03-19 04-10 05-01 05-18 05-29 06-08 06-29 08-01 08-15 11-01 12-08 12-25 12-26",
    ("JU", 2022): "01-01 01-02 04-15 04-18 05-01 05-26 06-06 06-16 06-23 08-01 08-15 11-01 12-25",
    ("GL", 2021): "01-01 01-02 04-02 04-05 04-08 05-13 05-24 08-01 09-19 11-01 12-25 12-26",
    ("NE", 2022): "01-01 03-01 04-15 04-18 05-01 05-26 06-06 06-16 08-01 09-18 12-25 12-26",
    ("AI", 2023): "01-01 04-07 04-10 05-18 05-29 06-08 08-01 08-15 09-22 11-01 12-08 12-25",
}


def _moving_days(built):
    got = [naefelser_fahrt(y).isoformat() for y in (2020, 2021, 2023, 2024, 2026, 2027)]
    assert got == ["2020-04-02", "2021-04-08", "2023-04-13", "2024-04-04", "2026-04-09",
                   "2027-04-01"], got
    got = [jeune_genevois(y).isoformat() for y in (2020, 2024, 2025, 2030)]
    assert got == ["2020-09-10", "2024-09-05", "2025-09-11", "2030-09-05"], got
    got = [bettag(y).isoformat() for y in (2020, 2025, 2026, 2028)]
    assert got == ["2020-09-20", "2025-09-21", "2026-09-20", "2028-09-17"], got


EXTRA_TESTS = [_moving_days]
