#!/usr/bin/env python3
"""Writes data/moonphases/moonphases.xml: the date of every principal moon phase.

The instants come from the true-phase series in Meeus, Astronomical Algorithms
(2nd ed.), chapter 49: the mean phase, the periodic terms for new and full moon
or for the quarters (with the W correction), and the planetary corrections
A1..A14.  That gives the instant in dynamical time (TT); Delta T from the
Espenak & Meeus polynomial expressions turns it into universal time, and the
calendar date is then taken in Europe/Berlin civil time (summer time included,
from the system time zone database) or, with --utc, in UTC.

The library assigns phases to the listed dates by rotating from the year's
"start" attribute, so each year must list every phase of that year exactly once
and in order; check_years() enforces that before anything is written.

Standard library only (Python 3.11).
"""
import argparse
import csv
import datetime as dt
import math
import os
import sys
from zoneinfo import ZoneInfo

FIRST_YEAR = 1900
LAST_YEAR = 2100

NEW, FIRST_QUARTER, FULL, LAST_QUARTER = range(4)
PHASE_NAMES = ("new", "first_quarter", "full", "last_quarter")

BERLIN = "Europe/Berlin"
UTC = dt.timezone.utc

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
DEFAULT_OUTPUT = os.path.join(ROOT, "data", "moonphases", "moonphases.xml")

# Tolerance of --verify against published minute values.
MAX_MINUTES = 2.0

_J2000 = dt.datetime(2000, 1, 1, 12, tzinfo=UTC)  # JD 2451545.0
_SYNODIC = 29.530588861


def _sin(deg):
    return math.sin(math.radians(deg))


def _cos(deg):
    return math.cos(math.radians(deg))


# Periodic terms: (coefficient, power of E, multiples of M, M', F, Omega).
_NEW_TERMS = (
    (-0.40720, 0, 0, 1, 0, 0), (0.17241, 1, 1, 0, 0, 0), (0.01608, 0, 0, 2, 0, 0),
    (0.01039, 0, 0, 0, 2, 0), (0.00739, 1, -1, 1, 0, 0), (-0.00514, 1, 1, 1, 0, 0),
    (0.00208, 2, 2, 0, 0, 0), (-0.00111, 0, 0, 1, -2, 0), (-0.00057, 0, 0, 1, 2, 0),
    (0.00056, 1, 1, 2, 0, 0), (-0.00042, 0, 0, 3, 0, 0), (0.00042, 1, 1, 0, 2, 0),
    (0.00038, 1, 1, 0, -2, 0), (-0.00024, 1, -1, 2, 0, 0), (-0.00017, 0, 0, 0, 0, 1),
    (-0.00007, 0, 2, 1, 0, 0), (0.00004, 0, 0, 2, -2, 0), (0.00004, 0, 3, 0, 0, 0),
    (0.00003, 0, 1, 1, -2, 0), (0.00003, 0, 0, 2, 2, 0), (-0.00003, 0, 1, 1, 2, 0),
    (0.00003, 0, -1, 1, 2, 0), (-0.00002, 0, -1, 1, -2, 0), (-0.00002, 0, 1, 3, 0, 0),
    (0.00002, 0, 0, 4, 0, 0),
)

# Full moon differs from new moon only in the first seven coefficients.
_FULL_TERMS = tuple(
    (c,) + t[1:] for c, t in zip(
        (-0.40614, 0.17302, 0.01614, 0.01043, 0.00734, -0.00515, 0.00209), _NEW_TERMS)
) + _NEW_TERMS[7:]

_QUARTER_TERMS = (
    (-0.62801, 0, 0, 1, 0, 0), (0.17172, 1, 1, 0, 0, 0), (-0.01183, 1, 1, 1, 0, 0),
    (0.00862, 0, 0, 2, 0, 0), (0.00804, 0, 0, 0, 2, 0), (0.00454, 1, -1, 1, 0, 0),
    (0.00204, 2, 2, 0, 0, 0), (-0.00180, 0, 0, 1, -2, 0), (-0.00070, 0, 0, 1, 2, 0),
    (-0.00040, 0, 0, 3, 0, 0), (-0.00034, 1, -1, 2, 0, 0), (0.00032, 1, 1, 0, 2, 0),
    (0.00032, 1, 1, 0, -2, 0), (-0.00028, 2, 2, 1, 0, 0), (0.00027, 1, 1, 2, 0, 0),
    (-0.00017, 0, 0, 0, 0, 1), (-0.00005, 0, -1, 1, -2, 0), (0.00004, 0, 0, 2, 2, 0),
    (-0.00004, 0, 1, 1, 2, 0), (0.00004, 0, -2, 1, 0, 0), (0.00003, 0, 1, 1, -2, 0),
    (0.00003, 0, 3, 0, 0, 0), (0.00002, 0, 0, 2, -2, 0), (0.00002, 0, -1, 1, 2, 0),
    (-0.00002, 0, 1, 3, 0, 0),
)

# Planetary arguments A1..A14 as (constant, rate per lunation), with their
# coefficients; A1 also has a T^2 term, added in true_phase_jde().
_PLANETARY = (
    (299.77, 0.107408, 0.000325), (251.88, 0.016321, 0.000165),
    (251.83, 26.651886, 0.000164), (349.42, 36.412478, 0.000126),
    (84.66, 18.206239, 0.000110), (141.74, 53.303771, 0.000062),
    (207.14, 2.453732, 0.000060), (154.84, 7.306860, 0.000056),
    (34.52, 27.261239, 0.000047), (207.19, 0.121824, 0.000042),
    (291.34, 1.844379, 0.000040), (161.72, 24.198154, 0.000037),
    (239.56, 25.513099, 0.000035), (331.55, 3.592518, 0.000023),
)


def mean_phase_jde(lunation, phase):
    """Mean phase in JDE; lunation 0 is the new moon of 2000 January 6."""
    k = lunation + phase / 4
    t = k / 1236.85
    return (2451550.09766 + _SYNODIC * k + 0.00015437 * t**2
            - 0.000000150 * t**3 + 0.00000000073 * t**4)


def true_phase_jde(lunation, phase):
    """Instant of the true phase in JDE (dynamical time)."""
    k = lunation + phase / 4
    t = k / 1236.85
    e = 1 - 0.002516 * t - 0.0000074 * t**2
    m = 2.5534 + 29.10535670 * k - 0.0000014 * t**2 - 0.00000011 * t**3
    mp = (201.5643 + 385.81693528 * k + 0.0107582 * t**2 + 0.00001238 * t**3
          - 0.000000058 * t**4)
    f = (160.7108 + 390.67050284 * k - 0.0016118 * t**2 - 0.00000227 * t**3
         + 0.000000011 * t**4)
    om = 124.7746 - 1.56375588 * k + 0.0020672 * t**2 + 0.00000215 * t**3

    terms = {NEW: _NEW_TERMS, FULL: _FULL_TERMS}.get(phase, _QUARTER_TERMS)
    corr = sum(c * e**ep * _sin(a * m + b * mp + g * f + h * om)
               for c, ep, a, b, g, h in terms)
    if phase in (FIRST_QUARTER, LAST_QUARTER):
        w = (0.00306 - 0.00038 * e * _cos(m) + 0.00026 * _cos(mp)
             - 0.00002 * _cos(mp - m) + 0.00002 * _cos(mp + m) + 0.00002 * _cos(2 * f))
        corr += w if phase == FIRST_QUARTER else -w

    for i, (a0, rate, coef) in enumerate(_PLANETARY):
        arg = a0 + rate * k - (0.009173 * t**2 if i == 0 else 0.0)
        corr += coef * _sin(arg)
    return mean_phase_jde(lunation, phase) + corr


def delta_t(year):
    """TT - UT in seconds for a decimal year (Espenak & Meeus polynomials)."""
    y = year
    if y < 1900:
        t = y - 1860
        return (7.62 + 0.5737 * t - 0.251754 * t**2 + 0.01680668 * t**3
                - 0.0004473624 * t**4 + t**5 / 233174)
    if y < 1920:
        t = y - 1900
        return -2.79 + 1.494119 * t - 0.0598939 * t**2 + 0.0061966 * t**3 - 0.000197 * t**4
    if y < 1941:
        t = y - 1920
        return 21.20 + 0.84493 * t - 0.076100 * t**2 + 0.0020936 * t**3
    if y < 1961:
        t = y - 1950
        return 29.07 + 0.407 * t - t**2 / 233 + t**3 / 2547
    if y < 1986:
        t = y - 1975
        return 45.45 + 1.067 * t - t**2 / 260 - t**3 / 718
    if y < 2005:
        t = y - 2000
        return (63.86 + 0.3345 * t - 0.060374 * t**2 + 0.0017275 * t**3
                + 0.000651814 * t**4 + 0.00002373599 * t**5)
    if y < 2050:
        t = y - 2000
        return 62.92 + 0.32217 * t + 0.005589 * t**2
    u = (y - 1820) / 100
    if y < 2150:
        return -20 + 32 * u**2 - 0.5628 * (2150 - y)
    return -20 + 32 * u**2


def jde_to_utc(jde):
    """Universal time of a JDE as an aware datetime (UT1 and UTC not told apart)."""
    year = 2000 + (jde - 2451545.0) / 365.25
    jd = jde - delta_t(year) / 86400
    return _J2000 + dt.timedelta(days=jd - 2451545.0)


def phase_instants(first_year, last_year):
    """(phase, UTC datetime) of every principal phase from a little before
    first_year to a little after last_year, in time order."""
    n0 = math.floor((first_year - 1 - 2000) * 12.3685)
    n1 = math.ceil((last_year + 2 - 2000) * 12.3685)
    return [(p, jde_to_utc(true_phase_jde(n, p))) for n in range(n0, n1) for p in range(4)]


def build_years(first_year, last_year, tz):
    """{year: (start phase, [dates])} with dates in the zone tz."""
    years = {y: [] for y in range(first_year, last_year + 1)}
    for phase, when in phase_instants(first_year, last_year):
        day = when.astimezone(tz).date()
        if day.year in years:
            years[day.year].append((phase, day))
    table = {}
    for y, items in years.items():
        if not items:
            raise ValueError(f"{y}: no phases")
        table[y] = (items[0][0], [d for _, d in items])
    check_years(table)
    return table


def check_years(table):
    """Raise ValueError unless the years hold an unbroken new -> first quarter ->
    full -> last quarter cycle: each list in date order with no phase missing or
    doubled, within a year and across the turn of the year."""
    prev = None  # (phase, date) of the last entry checked
    for y in sorted(table):
        start, days = table[y]
        if not 0 <= start < 4:
            raise ValueError(f"{y}: bad start phase {start}")
        if not days or days[0] > dt.date(y, 1, 9) or days[-1] < dt.date(y, 12, 23):
            raise ValueError(f"{y}: phases missing at the start or end of the year")
        for i, day in enumerate(days):
            phase = (start + i) % 4
            if day.year != y:
                raise ValueError(f"{y}: date {day} listed in the wrong year")
            if prev is not None:
                gap = (day - prev[1]).days
                if phase != (prev[0] + 1) % 4 or not 5 <= gap <= 9:
                    raise ValueError(
                        f"{y}: {PHASE_NAMES[phase]} on {day} does not follow "
                        f"{PHASE_NAMES[prev[0]]} on {prev[1]}")
            prev = (phase, day)


def render_xml(table, zone_name):
    where = f"{zone_name} time" if zone_name != "UTC" else "UTC"
    lines = [
        '<?xml version="1.0" encoding="UTF-8"?>',
        "<!-- generated by tools/moonphases/generate.py (Meeus, Astronomical Algorithms, "
        f"ch. 49); dates in {where} -->",
        f'<moonphases timezone="{zone_name}">',
    ]
    for y in sorted(table):
        start, days = table[y]
        lines.append(f'  <year count="{y}" start="{start + 1}">')
        lines.extend(f"    <phase>{d:%m-%d}</phase>" for d in days)
        lines.append("  </year>")
    lines.append("</moonphases>")
    return "\n".join(lines) + "\n"


def read_known(path):
    """Rows of the reference CSV as (UTC datetime, phase index)."""
    rows = []
    with open(path, newline="", encoding="utf-8") as fh:
        for rec in csv.DictReader(fh, delimiter=";"):
            when = dt.datetime.fromisoformat(rec["utc_datetime"]).astimezone(UTC)
            rows.append((when, PHASE_NAMES.index(rec["phase"])))
    return rows


def _listed_phase(table, day):
    """Phase the reader would assign to day, or None if day is not listed."""
    entry = table.get(day.year)
    if entry is None or day not in entry[1]:
        return None
    start, days = entry
    return (start + days.index(day)) % 4


def verify(path, out=sys.stdout):
    """Check the generator against published phase times; returns the number of
    failing rows.  UTC: the computed instant within MAX_MINUTES of the row and
    its date listed with the right phase.  Berlin: the row's local date listed
    with the right phase."""
    rows = read_known(path)
    if not rows:
        print(f"{path}: no rows", file=out)
        return 1
    years = sorted({w.year for w, _ in rows})
    instants = phase_instants(years[0], years[-1])
    tables = {
        "UTC": build_years(years[0], years[-1], UTC),
        BERLIN: build_years(years[0], years[-1], ZoneInfo(BERLIN)),
    }
    failures = 0
    worst = 0.0
    worst_row = None
    for when, phase in rows:
        label = f"{when:%Y-%m-%d %H:%M} UTC {PHASE_NAMES[phase]}"
        computed = min((w for p, w in instants if p == phase), key=lambda w: abs(w - when))
        diff = (computed - when).total_seconds() / 60
        problems = []
        if abs(diff) > MAX_MINUTES:
            problems.append(f"computed {computed:%Y-%m-%d %H:%M:%S}, off by {diff:+.1f} min")
        if abs(diff) > abs(worst):
            worst, worst_row = diff, label
        for zone, table in tables.items():
            local = when.astimezone(ZoneInfo(zone) if zone != "UTC" else UTC).date()
            got = _listed_phase(table, local)
            if got != phase:
                what = "not listed" if got is None else f"listed as {PHASE_NAMES[got]}"
                problems.append(f"{zone} date {local} {what}")
        if problems:
            failures += 1
            print(f"FAIL {label}: " + "; ".join(problems), file=out)
    print(f"{len(rows)} rows, {len(rows) - failures} match, {failures} fail; "
          f"worst difference {worst:+.2f} min ({worst_row})", file=out)
    return failures


def main(argv=None):
    ap = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ap.add_argument("--utc", action="store_true", help="dates in UTC instead of Europe/Berlin")
    ap.add_argument("-o", "--output", default=None,
                    help=f"output file, '-' for stdout (default {os.path.relpath(DEFAULT_OUTPUT, ROOT)})")
    ap.add_argument("--first", type=int, default=FIRST_YEAR)
    ap.add_argument("--last", type=int, default=LAST_YEAR)
    ap.add_argument("--verify", metavar="CSV",
                    help="compare with published phase times (utc_datetime;phase) instead of writing")
    ap.add_argument("--check", action="store_true",
                    help="fail if the output file differs from what would be written")
    args = ap.parse_args(argv)

    if args.verify:
        return 1 if verify(args.verify) else 0
    if args.first > args.last:
        ap.error("--first is after --last")

    zone_name = "UTC" if args.utc else BERLIN
    tz = UTC if args.utc else ZoneInfo(BERLIN)
    text = render_xml(build_years(args.first, args.last, tz), zone_name)
    output = args.output or DEFAULT_OUTPUT
    if args.check:
        try:
            with open(output, encoding="utf-8") as fh:
                current = fh.read()
        except FileNotFoundError:
            current = None
        if current != text:
            print(f"{output} is out of date; run tools/moonphases/generate.py", file=sys.stderr)
            return 1
        print(f"{output} is up to date")
        return 0
    if output == "-":
        sys.stdout.write(text)
    else:
        os.makedirs(os.path.dirname(os.path.abspath(output)), exist_ok=True)
        with open(output, "w", encoding="utf-8", newline="\n") as fh:
            fh.write(text)
    return 0


if __name__ == "__main__":
    sys.exit(main())
