"""Bank holidays of the United Kingdom (en_GB).

The days shared by all four nations are nationwide; Easter Monday, the summer
bank holiday and the local days are per nation (ISO 3166-2:GB codes).

A bank holiday on a weekend gets a substitute day: the next weekday that is not
already a bank holiday.  Days that fall on a weekday are placed first, so with
Christmas on a Sunday, Boxing Day keeps Monday 26th and Christmas moves to the
Tuesday.
"""
import datetime as dt

from common import MON, YEARS, dated, fixed, flatten, nth_weekday, rule

_DAY = dt.timedelta(days=1)
SUBSTITUTE = " (substitute day)"

# Years in which a bank holiday was moved to make room for a national event.
EARLY_MAY_MOVED = {2020: (dt.date(2020, 5, 8), "Early May bank holiday (VE day)")}
SPRING_MOVED = {2002: dt.date(2002, 6, 4), 2012: dt.date(2012, 6, 4), 2022: dt.date(2022, 6, 2)}
ONE_OFF = [
    (dt.date(2002, 6, 3), "Queen's Golden Jubilee"),
    (dt.date(2011, 4, 29), "Royal wedding"),
    (dt.date(2012, 6, 5), "Queen's Diamond Jubilee"),
    (dt.date(2022, 6, 3), "Platinum Jubilee bank holiday"),
    (dt.date(2022, 9, 19), "Bank holiday for the State Funeral of Queen Elizabeth II"),
    (dt.date(2023, 5, 8), "Bank holiday for the coronation of King Charles III"),
]


def substitutes(holidays, taken=()):
    """Substitute days for `holidays` [(date, name), ...] of one year.

    `taken` are dates that are already bank holidays (e.g. nationwide
    substitutes when computing a nation's own days).  Returns [(date, name)].
    """
    taken = set(taken)
    pending = []
    for d, name in holidays:
        if d.weekday() < 5 and d not in taken:
            taken.add(d)
        else:
            pending.append((d, name))
    out = []
    for d, name in pending:
        s = d + _DAY
        while s.weekday() >= 5 or s in taken:
            s += _DAY
        taken.add(s)
        out.append((s, name + SUBSTITUTE))
    return out


def _new_year(y):
    return [(dt.date(y, 1, 1), "New Year's Day")]


def _christmas(y):
    return [(dt.date(y, 12, 25), "Christmas Day"), (dt.date(y, 12, 26), "Boxing Day")]


def nationwide_substitutes(y):
    return substitutes(_new_year(y)) + substitutes(_christmas(y))


def _records(pairs, honor="free"):
    return [dated(d, name, honor) for d, name in pairs]


def _nationwide():
    out = [rule(19, "New Year's Day"), rule(3, "Good Friday"),
           rule(16, "Christmas Day"), rule(17, "Boxing Day")]
    for y in YEARS:
        out += _records(nationwide_substitutes(y))
        out.append(dated(*EARLY_MAY_MOVED.get(y, (nth_weekday(y, 5, MON, 1), "Early May bank holiday"))))
        out.append(dated(SPRING_MOVED.get(y, nth_weekday(y, 5, MON, -1)), "Spring bank holiday"))
    out += _records(ONE_OFF)
    return out


def _late_summer():
    return [dated(nth_weekday(y, 8, MON, -1), "Summer bank holiday") for y in YEARS]


def _local(month, day, name, years):
    """A nation's own fixed bank holiday with its substitute days."""
    out = fixed(month, day, name, years=years)
    for y in years:
        out += _records(substitutes([(dt.date(y, month, day), name)]))
    return out


def _scotland():
    out = [rule(5, "Easter Monday", "")]  # not a bank holiday in Scotland
    for y in YEARS:
        jan2 = (dt.date(y, 1, 2), "2nd January")
        taken = [d for d, _ in substitutes(_new_year(y))]
        out.append(dated(*jan2))
        out += _records(substitutes([jan2], taken))
        out.append(dated(nth_weekday(y, 8, MON, 1), "Summer bank holiday"))
    # St Andrew's Day has been a bank holiday since 2007.
    out += fixed(11, 30, "St Andrew's Day", "show", years=range(YEARS[0], 2007))
    out += _local(11, 30, "St Andrew's Day", range(2007, YEARS[-1] + 1))
    return out


def _northern_ireland():
    return flatten([
        rule(5, "Easter Monday"),
        _local(3, 17, "St Patrick's Day", YEARS),
        _local(7, 12, "Battle of the Boyne (Orangemen's Day)", YEARS),
        _late_summer(),
    ])


def build():
    england_wales = [rule(5, "Easter Monday")] + _late_summer()
    return {"en_GB": {
        "code": "GB",
        "title": "United Kingdom",
        "nationwide": flatten(_nationwide()),
        "provinces": [
            {"code": "ENG", "title": "England", "days": list(england_wales)},
            {"code": "NIR", "title": "Northern Ireland", "days": _northern_ireland()},
            {"code": "SCT", "title": "Scotland", "days": flatten(_scotland())},
            {"code": "WLS", "title": "Wales", "days": list(england_wales)},
        ],
    }}
