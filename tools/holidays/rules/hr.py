"""Croatia (hr_HR): the holidays and days off of the Holidays Act.

The act of 2019 (NN 110/2019), in force from 2020, moved Statehood Day from
25 June to 30 May, made 25 June (Independence Day) and 8 October (Independence
Day until 2019, now the Day of the Croatian Parliament) memorial days, shown,
and added Remembrance Day on 18 November. Corpus Christi has been a day off
since 2002 (one-off days, kept 60 days after the library's Easter). The feasts
of other religious communities are days off only for their members and are
left out. Since 2020 the day of national elections or a referendum is a day off
when it falls on a working day (17 April 2024, the parliamentary elections).
"""
import datetime as dt

from common import YEARS, dated, fixed, flatten, library_easter, rule, yearly

_LAST = YEARS[-1] + 1
OLD, NEW = range(2000, 2020), range(2020, _LAST)


def build():
    days = flatten([
        rule(19, "Nova godina"),
        rule(1, "Bogojavljenje ili Sveta tri kralja"),
        rule(4, "Uskrs"),
        rule(5, "Uskrsni ponedjeljak"),
        rule(6, "Praznik rada"),
        fixed(5, 30, "Dan državnosti", years=NEW),
        yearly(lambda y: library_easter(y) + dt.timedelta(days=60), "Tijelovo", years=range(2002, _LAST)),
        fixed(6, 22, "Dan antifašističke borbe"),
        fixed(6, 25, "Dan državnosti", years=OLD),
        fixed(6, 25, "Dan neovisnosti", "show", years=NEW),
        fixed(8, 5, "Dan pobjede i domovinske zahvalnosti i Dan hrvatskih branitelja"),
        rule(11, "Velika Gospa"),
        fixed(10, 8, "Dan neovisnosti", years=OLD),
        fixed(10, 8, "Dan Hrvatskoga sabora", "show", years=NEW),
        rule(13, "Svi sveti"),
        fixed(11, 18, "Dan sjećanja na žrtve Domovinskog rata i Dan sjećanja na žrtvu Vukovara "
                      "i Škabrnje", years=NEW),
        dated(dt.date(2024, 4, 17), "Dan izbora"),
        rule(16, "Božić"),
        rule(17, "Sveti Stjepan"),
    ])
    return {"hr_HR": {"code": "HR", "title": "Hrvatska", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2001): "01-01 01-06 04-15 04-16 05-01 06-22 06-25 08-05 08-15 10-08 11-01 12-25 12-26",
    ("", 2019): "01-01 01-06 04-21 04-22 05-01 06-20 06-22 06-25 08-05 08-15 10-08 11-01 12-25 12-26",
    ("", 2024): "01-01 01-06 03-31 04-01 04-17 05-01 05-30 05-30 06-22 08-05 08-15 11-01 11-18 12-25 12-26",
    ("", 2025): "01-01 01-06 04-20 04-21 05-01 05-30 06-19 06-22 08-05 08-15 11-01 11-18 12-25 12-26",
}
