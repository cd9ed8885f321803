"""France (fr_FR): the eleven legal holidays, Alsace-Moselle and the overseas
départements' abolition-of-slavery days.

Whit Monday stays a legal holiday although many employers use it as the
"journée de solidarité" (since 2005). Alsace-Moselle (Moselle 57, Bas-Rhin 67,
Haut-Rhin 68) keeps Good Friday and 26 December from its local law. Overseas
départements use their ISO 3166-2:FR codes (971 Guadeloupe, 972 Martinique,
973 Guyane, 974 La Réunion, 976 Mayotte).
"""
from common import fixed, rule

NATIONWIDE = [
    rule(19, "Jour de l'An"),
    rule(4, "Pâques", "show"),
    rule(5, "Lundi de Pâques"),
    rule(6, "Fête du Travail"),
    fixed(5, 8, "Victoire 1945"),
    rule(7, "Ascension"),
    rule(8, "Pentecôte", "show"),
    rule(9, "Lundi de Pentecôte"),
    fixed(7, 14, "Fête nationale"),
    rule(11, "Assomption"),
    rule(13, "Toussaint"),
    fixed(11, 11, "Armistice 1918"),
    rule(16, "Noël"),
]

ALSACE_MOSELLE = [rule(3, "Vendredi saint"), rule(17, "Saint-Étienne")]
SLAVERY = "Abolition de l'esclavage"

PROVINCES = [
    ("57", "Moselle", ALSACE_MOSELLE),
    ("67", "Bas-Rhin", ALSACE_MOSELLE),
    ("68", "Haut-Rhin", ALSACE_MOSELLE),
    ("971", "Guadeloupe", [fixed(5, 27, SLAVERY)]),
    ("972", "Martinique", [fixed(5, 22, SLAVERY)]),
    ("973", "Guyane", [fixed(6, 10, SLAVERY)]),
    ("974", "La Réunion", [fixed(12, 20, SLAVERY)]),
    ("976", "Mayotte", [fixed(4, 27, SLAVERY)]),
    # Saint-Martin kept the Guadeloupe day (27 May) until a 2018 decree set 28 May.
    ("MF", "Saint-Martin", [fixed(5, 27, SLAVERY, years=range(2000, 2018)),
                            fixed(5, 28, SLAVERY, years=range(2018, 2101))]),
    # Saint-Barthélemy: 9 October by the decree of 2012; earlier years are left
    # unmarked rather than guessed.
    ("BL", "Saint-Barthélemy", [fixed(10, 9, SLAVERY, years=range(2012, 2101))]),
]


def build():
    return {"fr_FR": {
        "code": "FR", "title": "France", "nationwide": NATIONWIDE,
        "provinces": [{"code": c, "title": t, "days": d} for c, t, d in PROVINCES],
    }}


TESTS = {
    ("", 2024): "01-01 04-01 05-01 05-08 05-09 05-20 07-14 08-15 11-01 11-11 12-25",
    ("67", 2024): "01-01 03-29 04-01 05-01 05-08 05-09 05-20 07-14 08-15 11-01 11-11 12-25 12-26",
    ("MF", 2017): "01-01 04-17 05-01 05-08 05-25 05-27 06-05 07-14 08-15 11-01 11-11 12-25",
    ("MF", 2018): "01-01 04-02 05-01 05-08 05-10 05-21 05-28 07-14 08-15 11-01 11-11 12-25",
    ("BL", 2012): "01-01 04-09 05-01 05-08 05-17 05-28 07-14 08-15 10-09 11-01 11-11 12-25",
    ("974", 2025): "01-01 04-21 05-01 05-08 05-29 06-09 07-14 08-15 11-01 11-11 12-20 12-25",
}
