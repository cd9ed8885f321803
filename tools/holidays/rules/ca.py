"""Canada (en_CA, fr_CA): federal holidays and those of every province and territory.

Sources: Canada Labour Code s. 166 and the Holidays Act (federal); the
employment standards acts of the provinces and territories (Alberta
Employment Standards Code, BC Employment Standards Act, Manitoba Employment
Standards Code, NB Employment Standards Act, NL Labour Standards Act, NS
Labour Standards Code and Retail Business Designated Day Closing Act, NWT and
Nunavut Employment Standards / Labour Standards Acts, Ontario Employment
Standards Act 2000, PEI Employment Standards Act, Quebec Act respecting labour
standards and National Holiday Act, Saskatchewan Employment Act, Yukon
Employment Standards Act).
The country level marks free only the days that are general holidays
everywhere (New Year's Day, Good Friday, Canada Day, Labour Day, Christmas
Day).  The further federal holidays (Victoria Day, Truth and Reconciliation
from 2021, Thanksgiving, Remembrance Day, Boxing Day) are named days there and
free in the provinces where they are statutory.  Canada Day on a Sunday is
kept on 2 July (Holidays Act).  Other weekend substitutes differ by act and
employer and are left out.  Days that are holidays only for a provincial
government's staff or optional for employers (Alberta's Heritage Day, Civic
Holiday in Ontario and Manitoba, Newfoundland's St. Patrick's Day...) are
named days.  Quebec lets employers choose Good Friday or Easter Monday; Good
Friday is marked.
"""
import datetime as dt

from common import MON, SUN, YEARS, dated, fixed, flatten, nth_weekday, rule, weekday_on_or_before, yearly

EN, FR = 0, 1


def since(first):
    return range(first, YEARS[-1] + 1)


def victoria_day(y):
    return weekday_on_or_before(dt.date(y, 5, 24), MON)


def canada_day(y):
    d = dt.date(y, 7, 1)
    return d + dt.timedelta(days=1) if d.weekday() == SUN else d


def first_monday_august(y):
    return nth_weekday(y, 8, MON, 1)


def third_monday_february(y):
    return nth_weekday(y, 2, MON, 3)


def thanksgiving(y):
    return nth_weekday(y, 10, MON, 2)


def build_days(lang):
    def n(en, fr):
        return (en, fr)[lang]

    victoria = n("Victoria Day", "Fête de Victoria")
    truth = n("National Day for Truth and Reconciliation", "Journée nationale de la vérité et de la réconciliation")
    thanks = n("Thanksgiving", "Action de grâce")
    remembrance = n("Remembrance Day", "Jour du Souvenir")
    boxing = n("Boxing Day", "Lendemain de Noël")
    civic = n("Civic Holiday", "Congé civique")
    family = n("Family Day", "Fête de la famille")
    indigenous = n("National Indigenous Peoples Day", "Journée nationale des peuples autochtones")

    nationwide = flatten([
        rule(19, n("New Year's Day", "Jour de l'An")),
        fixed(2, 14, n("Valentine's Day", "Saint-Valentin"), "show"),
        fixed(3, 17, n("St. Patrick's Day", "Saint-Patrick"), "show"),
        rule(3, n("Good Friday", "Vendredi saint")),
        rule(4, n("Easter Sunday", "Pâques"), "show"),
        rule(5, n("Easter Monday", "Lundi de Pâques"), "show"),
        yearly(victoria_day, victoria, "show"),
        yearly(canada_day, n("Canada Day", "Fête du Canada")),
        yearly(first_monday_august, civic, "show"),
        yearly(lambda y: nth_weekday(y, 9, MON, 1), n("Labour Day", "Fête du Travail")),
        fixed(9, 30, truth, "show", years=since(2021)),
        yearly(thanksgiving, thanks, "show"),
        rule(12, "Halloween", "show"),
        fixed(11, 11, remembrance, "show"),
        rule(15, n("Christmas Eve", "Veille de Noël"), "show"),
        rule(16, n("Christmas Day", "Noël")),
        rule(17, boxing, "show"),
        rule(18, n("New Year's Eve", "Veille du jour de l'An"), "show"),
    ])

    def vic(years=YEARS):
        return yearly(victoria_day, victoria, years=years)
    tg = yearly(thanksgiving, thanks)
    rem = fixed(11, 11, remembrance)
    box = rule(17, boxing)

    def tr(first):
        return fixed(9, 30, truth, years=since(first))

    def fam(first, name=family):
        return yearly(third_monday_february, name, years=since(first))

    def aug(name, honor="free"):
        return yearly(first_monday_august, name, honor)

    provinces = [
        ("AB", "Alberta", [fam(2000), vic(), tg, rem, aug(n("Heritage Day", "Fête du patrimoine"), "show")]),
        ("BC", n("British Columbia", "Colombie-Britannique"), [
            yearly(lambda y: nth_weekday(y, 2, MON, 2 if y < 2019 else 3), family, years=since(2013)),
            vic(), aug(n("British Columbia Day", "Jour de la Colombie-Britannique")), tr(2023), tg, rem]),
        ("MB", "Manitoba", [fam(2008, n("Louis Riel Day", "Journée Louis-Riel")), vic(),
                            aug(n("Terry Fox Day", "Journée Terry Fox"), "show"), tr(2023), tg]),
        ("NB", n("New Brunswick", "Nouveau-Brunswick"), [
            fam(2018), aug(n("New Brunswick Day", "Fête du Nouveau-Brunswick")), rem]),
        ("NL", n("Newfoundland and Labrador", "Terre-Neuve-et-Labrador"), [
            yearly(lambda y: weekday_on_or_before(dt.date(y, 6, 24) + dt.timedelta(days=3), MON),
                   n("Discovery Day", "Jour de la découverte"), "show"),
            rem]),
        ("NS", n("Nova Scotia", "Nouvelle-Écosse"), [
            fam(2015, n("Heritage Day", "Jour du patrimoine")), aug(n("Natal Day", "Jour de la fondation"), "show"),
            rem]),
        ("NT", n("Northwest Territories", "Territoires du Nord-Ouest"), [
            vic(), fixed(6, 21, indigenous), aug(civic), tr(2022), tg, rem]),
        ("NU", "Nunavut", [vic(), fixed(7, 9, n("Nunavut Day", "Jour du Nunavut")), aug(civic), tr(2022), tg, rem]),
        ("ON", "Ontario", [fam(2008), vic(), tg, box]),
        ("PE", n("Prince Edward Island", "Île-du-Prince-Édouard"), [
            fam(2009, n("Islander Day", "Fête des Insulaires")), tr(2022), rem]),
        ("QC", n("Quebec", "Québec"), [
            yearly(victoria_day, n("National Patriots' Day", "Journée nationale des patriotes"), years=since(2003)),
            vic(range(YEARS[0], 2003)),
            fixed(6, 24, n("Saint-Jean-Baptiste Day", "Fête nationale du Québec")),
            tg]),
        ("SK", "Saskatchewan", [fam(2007), vic(), aug(n("Saskatchewan Day", "Fête de la Saskatchewan")), tg, rem]),
        ("YT", "Yukon", [
            vic(), fixed(6, 21, indigenous, years=since(2017)),
            yearly(lambda y: nth_weekday(y, 8, MON, 3), n("Discovery Day", "Jour de la découverte")),
            tr(2023), tg, rem, box]),
    ]
    return nationwide, provinces


def build():
    out = {}
    for locale, lang in (("en_CA", EN), ("fr_CA", FR)):
        nationwide, provinces = build_days(lang)
        out[locale] = {"code": "CA", "title": "Canada", "nationwide": nationwide,
                       "provinces": [{"code": c, "title": t, "days": d} for c, t, d in provinces]}
    return out


# General holidays from the provinces' and territories' published lists.
TESTS = {
    ("", 2025): "01-01 04-18 07-01 09-01 12-25",
    ("ON", 2025): "01-01 02-17 04-18 05-19 07-01 09-01 10-13 12-25 12-26",
    ("QC", 2026): "01-01 04-03 05-18 06-24 07-01 09-07 10-12 12-25",
    ("QC", 2018): "01-01 03-30 05-21 06-24 07-02 09-03 10-08 12-25",
    ("BC", 2018): "01-01 02-12 03-30 05-21 07-02 08-06 09-03 10-08 11-11 12-25",
    ("BC", 2025): "01-01 02-17 04-18 05-19 07-01 08-04 09-01 09-30 10-13 11-11 12-25",
    ("NS", 2026): "01-01 02-16 04-03 07-01 09-07 11-11 12-25",
    ("YT", 2026): "01-01 04-03 05-18 06-21 07-01 08-17 09-07 09-30 10-12 11-11 12-25 12-26",
    ("NT", 2025): "01-01 04-18 05-19 06-21 07-01 08-04 09-01 09-30 10-13 11-11 12-25",
}
