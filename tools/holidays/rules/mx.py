"""Mexico (es_MX): the days off of the Ley Federal del Trabajo, art. 74.

Since the reform of 17 January 2006 three of them are taken on a Monday: the
Constitution day (5 Feb) on the first Monday of February, Benito Juárez's
birthday (21 Mar) on the third Monday of March and the Revolution day (20 Nov)
on the third Monday of November; before 2006 they were kept on their dates.
The day the President takes office is a day off every six years: 1 December
up to 2018; since the constitutional reform of 2014 (first applied in 2024)
1 October.  Holy Thursday and Friday, the Day of the Dead, the Virgin of
Guadalupe and the Battle of Puebla are days off by custom or in public
offices only; they are named days.  The states have no days off of their own
that differ from these.  1 May stays on its date when it is a Saturday or
Sunday (the OpenHolidays table moves it in 2021 and 2022; the law does not).
"""
import datetime as dt

from common import MON, YEARS, dated, fixed, flatten, nth_weekday, rule, yearly


def monday_or_date(month, day, n):
    return lambda y: nth_weekday(y, month, MON, n) if y >= 2006 else dt.date(y, month, day)


def inauguration(year):
    if (year - 2000) % 6 != 0:
        return None
    return dt.date(year, 12, 1) if year <= 2018 else dt.date(year, 10, 1)


NATIONWIDE = flatten([
    rule(19, "Año Nuevo"),
    yearly(monday_or_date(2, 5, 1), "Día de la Constitución"),
    fixed(2, 14, "Día del Amor y la Amistad", "show"),
    yearly(monday_or_date(3, 21, 3), "Natalicio de Benito Juárez"),
    rule(2, "Jueves Santo", "show"),
    rule(3, "Viernes Santo", "show"),
    rule(4, "Domingo de Resurrección", "show"),
    rule(6, "Día del Trabajo"),
    fixed(5, 5, "Batalla de Puebla", "show"),
    fixed(9, 16, "Día de la Independencia"),
    yearly(inauguration, "Transmisión del Poder Ejecutivo Federal"),
    rule(13, "Día de Todos los Santos", "show"),
    fixed(11, 2, "Día de Muertos", "show"),
    yearly(monday_or_date(11, 20, 3), "Día de la Revolución"),
    fixed(12, 12, "Día de la Virgen de Guadalupe", "show"),
    rule(15, "Nochebuena", "show"),
    rule(16, "Navidad"),
    rule(18, "Nochevieja", "show"),
])


def build():
    return {"es_MX": {"code": "MX", "title": "México", "nationwide": NATIONWIDE, "provinces": []}}


# Days off from the calendars published in the Diario Oficial de la Federación.
TESTS = {
    ("", 2005): "01-01 02-05 03-21 05-01 09-16 11-20 12-25",
    ("", 2006): "01-01 02-06 03-20 05-01 09-16 11-20 12-01 12-25",
    ("", 2018): "01-01 02-05 03-19 05-01 09-16 11-19 12-01 12-25",
    ("", 2024): "01-01 02-05 03-18 05-01 09-16 10-01 11-18 12-25",
    ("", 2026): "01-01 02-02 03-16 05-01 09-16 11-16 12-25",
}
