"""Austria (de_AT): the federal days off and each Land's patron saint.

The patron saints' days are school holidays in their Land but not general days
off, so they are shown without being marked free. Good Friday has not been a
public holiday since 2019 (before that only for members of the Protestant and
Old Catholic churches), so it is shown, never marked free.
"""
from common import fixed, rule

NATIONWIDE = [
    rule(19, "Neujahr"),
    rule(1, "Heilige Drei Könige"),
    rule(3, "Karfreitag", "show"),
    rule(4, "Ostersonntag", "show"),
    rule(5, "Ostermontag"),
    rule(6, "Staatsfeiertag"),
    rule(7, "Christi Himmelfahrt"),
    rule(8, "Pfingstsonntag", "show"),
    rule(9, "Pfingstmontag"),
    rule(10, "Fronleichnam"),
    rule(11, "Mariä Himmelfahrt"),
    fixed(10, 26, "Nationalfeiertag"),
    rule(13, "Allerheiligen"),
    fixed(12, 8, "Mariä Empfängnis"),
    rule(15, "Heiliger Abend", "show"),
    rule(16, "Christtag"),
    rule(17, "Stefanitag"),
    rule(18, "Silvester", "show"),
]

JOSEF = fixed(3, 19, "Josefitag", "show")
LEOPOLD = fixed(11, 15, "Leopolditag", "show")

# ISO 3166-2:AT codes are the digits 1..9
LAENDER = [
    ("1", "Burgenland", [fixed(11, 11, "Martinitag", "show")]),
    ("2", "Kärnten", [JOSEF, fixed(10, 10, "Tag der Volksabstimmung", "show")]),
    ("3", "Niederösterreich", [LEOPOLD]),
    ("4", "Oberösterreich", [fixed(5, 4, "Florianitag", "show")]),
    ("5", "Salzburg", [fixed(9, 24, "Rupertitag", "show")]),
    ("6", "Steiermark", [JOSEF]),
    ("7", "Tirol", [JOSEF]),
    ("8", "Vorarlberg", [JOSEF]),
    ("9", "Wien", [LEOPOLD]),
]


def build():
    return {"de_AT": {
        "code": "AT", "title": "Österreich", "nationwide": NATIONWIDE,
        "provinces": [{"code": c, "title": t, "days": d} for c, t, d in LAENDER],
    }}


TESTS = {
    ("", 2024): "01-01 01-06 04-01 05-01 05-09 05-20 05-30 08-15 10-26 11-01 12-08 12-25 12-26",
    ("9", 2019): "01-01 01-06 04-22 05-01 05-30 06-10 06-20 08-15 10-26 11-01 12-08 12-25 12-26",
    ("2", 2026): "01-01 01-06 04-06 05-01 05-14 05-25 06-04 08-15 10-26 11-01 12-08 12-25 12-26",
}


def _patrons_are_shown(built):
    for prov in built["de_AT"]["provinces"]:
        assert prov["days"], "Land %s has no patron day" % prov["code"]
        for rec in prov["days"]:
            assert rec["honor"] == "show", "%s: %s must not be a day off" % (prov["code"], rec["name"])


EXTRA_TESTS = [_patrons_are_shown]
