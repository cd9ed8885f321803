"""Greece (el_GR): the public holidays kept in the whole country.

Easter is the Orthodox one (orthodox_easter); Clean Monday, Good Friday,
Easter Monday and Whit Monday (Αγίου Πνεύματος) follow it as one-off days.
Holy Saturday is shown. When 1 May falls in Holy Week or Easter week, a
ministerial decision moves the day off; the moves already made (2013, 2016,
2021, 2024) are written, later coincidences keep 1 May until decided. The Ionian
Islands (ISO 3166-2:GR-F) keep the day of their union with Greece (21 May).
Days of smaller areas (town patrons, the Dodecanese's 7 March) are left out.
"""
import datetime as dt

from common import YEARS, dated, fixed, flatten, orthodox_day

LABOUR_DAY = "Πρωτομαγιά"
# year -> the day off that replaced 1 May
LABOUR_DAY_MOVED = {2013: dt.date(2013, 5, 7), 2016: dt.date(2016, 5, 3),
                    2021: dt.date(2021, 5, 4), 2024: dt.date(2024, 5, 7)}


def build():
    days = flatten([
        fixed(1, 1, "Πρωτοχρονιά"),
        fixed(1, 6, "Θεοφάνεια"),
        orthodox_day(-48, "Καθαρά Δευτέρα"),
        fixed(3, 25, "Ευαγγελισμός της Θεοτόκου και Εθνική Επέτειος"),
        orthodox_day(-2, "Μεγάλη Παρασκευή"),
        orthodox_day(-1, "Μεγάλο Σάββατο", "show"),
        orthodox_day(0, "Κυριακή του Πάσχα"),
        orthodox_day(1, "Δευτέρα του Πάσχα"),
        fixed(5, 1, LABOUR_DAY, years=[y for y in YEARS if y not in LABOUR_DAY_MOVED]),
        fixed(5, 1, LABOUR_DAY, "show", years=sorted(LABOUR_DAY_MOVED)),
        [dated(d, LABOUR_DAY + " (μεταφορά αργίας)") for _, d in sorted(LABOUR_DAY_MOVED.items())],
        orthodox_day(49, "Πεντηκοστή", "show"),
        orthodox_day(50, "Αγίου Πνεύματος"),
        fixed(8, 15, "Κοίμηση της Θεοτόκου"),
        fixed(10, 28, "Επέτειος του Όχι"),
        fixed(12, 25, "Χριστούγεννα"),
        fixed(12, 26, "Σύναξη της Υπεραγίας Θεοτόκου"),
    ])
    provinces = [{"code": "F", "title": "Ιόνια Νησιά",
                  "days": [fixed(5, 21, "Επέτειος της Ένωσης της Επτανήσου με την Ελλάδα")]}]
    return {"el_GR": {"code": "GR", "title": "Ελλάδα", "nationwide": days, "provinces": provinces}}


TESTS = {
    ("", 2024): "01-01 01-06 03-18 03-25 05-03 05-05 05-06 05-07 06-24 08-15 10-28 12-25 12-26",
    ("", 2025): "01-01 01-06 03-03 03-25 04-18 04-20 04-21 05-01 06-09 08-15 10-28 12-25 12-26",
    ("F", 2025): "01-01 01-06 03-03 03-25 04-18 04-20 04-21 05-01 05-21 06-09 08-15 10-28 12-25 12-26",
    ("", 2026): "01-01 01-06 02-23 03-25 04-10 04-12 04-13 05-01 06-01 08-15 10-28 12-25 12-26",
}
