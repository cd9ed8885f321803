#include "RKTestSupport.h"

#include <RKCalendariumContentKey.h>
#include <RKCalendariumHolidayCacheKey.h>
#include <RKCalendariumHolidayConfig.h>
#include <RKCalendariumHolidayConfigDefault.h>
#include <RKDirectoryConfig.h>
#include <RKXMLLoader.h>

#include <QDomDocument>
#include <QFile>

namespace {
RKCalendariumFeatures features(const char* words)
{
    return RKCalendariumFeatures(QString::fromLatin1(words));
}

/// A parent element holding the given "holidays" element text.
QDomElement parentWith(QDomDocument& document, const QString& holidaysElement)
{
    const bool ok = document.setContent(QStringLiteral("<parent>%1</parent>").arg(holidaysElement));
    Q_ASSERT(ok);
    Q_UNUSED(ok)
    return document.documentElement();
}

RKCalendariumHolidayConfig sample()
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
    config.setProvince(QStringLiteral("BY"));
    config.setFeatures(features("holidays,moonphases"));
    return config;
}
}

class TestHolidayConfig : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void defaultsShareOneState()
    {
        RKCalendariumHolidayConfig a;
        const RKCalendariumHolidayConfig b;
        QVERIFY(a == b);
        QVERIFY(a.sharesStateWith(b));
        QCOMPARE(a.hashKey(), b.hashKey());
        QCOMPARE(a.features().toInt(), 0);

        const QString before = b.province();
        a.setProvince(QStringLiteral("ZZ-not-a-province"));
        QVERIFY(!a.sharesStateWith(b));
        QCOMPARE(b.province(), before);
        QCOMPARE(RKCalendariumHolidayConfig().province(), before);
        QVERIFY(a != b);
    }

    void copiesDetachOnWrite()
    {
        const RKCalendariumHolidayConfig original = sample();
        RKCalendariumHolidayConfig copy = original;
        QVERIFY(copy.sharesStateWith(original));
        QVERIFY(copy.setFeature(features("vacations"), true));
        QVERIFY(!copy.sharesStateWith(original));
        QVERIFY(!original.hasFeatures(features("vacations")));
        QVERIFY(copy.hasFeatures(features("vacations")));

        // A moved-from value reads like a default one and can be written again.
        RKCalendariumHolidayConfig moved = std::move(copy);
        QVERIFY(moved.hasFeatures(features("vacations")));
        QVERIFY(copy == RKCalendariumHolidayConfig()); // NOLINT(bugprone-use-after-move)
        copy.setProvince(QStringLiteral("NW"));
        QCOMPARE(copy.province(), QStringLiteral("NW"));
    }

    void setters()
    {
        RKCalendariumHolidayConfig config = sample();
        config.setProvince(QString());
        QCOMPARE(config.province(), QStringLiteral("BY"));
        QCOMPARE(config.provinceSpecification(), RKProvinceSpecification(RKLocale(QStringLiteral("de"), QStringLiteral("DE")), QStringLiteral("BY")));

        QVERIFY(!config.setFeature(features("holidays"), true)); // already on
        QVERIFY(config.setFeature(features("holidays"), false));
        QVERIFY(!config.setFeature(features("holidays"), false));
        QCOMPARE(config.features().toInt(), 16);
        config.removeFeatures(features("moonphases,zodiacs"));
        QCOMPARE(config.features().toInt(), 0);

        QVERIFY(config.hasFeatures(RKCalendariumFeatures()));
        config.setFeatures(features("holidays,vacations"));
        QVERIFY(config.hasFeatures(features("holidays")));
        QVERIFY(config.hasFeatures(features("holidays,vacations")));
        QVERIFY(!config.hasFeatures(features("holidays,moonphases")));
    }

    void everythingEnabled()
    {
        const RKCalendariumHolidayConfig base = sample();
        const RKCalendariumHolidayConfig all = RKCalendariumHolidayConfig::withEverythingEnabled(base);
        QCOMPARE(all.features().toInt(), 125);
        QVERIFY(!all.hasFeatures(features("holiday_colors")));
        QVERIFY(all.hasFeatures(features("holidays,personalEntries,vacations,moonphases,zodiacs,show_week_of_year")));
        QCOMPARE(all.province(), QStringLiteral("BY"));
        QCOMPARE(base.features().toInt(), 17);
    }

    void equalityAndHash()
    {
        const RKCalendariumHolidayConfig a = sample();
        RKCalendariumHolidayConfig b = sample();
        QVERIFY(a == b && !a.sharesStateWith(b));
        QCOMPARE(a.hashKey(), b.hashKey());
        const uint expected = qHash(a.language()) ^ qHash(QStringLiteral("BY"), 0) ^ 17u;
        QCOMPARE(a.hashKey(), expected);

        b.setProvince(QStringLiteral("by"));
        QVERIFY(a != b);
        b.setProvince(QStringLiteral("BY"));
        b.setLanguage(RKLocale(QStringLiteral("de"), QStringLiteral("AT")));
        QVERIFY(a != b);
        b.setLanguage(a.language());
        b.setFeature(features("zodiacs"), true);
        QVERIFY(a != b);
    }

    void xmlRoundTrip()
    {
        QDomDocument document;
        QDomElement parent = document.createElement(QStringLiteral("parent"));
        document.appendChild(parent);
        const RKCalendariumHolidayConfig written = RKCalendariumHolidayConfig::withEverythingEnabled(sample());
        written.writeToXML(parent);
        const QDomElement element = parent.firstChildElement(QStringLiteral("holidays"));
        QCOMPARE(element.attribute(QStringLiteral("language")), QStringLiteral("de_DE"));
        QCOMPARE(element.attribute(QStringLiteral("province")), QStringLiteral("BY"));

        RKCalendariumHolidayConfig read;
        read.setLanguage(RKLocale(QStringLiteral("fr"), QStringLiteral("FR")));
        read.readFromXML(parent);
        QVERIFY(read == written);

        // Written again, the element is the same.
        QDomDocument again;
        QDomElement parent2 = again.createElement(QStringLiteral("parent"));
        again.appendChild(parent2);
        read.writeToXML(parent2);
        QCOMPARE(again.toString(), document.toString());
    }

    void readFromXML_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("province");
        QTest::addColumn<int>("features");
        // The starting point is sample(): de_DE, BY, holidays+moonphases (17).
        QTest::newRow("no holidays element") << "<other features=\"zodiacs\"/>" << "de_DE" << "BY" << 17;
        QTest::newRow("empty features") << "<holidays features=\"\"/>" << "de_DE" << "BY" << 0;
        QTest::newRow("features") << "<holidays language=\"fr_CH\" province=\"GE\" features=\"vacations\"/>" << "fr_CH" << "GE" << 8;
        QTest::newRow("empty language and province keep")
            << "<holidays language=\"\" province=\"  \" features=\"zodiacs\"/>" << "de_DE" << "BY" << 32;
        QTest::newRow("legacy, no keys") << "<holidays/>" << "de_DE" << "BY" << (1 | 2 | 4);
        QTest::newRow("legacy, everything off")
            << "<holidays showHolidays=\"no\" showVacations=\"false\" showMoonPhases=\"0\" showEvents=\"off\"/>" << "de_DE" << "BY" << 0;
        QTest::newRow("legacy, vacations and moon") << "<holidays showHolidays=\"no\" showVacations=\"yes\" showMoonPhases=\"true\"/>"
                                                    << "de_DE" << "BY" << (4 | 8 | 16);
        QTest::newRow("legacy keeps other flags") << "<holidays showEvents=\"no\"/>" << "de_DE" << "BY" << (1 | 2);
    }
    void readFromXML()
    {
        QFETCH(QString, element);
        QFETCH(QString, language);
        QFETCH(QString, province);
        QFETCH(int, features);
        QDomDocument document;
        RKCalendariumHolidayConfig config = sample();
        config.readFromXML(parentWith(document, element));
        QCOMPARE(config.language().name(), language);
        QCOMPARE(config.province(), province);
        QCOMPARE(config.features().toInt(), features);
    }

    void savedDefaultDropsSwitchedFlags()
    {
        RKCalendariumHolidayConfigDefault& defaults = RKSingleton<RKCalendariumHolidayConfigDefault>::instance();
        const QString path = defaults.file().absoluteFilePath();
        QVERIFY(path.endsWith(QLatin1String("/calendarium_config.xml")));
        QVERIFY(path.startsWith(RKSingleton<RKDirectoryConfig>::instance().writableDirectory()));

        RKCalendariumHolidayConfig config = sample();
        config.setFeatures(features("holidays,moonphases,vacations,personalEntries,holiday_colors,zodiacs"));
        defaults.setDefaultConfig(config);
        QCOMPARE(defaults.defaultConfig(), config); // held as given until loaded again

        const QDomElement root = RKXMLLoader::loadDocumentElement(path);
        QCOMPARE(root.tagName(), QStringLiteral("default"));
        const QDomElement holidays = root.firstChildElement(QStringLiteral("holidays"));
        QCOMPARE(holidays.attribute(QStringLiteral("language")), QStringLiteral("de_DE"));
        QCOMPARE(holidays.attribute(QStringLiteral("province")), QStringLiteral("BY"));
        QCOMPARE(RKCalendariumFeatures(holidays.attribute(QStringLiteral("features"))).toInt(), config.features().toInt());

        defaults.load();
        const RKCalendariumHolidayConfig loaded = defaults.defaultConfig();
        QCOMPARE(loaded.features().toInt(), 16 | 32);
        QCOMPARE(loaded.language(), config.language());
        QCOMPARE(loaded.province(), QStringLiteral("BY"));

        // setFeature changes the held value only.
        defaults.setFeature(features("zodiacs"), false);
        QCOMPARE(defaults.defaultConfig().features().toInt(), 16);
        defaults.load();
        QCOMPARE(defaults.defaultConfig().features().toInt(), 16 | 32);
    }

    void unreadableDefaultFileGivesDefaultConfig()
    {
        RKCalendariumHolidayConfigDefault& defaults = RKSingleton<RKCalendariumHolidayConfigDefault>::instance();
        const QString path = defaults.file().absoluteFilePath();
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
            file.write("<default><holidays");
        }
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("XML parse error.*calendarium_config.xml")));
        defaults.load();
        QVERIFY(defaults.defaultConfig() == RKCalendariumHolidayConfig());
        QFile::remove(path);
        defaults.load();
        QVERIFY(defaults.defaultConfig() == RKCalendariumHolidayConfig());
    }

    void cacheKeys()
    {
        const RKCalendariumHolidayCacheKey defaultKey;
        QCOMPARE(defaultKey.year(), 1900);
        QVERIFY(RKCalendariumHolidayCacheKey(2024, RKCalendariumHolidayConfig())
            == RKCalendariumHolidayCacheKey(2024, RKCalendariumHolidayConfig()));
        QCOMPARE(RKCalendariumHolidayCacheKey(2024, RKCalendariumHolidayConfig()).hashKey(),
            RKCalendariumHolidayCacheKey(2024, RKCalendariumHolidayConfig()).hashKey());

        const RKCalendariumHolidayCacheKey y2024(2024, sample());
        const RKCalendariumHolidayCacheKey y2025(2025, sample());
        QVERIFY(y2024 != y2025);
        QCOMPARE(y2025.hashKey() - y2024.hashKey(), 1u);
        QCOMPARE(y2024.hashKey(), sample().hashKey() + 2024u);
        QVERIFY(y2024 != RKCalendariumHolidayCacheKey(2024, RKCalendariumHolidayConfig::withEverythingEnabled(sample())));

        // The sum wraps in 32 bits.
        const RKCalendariumHolidayCacheKey negative(-5, sample());
        QCOMPARE(negative.hashKey(), sample().hashKey() - 5u);
    }

    void contentConfigAndKey()
    {
        const RKCalendariumContentConfig april(QDate(2024, 4, 10), sample());
        QVERIFY(april.isValid());
        QCOMPARE(april.dayInMonthCount(), 30);
        QCOMPARE(april.dayOfWeek(), 3);
        QCOMPARE(april.weekNumber(), 15);
        QCOMPARE(april.dayRange().first(), QDate(2024, 4, 1));
        QCOMPARE(april.dayRange().days(), 30);
        QVERIFY(!april.moveToDayInMonth(31).isValid());
        QVERIFY(!april.dayInThisMonth(0).isValid());
        QCOMPARE(april.moveToDayInMonth(30).date(), QDate(2024, 4, 30));
        QCOMPARE(RKCalendariumContentConfig(QDate(2024, 1, 31), sample()).addMonths(1).date(), QDate(2024, 2, 29));
        QCOMPARE(april.addDays(25).date(), QDate(2024, 5, 5));
        QVERIFY(april.addDays(25).holidayConfig() == sample());
        QCOMPARE(april.describe(), QDate(2024, 4, 10).toString(Qt::TextDate));
        QCOMPARE(april.hashKey(), qHash(QDate(2024, 4, 10), 0) ^ sample().hashKey());
        QCOMPARE(april.province(), QStringLiteral("BY"));

        const RKProjectIdentifier project(QStringLiteral("p-1"), false);
        const RKCalendariumContentKey key(april, project);
        const RKCalendariumContentKey otherDay(april.moveToDayInMonth(11), project);
        QVERIFY(key != otherDay);
        QVERIFY(key.hashKey() != otherDay.hashKey());
        QVERIFY(key == RKCalendariumContentKey(april, RKProjectIdentifier(QStringLiteral("p-1"), false)));
        QVERIFY(key != RKCalendariumContentKey(april, RKProjectIdentifier(QStringLiteral("p-2"), false)));
        QCOMPARE(key.hashKey(), april.hashKey() ^ qHash(QStringLiteral("p-1"), 0));
        QCOMPARE(key.addMonths(1).project(), project);
        QCOMPARE(key.moveToDay(QDate(2025, 1, 1)).date(), QDate(2025, 1, 1));

        const RKCalendariumContentKey none;
        QVERIFY(!none.isValid());
        QCOMPARE(none.describe(), QDate().toString(Qt::TextDate));
    }
};

QTEST_GUILESS_MAIN(TestHolidayConfig)
#include "test_holidayconfig.moc"
