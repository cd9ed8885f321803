"""Spain (es_ES): national days, the autonomous communities' own days, and the
days each community picks year by year.

Every year the state and each community publish which days are off: a community
may swap Maundy Thursday, St Joseph, St James or Easter Monday, and decides
whether a day falling on a Sunday moves to the Monday. Only the days that do not
change are written for every year: the national days, each community's own day
fixed by its statute, Easter Monday where it has always been kept, and
Catalonia's and Valencia's Easter Monday in place of Maundy Thursday. The days
chosen per year are written as one-off days for the years that have been
published and checked (2020-2026, from the OpenHolidays data); later years get
them when their decrees are out. Island and city days inside a community (the
Canary Islands' island patrons) are left out; Ceuta and Melilla are cities and
communities at once, so their days are included.
"""
import datetime as dt

from common import dated, fixed, flatten, library_easter, rule

NATIONWIDE = [
    rule(19, "Año Nuevo"),
    rule(1, "Epifanía del Señor"),
    rule(2, "Jueves Santo"),
    rule(3, "Viernes Santo"),
    rule(4, "Domingo de Resurrección", "show"),
    rule(6, "Fiesta del Trabajo"),
    rule(11, "Asunción de la Virgen"),
    fixed(10, 12, "Fiesta Nacional de España"),
    rule(13, "Todos los Santos"),
    fixed(12, 6, "Día de la Constitución Española"),
    fixed(12, 8, "Inmaculada Concepción"),
    rule(16, "Navidad"),
]

EASTER_MONDAY = rule(5, "Lunes de Pascua")
NO_MAUNDY_THURSDAY = rule(2, "Jueves Santo", "")

# code, title, days kept every year
COMMUNITIES = [
    ("AN", "Andalucía", [fixed(2, 28, "Día de Andalucía")]),
    ("AR", "Aragón", [fixed(4, 23, "Día de Aragón")]),
    ("AS", "Principado de Asturias", [fixed(9, 8, "Día de Asturias")]),
    ("CB", "Cantabria", []),
    ("CE", "Ceuta", []),
    ("CL", "Castilla y León", [fixed(4, 23, "Día de Castilla y León")]),
    ("CM", "Castilla-La Mancha", []),
    ("CN", "Canarias", [fixed(5, 30, "Día de Canarias")]),
    ("CT", "Cataluña", [NO_MAUNDY_THURSDAY, EASTER_MONDAY, fixed(6, 24, "San Juan"),
                        fixed(9, 11, "Fiesta Nacional de Cataluña"), rule(17, "San Esteban")]),
    ("EX", "Extremadura", [fixed(9, 8, "Día de Extremadura")]),
    ("GA", "Galicia", [fixed(5, 17, "Día de las Letras Gallegas"),
                       fixed(7, 25, "Día Nacional de Galicia")]),
    ("IB", "Illes Balears", [fixed(3, 1, "Día de las Illes Balears"), EASTER_MONDAY]),
    ("MC", "Región de Murcia", [fixed(6, 9, "Día de la Región de Murcia")]),
    ("MD", "Comunidad de Madrid", [fixed(5, 2, "Fiesta de la Comunidad de Madrid")]),
    ("ML", "Melilla", []),
    ("NC", "Comunidad Foral de Navarra", [EASTER_MONDAY]),
    ("PV", "País Vasco", [EASTER_MONDAY]),
    ("RI", "La Rioja", [fixed(6, 9, "Día de La Rioja")]),
    ("VC", "Comunitat Valenciana", [NO_MAUNDY_THURSDAY, EASTER_MONDAY,
                                    fixed(10, 9, "Día de la Comunitat Valenciana")]),
]

# Days chosen per year: (date, name, communities). Every row names its communities:
# a Monday after a Sunday holiday is never taken by all of them. Only the days not
# already covered above are listed.
BY_YEAR = [
    ("2020-03-13", "Estatuto de Autonomía de Melilla", "ML"),
    ("2020-03-19", "Día de San José", "CM GA MC NC PV VC"),
    ("2020-04-13", "Lunes de Pascua", "CB CM RI"),
    ("2020-06-11", "Corpus Christi", "CM"),
    ("2020-06-13", "San Antonio", "CE"),
    ("2020-06-24", "San Juan", "GA VC"),
    ("2020-07-25", "Santiago Apóstol", "PV"),
    ("2020-07-28", "Día de las Instituciones de Cantabria", "CB"),
    ("2020-07-31", "Fiesta del Sacrificio (Eid al-Adha)", "CE ML"),
    ("2020-08-05", "Nuestra Señora de África", "CE"),
    ("2020-09-02", "Día de Ceuta", "CE"),
    ("2020-09-08", "Día de Ntra. Sra. Virgen de la Victoria", "ML"),
    ("2020-09-15", "La Bien Aparecida", "CB"),
    ("2020-09-17", "Día de Melilla", "ML"),
    ("2020-11-02", "Lunes siguiente a Todos los Santos", "AN AR AS CL EX MD"),
    ("2020-12-03", "San Francisco Javier", "NC"),
    ("2020-12-07", "Lunes siguiente al Día de la Constitución Española",
     "AN AR AS CE CL CN EX IB MC MD ML NC RI"),
    ("2021-03-01", "Lunes siguiente al Día de Andalucía", "AN"),
    ("2021-03-13", "Estatuto de Autonomía de Melilla", "ML"),
    ("2021-03-19", "Día de San José", "EX GA MC MD NC PV VC"),
    ("2021-04-05", "Lunes de Pascua", "CM RI"),
    ("2021-05-03", "Lunes siguiente al Día de la Comunidad de Madrid", "MD"),
    ("2021-05-31", "Día de Castilla-La Mancha", "CM"),
    ("2021-06-03", "Corpus Christi", "CM"),
    ("2021-06-14", "San Antonio", "CE"),
    ("2021-06-24", "San Juan", "GA VC"),
    ("2021-07-20", "Fiesta del Sacrificio (Eid al-Adha)", "CE"),
    ("2021-07-21", "Fiesta del Sacrificio (Eid al-Adha)", "ML"),
    ("2021-07-28", "Día de las Instituciones de Cantabria", "CB"),
    ("2021-08-05", "Nuestra Señora de África", "CE"),
    ("2021-08-16", "Lunes siguiente a la Asunción de la Virgen", "AN AR AS CL CN"),
    ("2021-09-02", "Día de Ceuta", "CE"),
    ("2021-09-08", "Día de Ntra. Sra. Virgen de la Victoria", "ML"),
    ("2021-09-15", "La Bien Aparecida", "CB"),
    ("2021-09-17", "Día de Melilla", "ML"),
    ("2021-12-03", "San Francisco Javier", "NC"),
    ("2022-03-19", "Día de San José", "VC"),
    ("2022-04-18", "Lunes de Pascua", "CB CM RI"),
    ("2022-05-02", "Lunes siguiente a la Fiesta del Trabajo", "AN AR AS CM EX MC"),
    ("2022-05-03", "Fiesta del fin del Ramadán (Eid al-Fitr)", "ML"),
    ("2022-05-31", "Día de Castilla-La Mancha", "CM"),
    ("2022-06-06", "Lunes de Pascua Granada", "CT"),
    ("2022-06-13", "San Antonio", "CE"),
    ("2022-06-16", "Corpus Christi", "CM"),
    ("2022-06-24", "San Juan", "GA VC"),
    ("2022-07-09", "Fiesta del Sacrificio (Eid al-Adha)", "CE"),
    ("2022-07-11", "Fiesta del Sacrificio (Eid al-Adha)", "ML"),
    ("2022-07-25", "Santiago Apóstol", "MD NC PV"),
    ("2022-07-28", "Día de las Instituciones de Cantabria", "CB"),
    ("2022-08-05", "Nuestra Señora de África", "CE"),
    ("2022-09-02", "Día de Ceuta", "CE"),
    ("2022-09-06", "V Centenario Vuelta al Mundo", "PV"),
    ("2022-09-08", "Día de Ntra. Sra. Virgen de la Victoria", "ML"),
    ("2022-09-15", "La Bien Aparecida", "CB"),
    ("2022-09-17", "Día de Melilla", "ML"),
    ("2022-12-03", "San Francisco Javier", "NC"),
    ("2022-12-26", "Lunes siguiente a la Natividad del Señor", "AN AR AS CB CL CM CN EX IB MC MD ML NC RI"),
    ("2023-03-13", "Estatuto de Autonomía de Melilla", "ML"),
    ("2023-03-20", "Lunes siguiente a San José", "MD"),
    ("2023-04-10", "Lunes de Pascua", "CM RI"),
    ("2023-04-21", "Fiesta del fin del Ramadán (Eid al-Fitr)", "ML"),
    ("2023-04-24", "Lunes siguiente al Día de Aragón", "AR"),
    ("2023-05-31", "Día de Castilla-La Mancha", "CM"),
    ("2023-06-08", "Corpus Christi", "CM"),
    ("2023-06-13", "San Antonio", "CE"),
    ("2023-06-24", "San Juan", "GA VC"),
    ("2023-06-29", "Fiesta del Sacrificio (Eid al-Adha)", "CE ML"),
    ("2023-07-25", "Santiago Apóstol", "CL NC PV"),
    ("2023-07-28", "Día de las Instituciones de Cantabria", "CB"),
    ("2023-08-05", "Nuestra Señora de África", "CE"),
    ("2023-09-02", "Día de Ceuta", "CE"),
    ("2023-09-15", "La Bien Aparecida", "CB"),
    ("2023-12-03", "San Francisco Javier", "NC"),
    ("2024-03-13", "Estatuto de Autonomía de Melilla", "ML"),
    ("2024-03-19", "Día de San José", "MC VC"),
    ("2024-04-01", "Lunes de Pascua", "CB CM RI"),
    ("2024-04-10", "Fiesta del fin del Ramadán (Eid al-Fitr)", "CE ML"),
    ("2024-05-30", "Corpus Christi", "CM"),
    ("2024-05-31", "Día de Castilla-La Mancha", "CM"),
    ("2024-06-10", "Lunes siguiente a Día de La Rioja", "RI"),
    ("2024-06-13", "San Antonio", "CE"),
    ("2024-06-17", "Fiesta del Sacrificio (Eid al-Adha)", "CE ML"),
    ("2024-06-24", "San Juan", "GA VC"),
    ("2024-07-25", "Santiago Apóstol", "CB MD NC PV"),
    ("2024-08-05", "Nuestra Señora de África", "CE"),
    ("2024-09-09", "Lunes siguiente al Día de Asturias", "AS"),
    ("2024-09-17", "Día de Melilla", "ML"),
    ("2024-12-03", "San Francisco Javier", "NC"),
    ("2024-12-09", "Lunes siguiente a la Inmaculada Concepción", "AN AR AS CL EX MC ML"),
    ("2025-03-13", "Estatuto de Autonomía de Melilla", "ML"),
    ("2025-03-19", "Día de San José", "MC VC"),
    ("2025-03-31", "Fiesta del fin del Ramadán (Eid al-Fitr)", "CE ML"),
    ("2025-04-21", "Lunes de Pascua", "CB RI"),
    ("2025-05-31", "Día de Castilla-La Mancha", "CM"),
    ("2025-06-06", "Fiesta del Sacrificio (Eid al-Adha)", "CE ML"),
    ("2025-06-13", "San Antonio", "CE"),
    ("2025-06-19", "Corpus Christi", "CM"),
    ("2025-06-24", "San Juan", "GA VC"),
    ("2025-07-25", "Santiago Apóstol", "MD NC PV"),
    ("2025-07-28", "Día de las Instituciones de Cantabria", "CB"),
    ("2025-08-05", "Nuestra Señora de África", "CE"),
    ("2025-09-08", "Día de Ntra. Sra. Virgen de la Victoria", "ML"),
    ("2025-09-15", "La Bien Aparecida", "CB"),
    ("2025-09-17", "Día de Melilla", "ML"),
    ("2025-10-13", "Lunes siguiente a la Fiesta Nacional de España", "AN AR AS"),
    ("2025-12-03", "San Francisco Javier", "NC"),
    ("2025-12-26", "San Esteban", "IB"),
    ("2026-03-02", "Lunes siguiente al Día de las Illes Balears", "IB"),
    ("2026-03-13", "Estatuto de Autonomía de Melilla", "ML"),
    ("2026-03-19", "Día de San José", "GA MC NC PV VC"),
    ("2026-03-20", "Fiesta del fin del Ramadán (Eid al-Fitr)", "CE ML"),
    ("2026-04-06", "Lunes de Pascua", "CB CM RI"),
    ("2026-05-27", "Fiesta del Sacrificio (Eid al-Adha)", "CE ML"),
    ("2026-05-31", "Día de Castilla-La Mancha", "CM"),
    ("2026-06-04", "Corpus Christi", "CM"),
    ("2026-06-13", "San Antonio", "CE"),
    ("2026-06-24", "San Juan", "GA VC"),
    ("2026-07-25", "Santiago Apóstol", "NC PV"),
    ("2026-07-28", "Día de las Instituciones de Cantabria", "CB"),
    ("2026-08-05", "Nuestra Señora de África", "CE"),
    ("2026-09-02", "Día de Ceuta", "CE"),
    ("2026-09-08", "Día de Ntra. Sra. Virgen de la Victoria", "ML"),
    ("2026-09-15", "La Bien Aparecida", "CB"),
    ("2026-09-17", "Día de Melilla", "ML"),
    ("2026-11-02", "Lunes siguiente a Todos los Santos", "AR CM CN MD NC"),
    ("2026-12-03", "San Francisco Javier", "NC"),
    ("2026-12-07", "Lunes siguiente al Día de la Constitución Española", "AR CB MC MD ML RI"),
    ("2026-12-26", "San Esteban", "IB"),
    ("2023-01-02", "Lunes siguiente a Año Nuevo", "AN AR AS CL MC"),
]


def carnival_tuesday(year):
    return library_easter(year) - dt.timedelta(days=47)


# Extremadura has kept Carnival Tuesday since 2023
BY_YEAR += [(carnival_tuesday(y).isoformat(), "Martes de Carnaval", "EX") for y in range(2023, 2027)]

# Catalan names (ca_ES) of every name above, and of the country and communities.
CATALAN = {
    "España": "Espanya",
    "Andalucía": "Andalusia", "Aragón": "Aragó", "Principado de Asturias": "Principat d'Astúries",
    "Cantabria": "Cantàbria", "Ceuta": "Ceuta", "Castilla y León": "Castella i Lleó",
    "Castilla-La Mancha": "Castella-la Manxa", "Canarias": "Canàries", "Cataluña": "Catalunya",
    "Extremadura": "Extremadura", "Galicia": "Galícia", "Illes Balears": "Illes Balears",
    "Región de Murcia": "Regió de Múrcia", "Comunidad de Madrid": "Comunitat de Madrid",
    "Melilla": "Melilla", "Comunidad Foral de Navarra": "Comunitat Foral de Navarra",
    "País Vasco": "País Basc", "La Rioja": "La Rioja", "Comunitat Valenciana": "Comunitat Valenciana",
    "Año Nuevo": "Cap d'Any",
    "Epifanía del Señor": "Epifania del Senyor",
    "Jueves Santo": "Dijous Sant",
    "Viernes Santo": "Divendres Sant",
    "Domingo de Resurrección": "Diumenge de Pasqua",
    "Lunes de Pascua": "Dilluns de Pasqua",
    "Lunes de Pascua Granada": "Dilluns de Pasqua Granada",
    "Fiesta del Trabajo": "Festa del Treball",
    "Asunción de la Virgen": "Assumpció de la Mare de Déu",
    "Fiesta Nacional de España": "Festa Nacional d'Espanya",
    "Todos los Santos": "Tots Sants",
    "Día de la Constitución Española": "Dia de la Constitució Espanyola",
    "Inmaculada Concepción": "Immaculada Concepció",
    "Navidad": "Nadal",
    "San Esteban": "Sant Esteve",
    "San Juan": "Sant Joan",
    "San José": "Sant Josep",
    "Día de San José": "Sant Josep",
    "Santiago Apóstol": "Sant Jaume Apòstol",
    "San Antonio": "Sant Antoni",
    "San Francisco Javier": "Sant Francesc Xavier",
    "Corpus Christi": "Corpus Christi",
    "Martes de Carnaval": "Dimarts de Carnaval",
    "Día de Andalucía": "Dia d'Andalusia",
    "Día de Aragón": "Dia d'Aragó",
    "Día de Asturias": "Dia d'Astúries",
    "Día de Canarias": "Dia de Canàries",
    "Día de Castilla y León": "Dia de Castella i Lleó",
    "Día de Castilla-La Mancha": "Dia de Castella-la Manxa",
    "Día de Extremadura": "Dia d'Extremadura",
    "Día de las Letras Gallegas": "Dia de les Lletres Gallegues",
    "Día Nacional de Galicia": "Dia Nacional de Galícia",
    "Día de las Illes Balears": "Dia de les Illes Balears",
    "Día de la Región de Murcia": "Dia de la Regió de Múrcia",
    "Fiesta de la Comunidad de Madrid": "Festa de la Comunitat de Madrid",
    "Día de La Rioja": "Dia de La Rioja",
    "Día de la Comunitat Valenciana": "Dia de la Comunitat Valenciana",
    "Fiesta Nacional de Cataluña": "Diada Nacional de Catalunya",
    "Día de las Instituciones de Cantabria": "Dia de les Institucions de Cantàbria",
    "La Bien Aparecida": "La Ben Apareguda",
    "Día de Ceuta": "Dia de Ceuta",
    "Nuestra Señora de África": "Mare de Déu d'Àfrica",
    "Día de Melilla": "Dia de Melilla",
    "Estatuto de Autonomía de Melilla": "Estatut d'Autonomia de Melilla",
    "Día de Ntra. Sra. Virgen de la Victoria": "Dia de la Mare de Déu de la Victòria",
    "Fiesta del Sacrificio (Eid al-Adha)": "Festa del Sacrifici (Aïd al-Adha)",
    "Fiesta del fin del Ramadán (Eid al-Fitr)": "Festa de la fi del Ramadà (Aïd al-Fitr)",
    "V Centenario Vuelta al Mundo": "V Centenari de la Volta al Món",
    "Lunes siguiente a Año Nuevo": "Dilluns següent a Cap d'Any",
    "Lunes siguiente al Día de Andalucía": "Dilluns següent al Dia d'Andalusia",
    "Lunes siguiente al Día de las Illes Balears": "Dilluns següent al Dia de les Illes Balears",
    "Lunes siguiente a San José": "Dilluns següent a Sant Josep",
    "Lunes siguiente al Día de Aragón": "Dilluns següent al Dia d'Aragó",
    "Lunes siguiente a la Fiesta del Trabajo": "Dilluns següent a la Festa del Treball",
    "Lunes siguiente al Día de la Comunidad de Madrid": "Dilluns següent a la Festa de la Comunitat de Madrid",
    "Lunes siguiente a Día de La Rioja": "Dilluns següent al Dia de La Rioja",
    "Lunes siguiente a la Asunción de la Virgen": "Dilluns següent a l'Assumpció de la Mare de Déu",
    "Lunes siguiente al Día de Asturias": "Dilluns següent al Dia d'Astúries",
    "Lunes siguiente a la Fiesta Nacional de España": "Dilluns següent a la Festa Nacional d'Espanya",
    "Lunes siguiente a Todos los Santos": "Dilluns següent a Tots Sants",
    "Lunes siguiente al Día de la Constitución Española": "Dilluns següent al Dia de la Constitució",
    "Lunes siguiente a la Inmaculada Concepción": "Dilluns següent a la Immaculada Concepció",
    "Lunes siguiente a la Natividad del Señor": "Dilluns següent a Nadal",
}

# Written into the files: what they lack outside the published years.
FILE_NOTE = ("Outside 2020-2026 only the days fixed by law or statute are listed; the days each "
             "community chooses year by year (St Joseph, St James, Easter Monday, Mondays after a "
             "Sunday holiday) are missing there.")


def build():
    nationwide = list(NATIONWIDE)
    days = {code: list(d) for code, _, d in COMMUNITIES}
    for iso, name, where in BY_YEAR:
        rec = dated(dt.date.fromisoformat(iso), name)
        for code in where.split():
            days[code].append(rec)

    def catalan(recs):
        return [dict(r, name=CATALAN[r["name"]]) for r in flatten(recs)]

    es = {"code": "ES", "title": "España", "nationwide": nationwide,
          "provinces": [{"code": c, "title": t, "days": days[c]} for c, t, _ in COMMUNITIES]}
    ca = {"code": "ES", "title": CATALAN["España"], "nationwide": catalan(nationwide),
          "provinces": [{"code": c, "title": CATALAN[t], "days": catalan(days[c])} for c, t, _ in COMMUNITIES]}
    return {"es_ES": es, "ca_ES": ca}


# Free days per community and year, from the official yearly calendars.
TESTS = {
    ("MD", 2024): "01-01 01-06 03-28 03-29 05-01 05-02 07-25 08-15 10-12 11-01 12-06 12-08 12-25",
    ("CT", 2025): "01-01 01-06 04-18 04-21 05-01 06-24 08-15 09-11 10-12 11-01 12-06 12-08 12-25 12-26",
    ("AN", 2023): "01-01 01-02 01-06 02-28 04-06 04-07 05-01 08-15 10-12 11-01 12-06 12-08 12-25",
    ("VC", 2026): "01-01 01-06 03-19 04-03 04-06 05-01 06-24 08-15 10-09 10-12 11-01 12-06 12-08 12-25",
    ("", 2030): "01-01 01-06 04-18 04-19 05-01 08-15 10-12 11-01 12-06 12-08 12-25",
    ("MD", 2026): "01-01 01-06 04-02 04-03 05-01 05-02 08-15 10-12 11-01 11-02 12-06 12-07 12-08 12-25",
    ("CB", 2021): "01-01 01-06 04-01 04-02 05-01 07-28 08-15 09-15 10-12 11-01 12-06 12-08 12-25",
    ("PV", 2022): "01-01 01-06 04-14 04-15 04-18 05-01 07-25 08-15 09-06 10-12 11-01 12-06 12-08 12-25",
    ("AN", 2024): "01-01 01-06 02-28 03-28 03-29 05-01 08-15 10-12 11-01 12-06 12-08 12-09 12-25",
    ("CT", 2020): "01-01 01-06 04-10 04-13 05-01 06-24 08-15 09-11 10-12 11-01 12-06 12-08 12-25 12-26",
}


def _only_published_years_vary(built):
    years = {d[:4] for d, _, _ in BY_YEAR}
    assert years == {str(y) for y in range(2020, 2027)}, sorted(years)
    for iso, name, where in BY_YEAR:
        assert where.split() and set(where.split()) <= {c for c, _, _ in COMMUNITIES}, (iso, where)
    assert carnival_tuesday(2025) == dt.date(2025, 3, 4)


EXTRA_TESTS = [_only_published_years_vary]
