#include "RKTestSupport.h"

#include <RKCalculatedHolidayCache.h>
#include <RKCalendariumHolidayCalculator.h>
#include <RKDirectoryConfig.h>

#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <cstdlib>

namespace {
const RKLocale GERMAN(QStringLiteral("de"), QStringLiteral("DE"));

RKCalendariumHolidayConfig config(const QString& province, const char* features, const RKLocale& locale = GERMAN)
{
    RKCalendariumHolidayConfig result;
    result.setLanguage(locale);
    result.setProvince(province);
    result.setFeatures(RKCalendariumFeatures(QString::fromLatin1(features)));
    return result;
}

RKCalendariumHolidayCacheKey key(int year, const QString& province, const char* features, const RKLocale& locale = GERMAN)
{
    return RKCalendariumHolidayCacheKey(year, config(province, features, locale));
}

RKCalendariumHolidayCalculator& calculator()
{
    return RKSingleton<RKCalendariumHolidayCalculator>::instance();
}

RKCalendariumHolidayType typeOf(const char* keywords)
{
    return RKCalendariumHolidayType(QString::fromLatin1(keywords));
}

/// The true Gregorian Easter (anonymous algorithm), an independent check.
QDate gregorianEaster(int y)
{
    const int a = y % 19, b = y / 100, c = y % 100, d = b / 4, e = b % 4;
    const int f = (b + 8) / 25, g = (b - f + 1) / 3, h = (19 * a + b - d - g + 15) % 30;
    const int i = c / 4, k = c % 4, l = (32 + 2 * e + 2 * i - h - k) % 7;
    const int m = (a + 11 * h + 22 * l) / 451;
    const int month = (h + l - 7 * m + 114) / 31, day = (h + l - 7 * m + 114) % 31 + 1;
    return QDate(y, month, day);
}

int daysIn(const RKCalendariumHolidayList& list, int year)
{
    return int(std::count_if(list.cbegin(), list.cend(), [year](const RKCalendariumHoliday& h) { return h.date().year() == year; }));
}

QStringList namesOf(const RKCalendariumHolidayList& list)
{
    QStringList names;
    for (const RKCalendariumHoliday& holiday : list)
        names << holiday.description();
    return names;
}
}

class TestHolidayCalculator : public QObject
{
    Q_OBJECT

    QTemporaryDir myChangingDir;

private slots:
    void initTestCase()
    {
        isolateUserFiles();
        QVERIFY(myChangingDir.isValid());
        QDir(myChangingDir.path()).mkpath(QStringLiteral("holidays"));
        const QByteArray path = (myChangingDir.path() + QLatin1Char(':') + testDataPath(QStringLiteral("holidays/resources"))).toLocal8Bit();
        qputenv("RKXML_RESOURCE_PATH", path);
        RKSingleton<RKDirectoryConfig>::instance().reload();
        // The broken fixture hr_HR.xml is reported once, while the files are read.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("XML parse error.*hr_HR.xml")));
        calculator();
    }

    void easter_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<QDate>("easter");
        QTest::newRow("2024") << 2024 << QDate(2024, 3, 31);
        QTest::newRow("2025") << 2025 << QDate(2025, 4, 20);
        QTest::newRow("1981") << 1981 << QDate(1981, 4, 19);
        QTest::newRow("2000") << 2000 << QDate(2000, 4, 23);
        QTest::newRow("2285 latest") << 2285 << QDate(2285, 3, 22);
        QTest::newRow("1954 kept one week late") << 1954 << QDate(1954, 4, 25);
        QTest::newRow("2049 kept one week late") << 2049 << QDate(2049, 4, 25);
        QTest::newRow("2106 kept one week late") << 2106 << QDate(2106, 4, 25);
        QTest::newRow("2201 kept one week late") << 2201 << QDate(2201, 4, 26);
    }
    void easter()
    {
        QFETCH(int, year);
        QFETCH(QDate, easter);
        QCOMPARE(RKCalendariumHolidayCalculator::eastern(year), easter);
        QCOMPARE(RKCalendariumHolidayCalculator::eastern(year).dayOfWeek(), 7);
    }

    void easterDiffersOnlyInQuirkYears()
    {
        // The kept grouping can only matter when H is 28 or 29 and G > 10, and then moves Easter by a week.
        QList<int> late;
        for (int year = 1583; year <= 2400; ++year) {
            const int g = year % 19;
            const int c = year / 100;
            const int h = (c - year / 400 - (8 * c + 13) / 25 + 19 * g + 15) % 30;
            const QDate ours = RKCalendariumHolidayCalculator::eastern(year);
            if (ours == gregorianEaster(year))
                continue;
            QCOMPARE(ours, gregorianEaster(year).addDays(7));
            QVERIFY2((h == 28 || h == 29) && g > 10, qPrintable(QString::number(year)));
            late << year;
        }
        const QList<int> known{1954, 2049, 2106, 2201};
        for (int year : known)
            QVERIFY2(late.contains(year), qPrintable(QString::number(year)));
        QCOMPARE(int(std::count_if(late.cbegin(), late.cend(), [](int y) { return y >= 1900 && y <= 2250; })), known.size());
        // Absurd years neither crash nor overflow.
        RKCalendariumHolidayCalculator::eastern(-4713);
        RKCalendariumHolidayCalculator::eastern(2147483647);
        RKCalendariumHolidayCalculator::eastern(-2147483647 - 1);
    }

    void wednesdayBefore22November()
    {
        QCOMPARE(RKCalendariumHolidayCalculator::bussUndBettag(2023), QDate(2023, 11, 22));
        QCOMPARE(RKCalendariumHolidayCalculator::bussUndBettag(2024), QDate(2024, 11, 20));
        QCOMPARE(RKCalendariumHolidayCalculator::bussUndBettag(2026), QDate(2026, 11, 18));
        QCOMPARE(RKCalendariumHolidayCalculator::bussUndBettag(2027), QDate(2027, 11, 17));
    }

    void ruleDayTable()
    {
        // Province ALL names every id after itself.
        const RKCalendariumHolidayCacheKey k = key(2024, QStringLiteral("ALL"), "holidays");
        const RKCalendariumHolidayList christmas = calculator().christmassRelatedDays(k);
        const RKCalendariumHolidayList easter = calculator().easternRelatedDays(k);
        QCOMPARE(namesOf(christmas), QString("r19 r1 r6 r12 r13 r14 r15 r16 r17 r18").split(' '));
        QCOMPARE(namesOf(easter), QString("r20 r21 r22 r2 r3 r4 r5 r7 r8 r9 r10 r11").split(' '));
        const QList<QDate> christmasDates{QDate(2024, 1, 1), QDate(2024, 1, 6), QDate(2024, 5, 1), QDate(2024, 10, 31),
            QDate(2024, 11, 1), QDate(2024, 11, 20), QDate(2024, 12, 24), QDate(2024, 12, 25), QDate(2024, 12, 26),
            QDate(2024, 12, 31)};
        const QDate e(2024, 3, 31);
        const QList<QDate> easterDates{e.addDays(-48), e.addDays(-46), e.addDays(-7), e.addDays(-3), e.addDays(-2), e,
            e.addDays(1), e.addDays(39), e.addDays(49), e.addDays(50), e.addDays(60), QDate(2024, 8, 15)};
        for (int n = 0; n < christmas.size(); ++n)
            QCOMPARE(christmas.at(n).date(), christmasDates.at(n));
        for (int n = 0; n < easter.size(); ++n)
            QCOMPARE(easter.at(n).date(), easterDates.at(n));
        // With the nationwide dated day.
        QCOMPARE(calculator().holidaysOfYear(k).size(), 23);
    }

    void unlistedRuleDaysAreType0()
    {
        // Nationwide lists neither id 4 nor id 14 (its id 14 has no name): they come with type 0.
        const RKCalendariumHolidayList easter = calculator().easternRelatedDays(key(2024, QString(), "holidays"));
        QCOMPARE(easter.size(), 12);
        QCOMPARE(easter.at(5).date(), QDate(2024, 3, 31));
        QCOMPARE(easter.at(5).type().toInt(), 0);
        QVERIFY(easter.at(5).description().isEmpty());
        const RKCalendariumHolidayConfig nation = config(QString(), "holidays");
        QCOMPARE(calculator().prototype(14, nation).id(), -1);
        QCOMPARE(calculator().honoring(14, nation).toInt(), 0);
        QCOMPARE(calculator().prototype(99, nation).description(), QStringLiteral("Unbekannter Tag"));
        const RKCalendariumHoliday made = calculator().createHoliday(nation, QDate(2024, 5, 1), 6);
        QCOMPARE(made, RKCalendariumHoliday(QDate(2024, 5, 1), QStringLiteral("Tag der Arbeit"), typeOf("free")));
    }

    void provinceOverrides()
    {
        const RKCalendariumHolidayList nation = calculator().holidaysOfYear(key(2024, QString(), "holidays"));
        const RKCalendariumHolidayList bavaria = calculator().holidaysOfYear(key(2024, QStringLiteral("BY"), "holidays"));
        const RKCalendariumHolidayList bremen = calculator().holidaysOfYear(key(2024, QStringLiteral("HB"), "holidays"));
        const RKCalendariumHolidayList unknown = calculator().holidaysOfYear(key(2024, QStringLiteral("XX"), "holidays"));

        // Id 4 only for the province.
        QCOMPARE(bavaria.filter(QDate(2024, 3, 31)).size(), 1);
        QCOMPARE(bavaria.filter(QDate(2024, 3, 31)).first().description(), QStringLiteral("Ostersonntag"));
        QCOMPARE(nation.filter(QDate(2024, 3, 31)).size(), 0);
        // The province's name for id 6 replaces the nationwide one.
        QCOMPARE(namesOf(bavaria.filter(QDate(2024, 5, 1))), QStringList{QStringLiteral("Maifeiertag")});
        QCOMPARE(namesOf(nation.filter(QDate(2024, 5, 1))), QStringList{QStringLiteral("Tag der Arbeit")});
        QCOMPARE(bavaria.filter(QDate(2024, 1, 6)).first().type().toInt(), 96);
        // An empty honor in the province removes a nationwide day.
        QCOMPARE(nation.filter(QDate(2024, 11, 1)).size(), 1);
        QCOMPARE(bremen.filter(QDate(2024, 11, 1)).size(), 0);
        // Province names are case-sensitive: "by" is another province.
        const RKCalendariumHolidayList lower = calculator().holidaysOfYear(key(2024, QStringLiteral("by"), "holidays"));
        QCOMPARE(lower.filter(QDate(2024, 3, 28)).size(), 1);
        QCOMPARE(bavaria.filter(QDate(2024, 3, 28)).size(), 0);
        QCOMPARE(lower.filter(QDate(2024, 3, 31)).size(), 0);
        // An unknown province gets the nationwide days.
        QCOMPARE(unknown, nation);
        // The province's copy of a nationwide dated day is marked once.
        QCOMPARE(bavaria.filter(QDate(2024, 10, 3)).size(), 1);
        QCOMPARE(calculator().nationalRelatedDays(key(2024, QStringLiteral("BY"), "holidays")).filter(QDate(2024, 10, 3)).size(), 2);
        // Nothing of type 0 and no repeats.
        QCOMPARE(bavaria.filterAway(RKCalendariumHolidayType()), bavaria);
        QCOMPARE(bavaria.filterAwayDoubles(), bavaria);
    }

    void datedDays_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("marked");
        QTest::newRow("every year 2024") << 2024 << QDate(2024, 10, 3) << "Tag der Deutschen Einheit" << true;
        QTest::newRow("every year 2099") << 2099 << QDate(2099, 10, 3) << "Tag der Deutschen Einheit" << true;
        QTest::newRow("one-off in its year") << 2026 << QDate(2026, 5, 8) << "Einmaliger Feiertag" << true;
        QTest::newRow("one-off not in 2025") << 2025 << QDate(2025, 5, 8) << "Einmaliger Feiertag" << false;
        QTest::newRow("one-off not in 2027") << 2027 << QDate(2027, 5, 8) << "Einmaliger Feiertag" << false;
        QTest::newRow("unknown honor is type 0") << 2024 << QDate(2024, 11, 11) << "Martinstag" << false;
    }
    void datedDays()
    {
        QFETCH(int, year);
        QFETCH(QDate, date);
        QFETCH(QString, name);
        QFETCH(bool, marked);
        const RKCalendariumHolidayList days = calculator().holidaysOfYear(key(year, QString(), "holidays"));
        QCOMPARE(namesOf(days.filter(date)).contains(name), marked);
        QVERIFY(!namesOf(days).contains(QStringLiteral("Ohne Datum")));
        QVERIFY(!namesOf(days).contains(QStringLiteral("Kaputte Nummer")));
    }

    void impossibleDatedDayIsKeptInvalid()
    {
        const RKCalendariumHolidayList days = calculator().holidaysOfYear(key(2026, QString(), "holidays"));
        const auto found = std::find_if(days.cbegin(), days.cend(),
            [](const RKCalendariumHoliday& h) { return h.description() == QLatin1String("Unmoeglicher Tag"); });
        QVERIFY(found != days.cend());
        QVERIFY(!found->date().isValid());
        // The rest of the year is there as usual.
        QCOMPARE(days.filter(QDate(2026, 1, 1)).size(), 1);
        QCOMPARE(days.filter(QDate(2026, 12, 25)).size(), 1);
    }

    void featuresGateTheDays()
    {
        QCOMPARE(calculator().holidaysOfYear(key(2024, QStringLiteral("BY"), "")).size(), 0);
        QCOMPARE(calculator().holidaysOfYear(key(2024, QStringLiteral("BY"), "moonphases,zodiacs")).size(), 0);
        QCOMPARE(calculator().christmassRelatedDays(key(2024, QStringLiteral("BY"), "vacations")).size(), 0);
        QCOMPARE(calculator().holidaysOfYear(key(2024, QStringLiteral("BY"), "holiday_colors")),
            calculator().holidaysOfYear(key(2024, QStringLiteral("BY"), "holidays")));
        // Vacations come without holidays.
        const RKCalendariumHolidayList vacations = calculator().holidaysOfYear(key(2024, QStringLiteral("BY"), "vacations"));
        QCOMPARE(vacations.size(), 5 + 11);
        QCOMPARE(vacations.filter(RKCalendariumHolidayType(RKCalendariumHolidayTypeSchool)), vacations);
        // Both: vacations first.
        const RKCalendariumHolidayList both = calculator().holidaysOfYear(key(2024, QStringLiteral("BY"), "holidays,vacations"));
        QCOMPARE(both.first().type().toInt(), int(RKCalendariumHolidayTypeSchool));
        QCOMPARE(both.size(), vacations.size() + calculator().holidaysOfYear(key(2024, QStringLiteral("BY"), "holidays")).size());
    }

    void vacationAcrossNewYear()
    {
        const RKCalendariumHolidayList y2024 = calculator().schoolVacations(key(2024, QString(), "vacations"));
        const RKCalendariumHolidayList y2025 = calculator().schoolVacations(key(2025, QString(), "vacations"));
        QCOMPARE(daysIn(y2024, 2024), 11);
        QCOMPARE(y2024.size(), 11);
        QCOMPARE(y2025.size(), 4);
        QCOMPARE(y2025.first(), RKCalendariumHoliday(QDate(2025, 1, 1), QString(), RKCalendariumHolidayType(RKCalendariumHolidayTypeSchool)));
        QCOMPARE(y2025.last().date(), QDate(2025, 1, 4));
        QCOMPARE(calculator().schoolVacations(key(2023, QString(), "vacations")).size(), 0);
        QCOMPARE(calculator().schoolVacations(key(2024, QString(), "holidays")).size(), 0);
    }

    void provinceVacationsMatchExactly()
    {
        QCOMPARE(calculator().schoolVacations(key(2024, QStringLiteral("BY"), "vacations")).size(), 11 + 5);
        QCOMPARE(calculator().schoolVacations(key(2024, QStringLiteral("by"), "vacations")).size(), 11 + 1);
        QCOMPARE(calculator().schoolVacations(key(2024, QStringLiteral("B"), "vacations")).size(), 11);
    }

    void longVacationWarning()
    {
        // 2024-07-01 .. 2024-08-21 is 51 days on: warned, used all the same.
        QTest::ignoreMessage(QtWarningMsg, "\"Einundfuenfzig\"  is  51 days long.");
        const RKCalendariumHolidayList y2024 = calculator().schoolVacations(key(2024, QStringLiteral("LONG"), "vacations"));
        QCOMPARE(y2024.size(), 11 + 52);
        // Every query checks every entry; 2025's 50 days pass without a word.
        static QStringList messages;
        messages.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { messages << text; });
        const RKCalendariumHolidayList y2025 = calculator().schoolVacations(key(2025, QStringLiteral("LONG"), "vacations"));
        qInstallMessageHandler(previous);
        QCOMPARE(messages, QStringList{QStringLiteral("\"Einundfuenfzig\"  is  51 days long.")});
        QCOMPARE(y2025.size(), 4 + 51);
    }

    void badVacations()
    {
        // "2010-"/"2011-" are skipped silently, the others are reported; the good entry still counts.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Something is wrong with  \"Monat13\" ; from  \"2024-13-01\"  to  \"2024-13-05\"$")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Something is wrong with  \"Rueckwaerts\" ; from  \"2024-05-10\"")));
        const RKCalendariumHolidayList days = calculator().schoolVacations(key(2024, QStringLiteral("BAD"), "vacations"));
        QCOMPARE(days.size(), 11 + 2);
        QCOMPARE(days.last().date(), QDate(2024, 5, 21));
    }

    void readSchoolVacationsFromElement()
    {
        QDomDocument document;
        QVERIFY(document.setContent(QStringLiteral("<p><vacation start=\"2024-12-30\" end=\"2025-01-02\" name=\"a\"/>"
                                                   "<other start=\"2024-01-01\" end=\"2024-01-01\"/>"
                                                   "<vacation start=\"2010-\" end=\"2011-\" name=\"t\"/></p>")));
        QCOMPARE(calculator().readSchoolVacations(document.documentElement(), 2024).size(), 2);
        QCOMPARE(calculator().readSchoolVacations(document.documentElement(), 2025).size(), 2);
        QCOMPARE(calculator().readSchoolVacations(QDomElement(), 2025).size(), 0);
    }

    void moonPhaseDays()
    {
        const RKCalendariumHolidayList y2030 = calculator().moonPhases(key(2030, QString(), "moonphases"));
        const QList<int> ring{4, 8, 1, 2, 4};
        QCOMPARE(y2030.size(), 5);
        for (int n = 0; n < y2030.size(); ++n) {
            QCOMPARE(y2030.at(n).type().toInt(), ring.at(n));
            QVERIFY(y2030.at(n).description().isEmpty());
        }
        QCOMPARE(y2030.first().date(), QDate(2030, 1, 5));
        QCOMPARE(y2030.last().date(), QDate(2030, 2, 3));

        // A text without two numbers uses up its phase; "3/15" matches; 02-30 gives an invalid date.
        const RKCalendariumHolidayList y2031 = calculator().moonPhases(key(2031, QString(), "moonphases"));
        QCOMPARE(y2031.size(), 3);
        QCOMPARE(y2031.at(0), RKCalendariumHoliday(QDate(2031, 3, 1), RKCalendariumHolidayType(RKCalendariumHolidayTypeNewMoon)));
        QCOMPARE(y2031.at(1), RKCalendariumHoliday(QDate(2031, 3, 15), RKCalendariumHolidayType(RKCalendariumHolidayTypeFullMoon)));
        QVERIFY(!y2031.at(2).date().isValid());
        QCOMPARE(y2031.at(2).type().toInt(), int(RKCalendariumHolidayTypeWaningCrescent));

        // start="6" turns the ring five times: first quarter first.
        QCOMPARE(calculator().moonPhases(key(2032, QString(), "moonphases")).first().type().toInt(), 2);
        QCOMPARE(calculator().moonPhases(key(2033, QString(), "moonphases")).size(), 0);
        QCOMPARE(calculator().moonPhases(key(2030, QString(), "holidays,vacations")).size(), 0);
        // Moon phases are not part of the holidays of the year.
        QCOMPARE(calculator().holidaysOfYear(key(2030, QString(), "moonphases")).size(), 0);
    }

    void moonAge()
    {
        QFile known(testDataPath(QStringLiteral("moonphases-known.csv")));
        QVERIFY(known.open(QIODevice::ReadOnly | QIODevice::Text));
        known.readLine();
        int checked = 0;
        while (!known.atEnd()) {
            const QStringList fields = QString::fromUtf8(known.readLine()).trimmed().split(QLatin1Char(';'));
            if (fields.size() != 2)
                continue;
            const QDate date = QDateTime::fromString(fields.at(0), Qt::ISODate).date();
            const QMap<QString, int> expectedAge{{"new", 0}, {"first_quarter", 7}, {"full", 15}, {"last_quarter", 22}};
            const int age = calculator().moonPhase(date);
            QVERIFY(age >= -29 && age <= 29);
            const int distance = std::abs(((age - expectedAge.value(fields.at(1))) % 30 + 45) % 30 - 15);
            if (distance > 2)
                QFAIL(qPrintable(QStringLiteral("%1 (%2): age %3").arg(fields.at(0), fields.at(1)).arg(age)));
            ++checked;
        }
        QVERIFY(checked > 50);
        QCOMPARE(calculator().moonPhase(QDate()), 0);
    }

    void languagesAndProvinces()
    {
        const QList<RKLocale> languages = calculator().availableLanguages();
        QVERIFY(std::is_sorted(languages.cbegin(), languages.cend()));
        QVERIFY(languages.contains(GERMAN));
        QVERIFY(languages.contains(RKLocale(QStringLiteral("hr"), QStringLiteral("HR"))));

        const QStringList provinces = calculator().availableProvinces(GERMAN);
        QCOMPARE(QSet<QString>(provinces.cbegin(), provinces.cend()),
            (QSet<QString>{"BY", "HB", "by", "LONG", "BAD", "ALL"}));
        QCOMPARE(provinces.size(), 6);
        QVERIFY(std::is_sorted(provinces.cbegin(), provinces.cend(),
            [](const QString& a, const QString& b) { return QString::localeAwareCompare(a, b) < 0; }));
        QVERIFY(calculator().availableProvinces(RKLocale(QStringLiteral("xx"), QStringLiteral("YY"))).isEmpty());
        // The broken file contributes nothing.
        QVERIFY(calculator().availableProvinces(RKLocale(QStringLiteral("hr"), QStringLiteral("HR"))).isEmpty());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("XML parse error.*hr_HR.xml")));
        QCOMPARE(calculator().holidaysOfYear(key(2024, QString(), "holidays,vacations", RKLocale(QStringLiteral("hr"), QStringLiteral("HR")))).size(), 0);
    }

    void provinceWithoutNameIsSkipped()
    {
        // It would otherwise stand for the whole country and replace Neujahr.
        const RKCalendariumHolidayList days = calculator().holidaysOfYear(key(2024, QString(), "holidays"));
        QCOMPARE(namesOf(days.filter(QDate(2024, 1, 1))), QStringList{QStringLiteral("Neujahr")});
        QCOMPARE(days.filter(QDate(2024, 1, 1)).first().type().toInt(), 32);
    }

    void changedFilesAreReadAgain()
    {
        const RKLocale slovene(QStringLiteral("sl"), QStringLiteral("SI"));
        const QString path = myChangingDir.path() + QStringLiteral("/holidays/sl_SI.xml");
        auto write = [&path](const QString& vacations) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
            file.write(QStringLiteral("<holidays><country><nationwide><day id=\"19\" name=\"Novo leto\" honor=\"free\"/>%1"
                                      "</nationwide></country></holidays>").arg(vacations).toUtf8());
        };
        write(QStringLiteral("<vacation start=\"2024-02-19\" end=\"2024-02-23\" name=\"Zimske\"/>"));
        // Vacations and moon phases follow the file; the holiday tables only after reloadData().
        QCOMPARE(calculator().schoolVacations(key(2024, QString(), "vacations", slovene)).size(), 5);
        write(QStringLiteral("<vacation start=\"2024-02-19\" end=\"2024-02-20\" name=\"Zimske\"/><!-- shorter -->"));
        QCOMPARE(calculator().schoolVacations(key(2024, QString(), "vacations", slovene)).size(), 2);
        QCOMPARE(calculator().holidaysOfYear(key(2024, QString(), "holidays", slovene)).size(), 0);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("XML parse error.*hr_HR.xml")));
        calculator().reloadData();
        QCOMPARE(calculator().holidaysOfYear(key(2024, QString(), "holidays", slovene)).size(), 1);
        QFile::remove(path);
        QCOMPARE(calculator().schoolVacations(key(2024, QString(), "vacations", slovene)).size(), 0);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("XML parse error.*hr_HR.xml")));
        calculator().reloadData();
        QCOMPARE(calculator().holidaysOfYear(key(2024, QString(), "holidays", slovene)).size(), 0);
        // The fixture files are all back.
        QCOMPARE(calculator().holidaysOfYear(key(2024, QStringLiteral("ALL"), "holidays")).size(), 23);
    }

    void cacheAnswersPerDay()
    {
        RKCalculatedHolidayCache cache;
        RKCalendariumHolidayConfig bavaria = config(QStringLiteral("BY"), "holidays,vacations");
        const RKCalendariumContentKey easterSunday(RKCalendariumContentConfig(QDate(2024, 3, 31), bavaria), RKProjectIdentifier());
        QCOMPARE(cache.holidaysAt(easterSunday), QStringList{QStringLiteral("Ostersonntag")});
        QVERIFY(cache.hasHolidayOfType(easterSunday, RKCalendariumHolidayType()));
        QVERIFY(cache.hasHolidayOfType(easterSunday, typeOf("free")));
        QVERIFY(!cache.hasHolidayOfType(easterSunday, typeOf("show")));
        QVERIFY(!cache.hasHolidayOfType(easterSunday, typeOf("school")));

        // A day that is both free and shown is found for either flag.
        const RKCalendariumContentKey epiphany = easterSunday.moveToDay(QDate(2024, 1, 6));
        QVERIFY(cache.hasHolidayOfType(epiphany, typeOf("show")));
        QVERIFY(cache.hasHolidayOfType(epiphany, typeOf("free")));

        // A named day that is not a day off does not look like a Sunday.
        const RKCalendariumContentKey christmasEve = easterSunday.moveToDay(QDate(2024, 12, 24));
        QCOMPARE(cache.holidaysAt(christmasEve), QStringList{QStringLiteral("Heiligabend")});
        QVERIFY(!cache.hasHolidayOfType(christmasEve, RKCalendariumHolidayType()));
        QVERIFY(cache.hasHolidayOfType(christmasEve, typeOf("school")));

        // A vacation day has no name to print.
        const RKCalendariumContentKey vacationDay = easterSunday.moveToDay(QDate(2024, 2, 13));
        QVERIFY(cache.holidaysAt(vacationDay).isEmpty());
        QVERIFY(cache.hasHolidayOfType(vacationDay, typeOf("school")));
        QVERIFY(!cache.hasHolidayOfType(vacationDay, RKCalendariumHolidayType()));

        const RKCalendariumContentKey ordinary = easterSunday.moveToDay(QDate(2024, 3, 12));
        QVERIFY(cache.holidaysAt(ordinary).isEmpty());
        QVERIFY(!cache.hasHolidayOfType(ordinary, RKCalendariumHolidayType()));
        QCOMPARE(cache.holidayImageAt(ordinary), RKHolidayImage(QString(), QSize(-1, -1)));
        QCOMPARE(cache.size(), 1); // one year computed for all those days

        QCOMPARE(cache.holidaysAt(easterSunday.moveToDay(QDate(2025, 1, 1))), QStringList{QStringLiteral("Neujahr")});
        QCOMPARE(cache.size(), 2);
        QVERIFY(cache.holidaysAt(RKCalendariumContentKey()).isEmpty());
        QCOMPARE(cache.size(), 2);

        // The same day under another configuration is another year entry.
        bavaria.setProvince(QStringLiteral("HB"));
        const RKCalendariumContentKey bremen(RKCalendariumContentConfig(QDate(2024, 11, 1), bavaria), RKProjectIdentifier());
        QVERIFY(cache.holidaysAt(bremen).isEmpty());
        QCOMPARE(cache.holidaysAt(bremen.moveToDay(QDate(2024, 12, 24))), QStringList{QStringLiteral("Heiligabend")});
        QCOMPARE(cache.size(), 3);
        cache.clear();
        QCOMPARE(cache.size(), 0);
    }

    void cacheMoonDays()
    {
        RKCalculatedHolidayCache cache;
        const RKCalendariumContentKey fullMoon(RKCalendariumContentConfig(QDate(2030, 1, 5), config(QString(), "moonphases")), RKProjectIdentifier());
        QVERIFY(cache.hasHolidayOfType(fullMoon, typeOf("full_moon")));
        QVERIFY(!cache.hasHolidayOfType(fullMoon, typeOf("new_moon")));
        QVERIFY(cache.holidaysAt(fullMoon).isEmpty());
        // No moon icons are installed in these resources: no picture.
        QCOMPARE(cache.holidayImageAt(fullMoon), RKHolidayImage(QString(), QSize(-1, -1)));
    }

    void cacheMoonIcon()
    {
        const QString icon = myChangingDir.path() + QStringLiteral("/moonphases/full_moon.svg");
        QVERIFY(QDir(myChangingDir.path()).mkpath(QStringLiteral("moonphases")));
        QFile file(icon);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"40\" height=\"30\"><circle cx=\"20\" cy=\"15\" r=\"10\"/></svg>");
        file.close();
        RKCalculatedHolidayCache cache;
        const RKCalendariumContentKey fullMoon(RKCalendariumContentConfig(QDate(2030, 1, 5), config(QString(), "moonphases")), RKProjectIdentifier());
        QCOMPARE(cache.holidayImageAt(fullMoon), RKHolidayImage(QFileInfo(icon).absoluteFilePath(), QSize(40, 30)));
        QCOMPARE(cache.holidayImageAt(fullMoon.moveToDay(QDate(2030, 1, 12))).second, QSize(-1, -1)); // last quarter: no icon
        QFile::remove(icon);
    }

    void cacheFromThreads()
    {
        RKCalculatedHolidayCache cache;
        const RKCalendariumHolidayConfig bavaria = config(QStringLiteral("BY"), "holidays,vacations,moonphases");
        QVector<QThread*> threads;
        QAtomicInt failures = 0;
        for (int t = 0; t < 4; ++t) {
            threads.append(QThread::create([&cache, &failures, bavaria]() {
                for (int year = 2020; year < 2030; ++year) {
                    const RKCalendariumContentKey day(RKCalendariumContentConfig(QDate(year, 12, 25), bavaria), RKProjectIdentifier());
                    if (cache.holidaysAt(day) != QStringList{QStringLiteral("1. Weihnachtstag")})
                        failures.ref();
                }
            }));
            threads.last()->start();
        }
        for (QThread* thread : threads) {
            thread->wait();
            delete thread;
        }
        QCOMPARE(failures.loadRelaxed(), 0);
        QCOMPARE(cache.size(), 10);
    }
};

QTEST_GUILESS_MAIN(TestHolidayCalculator)
#include "test_holidaycalculator.moc"
