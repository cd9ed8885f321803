"""Russia (ru_RU): the non-working holidays of the Labour Code (art. 112) and
the transfers of days off.

Holidays: New Year 1-2 January up to 2004; from 2005 the New Year holidays
1-5 January, from 2013 1-6 and 8 January; Christmas 7 January; Defender of the
Fatherland Day 23 February from 2002; 8 March; 1 May (and 2 May up to 2004);
Victory Day 9 May; Russia Day 12 June; 7 November (Day of Accord and
Reconciliation) and 12 December (Constitution Day) up to 2004; National Unity
Day 4 November from 2005.
Transfers: a holiday on a Saturday or Sunday moves that day off to the next
working day (art. 112); from 2013 this no longer holds for the January
holidays, whose days off the government moves by decree.  Each year the
government also moves days off to make bridges, in exchange for working
Saturdays.  For 2015-2024 the file has the complete lists of the government
decrees (2020-2024 as collected by OpenHolidays, ODbL, weekends included); for 2025
and 2026 the days moved by their decrees (2025: 2 May, 3 November,
31 December; 2026: 9 January, 31 December) on top of the art. 112 rule; for the other years only the art. 112 rule.  The
working Saturdays cannot be written in the file format and are missing.
"""
import datetime as dt

from common import SAT, SUN, YEARS, dated, flatten

DAY = dt.timedelta(days=1)

FILE_NOTE = ("Russia: the days off moved by government decree are listed for 2015-2026; "
        "the working Saturdays given in exchange cannot be expressed in this format and are missing")

NEW_YEAR_HOLIDAYS = "Новогодние каникулы"
DAY_OFF = "Выходной день"

# Days off of the government decrees beyond the holidays themselves (MM-DD);
# for these years the list is complete and replaces the art. 112 rule.  For
# 2015-2019 the weekdays only, from the decrees published the year before.
DECREES = {
    2015: "01-09 03-09 05-04 05-11",
    2016: "02-22 03-07 05-02 05-03 06-13",
    2017: "02-24 05-08 11-06",
    2018: "03-09 04-30 05-02 06-11 11-05 12-31",
    2019: "05-02 05-03 05-10",
    2020: "02-22 02-24 03-07 03-09 05-02 05-03 05-04 05-05 05-10 05-11 06-13 06-14",
    2021: "01-09 01-10 02-21 02-22 03-06 03-07 05-02 05-03 05-08 05-10 06-13 06-14 11-05 11-06 11-07 12-31",
    2022: "01-09 03-06 03-07 04-30 05-02 05-03 05-07 05-08 05-10 06-11 06-13 11-05 11-06",
    2023: "02-24 02-25 02-26 04-29 04-30 05-06 05-07 05-08 06-10 06-11 11-05 11-06",
    2024: "02-24 02-25 03-09 03-10 04-28 04-29 04-30 05-10 05-11 05-12 11-03 12-29 12-30 12-31",
}
# Days moved by decree in years whose other transfers follow art. 112.
DECREE_EXTRAS = {2025: "05-02 11-03 12-31", 2026: "01-09 12-31"}


def holidays(y):
    """The non-working holidays of year y: [(date, name)]."""
    d = lambda m, day: dt.date(y, m, day)  # noqa: E731
    out = []
    if y <= 2004:
        out += [(d(1, 1), "Новый год"), (d(1, 2), "Новый год")]
    else:
        last = 6 if y >= 2013 else 5
        out += [(d(1, k), NEW_YEAR_HOLIDAYS) for k in range(1, last + 1)]
        if y >= 2013:
            out.append((d(1, 8), NEW_YEAR_HOLIDAYS))
    out.append((d(1, 7), "Рождество Христово"))
    if y >= 2002:
        out.append((d(2, 23), "День защитника Отечества"))
    out += [(d(3, 8), "Международный женский день"), (d(5, 1), "Праздник Весны и Труда")]
    if y <= 2004:
        out.append((d(5, 2), "Праздник Весны и Труда"))
    out.append((d(5, 9), "День Победы"))
    out.append((d(6, 12), "День России" if y >= 2002 else
                "День принятия Декларации о государственном суверенитете Российской Федерации"))
    if y <= 2004:
        out += [(d(11, 7), "День согласия и примирения"), (d(12, 12), "День Конституции Российской Федерации")]
    else:
        out.append((d(11, 4), "День народного единства"))
    return out


def transfers(y):
    """Days off moved by art. 112: [(date, name)]."""
    days = holidays(y)
    taken = {d for d, _ in days}
    out = []
    for d, name in days:
        if d.weekday() not in (SAT, SUN) or (y >= 2013 and d.month == 1 and d.day <= 8):
            continue
        s = d + DAY
        while s.weekday() in (SAT, SUN) or s in taken:
            s += DAY
        taken.add(s)
        out.append((s, DAY_OFF))
    return out


def days_off(y):
    out = holidays(y)
    listed = DECREES.get(y)
    if listed is None:
        out += transfers(y)
        listed = DECREE_EXTRAS.get(y, "")
    out += [(dt.date(y, int(md[:2]), int(md[3:])), DAY_OFF) for md in listed.split()]
    return out


NATIONWIDE = flatten([dated(d, name) for y in YEARS for d, name in days_off(y)])


def build():
    return {"ru_RU": {"code": "RU", "title": "Россия",
                      "nationwide": NATIONWIDE, "provinces": []}}


# Non-working days (weekends that are holidays or listed days off included) from the
# production calendars of the Ministry of Labour.
TESTS = {
    ("", 2019): "01-01 01-02 01-03 01-04 01-05 01-06 01-07 01-08 02-23 03-08 05-01 05-02 05-03 05-09 "
              "05-10 06-12 11-04",
    ("", 2022): "01-01 01-02 01-03 01-04 01-05 01-06 01-07 01-08 01-09 02-23 03-06 03-07 03-08 04-30 05-01 "
              "05-02 05-03 05-07 05-08 05-09 05-10 06-11 06-12 06-13 11-04 11-05 11-06",
    ("", 2026): "01-01 01-02 01-03 01-04 01-05 01-06 01-07 01-08 01-09 02-23 03-08 03-09 05-01 05-09 "
              "05-11 06-12 11-04 12-31",
}
