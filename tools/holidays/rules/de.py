"""Germany (de_DE): nationwide days and the days that differ by Land.

Local days of single towns (Augsburg's Friedensfest on 8 Aug) and of single
communities (Corpus Christi in Catholic areas of Saxony and Thuringia) are left
out: the file describes whole Länder.
"""
import datetime as dt

from common import dated, fixed, rule


def since(first):
    return range(first, 2101)


NATIONWIDE = [
    rule(19, "Neujahr"),
    rule(2, "Gründonnerstag", "show"),
    rule(3, "Karfreitag"),
    rule(4, "Ostersonntag", "show"),
    rule(5, "Ostermontag"),
    rule(6, "Tag der Arbeit"),
    rule(7, "Christi Himmelfahrt"),
    rule(8, "Pfingstsonntag", "show"),
    rule(9, "Pfingstmontag"),
    fixed(10, 3, "Tag der Deutschen Einheit"),
    # 500 years of the Reformation: a day off in every Land in 2017 only
    fixed(10, 31, "Reformationstag", years=[2017]),
    rule(15, "Heiligabend", "show"),
    rule(16, "1. Weihnachtsfeiertag"),
    rule(17, "2. Weihnachtsfeiertag"),
    rule(18, "Silvester", "show"),
]

EPIPHANY = rule(1, "Heilige Drei Könige")
CORPUS_CHRISTI = rule(10, "Fronleichnam")
# Bavaria: a day off only in communities with a Catholic majority, which are most
# of them and hold most of the population (Munich, Augsburg, Regensburg...), so
# the day is marked free for the whole Land.
ASSUMPTION = rule(11, "Mariä Himmelfahrt")
REFORMATION = rule(12, "Reformationstag")
# Bremen, Hamburg, Lower Saxony and Schleswig-Holstein: a day off since 2018
REFORMATION_2018 = fixed(10, 31, "Reformationstag", years=since(2018))
ALL_SAINTS = rule(13, "Allerheiligen")
WOMENS_DAY = "Internationaler Frauentag"

LAENDER = [
    ("BB", "Brandenburg", [rule(4, "Ostersonntag"), rule(8, "Pfingstsonntag"), REFORMATION]),
    ("BE", "Berlin", [
        fixed(3, 8, WOMENS_DAY, years=since(2019)),
        # 75th and 80th anniversary of the end of the war in Europe
        dated(dt.date(2020, 5, 8), "Tag der Befreiung"),
        dated(dt.date(2025, 5, 8), "Tag der Befreiung"),
        # 75th anniversary of the uprising of 17 June 1953 (one-off Berlin law)
        dated(dt.date(2028, 6, 17), "75. Jahrestag des Volksaufstandes in der DDR"),
    ]),
    ("BW", "Baden-Württemberg", [EPIPHANY, CORPUS_CHRISTI, ALL_SAINTS]),
    ("BY", "Bayern", [EPIPHANY, CORPUS_CHRISTI, ASSUMPTION, ALL_SAINTS]),
    ("HB", "Bremen", [REFORMATION_2018]),
    ("HE", "Hessen", [CORPUS_CHRISTI]),
    ("HH", "Hamburg", [REFORMATION_2018]),
    ("MV", "Mecklenburg-Vorpommern", [fixed(3, 8, WOMENS_DAY, years=since(2023)), REFORMATION]),
    ("NI", "Niedersachsen", [REFORMATION_2018]),
    ("NW", "Nordrhein-Westfalen", [CORPUS_CHRISTI, ALL_SAINTS]),
    ("RP", "Rheinland-Pfalz", [CORPUS_CHRISTI, ALL_SAINTS]),
    ("SH", "Schleswig-Holstein", [REFORMATION_2018]),
    ("SL", "Saarland", [CORPUS_CHRISTI, ASSUMPTION, ALL_SAINTS]),
    ("SN", "Sachsen", [REFORMATION, rule(14, "Buß- und Bettag")]),
    ("ST", "Sachsen-Anhalt", [EPIPHANY, REFORMATION]),
    ("TH", "Thüringen", [fixed(9, 20, "Weltkindertag", years=since(2019)), REFORMATION]),
]


def build():
    return {"de_DE": {
        "code": "DE", "title": "Deutschland", "nationwide": NATIONWIDE,
        "provinces": [{"code": c, "title": t, "days": d} for c, t, d in LAENDER],
    }}


# Free days per Land and year, from the official lists of the Länder.
TESTS = {
    ("BY", 2024): "01-01 01-06 03-29 04-01 05-01 05-09 05-20 05-30 08-15 10-03 11-01 12-25 12-26",
    ("SN", 2023): "01-01 04-07 04-10 05-01 05-18 05-29 10-03 10-31 11-22 12-25 12-26",
    ("SN", 2021): "01-01 04-02 04-05 05-01 05-13 05-24 10-03 10-31 11-17 12-25 12-26",
    ("BE", 2025): "01-01 03-08 04-18 04-21 05-01 05-08 05-29 06-09 10-03 12-25 12-26",
    ("BE", 2018): "01-01 03-30 04-02 05-01 05-10 05-21 10-03 12-25 12-26",
    ("HH", 2017): "01-01 04-14 04-17 05-01 05-25 06-05 10-03 10-31 12-25 12-26",
    ("HH", 2016): "01-01 03-25 03-28 05-01 05-05 05-16 10-03 12-25 12-26",
    ("NI", 2018): "01-01 03-30 04-02 05-01 05-10 05-21 10-03 10-31 12-25 12-26",
    ("MV", 2022): "01-01 04-15 04-18 05-01 05-26 06-06 10-03 10-31 12-25 12-26",
    ("MV", 2023): "01-01 03-08 04-07 04-10 05-01 05-18 05-29 10-03 10-31 12-25 12-26",
    ("TH", 2018): "01-01 03-30 04-02 05-01 05-10 05-21 10-03 10-31 12-25 12-26",
    ("TH", 2019): "01-01 04-19 04-22 05-01 05-30 06-10 09-20 10-03 10-31 12-25 12-26",
    ("BB", 2026): "01-01 04-03 04-05 04-06 05-01 05-14 05-24 05-25 10-03 10-31 12-25 12-26",
    ("", 2000): "01-01 04-21 04-24 05-01 06-01 06-12 10-03 12-25 12-26",
}
