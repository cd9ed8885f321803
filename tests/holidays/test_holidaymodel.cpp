// The holiday value types: type and feature keywords, holiday lists, the holiday
// configuration with its XML form and saved default, and the keys built on it.

#include "RKTestSupport.h"

#include <RKCalendariumContentKey.h>
#include <RKCalendariumFeatures.h>
#include <RKCalendariumHoliday.h>
#include <RKCalendariumHolidayCacheKey.h>
#include <RKCalendariumHolidayConfig.h>
#include <RKCalendariumHolidayConfigDefault.h>
#include <RKCalendariumHolidayList.h>
#include <RKCalendariumHolidayType.h>
#include <RKDateRange.h>
#include <RKDirectoryConfig.h>
#include <RKErrorHistory.h>
#include <RKProvinceSpecification.h>
#include <RKXMLBuilder.h>

#include <QDomDocument>
#include <QHash>

namespace {
RKCalendariumFeatures features(const char* words) { return RKCalendariumFeatures(QString::fromLatin1(words)); }
RKCalendariumHolidayType typeOf(const char* keywords) { return RKCalendariumHolidayType(QString::fromLatin1(keywords)); }

/// de_DE, BY, holidays and moon phases (17).
RKCalendariumHolidayConfig sample()
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale("de", "DE"));
    config.setProvince("BY");
    config.setFeatures(features("holidays,moonphases"));
    return config;
}

/// The whole value of a configuration: "<language> <province> <features value>".
QString describe(const RKCalendariumHolidayConfig& config)
{
    return QStringLiteral("%1 %2 %3").arg(config.language().name(), config.province()).arg(config.features().toInt());
}
}

class TestHolidayModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    // The words themselves are the files' vocabulary, read by every fixture; parsing (case,
    // blanks, empty and unknown pieces) is the shared word table's. Here: every value writes
    // words that read back to it, and the unknown word stands for no type.
    void everyValueReadsBack()
    {
        for (int value = 0; value < 128; ++value) {
            const RKCalendariumFeatures features(static_cast<RKCalendariumFeaturesEnum>(value));
            QCOMPARE(RKCalendariumFeatures(features.encodeCSV()).toInt(), value);
            const RKCalendariumHolidayType type(static_cast<RKCalendariumHolidayTypeEnum>(value));
            QCOMPARE(RKCalendariumHolidayType(type.encodeCSV()).toInt(), value);
            // A single flag also has a keyword of its own.
            if (qPopulationCount(quint32(value)) == 1)
                QCOMPARE(RKCalendariumHolidayType(type.encode()).toInt(), value);
        }
        QCOMPARE(RKCalendariumHolidayType().encode(), QStringLiteral("NO_HOLIDAY"));
        QCOMPARE(typeOf("free,show").encode(), QStringLiteral("NO_HOLIDAY")); // mixed: no single keyword
        QCOMPARE(typeOf("NO_HOLIDAY").toInt(), 0);
    }

    void holidaysAndLists()
    {
        // Validity goes by the type alone.
        QVERIFY(!RKCalendariumHoliday(QDate(2024, 5, 1), "x", RKCalendariumHolidayType()).isValid());
        QVERIFY(RKCalendariumHoliday(QDate(), typeOf("show")).isValid());
        const QDate day(2024, 12, 25);
        QCOMPARE(RKCalendariumHoliday(day, "Weihnachten", typeOf("free")).longDescription(),
            QStringLiteral("%1: \"Weihnachten\"").arg(QLocale().toString(day, QLocale::ShortFormat)));

        const QDate d1(2024, 1, 1), d2(2024, 1, 2);
        const RKCalendariumHoliday free1(d1, "A", typeOf("free")), both1(d1, "B", typeOf("free,show"));
        const RKCalendariumHoliday show2(d2, "C", typeOf("show")), none2(d2, "D", RKCalendariumHolidayType());
        const RKCalendariumHolidayList list{free1, both1, show2, none2};
        QCOMPARE(list.filter(QDate()).size(), 0);
        QCOMPARE(list.filter(d1), (RKCalendariumHolidayList{free1, both1}));
        QCOMPARE(list.filter(d2), (RKCalendariumHolidayList{show2, none2}));
        // Whole-value comparison, not a flag test; the receiver stays as it was.
        QCOMPARE(list.filter(typeOf("free")), (RKCalendariumHolidayList{free1}));
        QCOMPARE(list.filterAway(typeOf("free")), (RKCalendariumHolidayList{both1, show2, none2}));
        QCOMPARE(list.filterAway(RKCalendariumHolidayType()), (RKCalendariumHolidayList{free1, both1, show2}));
        QCOMPARE(list.size(), 4);

        // Only exact repeats go, the first one stays; differing in name, type or date is kept.
        const RKCalendariumHoliday a(d1, "A", typeOf("free")), b(d2, "B", typeOf("free")), c(QDate(2024, 1, 3), "C", typeOf("free"));
        QCOMPARE((RKCalendariumHolidayList{a, b, a, c, b}).filterAwayDoubles(), (RKCalendariumHolidayList{a, b, c}));
        const RKCalendariumHoliday otherName(d1, "A'", typeOf("free")), otherType(d1, "A", typeOf("show")), nullDate(QDate(), "A", typeOf("free"));
        QCOMPARE((RKCalendariumHolidayList{a, otherName, otherType, nullDate, nullDate}).filterAwayDoubles(),
            (RKCalendariumHolidayList{a, otherName, otherType, nullDate}));
    }

    void provinceSpecificationsGoByEquality()
    {
        // All share one hash bucket: look-up still tells provinces apart, case-sensitively.
        const RKLocale german("de", "DE");
        QHash<RKProvinceSpecification, int> table;
        table.insert(RKProvinceSpecification(german, "BY"), 1);
        table.insert(RKProvinceSpecification(german, "by"), 2);
        table.insert(RKProvinceSpecification(german, QString()), 3);
        table.insert(RKProvinceSpecification(RKLocale("de", "AT"), "BY"), 4);
        QCOMPARE(table.size(), 4);
        QCOMPARE(table.value(RKProvinceSpecification(german, "by")), 2);
        QCOMPARE(table.value(RKProvinceSpecification(german, "BY")), 1);
        QCOMPARE(table.value(RKProvinceSpecification(german, "NW"), -1), -1);
    }

    void configCopiesAndSetters()
    {
        // Changing a copy, even of the shared default, leaves the others alone.
        RKCalendariumHolidayConfig a;
        const RKCalendariumHolidayConfig b;
        QVERIFY(a.sharesStateWith(b));
        const QString before = b.province();
        a.setProvince("ZZ-not-a-province");
        QVERIFY(!a.sharesStateWith(b));
        QVERIFY(a != b);
        QCOMPARE(RKCalendariumHolidayConfig().province(), before);
        RKCalendariumHolidayConfig copy = sample();
        QVERIFY(copy.setFeature(features("vacations"), true));
        QVERIFY(!sample().hasFeatures(features("vacations")));
        QVERIFY(copy.hasFeatures(features("vacations,holidays")));
        // A moved-from value reads like a default one and can be written again.
        RKCalendariumHolidayConfig moved = std::move(copy);
        QVERIFY(copy == RKCalendariumHolidayConfig()); // NOLINT(bugprone-use-after-move)
        copy.setProvince("NW");
        QCOMPARE(copy.province(), QStringLiteral("NW"));

        // An empty province is ignored; setFeature tells whether anything changed.
        RKCalendariumHolidayConfig config = sample();
        config.setProvince(QString());
        QCOMPARE(config.province(), QStringLiteral("BY"));
        QVERIFY(!config.setFeature(features("holidays"), true));
        QVERIFY(config.setFeature(features("holidays"), false));
        QVERIFY(!config.setFeature(features("holidays"), false));
        config.removeFeatures(features("moonphases,zodiacs"));
        QCOMPARE(config.features().toInt(), 0);
        QVERIFY(config.hasFeatures(RKCalendariumFeatures()));

        const RKCalendariumHolidayConfig all = RKCalendariumHolidayConfig::withEverythingEnabled(sample());
        QCOMPARE(describe(all), QStringLiteral("de_DE BY 125")); // all but holiday_colors
    }

    void configEquality()
    {
        const RKCalendariumHolidayConfig a = sample();
        QVERIFY(a == sample());
        QVERIFY(a.hashKey() == sample().hashKey());
        RKCalendariumHolidayConfig province = sample(), language = sample(), feature = sample();
        province.setProvince("by");
        language.setLanguage(RKLocale("de", "AT"));
        feature.setFeature(features("zodiacs"), true);
        QVERIFY(a != province);
        QVERIFY(a != language);
        QVERIFY(a != feature);
        QVERIFY(a.hashKey() != province.hashKey());
        QVERIFY(a.hashKey() != feature.hashKey());
        // The cache key adds the year; the same configuration in another year is another key.
        const RKCalendariumHolidayCacheKey y2024(2024, a);
        QVERIFY(y2024 == RKCalendariumHolidayCacheKey(2024, sample()));
        QVERIFY(y2024 != RKCalendariumHolidayCacheKey(2025, a));
        QVERIFY(y2024 != RKCalendariumHolidayCacheKey(2024, feature));
        QVERIFY(y2024.hashKey() != RKCalendariumHolidayCacheKey(2025, a).hashKey());

        // Content keys: day, month arithmetic and project.
        const RKCalendariumContentConfig april(QDate(2024, 4, 10), sample());
        QVERIFY(!april.moveToDayInMonth(31).isValid());
        QCOMPARE(RKCalendariumContentConfig(QDate(2024, 1, 31), sample()).addMonths(1).date(), QDate(2024, 2, 29));
        QVERIFY(april.addDays(25).holidayConfig() == sample());
        const RKProjectIdentifier project("p-1", false);
        const RKCalendariumContentKey key(april, project);
        QVERIFY(key != RKCalendariumContentKey(april.moveToDayInMonth(11), project));
        QVERIFY(key == RKCalendariumContentKey(april, RKProjectIdentifier("p-1", false)));
        QVERIFY(key != RKCalendariumContentKey(april, RKProjectIdentifier("p-2", false)));
        QCOMPARE(key.addMonths(1).project(), project);
        QVERIFY(!RKCalendariumContentKey().isValid());
    }

    void dateRange()
    {
        const RKDateRange february = RKDateRange::month(QDate(2024, 2, 17));
        QCOMPARE(february.first(), QDate(2024, 2, 1));
        QCOMPARE(february.days(), 29);
        QVERIFY(february.contains(QDate(2024, 2, 29)));
        QVERIFY(!february.contains(QDate(2024, 3, 1)));
        QVERIFY(!february.contains(QDate(2024, 1, 31)));
        QCOMPARE(RKDateRange::month(QDate(2023, 2, 1)).days(), 28);
        QVERIFY(RKDateRange::month(QDate()).isEmpty());
        QVERIFY(!RKDateRange::month(QDate()).contains(QDate()));
        QCOMPARE(RKDateRange(QDate(2024, 1, 5), QDate(2024, 1, 1)).days(), 0);
    }

    void xmlRoundTrip()
    {
        QDomDocument document;
        QDomElement parent = document.createElement("parent");
        document.appendChild(parent);
        const RKCalendariumHolidayConfig written = RKCalendariumHolidayConfig::withEverythingEnabled(sample());
        written.writeToXML(parent);
        QCOMPARE(RKXMLBuilder::toString(document, -1),
            QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<parent>\n\t<holidays features=\"holidays, personalEntries, vacations, "
                           "moonphases, zodiacs, show_week_of_year\" language=\"de_DE\" province=\"BY\"/>\n</parent>\n"));
        RKCalendariumHolidayConfig read;
        read.setLanguage(RKLocale("fr", "FR"));
        read.readFromXML(parent);
        QVERIFY(read == written);
    }

    void readFromXML_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QString>("config"); // language, province, features value
        // The starting point is sample(): de_DE, BY, holidays+moonphases (17).
        QTest::newRow("no holidays element") << "<other features=\"zodiacs\"/>" << "de_DE BY 17";
        QTest::newRow("empty features") << "<holidays features=\"\"/>" << "de_DE BY 0";
        QTest::newRow("features") << "<holidays language=\"fr_CH\" province=\"GE\" features=\"vacations\"/>" << "fr_CH GE 8";
        QTest::newRow("empty language and province keep")
            << "<holidays language=\"\" province=\"  \" features=\"zodiacs\"/>" << "de_DE BY 32";
        // Legacy keys: showHolidays is holidays (1) and holiday_colors (2), showEvents personalEntries (4), on by
        // default; showVacations vacations (8) and showMoonPhases moonphases (16), off by default.
        QTest::newRow("legacy, no keys") << "<holidays/>" << "de_DE BY 7";
        QTest::newRow("legacy, everything off")
            << "<holidays showHolidays=\"no\" showVacations=\"false\" showMoonPhases=\"0\" showEvents=\"off\"/>" << "de_DE BY 0";
        QTest::newRow("legacy, vacations and moon") << "<holidays showHolidays=\"no\" showVacations=\"yes\" showMoonPhases=\"true\"/>"
                                                    << "de_DE BY 28";
        QTest::newRow("legacy keeps other flags") << "<holidays showEvents=\"no\"/>" << "de_DE BY 3";
    }
    void readFromXML()
    {
        QFETCH(QString, element);
        QFETCH(QString, config);
        RKCalendariumHolidayConfig read = sample();
        read.readFromXML(testElement(QStringLiteral("<parent>%1</parent>").arg(element)));
        QCOMPARE(describe(read), config);
    }

    void savedDefault()
    {
        RKCalendariumHolidayConfigDefault& defaults = RKSingleton<RKCalendariumHolidayConfigDefault>::instance();
        const QString path = defaults.file().absoluteFilePath();
        QCOMPARE(path, QDir(RKSingleton<RKDirectoryConfig>::instance().writableDirectory()).filePath("calendarium_config.xml"));

        // Held as given until loaded again; the file drops the flags that are switched per page.
        RKCalendariumHolidayConfig config = sample();
        config.setFeatures(features("holidays,moonphases,vacations,personalEntries,holiday_colors,zodiacs"));
        defaults.setDefaultConfig(config);
        QCOMPARE(defaults.defaultConfig(), config);
        QCOMPARE(readTestFile(path),
            QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<default>\n    <holidays features=\"holidays, holiday_colors, personalEntries, "
                       "vacations, moonphases, zodiacs\" language=\"de_DE\" province=\"BY\"/>\n</default>\n"));
        defaults.load();
        QCOMPARE(describe(defaults.defaultConfig()), QStringLiteral("de_DE BY 48")); // moon phases and zodiacs
        // setFeature changes the held value only.
        defaults.setFeature(features("zodiacs"), false);
        QCOMPARE(describe(defaults.defaultConfig()), QStringLiteral("de_DE BY 16"));
        defaults.load();
        QCOMPARE(describe(defaults.defaultConfig()), QStringLiteral("de_DE BY 48"));

        // A broken or missing file gives the default configuration.
        writeTestFile(path, "<default><holidays");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("XML parse error.*calendarium_config.xml"));
        defaults.load();
        QVERIFY(defaults.defaultConfig() == RKCalendariumHolidayConfig());
        QFile::remove(path);
        defaults.load();
        QVERIFY(defaults.defaultConfig() == RKCalendariumHolidayConfig());
    }

    // How a save fails (and that the previous file survives it) is the XML writer's matter;
    // here the failure reaches the caller.
    void savedDefaultFailureIsReported()
    {
        QTemporaryDir place;
        writeTestFile(place.filePath("file"), QByteArray());
        const QByteArray before = qgetenv("RKXML_WRITABLE_DIR");
        qputenv("RKXML_WRITABLE_DIR", place.filePath("file/sub").toLocal8Bit()); // below a file: never writable
        RKSingleton<RKDirectoryConfig>::instance().reload();
        RKErrorHistory history;
        const bool saved = RKSingleton<RKCalendariumHolidayConfigDefault>::instance().setDefaultConfig(sample(), &history);
        qputenv("RKXML_WRITABLE_DIR", before);
        RKSingleton<RKDirectoryConfig>::instance().reload();
        QVERIFY(!saved);
        QVERIFY(history.contains(RKErrorEvent::CouldNotOpenFileForReadWriteAccess));
    }
};

QTEST_GUILESS_MAIN(TestHolidayModel)
#include "test_holidaymodel.moc"
