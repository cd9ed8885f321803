"""Bulgaria (bg_BG): the official holidays of the Labour Code (art. 154).

Easter is the Orthodox one (orthodox_easter); its days are one-off days. Good
Friday and Holy Saturday were added to Easter Sunday and Monday by the 2008
amendment of the Labour Code, first kept in 2009. When a holiday other than the
Easter days falls on a Saturday or Sunday, the first working day after it is
off (art. 154(2)); those days are written per year. Working days moved by the
government's yearly decrees (bridges) are not included. 1 November (Day of the
National Awakeners) is a day off only for schools: shown. 31 December 2025
and 2 January 2026 were one-off days off for the changeover to the euro
(Council of Ministers' decision; taken from the OpenHolidays table).
"""
import datetime as dt

from common import SAT, YEARS, dated, fixed, flatten, orthodox_day, orthodox_easter, rule

_LAST = YEARS[-1] + 1

# (month, day, name) of the fixed holidays that get a substitute day
FIXED = [
    (1, 1, "Нова година"),
    (3, 3, "Ден на Освобождението на България от османско иго"),
    (5, 1, "Ден на труда и на международната работническа солидарност"),
    (5, 6, "Гергьовден, Ден на храбростта и Българската армия"),
    (5, 24, "Ден на светите братя Кирил и Методий, на българската азбука, просвета и култура "
            "и на славянската книжовност"),
    (9, 6, "Ден на Съединението"),
    (9, 22, "Ден на Независимостта на България"),
    (12, 24, "Бъдни вечер"),
    (12, 25, "Рождество Христово"),
    (12, 26, "Рождество Христово"),
]
SUBSTITUTE = "Почивен ден"


def easter_days(year):
    e = orthodox_easter(year)
    first = -2 if year >= 2009 else 0
    return {e + dt.timedelta(days=k) for k in range(first, 2)}


def substitutes(year):
    """(date, name) of the working days that replace holidays falling on a weekend."""
    holidays = sorted(dt.date(year, m, d) for m, d, _ in FIXED)
    taken = set(holidays) | easter_days(year)
    names = {dt.date(year, m, d): n for m, d, n in FIXED}
    out = []
    for day in holidays:
        if day.weekday() < SAT:
            continue
        sub = day
        while sub.weekday() >= SAT or sub in taken:
            sub += dt.timedelta(days=1)
        taken.add(sub)
        if sub.year == year:
            out.append((sub, "%s (%s)" % (SUBSTITUTE, names[day])))
    return out


def build():
    days = flatten([
        [fixed(m, d, n) for m, d, n in FIXED[:7]],
        orthodox_day(-2, "Велики петък", years=range(2009, _LAST)),
        orthodox_day(-1, "Велика събота", years=range(2009, _LAST)),
        orthodox_day(0, "Великден"),
        orthodox_day(1, "Великден"),
        fixed(11, 1, "Ден на народните будители", "show"),
        [fixed(m, d, n) for m, d, n in FIXED[7:]],
        [dated(d, n) for y in YEARS for d, n in substitutes(y)],
        dated(dt.date(2025, 12, 31), "Ден на приемане на еврото"),
        dated(dt.date(2026, 1, 2), "Ден на приемане на еврото"),
    ])
    return {"bg_BG": {"code": "BG", "title": "България", "nationwide": days, "provinces": []}}


TESTS = {
    # official calendar 2025 (without the bridge days of the government's decree)
    ("", 2025): "01-01 03-03 04-18 04-19 04-20 04-21 05-01 05-06 05-24 05-26 09-06 09-08 09-22 "
                "12-24 12-25 12-26 12-31",
    ("", 2026): "01-01 01-02 03-03 04-10 04-11 04-12 04-13 05-01 05-06 05-24 05-25 09-06 09-07 09-22 "
                "12-24 12-25 12-26 12-28",
    ("", 2021): "01-01 03-03 04-30 05-01 05-01 05-02 05-03 05-04 05-06 05-24 09-06 09-22 12-24 12-25 12-26 "
                "12-27 12-28",
}
