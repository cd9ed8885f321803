"""Brazil (pt_BR): national holidays and the civic days of the states.

National days off: Lei 662/1949 with Lei 10.607/2002 (1 Jan, 21 Apr, 1 May,
7 Sep, 2 Nov, 15 Nov, 25 Dec), Lei 6.802/1980 (12 Oct, Nossa Senhora
Aparecida) and, from 2024, Lei 14.759/2023 (20 Nov, Zumbi e Consciência
Negra).  Good Friday is a religious holiday that the municipalities declare
under Lei 9.093/1995; every capital does, so it is marked free.
Carnival (Monday and Tuesday), Ash Wednesday and Corpus Christi are only
"ponto facultativo" of the federal administration (many towns make Corpus
Christi a municipal holiday): named days, not days off.
State days are those of the state laws (datas magnas and state holidays under
Lei 9.093/1995); purely municipal days (capitals' anniversaries, patron
saints) are left out.  States without a civic day of their own are listed so
that every state can be chosen.
"""
import datetime as dt

from common import YEARS, library_easter, fixed, flatten, rule, yearly


def since(first):
    return range(first, YEARS[-1] + 1)


NATIONWIDE = flatten([
    rule(19, "Confraternização Universal"),
    rule(20, "Carnaval (segunda-feira)", "show"),
    yearly(lambda y: library_easter(y) - dt.timedelta(days=47), "Carnaval", "show"),
    rule(21, "Quarta-feira de Cinzas", "show"),
    rule(3, "Sexta-feira da Paixão"),
    rule(4, "Páscoa", "show"),
    fixed(4, 21, "Tiradentes"),
    rule(6, "Dia do Trabalho"),
    rule(10, "Corpus Christi", "show"),
    fixed(9, 7, "Independência do Brasil"),
    fixed(10, 12, "Nossa Senhora Aparecida"),
    fixed(11, 2, "Finados"),
    fixed(11, 15, "Proclamação da República"),
    fixed(11, 20, "Dia Nacional de Zumbi e da Consciência Negra", years=since(2024)),
    rule(15, "Véspera de Natal", "show"),
    rule(16, "Natal"),
    rule(18, "Véspera de Ano-Novo", "show"),
])

BLACK_AWARENESS_STATE = "Dia da Consciência Negra"

STATES = [
    ("AC", "Acre", [fixed(1, 23, "Dia do Evangélico", years=since(2004)),
                    fixed(6, 15, "Aniversário do Acre"), fixed(9, 5, "Dia da Amazônia"),
                    fixed(8, 6, "Início da Revolução Acreana"),
                    fixed(11, 17, "Assinatura do Tratado de Petrópolis")]),
    ("AL", "Alagoas", [fixed(6, 24, "São João"), fixed(6, 29, "São Pedro"),
                       fixed(9, 16, "Emancipação Política de Alagoas")]),
    ("AM", "Amazonas", [fixed(9, 5, "Elevação do Amazonas à Categoria de Província")]),
    ("AP", "Amapá", [fixed(3, 19, "São José"), fixed(9, 13, "Criação do Território Federal do Amapá")]),
    ("BA", "Bahia", [fixed(7, 2, "Independência da Bahia")]),
    ("CE", "Ceará", [fixed(3, 19, "São José"), fixed(3, 25, "Data Magna do Ceará")]),
    ("DF", "Distrito Federal", [fixed(11, 30, "Dia do Evangélico")]),
    ("ES", "Espírito Santo", []),
    ("GO", "Goiás", []),
    ("MA", "Maranhão", [fixed(7, 28, "Adesão do Maranhão à Independência")]),
    ("MG", "Minas Gerais", []),  # its Data Magna is Tiradentes, a national day
    ("MS", "Mato Grosso do Sul", [fixed(10, 11, "Criação do Estado")]),
    ("MT", "Mato Grosso", [fixed(11, 20, BLACK_AWARENESS_STATE, years=range(2000, 2024))]),
    ("PA", "Pará", [fixed(8, 15, "Adesão do Grão-Pará à Independência")]),
    ("PB", "Paraíba", [fixed(8, 5, "Fundação do Estado")]),
    ("PE", "Pernambuco", [fixed(3, 6, "Revolução Pernambucana", years=since(2008)),
                          fixed(6, 24, "São João")]),
    ("PI", "Piauí", [fixed(3, 13, "Batalha do Jenipapo"), fixed(10, 19, "Dia do Piauí")]),
    ("PR", "Paraná", [fixed(12, 19, "Emancipação Política do Paraná")]),
    ("RJ", "Rio de Janeiro", [fixed(4, 23, "Dia de São Jorge", years=since(2008)),
                              fixed(11, 20, BLACK_AWARENESS_STATE, years=range(2002, 2024))]),
    ("RN", "Rio Grande do Norte", [fixed(10, 3, "Mártires de Cunhaú e Uruaçu", years=since(2007))]),
    ("RO", "Rondônia", [fixed(1, 4, "Criação do Estado"), fixed(6, 18, "Dia do Evangélico")]),
    ("RR", "Roraima", [fixed(10, 5, "Criação do Estado")]),
    ("RS", "Rio Grande do Sul", [fixed(9, 20, "Revolução Farroupilha")]),
    ("SC", "Santa Catarina", []),
    ("SE", "Sergipe", [fixed(7, 8, "Emancipação Política de Sergipe")]),
    ("SP", "São Paulo", [fixed(7, 9, "Revolução Constitucionalista")]),
    ("TO", "Tocantins", [fixed(3, 18, "Autonomia do Estado"), fixed(9, 8, "Nossa Senhora da Natividade"),
                         fixed(10, 5, "Criação do Estado")]),
]


def build():
    return {"pt_BR": {"code": "BR", "title": "Brasil", "nationwide": NATIONWIDE,
                      "provinces": [{"code": c, "title": t, "days": d} for c, t, d in STATES]}}


# Days off from the federal government's yearly lists and the state laws.
TESTS = {
    ("", 2023): "01-01 04-07 04-21 05-01 09-07 10-12 11-02 11-15 12-25",
    ("", 2024): "01-01 03-29 04-21 05-01 09-07 10-12 11-02 11-15 11-20 12-25",
    ("SP", 2025): "01-01 04-18 04-21 05-01 07-09 09-07 10-12 11-02 11-15 11-20 12-25",
    ("RJ", 2022): "01-01 04-15 04-21 04-23 05-01 09-07 10-12 11-02 11-15 11-20 12-25",
    ("RS", 2026): "01-01 04-03 04-21 05-01 09-07 09-20 10-12 11-02 11-15 11-20 12-25",
}
