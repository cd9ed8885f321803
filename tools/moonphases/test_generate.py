"""Tests for generate.py: python3 -m unittest discover -s tools/moonphases"""
import datetime as dt
import io
import os
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ET
from zoneinfo import ZoneInfo

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import generate as g  # noqa: E402

KNOWN_CSV = os.path.join(g.ROOT, "tests", "data", "moonphases-known.csv")
BERLIN = ZoneInfo(g.BERLIN)


class PhaseSeries(unittest.TestCase):
    def test_worked_examples_from_the_book(self):
        # New moon of 1977 February (k = -283): mean and true JDE.
        self.assertAlmostEqual(g.mean_phase_jde(-283, g.NEW), 2443192.94102, places=5)
        self.assertAlmostEqual(g.true_phase_jde(-283, g.NEW), 2443192.65118, places=5)
        # First last quarter of 2044 (k = 544.75): exercises the quarter terms and -W.
        self.assertAlmostEqual(g.true_phase_jde(544, g.LAST_QUARTER), 2467636.49186, places=5)

    def test_phases_are_about_a_quarter_lunation_apart(self):
        # A sign error in W or a wrong term table shifts one phase by hours
        # against its neighbours; the true spacing stays within 5.9..8.4 days.
        for n in range(-1300, 1300, 37):
            seq = [g.true_phase_jde(n, p) for p in range(4)] + [g.true_phase_jde(n + 1, 0)]
            gaps = [b - a for a, b in zip(seq, seq[1:])]
            self.assertTrue(all(5.8 < d < 8.5 for d in gaps), (n, gaps))
            self.assertLess(abs(seq[4] - seq[0] - g._SYNODIC), 0.6)


class DeltaT(unittest.TestCase):
    def test_observed_values(self):
        # Observed TT - UT (s): 1900 -2.7, 1950 29.1, 1975 45.5, 2000 63.8.
        for year, seconds in ((1900, -2.7), (1950, 29.1), (1975, 45.5), (2000, 63.8)):
            self.assertAlmostEqual(g.delta_t(year), seconds, delta=0.5, msg=year)

    def test_no_jumps_between_polynomials(self):
        for edge in (1900, 1920, 1941, 1961, 1986, 2005, 2050, 2150):
            self.assertAlmostEqual(g.delta_t(edge - 1e-6), g.delta_t(edge), delta=0.6, msg=edge)


class YearTable(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.berlin = g.build_years(g.FIRST_YEAR, g.LAST_YEAR, BERLIN)
        cls.utc = g.build_years(2023, 2025, g.UTC)

    def test_whole_range_is_covered(self):
        self.assertEqual(sorted(self.berlin), list(range(1900, 2101)))
        for y, (start, days) in self.berlin.items():
            self.assertIn(len(days), range(48, 53), y)

    def test_local_date_can_differ_from_utc_date(self):
        # Full moon 2024-04-23 23:49 UTC is on the 24th in Berlin (summer
        # time); new moon 2024-12-30 22:27 UTC stays on the 30th (winter).
        def phase_on(table, day):
            start, days = table[day.year]
            return (start + days.index(day)) % 4 if day in days else None
        self.assertEqual(phase_on(self.utc, dt.date(2024, 4, 23)), g.FULL)
        self.assertEqual(phase_on(self.berlin, dt.date(2024, 4, 24)), g.FULL)
        self.assertIsNone(phase_on(self.berlin, dt.date(2024, 4, 23)))
        self.assertEqual(phase_on(self.berlin, dt.date(2024, 12, 30)), g.NEW)

    def test_check_rejects_broken_sequences(self):
        good = {y: self.utc[y] for y in (2024, 2025)}
        g.check_years(good)
        start, days = good[2024]
        broken = {
            "doubled": days[:10] + [days[10]] + days[10:],
            "missing": days[:10] + days[11:],
            "unordered": days[:10] + [days[11], days[10]] + days[12:],
            "lost year end": days[:-1],
        }
        for what, bad in broken.items():
            with self.assertRaises(ValueError, msg=what):
                g.check_years({2024: (start, bad), 2025: good[2025]})
        with self.assertRaises(ValueError, msg="wrong start"):
            g.check_years({2024: ((start + 1) % 4, days), 2025: good[2025]})

    def test_xml_round_trip(self):
        text = g.render_xml(self.utc, "UTC")
        self.assertIn("dates in UTC -->", text)
        root = ET.fromstring(text.encode())
        self.assertEqual(root.get("timezone"), "UTC")
        for year in root.findall("year"):
            y, start = int(year.get("count")), int(year.get("start"))
            self.assertIn(start, (1, 2, 3, 4))
            dates = [dt.date(y, *map(int, p.text.split("-"))) for p in year.findall("phase")]
            self.assertEqual((start - 1, dates), self.utc[y])
        # 2026 opens with the full moon of January 3.
        text = g.render_xml(g.build_years(2026, 2026, BERLIN), g.BERLIN)
        self.assertIn('<year count="2026" start="3">\n    <phase>01-03</phase>\n    <phase>01-10</phase>', text)


class Verify(unittest.TestCase):
    def run_verify(self, rows):
        with tempfile.NamedTemporaryFile("w", suffix=".csv", delete=False) as fh:
            fh.write("utc_datetime;phase\n" + "".join(r + "\n" for r in rows))
        self.addCleanup(os.unlink, fh.name)
        out = io.StringIO()
        return g.verify(fh.name, out), out.getvalue()

    def test_known_phases_match(self):
        out = io.StringIO()
        self.assertEqual(g.verify(KNOWN_CSV, out), 0, out.getvalue())
        self.assertGreaterEqual(len(g.read_known(KNOWN_CSV)), 36)

    def test_faults_are_reported(self):
        ok = "2024-04-08T18:21Z;new"
        self.assertEqual(self.run_verify([ok])[0], 0)
        fails, text = self.run_verify([ok, "2024-04-08T18:25Z;new", "2024-04-08T18:21Z;full"])
        self.assertEqual(fails, 2, text)
        self.assertIn("off by -4", text)
        # Berlin date of a phase just after local midnight is the next day.
        fails, text = self.run_verify(["2024-04-23T23:49Z;full", "2024-02-02T23:18Z;last_quarter"])
        self.assertEqual(fails, 0, text)


class CommittedData(unittest.TestCase):
    def test_data_file_is_current(self):
        with open(g.DEFAULT_OUTPUT, encoding="utf-8") as fh:
            current = fh.read()
        expected = g.render_xml(g.build_years(g.FIRST_YEAR, g.LAST_YEAR, BERLIN), g.BERLIN)
        self.assertTrue(current == expected, "run tools/moonphases/generate.py")


if __name__ == "__main__":
    unittest.main()
