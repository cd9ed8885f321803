"""Italy (it_IT): the national holidays and South Tyrol's Whit Monday.

Whit Monday is a holiday only in the autonomous province of Bolzano/South Tyrol,
not in the whole region Trentino-Alto Adige (ISO 3166-2:IT-32), so the province
uses the province code BZ. Festa della Repubblica: 2 June again since 2001; from
1977 to 2000 it was kept on the first Sunday of June. San Francesco (4 October)
is a national holiday again from 2026. 17 March 2011 was a one-off holiday. Patron saints' days of single cities
(Rome 29 June, Milan 7 December, ...) are left out.
"""
import datetime as dt

from common import dated, fixed, rule

NATIONWIDE = [
    rule(19, "Capodanno"),
    rule(1, "Epifania"),
    rule(4, "Pasqua"),
    rule(5, "Lunedì dell'Angelo"),
    fixed(4, 25, "Festa della Liberazione"),
    rule(6, "Festa del Lavoro"),
    # 150th anniversary of the unification: a national holiday in 2011 only (law 47/2011)
    dated(dt.date(2011, 3, 17), "Anniversario dell'Unità d'Italia"),
    dated(dt.date(2000, 6, 4), "Festa della Repubblica"),
    fixed(6, 2, "Festa della Repubblica", years=range(2001, 2101)),
    rule(11, "Ferragosto"),
    fixed(10, 4, "San Francesco d'Assisi", years=range(2026, 2101)),
    rule(13, "Ognissanti"),
    fixed(12, 8, "Immacolata Concezione"),
    rule(16, "Natale"),
    rule(17, "Santo Stefano"),
]


def build():
    return {"it_IT": {
        "code": "IT", "title": "Italia", "nationwide": NATIONWIDE,
        "provinces": [{"code": "BZ", "title": "Alto Adige", "days": [rule(9, "Lunedì di Pentecoste")]}],
    }}


TESTS = {
    ("", 2011): "01-01 01-06 03-17 04-24 04-25 04-25 05-01 06-02 08-15 11-01 12-08 12-25 12-26",
    ("", 2025): "01-01 01-06 04-20 04-21 04-25 05-01 06-02 08-15 11-01 12-08 12-25 12-26",
    ("BZ", 2025): "01-01 01-06 04-20 04-21 04-25 05-01 06-02 06-09 08-15 11-01 12-08 12-25 12-26",
    ("", 2026): "01-01 01-06 04-05 04-06 04-25 05-01 06-02 08-15 10-04 11-01 12-08 12-25 12-26",
}
