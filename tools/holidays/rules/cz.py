"""Public holidays of the Czech Republic (cs_CZ).

Good Friday has been a day off since 2016; earlier it is shown by name only.
Two days were renamed inside the range: 8 May ("Den osvobození" until 2003)
and 17 November (students' day added to the name in 2019).
"""
import datetime as dt

from common import YEARS, library_easter, fixed, flatten, rule, yearly

_LAST = YEARS[-1] + 1


def _good_friday(y):
    return library_easter(y) - dt.timedelta(days=2)


def build():
    days = flatten([
        # 1 January is both the state holiday and New Year's Day.
        fixed(1, 1, "Den obnovy samostatného českého státu"),
        rule(19, "Nový rok"),
        yearly(_good_friday, "Velký pátek", "show", years=range(2000, 2016)),
        yearly(_good_friday, "Velký pátek", years=range(2016, _LAST)),
        rule(5, "Velikonoční pondělí"),
        rule(6, "Svátek práce"),
        fixed(5, 8, "Den osvobození", years=range(2000, 2004)),
        fixed(5, 8, "Den vítězství", years=range(2004, _LAST)),
        fixed(7, 5, "Den slovanských věrozvěstů Cyrila a Metoděje"),
        fixed(7, 6, "Den upálení mistra Jana Husa"),
        fixed(9, 28, "Den české státnosti"),
        fixed(10, 28, "Den vzniku samostatného československého státu"),
        fixed(11, 17, "Den boje za svobodu a demokracii", years=range(2000, 2019)),
        fixed(11, 17, "Den boje za svobodu a demokracii a Mezinárodní den studentstva",
              years=range(2019, _LAST)),
        rule(15, "Štědrý den"),
        rule(16, "1. svátek vánoční"),
        rule(17, "2. svátek vánoční"),
    ])
    return {"cs_CZ": {"code": "CZ", "title": "Česko", "nationwide": days, "provinces": []}}
