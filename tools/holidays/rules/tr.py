"""Turkey (tr_TR): the national holidays and general holidays of Law 2429.

Fixed days: 1 January, 23 April, 1 May (from 2009), 19 May, 15 July (from
2017), 30 August and 29 October; the afternoon before 29 October is a half
day.  Ramazan Bayramı is 1-3 Shawwal, Kurban Bayramı 10-13 Dhu al-Hijja; the
day before each (arife) is a half day.  Half days are named days.  Bridge
days that the government grants to public servants (idari izin) are left out.
The Islamic months follow the calendar of the Presidency of Religious Affairs
(Diyanet), which fixes them in advance by the Istanbul criterion for the
first crescent (limits of 1978, rule of the 2016 congress); hijri.py
computes it.  The computed first days match the announced ones from 2000 to
2026 except for Kurban Bayramı 2012, announced a day earlier (25 October)
than the criterion gives; that year is written as announced.
"""
import datetime as dt
import functools

from common import YEARS, dated, fixed, flatten, rule
import hijri

DAY = dt.timedelta(days=1)

# First days of the two bayrams as announced by Diyanet (Ramazan, Kurban).
ANNOUNCED = {
    2000: (["01-08", "12-27"], ["03-16"]), 2001: (["12-16"], ["03-05"]), 2003: (["11-25"], ["02-11"]),
    2004: (["11-14"], ["02-01"]), 2005: (["11-03"], ["01-20"]), 2006: (["10-23"], ["01-10", "12-31"]),
    2007: (["10-12"], ["12-20"]), 2008: (["09-30"], ["12-08"]), 2009: (["09-20"], ["11-27"]),
    2010: (["09-09"], ["11-16"]), 2011: (["08-30"], ["11-06"]), 2012: (["08-19"], ["10-25"]),
    2013: (["08-08"], ["10-15"]), 2014: (["07-28"], ["10-04"]), 2015: (["07-17"], ["09-24"]),
    2016: (["07-05"], ["09-12"]), 2017: (["06-25"], ["09-01"]), 2018: (["06-15"], ["08-21"]),
    2019: (["06-04"], ["08-11"]), 2020: (["05-24"], ["07-31"]), 2021: (["05-13"], ["07-20"]),
    2022: (["05-02"], ["07-09"]), 2023: (["04-21"], ["06-28"]), 2024: (["04-10"], ["06-16"]),
    2025: (["03-30"], ["06-06"]), 2026: (["03-20"], ["05-27"]),
}
# Where the announced day differs from the criterion (first day of the bayram).
OVERRIDES = {dt.date(2012, 10, 26): dt.date(2012, 10, 25)}

RAMAZAN, KURBAN = "Ramazan Bayramı", "Kurban Bayramı"


@functools.lru_cache(maxsize=None)
def bayram_starts():
    """[(first day, name)] of every Ramazan and Kurban Bayramı near 2000-2100."""
    out = []
    for year_ah in range(1419, 1527):
        out.append((hijri.month_start(year_ah, 10), RAMAZAN))
        out.append((hijri.month_start(year_ah, 12) + 9 * DAY, KURBAN))
    return tuple((OVERRIDES.get(d, d), name) for d, name in out)


def bayram_days(starts):
    out = []
    for first, name in starts:
        length = 3 if name == RAMAZAN else 4
        days = [(first - DAY, name + " Arifesi", "show")]
        days += [(first + k * DAY, "%s (%d. gün)" % (name, k + 1), "free") for k in range(length)]
        out += [dated(d, n, h) for d, n, h in days if d.year in YEARS]
    return out


def build():
    nationwide = flatten([
        rule(19, "Yılbaşı"),
        fixed(4, 23, "Ulusal Egemenlik ve Çocuk Bayramı"),
        fixed(5, 1, "Emek ve Dayanışma Günü", years=range(2009, YEARS[-1] + 1)),
        fixed(5, 19, "Atatürk'ü Anma, Gençlik ve Spor Bayramı"),
        fixed(7, 15, "Demokrasi ve Millî Birlik Günü", years=range(2017, YEARS[-1] + 1)),
        fixed(8, 30, "Zafer Bayramı"),
        fixed(10, 28, "Cumhuriyet Bayramı Arifesi", "show"),
        fixed(10, 29, "Cumhuriyet Bayramı"),
        bayram_days(bayram_starts()),
        rule(18, "Yılbaşı Gecesi", "show"),
    ])
    return {"tr_TR": {"code": "TR", "title": "Türkiye", "nationwide": nationwide, "provinces": []}}


def check_announced(built):
    starts = {d for d, _ in bayram_starts()}
    for year, (ramazan, kurban) in sorted(ANNOUNCED.items()):
        for mmdd in ramazan + kurban:
            d = dt.date(year, int(mmdd[:2]), int(mmdd[3:]))
            assert d in starts, "announced bayram %s not computed" % d
    years = set(ANNOUNCED)
    computed = sorted(d for d in starts if d.year in years)
    want = sorted(dt.date(y, int(m[:2]), int(m[3:])) for y, (r, k) in ANNOUNCED.items() for m in r + k)
    assert computed == want, "computed bayrams %s, announced %s" % (
        sorted(set(computed) - set(want)), sorted(set(want) - set(computed)))


def check_raw_criterion(built):
    """The criterion itself, without the override, for a few years near its limits."""
    for year_ah, month, want in ((1446, 10, dt.date(2025, 3, 30)), (1440, 10, dt.date(2019, 6, 4)),
                                 (1445, 12, dt.date(2024, 6, 7)), (1433, 12, dt.date(2012, 10, 17))):
        got = hijri.month_start(year_ah, month)
        assert got == want, "1 of month %d, %d AH: %s, want %s" % (month, year_ah, got, want)


EXTRA_TESTS = [check_announced, check_raw_criterion]

TESTS = {
    ("", 2024): "01-01 04-10 04-11 04-12 04-23 05-01 05-19 06-16 06-17 06-18 06-19 07-15 08-30 10-29",
    ("", 2006): "01-01 01-10 01-11 01-12 01-13 04-23 05-19 08-30 10-23 10-24 10-25 10-29 12-31",
}
