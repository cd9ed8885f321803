"""School vacations for the holiday files, converted from the OpenHolidays data.

generate.py calls school_vacations(locale) for every calendar locale and
writes the result as <vacation> elements. The source is a directory of
';'-separated CSV files, one folder per country:

    <SOURCE_ROOT>/<cc>/holidays.school*.csv    the vacations
    <SOURCE_ROOT>/<cc>/subdivisions.csv         region codes, names, parents
    <SOURCE_ROOT>/<cc>/groups.csv               region groups or school types

Column order differs from file to file (and some files carry a byte-order
mark, CRLF line ends or trailing empty columns), so every file is read by
column name. A name cell holds several languages, "DE Sommerferien,EN Summer
Holidays", with "%2C" standing for a comma inside a name.

The calendar knows one set of dates per province, while the source often
knows several (districts, school types, language areas). The choices made to
get one set per province are kept together in POLICIES below, so they can be
read and reviewed in one place.

Usage:
    python3 tools/holidays/school.py --summary     provinces, counts and years per locale
    python3 tools/holidays/school.py --long        vacations longer than 50 days
    python3 tools/holidays/school.py --selftest    the module's own tests
"""
import csv
import datetime as dt
import functools
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

_REPO = Path(__file__).resolve().parents[2]


def _default_root():
    env = os.environ.get("OPENHOLIDAYS_DIR")
    if env:
        # Accept both the school folder itself and the openholidays folder above it.
        path = Path(env)
        return path / "school" if (path / "school").is_dir() else path
    return _REPO.parent / "shared" / "data-sources" / "openholidays" / "school"


SOURCE_ROOT = _default_root()

# The library warns about vacations longer than this; they are legal.
LONG_VACATION_DAYS = 50

# Countries whose calendar locales get school vacations. Anything else gets {}.
# The source has no school rows for Sweden (only its regions).
SUPPORTED = {"AT", "BE", "CH", "CZ", "DE", "ES", "FR", "IT", "LU", "NL", "PL", "PT", "SK",
             "BG", "EE", "HR", "HU", "IE", "LT", "LV", "MT", "RO", "SI", "MX", "RS"}

# Calendar locales covered, for --summary and the tests.
LOCALES = ["de_DE", "de_AT", "de_CH", "fr_CH", "it_CH", "fr_FR", "nl_BE", "fr_BE", "nl_NL",
           "fr_LU", "lb_LU", "it_IT", "es_ES", "pt_PT", "pl_PL", "cs_CZ", "sk_SK",
           "ca_ES", "de_BE", "de_LU", "bg_BG", "et_EE", "hr_HR", "hu_HU", "en_IE", "ga_IE", "lt_LT",
           "lv_LV", "mt_MT", "en_MT", "ro_RO", "sl_SI", "es_MX", "sr_RS"]

# Source rows that contradict another row for the same region and vacation, or
# cannot be right; each is left out with the reason.
SKIP_ROWS = {
    # Guyane, Pâques 2024: "2024-03-29..2025-05-04" runs for more than a year; the
    # row 2024-04-21..2024-05-02 is kept.
    "833e17c3-66f2-4033-add3-c9a2b6952c4b": "end date in the wrong year",
    # Guadeloupe, Pâques 2026: 2026-04-18..05-04 repeats the 2025 dates a year on;
    # the row 2026-04-03..04-19 around Easter 2026 is kept.
    "e0c1d64e-3010-4a5d-a489-1eb4cc8eea3d": "2025 dates copied into 2026",
    # Corse, été 2021: a second row 2021-07-09..09-02 next to 2021-07-07..09-01,
    # which matches the national end of classes (6 July) and return (2 September).
    "ac89ac60-f1f8-4e75-9593-1d1c567922e5": "second summer row for 2021",
    # Saint-Pierre-et-Miquelon, Toussaint 2024: 10-23..11-03 next to 10-20..11-03;
    # the latter follows the same pattern as the territory's other years.
    "7d647acb-e9c5-4ae6-bef7-dc67048056fb": "second Toussaint row for 2024",
    # Hungary, winter 2019/20: a second row from Monday 23 December; the last school day
    # was Friday 20 December, as in the row 2019-12-21..2020-01-05 that is kept.
    "2ff881f1-e764-4d0a-babd-4cc6b8107d2a": "second winter row for 2019/20",
    # Romania, ski week 2024: 02-12..02-18 for the whole country, next to the same week
    # for Bistrița-Năsăud and Satu Mare only and the other counties' later weeks.
    "0fe6db0a-6ed5-41e8-8a64-6ffae4262a44": "ski week of two counties without them",
    # Lithuania, spring 2026: 2026-03-30..05-05 runs into May, five weeks; the row
    # 2026-04-06..04-12 around Easter is kept.
    "628a6337-6659-451e-bd84-5f6d7ba3783d": "spring vacation of five weeks",
}

# Typing errors in the source whose right value follows from the row itself
# (every other year of the same vacation, the weekday pattern). Source Id ->
# corrected columns.
CORRECTIONS = {
    # France zone B, printemps 2020: two weeks like zones A and C, not six.
    "5887a588-b43e-4bd4-80f6-a6034a6bf677": {"EndDate": "2020-04-26"},
    # Jura, Ascension 2020 is Thursday 21 May (the row says April).
    "96e57047-2a32-4246-8f29-7d875162eeb0": {"StartDate": "2020-05-21", "EndDate": "2020-05-22"},
    # Jura, Pâques 2025: from Good Friday for two weeks as in every other year.
    "ce0f46e5-6d48-4f5b-a73f-31b21ae1687a": {"StartDate": "2025-04-18"},
    # Basel-Landschaft and Basel-Stadt, Auffahrtsbrücke: the Friday after Ascension
    # (2026-05-25 is Whit Monday, 2028-06-26 a Monday in June).
    "09392383-3b07-4bfd-ae18-c599409a0541": {"StartDate": "2026-05-15"},
    "6de6468b-7ec2-4732-8569-d775363a5b55": {"StartDate": "2026-05-15"},
    "7035741b-0c58-40a5-8866-46133d2b7cc1": {"StartDate": "2028-05-26"},
    "05075135-41c6-4cfd-a514-4f8419babf6c": {"StartDate": "2028-05-26"},
}

# A row longer than this is taken for a typing error in the source and stops the
# conversion (the longest real ones, Italian and Portuguese summers, are ~100 days).
MAX_PLAUSIBLE_DAYS = 125

# Only this row type is a vacation; "BackToSchool" and "EndOfLessons" mark a
# single day of the school year and are left out.
VACATION_TYPE = "School"


class SourceError(ValueError):
    """The source data does not fit the expectations of this converter."""


class Policy:
    """How one country's source regions become provinces of the calendar.

    province_codes   source code -> province code, where the ISO code is not wanted
                     or missing (French zones, regions folded into their zone)
    region_groups    True when the Groups column names regions (NL, BE); otherwise
                     it names school types
    representatives  parent code -> the one sub-region whose dates the parent takes
                     (rows naming other sub-regions of that parent are left out)
    split            source code -> its sub-regions that are provinces of their own
    general_types    school types preferred where a province has rows per school type
    drop_comments    province -> regular expressions; rows whose Comment matches are
                     variants for a minority of schools and are left out
    first_per_year   provinces for which the source lists a vacation twice a year, once
                     for each half of the province; the earlier one is kept
    copies           province -> further provinces of the calendar (ISO codes below
                     the source's level) that share its vacations
    """

    def __init__(self, province_codes=None, region_groups=False, representatives=None,
                 split=None, general_types=(), drop_comments=None, first_per_year=(),
                 copies=None):
        self.province_codes = dict(province_codes or {})
        self.region_groups = region_groups
        self.representatives = dict(representatives or {})
        self.split = {k: list(v) for k, v in (split or {}).items()}
        self.general_types = set(general_types)
        self.drop_comments = {k: [re.compile(p) for p in v] for k, v in (drop_comments or {}).items()}
        self.first_per_year = set(first_per_year)
        self.copies = {k: list(v) for k, v in (copies or {}).items()}


_FR_ZONES = {"ZA": "A", "ZB": "B", "ZC": "C"}
# Regions listed without their zone in the older rows; each lies wholly in one zone.
_FR_REGION_ZONE = {"AR": "A", "BF": "A", "NA": "A",
                   "BT": "B", "CV": "B", "GE": "B", "HF": "B", "NO": "B", "PC": "B", "PL": "B",
                   "IF": "C", "OC": "C"}

POLICIES = {
    "AT": Policy(),
    # Communities: DE (German-speaking), FR (French), NL (Flemish); no ISO codes exist.
    "BE": Policy(region_groups=True),
    "CH": Policy(
        # Appenzell I.Rh.: the inner districts (all but Oberegg); Graubünden: the
        # regions outside Moesa, with Plessur (Chur) standing for them.
        representatives={"AI": "AI-AP", "GR": "GR-PS"},
        # Volksschulen (compulsory schools); Bern: the German-speaking ones.
        general_types={"AI-VS", "AR-VS", "BE-VS", "GR-VS", "SO-VS", "ZH-VS"},
        drop_comments={
            "FR": [r"^FR Écoles sec\. II$"],                  # keep the primary schools
            "NW": [r"^DE Mittelschulen$"],                    # keep the Volksschulen
            "OW": [r"Ausnahmeregelung für Gemeinde Engelberg"],
            "VS": [r"deutschsprachig", r"Tourismusgemeinden"],  # French-speaking majority
        }),
    "CZ": Policy(
        # Spring holidays go by district; each region takes the week of its
        # capital's district (Středočeský: Praha-východ, its most populous).
        representatives={"ST": "ST-PH", "JC": "JC-CB", "PL": "PL-PM", "KA": "KA-KV",
                         "US": "US-UL", "LI": "LI-LB", "KR": "KR-HK", "PA": "PA-PU",
                         "VY": "VY-JI", "JM": "JM-BM", "OL": "OL-OC", "ZL": "ZL-ZL",
                         "MO": "MO-OV"},
        # Prague's spring holiday: Praha 1-5 in one week, Praha 6-10 in another;
        # the source names only "PR" for both.
        first_per_year={"10"}),
    "DE": Policy(general_types={"MV-ABS"}),  # MV: allgemeinbildende Schulen
    "ES": Policy(representatives={"AN": "AN-SE", "AR": "AR-ZG"}),  # Sevilla, Zaragoza
    # Moselle, Bas-Rhin and Haut-Rhin keep their own public holidays and so are
    # provinces of the calendar; their schools are in zone B.
    "FR": Policy(province_codes=dict(_FR_ZONES, **_FR_REGION_ZONE),
                 copies={"B": ["57", "67", "68"]}),
    # Trentino-Alto Adige: Bolzano and Trento keep separate school calendars.
    "IT": Policy(split={"TR": ["TR-BZ", "TR-TN"]}),
    "LU": Policy(),
    # Regions north, middle, south; no ISO codes exist.
    "NL": Policy(region_groups=True),
    "PL": Policy(),
    # Summer holidays differ by grade; the rows for grades 5-8 and 10 (the most
    # grades) are kept, those for 9, 11, 12 and for pre-school and 1-4 left out.
    "PT": Policy(drop_comments={"": [r"^PT 9\.º", r"pré-escolar"]}),
    "SK": Policy(),
    # National rows only. Bulgaria: rows per grade; those for grades 7-11 (summer) and
    # 1-11 (spring) are kept, the ones for 1-3, 4-6, sports schools and grade 12 left out.
    "BG": Policy(drop_comments={"": [r"^BG (XII|I-III|IV-VI|V-VI) клас"]}),
    "EE": Policy(), "HU": Policy(), "LT": Policy(), "LV": Policy(), "MT": Policy(),
    # Ireland: the primary schools' mid-term breaks; the post-primary ones are left out.
    "IE": Policy(drop_comments={"": [r"Post-primary schools"]}),
    # Croatia 2019/20: counties chose one of four options; option I is kept.
    "HR": Policy(drop_comments={"": [r"^HR Opcija (II|IV|III i IV) "]}),
    # Romania: the February week differs by county (ISO codes); the longer winter vacation
    # of 2021/22 for pre-school and primary classes only is left out.
    "RO": Policy(drop_comments={"": [r"preșcolar și primar"]}),
    # Slovenia: the February week differs by the western and eastern school regions
    # (ZR, VR), which have no ISO codes.
    # Slovenia: the primary schools; the rows for secondary schools are left out.
    "SI": Policy(drop_comments={"": [r"srednje šole"]}),
    "MX": Policy(),  # the federal school calendar (SEP), national rows only
    # Secondary schools start and end some vacations on other days; primary ones are kept.
    "RS": Policy(drop_comments={"": [r"Средња"]}),
}


# Reading the source -----------------------------------------------------------

def read_table(path):
    """Rows of one CSV file as dicts keyed by column name; blank rows are dropped."""
    with open(path, encoding="utf-8-sig", newline="") as fh:
        reader = csv.reader(fh, delimiter=";")
        try:
            header = [h.strip().lstrip("\ufeff") for h in next(reader)]
        except StopIteration:
            return []
        rows = []
        for cells in reader:
            row = {}
            for name, value in zip(header, cells):
                if name:
                    row[name] = value.strip()
            if any(row.values()):
                rows.append(row)
        return rows


_LANG_PART = re.compile(r"^([A-Z]{2})\s+(.*)$")


def split_names(text):
    """{"DE": "Sommerferien", "EN": "Summer Holidays"} from "DE Sommerferien,EN Summer Holidays".

    A part without a language code continues the previous name (some cells use a
    plain comma inside a name instead of %2C).
    """
    names = {}
    last = None
    for part in (text or "").split(","):
        part = part.strip()
        if not part:
            continue
        m = _LANG_PART.match(part)
        if m and m.group(2).strip():
            last = m.group(1)
            names[last] = m.group(2).strip()
        elif last is not None:
            names[last] += ", " + part
        else:
            last = ""
            names[last] = part
    return {k: " ".join(v.replace("%2C", ",").replace("%2c", ",").split()) for k, v in names.items()}


def pick_name(names, lang):
    """The name in `lang`, else English, else the first one given."""
    names = dict(names)
    for key in (lang.upper(), "EN"):
        if names.get(key):
            return names[key]
    for value in names.values():
        if value:
            return value
    return ""


_DATE = re.compile(r"^(\d{4})-(\d{1,2})-(\d{1,2})$")


def parse_date(text, where):
    # Tolerates a missing leading zero ("2029-04-4" occurs in the source).
    m = _DATE.match(text or "")
    if not m:
        raise SourceError("%s: bad date %r" % (where, text))
    try:
        return dt.date(*map(int, m.groups()))
    except ValueError as exc:
        raise SourceError("%s: bad date %r (%s)" % (where, text, exc)) from None


def _codes(text):
    return [c.strip() for c in (text or "").split(",") if c.strip()]


class Region:
    def __init__(self, row, is_group):
        self.code = row.get("ShortName", "")
        self.iso = row.get("IsoCode", "")
        self.names = split_names(row.get("Name", ""))
        self.parent = row.get("Parent", "")
        self.groups = _codes(row.get("Groups", ""))
        self.is_group = is_group


def load_regions(country_dir):
    """{short code: Region} from subdivisions.csv and groups.csv, in file order."""
    regions = {}
    for fname, is_group in (("subdivisions.csv", False), ("groups.csv", True)):
        path = Path(country_dir) / fname
        if path.exists():
            for row in read_table(path):
                reg = Region(row, is_group)
                if reg.code:
                    regions.setdefault(reg.code, reg)
    return regions


# Mapping source regions to provinces --------------------------------------------

class _Country:
    """Vacations of one country, before a language is chosen."""

    def __init__(self, cc, root):
        self.cc = cc
        self.policy = POLICIES[cc]
        self.dir = Path(root) / cc.lower()
        self.regions = load_regions(self.dir)
        self._check_policy()
        self.universe = self._universe()
        self.titles = self._titles()
        for targets in self.policy.copies.values():
            for code in targets:
                reg = next((r for r in self.regions.values() if r.iso == "%s-%s" % (cc, code)), None)
                self.titles[code] = reg.names if reg else {}
        # province ("" = nationwide) -> set of (start, end, names as tuple of pairs)
        self.vacations = self._convert()

    def _check_policy(self):
        pol = self.policy
        for parent, rep in pol.representatives.items():
            reg = self.regions.get(rep)
            if reg is None or reg.parent != parent:
                raise SourceError("%s: %s is not a sub-region of %s" % (self.cc, rep, parent))
        for parent, children in pol.split.items():
            for child in children:
                reg = self.regions.get(child)
                if reg is None or reg.parent != parent:
                    raise SourceError("%s: %s is not a sub-region of %s" % (self.cc, child, parent))

    def _own_code(self, reg):
        if reg.code in self.policy.province_codes:
            return self.policy.province_codes[reg.code]
        prefix = self.cc + "-"
        if reg.iso.startswith(prefix):
            return reg.iso[len(prefix):]
        return reg.code

    def provinces_of(self, code):
        """The provinces a source region code stands for (empty: none of them)."""
        pol = self.policy
        reg = self.regions.get(code)
        if reg is None:
            raise SourceError("%s: unknown region code %r" % (self.cc, code))
        if code in pol.split:
            return set().union(*(self.provinces_of(c) for c in pol.split[code]))
        if reg.parent and not reg.is_group:
            if code in pol.split.get(reg.parent, ()):
                return {self._own_code(reg)}
            rep = pol.representatives.get(reg.parent)
            if rep is None:
                raise SourceError("%s: rows name sub-region %s but no representative of %s "
                                  "is chosen" % (self.cc, code, reg.parent))
            return self.provinces_of(reg.parent) if code == rep else set()
        return {self._own_code(reg)}

    def _top_level(self):
        for reg in self.regions.values():
            if self.policy.region_groups != reg.is_group:
                continue
            if reg.parent and reg.parent not in self.policy.split:
                continue
            yield reg

    def _universe(self):
        provs = set()
        for reg in self._top_level():
            if reg.code not in self.policy.split:
                provs |= self.provinces_of(reg.code)
        return provs

    def _titles(self):
        titles = {}
        for reg in self._top_level():
            if reg.code in self.policy.split:
                continue
            for prov in self.provinces_of(reg.code):
                titles.setdefault(prov, reg.names)
        return titles

    def _type_regions(self, types):
        """Regions whose Groups column lists one of the school types."""
        out = [r.code for r in self.regions.values() if not r.is_group and set(r.groups) & set(types)]
        if not out:
            raise SourceError("%s: school types %s belong to no region" % (self.cc, ",".join(types)))
        return out

    def _entries(self):
        """(provinces, school types, comment, start, end, names) per kept source row."""
        pol = self.policy
        files = sorted(self.dir.glob("holidays.school*.csv"))
        for path in files:
            for row in read_table(path):
                row.update(CORRECTIONS.get(row.get("Id"), {}))
                where = "%s (%s)" % (path.name, row.get("Id", "?"))
                if row.get("Type", VACATION_TYPE) != VACATION_TYPE or row.get("Id") in SKIP_ROWS:
                    continue
                if "Exception" in _codes(row.get("Tags")):
                    continue
                subs, groups = _codes(row.get("Subdivisions")), _codes(row.get("Groups"))
                if pol.region_groups:
                    codes, types = subs + groups, []
                else:
                    codes, types = subs, groups
                if types and not codes:
                    codes = self._type_regions(types)
                start = parse_date(row.get("StartDate"), where)
                end = parse_date(row.get("EndDate"), where) if row.get("EndDate") else start
                if end < start:
                    raise SourceError("%s: ends before it starts" % where)
                if (end - start).days + 1 > MAX_PLAUSIBLE_DAYS:
                    raise SourceError("%s: %s..%s is implausibly long" % (where, start, end))
                names = split_names(row.get("Name"))
                if not any(names.values()):
                    raise SourceError("%s: no name" % where)
                provs = set()
                for code in codes:
                    provs |= self.provinces_of(code)
                if not codes:
                    provs = {""}
                # A row naming every province lands in all of them and is moved to
                # nationwide with the other vacations they all share.
                yield provs, types, row.get("Comment", ""), start, end, tuple(names.items())

    def _convert(self):
        pol = self.policy
        entries = list(self._entries())
        # Provinces that have rows for a general school type use only those (and
        # rows for all schools); elsewhere rows for any school type are kept.
        has_general = set()
        for provs, types, _c, _s, _e, _n in entries:
            if pol.general_types & set(types):
                has_general |= provs
        out = {}
        for provs, types, comment, start, end, names in entries:
            for prov in provs:
                if types and prov in has_general and not pol.general_types & set(types):
                    continue
                if any(rx.search(comment) for rx in pol.drop_comments.get(prov, ())):
                    continue
                out.setdefault(prov, set()).add((start, end, names))
        for prov in pol.first_per_year & set(out):
            out[prov] = _first_per_year(out[prov])
        return out


def _first_per_year(vacations):
    """Keeps the earliest of the equally named vacations starting in one year."""
    kept = {}
    for vac in sorted(vacations):
        kept.setdefault((vac[0].year, vac[2]), vac)
    return set(kept.values())


@functools.lru_cache(maxsize=None)
def _country(cc, root):
    return _Country(cc, root)


def _parse_locale(locale):
    m = re.match(r"^([A-Za-z]{2,3})[_-]([A-Za-z]{2})$", locale or "")
    if not m:
        return None, None
    return m.group(1).lower(), m.group(2).upper()


def school_vacations(locale, root=None):
    """{province code or "": {"title": str | None, "vacations": [(start, end, name), ...]}}.

    Dates are ISO strings, inclusive; vacations are sorted by start and without
    duplicates. "" holds the vacations of the whole country; a vacation that
    every province of the country has is moved there.
    """
    lang, cc = _parse_locale(locale)
    if cc not in SUPPORTED:
        return {}
    root = Path(root) if root is not None else Path(SOURCE_ROOT)
    if not (root / cc.lower()).is_dir():
        return {}
    country = _country(cc, str(root))
    per_prov = {}
    for prov, items in country.vacations.items():
        per_prov[prov] = {(s.isoformat(), e.isoformat(), pick_name(n, lang)) for s, e, n in items}
    nationwide = per_prov.pop("", set())
    provinces = [p for p in country.universe if p in per_prov]
    if provinces and len(provinces) == len(country.universe):
        nationwide |= set.intersection(*(per_prov[p] for p in provinces))
    for prov, targets in country.policy.copies.items():
        for target in targets:
            per_prov[target] = set(per_prov.get(prov, ()))
    result = {}
    if nationwide:
        result[""] = {"title": None, "vacations": sorted(nationwide)}
    for prov in sorted(per_prov):
        vacs = sorted(per_prov[prov] - nationwide)
        if vacs:
            title = pick_name(country.titles.get(prov, {}), lang) or prov
            result[prov] = {"title": title, "vacations": vacs}
    return result


# Checks -------------------------------------------------------------------------

def vacation_days(vac):
    return (dt.date.fromisoformat(vac[1]) - dt.date.fromisoformat(vac[0])).days + 1


def long_vacations(data):
    return [(prov, v) for prov, item in sorted(data.items()) for v in item["vacations"]
            if vacation_days(v) > LONG_VACATION_DAYS]


def same_name_overlaps(data):
    """Pairs of equally named vacations that overlap, per province (nationwide
    vacations count for every province). They mean two variants got mixed."""
    found = []
    national = data.get("", {}).get("vacations", [])
    for prov, item in sorted(data.items()):
        vacs = sorted(set(item["vacations"]) | (set(national) if prov else set()))
        for i, a in enumerate(vacs):
            for b in vacs[i + 1:]:
                if b[0] > a[1]:
                    break
                if a[2] == b[2]:
                    found.append((prov, a, b))
    return found


def summary(locales=LOCALES, out=sys.stdout):
    for loc in locales:
        data = school_vacations(loc)
        vacs = [v for item in data.values() for v in item["vacations"]]
        if not vacs:
            print("%-6s no school vacations" % loc, file=out)
            continue
        years = "%s-%s" % (min(v[0] for v in vacs)[:4], max(v[1] for v in vacs)[:4])
        provs = " ".join("%s:%d" % (p or '""', len(data[p]["vacations"])) for p in data)
        print("%-6s %4d vacations, %s, %d long; %s" % (loc, len(vacs), years,
                                                     len(long_vacations(data)), provs), file=out)
        for prov, a, b in same_name_overlaps(data):
            print("       overlap in %s: %s / %s" % (prov or "nationwide", a, b), file=out)


def main(argv):
    if "--selftest" in argv:
        suite = unittest.TestSuite()
        loader = unittest.TestLoader()
        for case in (ParsingTests, ConversionTests, SourceDataTests):
            suite.addTests(loader.loadTestsFromTestCase(case))
        result = unittest.TextTestRunner(verbosity=1).run(suite)
        failed = len(result.failures) + len(result.errors)
        print("%d passed, %d failed" % (result.testsRun - failed - len(result.skipped), failed))
        return 0 if result.wasSuccessful() else 1
    if "--long" in argv:
        for loc in LOCALES:
            for prov, v in long_vacations(school_vacations(loc)):
                print("%-6s %-4s %s..%s %3d days %s" % (loc, prov or '""', v[0], v[1],
                                                        vacation_days(v), v[2]))
        return 0
    if "--summary" in argv:
        print("source:", SOURCE_ROOT)
        summary()
        return 0
    print(__doc__.strip().split("Usage:")[1].strip() if "Usage:" in __doc__ else __doc__)
    return 2


# Tests --------------------------------------------------------------------------

_HEAD = "Id;Country;StartDate;EndDate;Type;RegionalScope;Name;Subdivisions;Groups;Tags;Comment"


def _write(dirpath, name, lines, bom=True, crlf=False):
    text = ("\r\n" if crlf else "\n").join(lines) + "\n"
    with open(os.path.join(dirpath, name), "w", encoding="utf-8-sig" if bom else "utf-8",
              newline="") as fh:
        fh.write(text)


class ParsingTests(unittest.TestCase):
    def test_names_languages_and_escaped_commas(self):
        names = split_names("DE Inseln Sylt%2C Föhr,EN Islands Sylt%2C Föhr , FR  Îles")
        self.assertEqual(names, {"DE": "Inseln Sylt, Föhr", "EN": "Islands Sylt, Föhr", "FR": "Îles"})
        # A plain comma inside a name continues it instead of starting a language.
        self.assertEqual(split_names("FR Écoles primaires (ville), Écoles sec. II"),
                         {"FR": "Écoles primaires (ville), Écoles sec. II"})
        self.assertEqual(pick_name(split_names("DE Ferien,EN Holidays"), "lb"), "Holidays")
        self.assertEqual(pick_name(split_names("CS Jarní,DE Frühjahr"), "pl"), "Jarní")
        self.assertEqual(pick_name(split_names("LB Vakanz,EN Holidays"), "lb"), "Vakanz")

    def test_dates(self):
        self.assertEqual(parse_date("2029-04-4", "x"), dt.date(2029, 4, 4))
        for bad in ("2029-02-30", "04.04.2029", ""):
            with self.assertRaises(SourceError):
                parse_date(bad, "x")

    def test_table_by_column_name(self):
        with tempfile.TemporaryDirectory() as tmp:
            _write(tmp, "a.csv", ["Id;Tags;Name;Subdivisions;;;", "1;Exception;DE A;BY;;;", ";;;;;;"],
                   bom=False, crlf=True)
            _write(tmp, "b.csv", ["Name;Id;Subdivisions", "DE B;2;BY"])
            self.assertEqual(read_table(os.path.join(tmp, "a.csv")),
                             [{"Id": "1", "Tags": "Exception", "Name": "DE A", "Subdivisions": "BY"}])
            self.assertEqual(read_table(os.path.join(tmp, "b.csv"))[0]["Name"], "DE B")


class ConversionTests(unittest.TestCase):
    """A small made-up country "DE" with three Länder, one split into districts."""

    def setUp(self):
        self.tmp = tempfile.TemporaryDirectory()
        self.root = self.tmp.name
        d = os.path.join(self.root, "de")
        os.mkdir(d)
        _write(d, "subdivisions.csv", [
            "Country;Code;IsoCode;ShortName;Category;Name;OfficialLanguages;Parent;Groups",
            "DE;DE-BY;DE-BY;BY;x;DE Bayern,EN Bavaria;DE;;",
            "DE;DE-MV;DE-MV;MV;x;DE Mecklenburg-Vorpommern;DE;;MV-ABS,MV-BBS",
            "DE;DE-XX;DE-XX;XX;x;EN Somewhere;DE;;",
            "DE;DE-XX-A;;XX-A;x;DE A;DE;XX;",
            "DE;DE-XX-B;;XX-B;x;DE B;DE;XX;"])
        _write(d, "groups.csv", [
            "Country;Code;ShortName;Category;Name;OfficialLanguages",
            "DE;DE-MV-ABS;MV-ABS;x;DE Allgemeinbildende Schulen;DE",
            "DE;DE-MV-BBS;MV-BBS;x;DE Berufliche Schulen;DE"])
        _write(d, "holidays.school.csv", [
            _HEAD,
            "1;DE;2026-08-03;2026-09-14;School;Regional;DE Sommerferien,EN Summer;BY;;;",
            "2;DE;2026-08-03;2026-09-14;School;Regional;DE Sommerferien,EN Summer;BY;;;",
            "3;DE;2026-07-01;2026-07-20;School;Regional;DE Insel;BY;;Exception;DE Inseln",
            "4;DE;2026-05-15;;School;Regional;DE Brückentag;BY;;Recommended;",
            "5;DE;2026-09-01;;BackToSchool;Regional;DE Schulbeginn;BY;;;",
            "6;DE;2026-12-23;2027-01-05;School;National;DE Weihnachtsferien;;;;",
            "7;DE;2026-04-01;2026-04-10;School;Regional;DE Osterferien;BY,MV,XX;;;",
            "8;DE;2026-02-02;2026-02-13;School;Regional;DE Winterferien;;MV-ABS;;",
            "9;DE;2026-02-09;2026-02-20;School;Regional;DE Winterferien;;MV-BBS;;",
            "10;DE;2026-10-05;2026-10-09;School;Regional;DE Herbstferien;;MV-ABS,MV-BBS;;",
            "11;DE;2026-10-12;2026-10-16;School;Regional;DE Herbstferien;XX-A;;;",
            "12;DE;2026-10-19;2026-10-23;School;Regional;DE Herbstferien;XX-B;;;",
            "13;DE;2026-10-26;2026-10-30;School;Regional;DE Herbstferien;BY,MV;;;",
            "14;DE;2026-06-01;2026-06-05;School;Regional;DE Pfingstferien;BY;;;DE nur Gymnasien",
            "15;DE;2026-06-08;2026-06-12;School;Regional;DE Pfingstferien;MV;;;"])
        self.saved = POLICIES["DE"]
        POLICIES["DE"] = Policy(general_types={"MV-ABS"}, representatives={"XX": "XX-A"},
                                drop_comments={"BY": [r"nur Gymnasien"]})
        _country.cache_clear()

    def tearDown(self):
        POLICIES["DE"] = self.saved
        _country.cache_clear()
        self.tmp.cleanup()

    def test_rows_are_placed_by_province(self):
        data = school_vacations("de_DE", self.root)
        self.assertEqual(sorted(data), ["", "BY", "MV", "XX"])
        self.assertEqual(data["BY"]["title"], "Bayern")
        self.assertEqual(data["XX"]["title"], "Somewhere")  # English when German is missing
        self.assertIsNone(data[""]["title"])
        by = data["BY"]["vacations"]
        # duplicate merged, exception and day marker dropped, one-day row kept,
        # comment variant dropped, sorted by start
        self.assertEqual(by, [("2026-05-15", "2026-05-15", "Brückentag"),
                              ("2026-08-03", "2026-09-14", "Sommerferien"),
                              ("2026-10-26", "2026-10-30", "Herbstferien")])
        # A row without regions and one naming every Land are nationwide.
        self.assertEqual(data[""]["vacations"], [("2026-04-01", "2026-04-10", "Osterferien"),
                                                 ("2026-12-23", "2027-01-05", "Weihnachtsferien")])

    def test_school_types_districts_and_language(self):
        data = school_vacations("en_DE", self.root)
        mv = data["MV"]["vacations"]
        self.assertIn(("2026-02-02", "2026-02-13", "Winterferien"), mv)       # general schools
        self.assertNotIn(("2026-02-09", "2026-02-20", "Winterferien"), mv)    # vocational only
        self.assertIn(("2026-10-05", "2026-10-09", "Herbstferien"), mv)       # both types
        self.assertIn(("2026-06-08", "2026-06-12", "Pfingstferien"), mv)
        # XX takes the dates of its representative district XX-A only.
        self.assertEqual([v for v in data["XX"]["vacations"] if v[2] == "Herbstferien"],
                         [("2026-10-12", "2026-10-16", "Herbstferien")])
        self.assertEqual(data["BY"]["title"], "Bavaria")
        self.assertIn(("2026-08-03", "2026-09-14", "Summer"), data["BY"]["vacations"])

    def test_shared_by_every_province_moves_to_nationwide(self):
        d = os.path.join(self.root, "de")
        with open(os.path.join(d, "holidays.school.csv"), "a", encoding="utf-8") as fh:
            fh.write("16;DE;2026-11-02;2026-11-06;School;Regional;DE Novemberferien;BY;;;\n"
                     "17;DE;2026-11-02;2026-11-06;School;Regional;DE Novemberferien;MV,XX;;;\n")
        data = school_vacations("de_DE", self.root)
        vac = ("2026-11-02", "2026-11-06", "Novemberferien")
        self.assertIn(vac, data[""]["vacations"])
        self.assertFalse(any(vac in data[p]["vacations"] for p in ("BY", "MV", "XX")))
        # Herbstferien 26-30 Oct is shared by BY and MV but not XX: stays with them.
        self.assertIn(("2026-10-26", "2026-10-30", "Herbstferien"), data["MV"]["vacations"])

    def test_bad_source_is_reported(self):
        d = os.path.join(self.root, "de")
        _write(d, "holidays.school.zz.csv", [_HEAD, "9;DE;2026-01-01;;School;Regional;DE X;QQ;;;"])
        with self.assertRaises(SourceError):
            school_vacations("de_DE", self.root)
        os.remove(os.path.join(d, "holidays.school.zz.csv"))
        POLICIES["DE"] = Policy(general_types={"MV-ABS"})  # districts of XX without a choice
        _country.cache_clear()
        with self.assertRaises(SourceError):
            school_vacations("de_DE", self.root)

    def test_locales_without_data(self):
        for loc in ("en_IE", "sv_SE", "en_US", "nonsense", ""):
            self.assertEqual(school_vacations(loc, self.root), {})
        self.assertEqual(school_vacations("de_AT", self.root), {})  # no folder for AT

    def test_first_per_year(self):
        d = dt.date
        vacs = {(d(2026, 3, 16), d(2026, 3, 22), "J"), (d(2026, 2, 9), d(2026, 2, 15), "J"),
                (d(2026, 2, 16), d(2026, 2, 22), "K"), (d(2027, 3, 1), d(2027, 3, 7), "J")}
        self.assertEqual(_first_per_year(vacs), {(d(2026, 2, 9), d(2026, 2, 15), "J"),
                                                 (d(2026, 2, 16), d(2026, 2, 22), "K"),
                                                 (d(2027, 3, 1), d(2027, 3, 7), "J")})

    def test_source_root_from_environment(self):
        code = ("import sys; sys.path.insert(0, %r); import school; print(school.SOURCE_ROOT)"
                % os.path.dirname(os.path.abspath(__file__)))
        above, plain = os.path.join(self.root, "oh"), os.path.join(self.root, "plain")
        os.makedirs(os.path.join(above, "school"))
        os.makedirs(plain)
        for env_dir, want in ((above, os.path.join(above, "school")), (plain, plain)):
            out = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True,
                                 env=dict(os.environ, OPENHOLIDAYS_DIR=env_dir), check=True)
            self.assertEqual(out.stdout.strip(), want)


class SourceDataTests(unittest.TestCase):
    """Checks on the real source data; skipped when it is not there."""

    @classmethod
    def setUpClass(cls):
        if not Path(SOURCE_ROOT).is_dir():
            raise unittest.SkipTest("no source data at %s" % SOURCE_ROOT)
        _country.cache_clear()
        cls.data = {loc: school_vacations(loc) for loc in LOCALES}

    def test_every_locale_is_well_formed(self):
        for loc, data in self.data.items():
            self.assertTrue(data, loc)
            for prov, item in data.items():
                vacs = item["vacations"]
                self.assertEqual(vacs, sorted(set(vacs)), (loc, prov))
                for start, end, name in vacs:
                    self.assertTrue(name.strip(), (loc, prov))
                    self.assertLessEqual(start, end, (loc, prov, name))
                self.assertEqual(item["title"] is None, prov == "", (loc, prov))
            self.assertEqual(same_name_overlaps(data), [], loc)

    def test_skips_and_corrections_name_real_rows(self):
        ids = {}
        for cc in SUPPORTED:
            for path in (Path(SOURCE_ROOT) / cc.lower()).glob("holidays.school*.csv"):
                ids.update((row.get("Id"), row) for row in read_table(path))
        for rid in list(SKIP_ROWS) + list(CORRECTIONS):
            self.assertIn(rid, ids)
        for rid, fix in CORRECTIONS.items():   # a correction that is no longer needed
            self.assertTrue(any(ids[rid].get(k) != v for k, v in fix.items()), rid)
        self.assertIn(("2020-04-12", "2020-04-26", "Vacances de printemps"),
                      self.data["fr_FR"]["B"]["vacations"])
        self.assertIn(("2025-04-18", "2025-05-02", "Vacances de Pâques"),
                      self.data["fr_CH"]["JU"]["vacations"])

    def test_germany(self):
        de = self.data["de_DE"]
        self.assertEqual(len(de), 16)
        self.assertIn(("2026-08-03", "2026-09-14", "Sommerferien"), de["BY"]["vacations"])
        sh = de["SH"]["vacations"]
        self.assertIn(("2010-07-12", "2010-08-21", "Sommerferien"), sh)
        self.assertNotIn(("2010-07-12", "2010-08-14", "Sommerferien"), sh)  # island schools
        self.assertIn(("2012-02-06", "2012-02-17", "Winterferien"), de["MV"]["vacations"])

    def test_switzerland(self):
        fr = self.data["fr_CH"]
        self.assertEqual(len(fr), 26)
        self.assertEqual(fr["VS"]["title"], "Valais")
        self.assertEqual(self.data["de_CH"]["VS"]["title"], "Wallis")
        self.assertEqual(self.data["it_CH"]["GE"]["title"], "Ginevra")
        vs = fr["VS"]["vacations"]
        self.assertIn(("2025-06-19", "2025-08-20", "Été"), vs)
        self.assertFalse(any(v[0] == "2025-06-28" for v in vs))  # German-speaking dates
        ai = self.data["de_CH"]["AI"]["vacations"]
        self.assertIn(("2020-02-21", "2020-03-01", "Sportferien"), ai)
        self.assertNotIn(("2020-01-25", "2020-02-02", "Sportferien"), ai)  # Oberegg
        # The three languages carry the same provinces and dates.
        dates = [{p: [v[:2] for v in item["vacations"]] for p, item in self.data[loc].items()}
                 for loc in ("de_CH", "fr_CH", "it_CH")]
        self.assertEqual(dates[0], dates[1])
        self.assertEqual(dates[0], dates[2])

    def test_france_belgium_netherlands(self):
        fr = self.data["fr_FR"]
        self.assertTrue({"A", "B", "C", "20R", "971", "974"} <= set(fr))
        self.assertEqual(fr["A"]["title"], "Zone A")
        self.assertNotIn("", fr)  # Corse and overseas keep their own calendars
        self.assertEqual(fr["67"]["vacations"], fr["B"]["vacations"])
        self.assertEqual(fr["57"]["title"], "Moselle")
        be_nl, be_fr = self.data["nl_BE"], self.data["fr_BE"]
        self.assertEqual(set(be_nl) - {""}, {"DE", "FR", "NL"})
        self.assertEqual(set(be_nl), set(be_fr))
        self.assertEqual(be_nl["NL"]["title"], "Vlaamse Gemeenschap")
        nl = self.data["nl_NL"]
        self.assertEqual(set(nl), {"", "NO", "MI", "ZU"})
        self.assertIn(("2025-04-26", "2025-05-04", "Meivakantie"), nl[""]["vacations"])

    def test_central_and_southern_countries(self):
        cz = self.data["cs_CZ"]
        spring = [v for v in cz["10"]["vacations"] if v[2] == "Jarní prázdniny"]
        self.assertEqual(len(spring), len({v[0][:4] for v in spring}))  # one week a year
        self.assertIn(("2026-02-16", "2026-02-22", "Jarní prázdniny"), spring)
        self.assertIn(("2023-02-06", "2023-02-12", "Jarní prázdniny"), spring)
        self.assertIn(("2026-02-09", "2026-02-15", "Jarní prázdniny"), cz["31"]["vacations"])
        it = self.data["it_IT"]
        self.assertTrue({"BZ", "TN"} <= set(it) and "32" not in it)
        self.assertEqual(it["BZ"]["title"], "Bolzano")
        es = self.data["es_ES"]
        self.assertNotIn("AN-AL", es)
        self.assertTrue({"AN", "AR", "MD"} <= set(es))
        pl = self.data["pl_PL"]
        self.assertIn(("2025-06-28", "2025-08-31", "Ferie letnie"), pl[""]["vacations"])
        self.assertEqual(pl["02"]["title"], "Dolnośląskie")
        self.assertNotEqual(self.data["lb_LU"][""]["vacations"], self.data["fr_LU"][""]["vacations"])

    def test_eastern_and_northern_countries(self):
        # one row per vacation where the source has several per grade, option or school type
        self.assertIn(("2024-06-29", "2024-09-14", "Лятна ваканция"), self.data["bg_BG"][""]["vacations"])
        self.assertIn(("2024-02-15", "2024-02-16", "February mid-term break"),
                      self.data["en_IE"][""]["vacations"])
        self.assertIn(("2024-02-15", "2024-02-16", "Sos lár-téarma na Feabhra"),
                      self.data["ga_IE"][""]["vacations"])
        # regional weeks: Romanian counties by ISO code, Slovenian school regions
        ro = self.data["ro_RO"]
        self.assertEqual(ro["B"]["title"], "București")
        self.assertIn(("2024-02-19", "2024-02-25", "Vacanţa de schi"), ro["B"]["vacations"])
        self.assertFalse(any("schi" in v[2] for v in ro[""]["vacations"]))
        self.assertEqual(set(self.data["sl_SI"]), {"", "VR", "ZR"})
        self.assertIn(("2025-02-24", "2025-02-28", "Zimske počitnice"), self.data["sl_SI"]["ZR"]["vacations"])
        self.assertEqual([v[:2] for v in self.data["mt_MT"][""]["vacations"]],
                         [v[:2] for v in self.data["en_MT"][""]["vacations"]])


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
