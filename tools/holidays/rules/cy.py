"""Cyprus (el_CY): the public holidays of the Republic of Cyprus.

Easter is the Orthodox one (orthodox_easter); Green Monday, Good Friday, Easter
Monday and Tuesday and Kataklysmos (Whit Monday) follow it as one-off days.
Christmas Eve and Easter Tuesday are holidays of the public service and the
banks that most employers keep; they are marked free like the others. Holidays
falling on a weekend are not moved. The areas not under the control of the
Republic are not described.
"""
from common import fixed, flatten, orthodox_day


def build():
    days = flatten([
        fixed(1, 1, "Πρωτοχρονιά"),
        fixed(1, 6, "Θεοφάνεια"),
        orthodox_day(-48, "Καθαρά Δευτέρα"),
        fixed(3, 25, "Ευαγγελισμός της Θεοτόκου και Εθνική Επέτειος"),
        fixed(4, 1, "Εθνική Επέτειος της 1ης Απριλίου"),
        orthodox_day(-2, "Μεγάλη Παρασκευή"),
        orthodox_day(-1, "Μεγάλο Σάββατο", "show"),
        orthodox_day(0, "Κυριακή του Πάσχα"),
        orthodox_day(1, "Δευτέρα της Διακαινησίμου"),
        orthodox_day(2, "Τρίτη της Διακαινησίμου"),
        fixed(5, 1, "Πρωτομαγιά"),
        orthodox_day(50, "Αγίου Πνεύματος (Κατακλυσμός)"),
        fixed(8, 15, "Κοίμηση της Θεοτόκου"),
        fixed(10, 1, "Ημέρα της Κυπριακής Ανεξαρτησίας"),
        fixed(10, 28, "Επέτειος του Όχι"),
        fixed(12, 24, "Παραμονή Χριστουγέννων"),
        fixed(12, 25, "Χριστούγεννα"),
        fixed(12, 26, "Δεύτερη μέρα Χριστουγέννων"),
    ])
    return {"el_CY": {"code": "CY", "title": "Κύπρος", "nationwide": days, "provinces": []}}


TESTS = {
    ("", 2025): "01-01 01-06 03-03 03-25 04-01 04-18 04-20 04-21 04-22 05-01 06-09 08-15 10-01 10-28 "
                "12-24 12-25 12-26",
    ("", 2026): "01-01 01-06 02-23 03-25 04-01 04-10 04-12 04-13 04-14 05-01 06-01 08-15 10-01 10-28 "
                "12-24 12-25 12-26",
}
