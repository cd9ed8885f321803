"""Hungary (hu_HU): the public holidays of the Labour Code (Mt. 102. §).

Good Friday has been a public holiday since 2017; earlier it is shown by name
(one-off days, two days before the library's Easter). Christmas Eve is no
public holiday (shops close early): shown. The working days moved by the yearly
ministerial decree (bridge days) are not included.
"""
import datetime as dt

from common import YEARS, fixed, flatten, library_easter, rule, yearly

_LAST = YEARS[-1] + 1


def _good_friday(y):
    return library_easter(y) - dt.timedelta(days=2)


def build():
    days = flatten([
        rule(19, "Újév"),
        fixed(3, 15, "Nemzeti ünnep"),
        yearly(_good_friday, "Nagypéntek", "show", years=range(2000, 2017)),
        yearly(_good_friday, "Nagypéntek", years=range(2017, _LAST)),
        rule(4, "Húsvétvasárnap"),
        rule(5, "Húsvéthétfő"),
        rule(6, "A munka ünnepe"),
        rule(8, "Pünkösdvasárnap"),
        rule(9, "Pünkösdhétfő"),
        fixed(8, 20, "Az államalapítás ünnepe"),
        fixed(10, 23, "Nemzeti ünnep"),
        rule(13, "Mindenszentek"),
        rule(15, "Szenteste", "show"),
        rule(16, "Karácsony"),
        rule(17, "Karácsony másnapja"),
    ])
    return {"hu_HU": {"code": "HU", "title": "Magyarország", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2016): "01-01 03-15 03-27 03-28 05-01 05-15 05-16 08-20 10-23 11-01 12-25 12-26",
    ("", 2025): "01-01 03-15 04-18 04-20 04-21 05-01 06-08 06-09 08-20 10-23 11-01 12-25 12-26",
}
