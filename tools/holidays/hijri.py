"""Beginnings of Islamic months by a crescent-visibility criterion.

The criterion is the one of the International Hijri Calendar Union Congress
(Istanbul, 2016), which the Presidency of Religious Affairs of Turkey follows
for its calendar; it keeps the limits of the Istanbul conference of 1978:
a month begins on the day after the first day on which, somewhere on Earth
(latitudes up to 60°) and before 24:00 UTC, the Moon at sunset stands at least
5° above the horizon and at least 8° from the Sun; or on which these limits
are met at sunset anywhere on the American mainland, later than 24:00 UTC,
provided the conjunction came before dawn (Sun 18° below the horizon) of the
next day in New Zealand.  The same rule is applied to the years
before 2016 as well; it gives the dates announced since 2000 but for one (see
rules/tr.py).

Conjunctions come from the moon-phase series of tools/moonphases (Meeus,
chapter 49).  The positions of Moon and Sun at sunset use the main periodic
terms of Meeus chapters 47 and 25 (errors of a few hundredths of a degree,
far below what the 8°/5° limits need).  Near a limit the result can still
differ from the published calendar, which is why rules/tr.py checks it
against the announced dates.
"""
import datetime as dt
import importlib.util
import math
import os

_HERE = os.path.dirname(os.path.abspath(__file__))
_spec = importlib.util.spec_from_file_location(
    "moonphases_generate", os.path.join(_HERE, "..", "moonphases", "generate.py"))
moonphases = importlib.util.module_from_spec(_spec)
_spec.loader.exec_module(moonphases)

MIN_ELONGATION = 8.0
MIN_ALTITUDE = 5.0
LATITUDES = range(-60, 61, 5)
_J2000 = 2451545.0
_UNIX_JD = 2440587.5

# (coefficient in 1e-6 degrees, D, M, M', F) of the Moon's longitude and latitude
_LON = ((6288774, 0, 0, 1, 0), (1274027, 2, 0, -1, 0), (658314, 2, 0, 0, 0), (213618, 0, 0, 2, 0),
        (-185116, 0, 1, 0, 0), (-114332, 0, 0, 0, 2), (58793, 2, 0, -2, 0), (57066, 2, -1, -1, 0),
        (53322, 2, 0, 1, 0), (45758, 2, -1, 0, 0), (-40923, 0, 1, -1, 0), (-34720, 1, 0, 0, 0),
        (-30383, 0, 1, 1, 0), (15327, 2, 0, 0, -2), (-12528, 0, 0, 1, 2), (10980, 0, 0, 1, -2),
        (10675, 4, 0, -1, 0), (10034, 0, 0, 3, 0), (8548, 4, 0, -2, 0), (-7888, 2, 1, -1, 0),
        (-6766, 2, 1, 0, 0), (-5163, 1, 0, -1, 0), (4987, 1, 1, 0, 0), (4036, 2, -1, 1, 0))
_LAT = ((5128122, 0, 0, 0, 1), (280602, 0, 0, 1, 1), (277693, 0, 0, 1, -1), (173237, 2, 0, 0, -1),
        (55413, 2, 0, -1, 1), (46271, 2, 0, -1, -1), (32573, 2, 0, 0, 1), (17198, 0, 0, 2, 1),
        (9266, 2, 0, 1, -1), (8822, 0, 0, 2, -1), (8216, 2, -1, 0, -1))


def _jd(when):
    return when.timestamp() / 86400 + _UNIX_JD


def _sin(x):
    return math.sin(math.radians(x))


def _cos(x):
    return math.cos(math.radians(x))


def _equatorial(lon, lat, eps):
    ra = math.degrees(math.atan2(_sin(lon) * _cos(eps) - math.tan(math.radians(lat)) * _sin(eps), _cos(lon)))
    dec = math.degrees(math.asin(_sin(lat) * _cos(eps) + _cos(lat) * _sin(eps) * _sin(lon)))
    return ra, dec


def positions(jd):
    """((sun RA, dec), (moon RA, dec), elongation) in degrees at Julian day jd (UT)."""
    t = (jd - _J2000) / 36525
    eps = 23.439291 - 0.0130042 * t
    m_sun = 357.52911 + 35999.05029 * t
    sun_lon = 280.46646 + 36000.76983 * t + 1.914602 * _sin(m_sun) + 0.019993 * _sin(2 * m_sun)
    d = 297.8501921 + 445267.1114034 * t
    m = 357.5291092 + 35999.0502909 * t
    mp = 134.9633964 + 477198.8675055 * t
    f = 93.2720950 + 483202.0175233 * t
    e = 1 - 0.002516 * t

    def series(terms):
        return sum(c * e ** abs(bm) * _sin(bd * d + bm * m + bmp * mp + bf * f)
                   for c, bd, bm, bmp, bf in terms) / 1e6
    moon_lon = 218.3164477 + 481267.88123421 * t + series(_LON)
    moon_lat = series(_LAT)
    elong = math.degrees(math.acos(_cos(moon_lat) * _cos(moon_lon - sun_lon)))
    return _equatorial(sun_lon, 0.0, eps), _equatorial(moon_lon, moon_lat, eps), elong


def _altitude(ra_dec, jd, lat, lon):
    gmst = 280.46061837 + 360.98564736629 * (jd - _J2000)
    ha = gmst + lon - ra_dec[0]
    return math.degrees(math.asin(_sin(lat) * _sin(ra_dec[1]) + _cos(lat) * _cos(ra_dec[1]) * _cos(ha)))


def _sunset(jd_guess, lat, lon, altitude=-0.833, rising=False):
    """Julian day of sunset (Sun's centre 0.833° below the horizon) near jd_guess, or
    of the Sun passing `altitude` in the morning with rising=True; None in polar day/night."""
    jd = jd_guess
    for _ in range(3):
        sun, _, _ = positions(jd)
        cos_h0 = (_sin(altitude) - _sin(lat) * _sin(sun[1])) / (_cos(lat) * _cos(sun[1]))
        if abs(cos_h0) > 1:
            return None
        h0 = math.degrees(math.acos(cos_h0)) * (-1 if rising else 1)
        gmst = 280.46061837 + 360.98564736629 * (jd - _J2000)
        ha = (gmst + lon - sun[0] + 180) % 360 - 180
        jd += (h0 - ha) / 360.98564736629
    return jd


def _limits_met(jd, lat, lon):
    _, moon, elong = positions(jd)
    alt = _altitude(moon, jd, lat, lon)
    alt -= 0.95 * _cos(alt)  # parallax: the Moon seen from the surface, not the centre
    return elong >= MIN_ELONGATION and alt >= MIN_ALTITUDE


# Wellington stands for New Zealand
NEW_ZEALAND = (-41.3, 174.8)


def _in_americas(lat, lon):
    """A coarse outline of the American mainland: longitude limits per band of latitude."""
    for (lat0, lat1), (lon0, lon1) in (((-56, -20), (-76, -40)), ((-20, 12), (-82, -35)),
                                       ((12, 30), (-118, -80)), ((30, 50), (-125, -65)),
                                       ((50, 61), (-168, -60))):
        if lat0 <= lat < lat1 and lon0 <= lon <= lon1:
            return True
    return False


def americas_exception(day, conjunction_jd):
    """The congress's exception for the evening of `day` in the Americas."""
    midnight = _jd(dt.datetime(day.year, day.month, day.day, tzinfo=dt.timezone.utc)) + 1
    dawn = _sunset(midnight - 0.3, NEW_ZEALAND[0], NEW_ZEALAND[1], -18.0, rising=True)
    if dawn is None or conjunction_jd > dawn:
        return False
    for lat in range(-55, 61, 5):
        for lon in range(-170, -34, 5):
            if not _in_americas(lat, lon):
                continue
            jd = _sunset(midnight - 0.25 - lon / 360, lat, lon)
            if jd is not None and _limits_met(jd, lat, lon):
                return True
    return False


def crescent_seen(day):
    """True when the criterion holds on the evening of `day` (a date) before 24:00 UTC."""
    midnight = _jd(dt.datetime(day.year, day.month, day.day, tzinfo=dt.timezone.utc)) + 1
    for lat in LATITUDES:
        # The westernmost place of this latitude whose sunset is still before 24:00 UTC
        # sees the oldest Moon, which is where the limits are met first.
        lon, jd = 0.0, None
        for _ in range(4):
            jd = _sunset(midnight - 0.25 - lon / 360, lat, lon)
            if jd is None:
                break
            lon += (jd - (midnight - 1e-4)) * 360.98564736629 * 0.99727
        if jd is None or jd > midnight:
            continue
        if _limits_met(jd, lat, lon):
            return True
    return False


# Lunation 0 of the moon-phase series is the new moon of 6 January 2000; the new
# moon before 1 Shawwal 1445 (10 April 2024) is lunation 300.
_SHAWWAL_1445 = (1445 - 1) * 12 + 9
_LUNATION_OF_SHAWWAL_1445 = 300


def month_start(year_ah, month):
    """Gregorian date of the first day of an Islamic month (month 1..12)."""
    index = (year_ah - 1) * 12 + (month - 1)
    k = index - _SHAWWAL_1445 + _LUNATION_OF_SHAWWAL_1445
    conj = moonphases.jde_to_utc(moonphases.true_phase_jde(k, moonphases.NEW))
    day = conj.date()
    while not (crescent_seen(day) or americas_exception(day, _jd(conj))):
        day += dt.timedelta(days=1)
    return day + dt.timedelta(days=1)
