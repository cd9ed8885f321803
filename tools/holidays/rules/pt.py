"""Portugal (pt_PT): national holidays and the two autonomous regions.

Corpus Christi, 5 October, 1 November and 1 December were suspended from 2013
to 2015 and restored in 2016, so they are written per year. Carnival Tuesday is
not a legal holiday (the government usually gives the day off to its staff):
shown. Azores (ISO 3166-2:PT-20) keep Whit Monday as their regional day; Madeira
(PT-30) 1 July and 26 December. Municipal days are left out.
"""
import datetime as dt

from common import library_easter, fixed, rule, yearly

KEPT = [y for y in range(2000, 2101) if not 2013 <= y <= 2015]

NATIONWIDE = [
    rule(19, "Ano Novo"),
    yearly(lambda y: library_easter(y) - dt.timedelta(days=47), "Carnaval", "show"),
    rule(3, "Sexta-feira Santa"),
    rule(4, "Páscoa"),
    fixed(4, 25, "Dia da Liberdade"),
    rule(6, "Dia do Trabalhador"),
    yearly(lambda y: library_easter(y) + dt.timedelta(days=60), "Corpo de Deus", years=KEPT),
    fixed(6, 10, "Dia de Portugal, de Camões e das Comunidades Portuguesas"),
    rule(11, "Assunção de Nossa Senhora"),
    fixed(10, 5, "Implantação da República", years=KEPT),
    fixed(11, 1, "Todos os Santos", years=KEPT),
    fixed(12, 1, "Restauração da Independência", years=KEPT),
    fixed(12, 8, "Imaculada Conceição"),
    rule(16, "Natal"),
]

PROVINCES = [
    ("20", "Açores", [rule(9, "Dia da Região Autónoma dos Açores")]),
    ("30", "Madeira", [fixed(7, 1, "Dia da Região Autónoma da Madeira"),
                       rule(17, "Primeira Oitava")]),
]


def build():
    return {"pt_PT": {
        "code": "PT", "title": "Portugal", "nationwide": NATIONWIDE,
        "provinces": [{"code": c, "title": t, "days": d} for c, t, d in PROVINCES],
    }}


TESTS = {
    ("", 2012): "01-01 04-06 04-08 04-25 05-01 06-07 06-10 08-15 10-05 11-01 12-01 12-08 12-25",
    ("", 2014): "01-01 04-18 04-20 04-25 05-01 06-10 08-15 12-08 12-25",
    ("", 2016): "01-01 03-25 03-27 04-25 05-01 05-26 06-10 08-15 10-05 11-01 12-01 12-08 12-25",
    ("20", 2025): "01-01 04-18 04-20 04-25 05-01 06-09 06-10 06-19 08-15 10-05 11-01 12-01 12-08 12-25",
    ("30", 2025): "01-01 04-18 04-20 04-25 05-01 06-10 06-19 07-01 08-15 10-05 11-01 12-01 12-08 12-25 12-26",
}
