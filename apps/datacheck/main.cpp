// rkxml-datacheck: loads every shipped data file with the library's own readers and
// fails (exit 1) on any warning or inconsistency, so that a broken data file fails the build;
// a calendar language without a holiday file fails it too.
//
// Usage: rkxml-datacheck [DATA_DIR]   (default: the shipped data directory)

#include <RKCalendariumHolidayCacheKey.h>
#include <RKCalendarWordsRegistry.h>
#include <RKCalendariumFeatures.h>
#include <RKCalendariumHoliday.h>
#include <RKCalendariumHolidayCalculator.h>
#include <RKCalendariumHolidayConfig.h>
#include <RKCalendariumHolidayDayPrototype.h>
#include <RKDirectoryConfig.h>
#include <RKResourceFile.h>
#include <RKSVGNormalizer.h>
#include <RKXMLLoader.h>

#include <QGuiApplication>
#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>

namespace {

QStringList& problems()
{
    static QStringList list;
    return list;
}

void problem(const QString& text)
{
    problems() << text;
}

int& longVacationNotes()
{
    static int count = 0;
    return count;
}

// Every warning of a reader is a problem of the data, except the calculator's note on
// vacations of 51 days or more: summer vacations of eight to thirteen weeks are real.
// Implausible lengths are caught by checkVacations() instead.
void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    static const QRegularExpression longVacation(QStringLiteral("^\"[^\"]*\"\\s+is\\s+\\d+\\s*days long\\.$"));
    if (type != QtWarningMsg && type != QtCriticalMsg && type != QtFatalMsg)
        return;
    if (type == QtWarningMsg && longVacation.match(message).hasMatch())
        ++longVacationNotes();
    else
        problem(QStringLiteral("warning: ") + message);
}

const int LAST_DAY_ID = RKCalendariumHolidayDayIdLast;
const int LONGEST_VACATION = RKCalendariumHolidayCalculator::LONGEST_PLAUSIBLE_VACATION_DAYS;
const int FIRST_YEAR = 1900;
const int LAST_YEAR = 2100;

int checkAllXml(const QString& dataDir)
{
    int count = 0;
    QDirIterator it(dataDir, {QStringLiteral("*.xml")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        ++count;
        if (RKXMLLoader::loadDocument(path).isNull())
            problem(QStringLiteral("%1: not well-formed XML").arg(path));
    }
    return count;
}

const QString LANGUAGES_FILE = QStringLiteral("international/CalendarLanguages.xml");
const QString WORDS_FILE = QStringLiteral("international/CalendarWeekNames.xml");

// One kind of calendar word: how many a complete set has, and whether they must all differ
// (the long month and day names must: a shifted or repeated row shows as a repeat).
struct WordKind {
    const char* name;
    int count;
    bool distinct;
    QString (*word)(const RKCalendarWords& words, int n);
};

const WordKind WORD_KINDS[] = {
    {"short month name", 12, false, [](const RKCalendarWords& w, int n) { return w.shortMonth(n); }},
    {"long month name", 12, true, [](const RKCalendarWords& w, int n) { return w.longMonth(n); }},
    {"short day name", 7, false, [](const RKCalendarWords& w, int n) { return w.shortDayOfWeek(n); }},
    {"long day name", 7, true, [](const RKCalendarWords& w, int n) { return w.longDayOfWeek(n); }},
    {"short week word", 1, false, [](const RKCalendarWords& w, int) { return w.shortWeek(); }},
    {"long week word", 1, false, [](const RKCalendarWords& w, int) { return w.longWeek(); }},
};

// One entry of the words file: 12 months and 7 days, no blank word, no repeated long name.
void checkWords(const QString& where, const RKCalendarWords& words)
{
    if (!words.isValid()) {
        problem(QStringLiteral("%1: %2 months and %3 days (need 12 and 7)")
                    .arg(where)
                    .arg(words.monthNames().count())
                    .arg(words.daysOfWeek().count()));
        return;
    }
    for (const WordKind& kind : WORD_KINDS) {
        QHash<QString, int> seen;
        for (int n = 1; n <= kind.count; ++n) {
            const QString word = kind.word(words, n).trimmed();
            const QString what = kind.count > 1 ? QStringLiteral("%1 %2").arg(QLatin1String(kind.name)).arg(n)
                                                : QString::fromLatin1(kind.name);
            if (word.isEmpty())
                problem(QStringLiteral("%1: the %2 is blank").arg(where, what));
            else if (kind.distinct && seen.contains(word))
                problem(QStringLiteral("%1: the %2 is \"%3\" like number %4").arg(where, what, word).arg(seen.value(word)));
            seen.insert(word, n);
        }
    }
}

// Every listed locale once, as language and country; every entry of the words file listed,
// once, and complete. The registry drops unlisted entries and keeps the last of two, so
// the words file is read entry by entry here.
void checkCalendarWords()
{
    const QList<RKLocale> languages = RKCalendarWordsRegistry::instance().availalbleCalendarLanguages();
    if (languages.isEmpty())
        problem(LANGUAGES_FILE + QStringLiteral(": no languages"));
    QSet<RKLocale> listed;
    for (int i = 0; i < languages.size(); ++i) {
        const RKLocale& locale = languages.at(i);
        if (locale.country().isEmpty() || RKLocale::decodeName(locale.name()) != locale)
            problem(QStringLiteral("%1, entry %2: \"%3\" is not a language and country like \"de_DE\"")
                        .arg(LANGUAGES_FILE).arg(i + 1).arg(locale.name()));
        else if (listed.contains(locale))
            problem(QStringLiteral("%1, entry %2: \"%3\" listed twice").arg(LANGUAGES_FILE).arg(i + 1).arg(locale.name()));
        else
            listed << locale;
    }

    const QDomElement root = RKXMLLoader::loadDocumentElement(RKDirectoryConfig::instance().resource(WORDS_FILE));
    QSet<RKLocale> withWords;
    for (QDomElement e = root.firstChildElement(QStringLiteral("Language")); !e.isNull();
         e = e.nextSiblingElement(QStringLiteral("Language"))) {
        const RKCalendarWords words(e);
        const QString where = QStringLiteral("%1, line %2, \"%3\"").arg(WORDS_FILE).arg(e.lineNumber()).arg(words.language().name());
        if (!listed.contains(words.language()))
            problem(where + QStringLiteral(": not in ") + LANGUAGES_FILE + QStringLiteral(", never used"));
        else if (withWords.contains(words.language()))
            problem(where + QStringLiteral(": a second entry for the locale"));
        else
            checkWords(where, words);
        withWords << words.language();
    }
    for (const RKLocale& locale : languages) {
        if (listed.contains(locale) && !withWords.contains(locale))
            problem(QStringLiteral("%1, \"%2\": no words of its own in %3").arg(LANGUAGES_FILE, locale.name(), WORDS_FILE));
        withWords << locale; // reported once
    }
}

void checkDays(const QString& where, const QDomElement& parent)
{
    static const QRegularExpression datePattern(QStringLiteral("([\\w\\d]{4})\\D(\\d{1,2})\\D(\\d{1,2})"));
    for (QDomElement day = parent.firstChildElement(QStringLiteral("day")); !day.isNull();
         day = day.nextSiblingElement(QStringLiteral("day"))) {
        const QString name = day.attribute(QStringLiteral("name"));
        const QString at = QStringLiteral("%1, line %2").arg(where).arg(day.lineNumber());
        if (name.isEmpty()) {
            problem(at + QStringLiteral(": day without a name is ignored"));
            continue;
        }
        bool hasId = false;
        const int id = day.attribute(QStringLiteral("id")).toInt(&hasId);
        const QString honor = day.attribute(QStringLiteral("honor"));
        // An empty type on a day given by id takes a nationwide day away from a province.
        if (hasId && honor.isEmpty() && day.parentNode().nodeName() == QLatin1String("province"))
            continue;
        for (const QString& word : honor.split(QLatin1Char(','))) {
            if (RKCalendariumHolidayType(word).toInt() == 0)
                problem(QStringLiteral("%1: \"%2\" has the unknown type word \"%3\"").arg(at, name, word.trimmed()));
        }
        if (hasId) {
            if (id < 1 || id > LAST_DAY_ID)
                problem(QStringLiteral("%1: \"%2\" has the unknown day id %3").arg(at, name).arg(id));
            continue;
        }
        const QRegularExpressionMatch match = datePattern.match(day.attribute(QStringLiteral("date")));
        // 2000 is a leap year, so 29 February passes.
        if (!match.hasMatch() || !QDate(2000, match.captured(2).toInt(), match.captured(3).toInt()).isValid())
            problem(QStringLiteral("%1: \"%2\" has neither an id nor a valid date (\"%3\")")
                        .arg(at, name, day.attribute(QStringLiteral("date"))));
    }
}

void checkVacations(const QString& where, const QDomElement& parent)
{
    for (QDomElement vacation = parent.firstChildElement(QStringLiteral("vacation")); !vacation.isNull();
         vacation = vacation.nextSiblingElement(QStringLiteral("vacation"))) {
        const QDate start = QDate::fromString(vacation.attribute(QStringLiteral("start")), Qt::ISODate);
        const QDate end = QDate::fromString(vacation.attribute(QStringLiteral("end")), Qt::ISODate);
        if (!start.isValid() || !end.isValid() || start > end || start.daysTo(end) > LONGEST_VACATION)
            problem(QStringLiteral("%1, line %2: vacation \"%3\" from \"%4\" to \"%5\"")
                        .arg(where)
                        .arg(vacation.lineNumber())
                        .arg(vacation.attribute(QStringLiteral("name")), vacation.attribute(QStringLiteral("start")),
                             vacation.attribute(QStringLiteral("end"))));
    }
}

// Returns the years that the file's vacations cover.
QSet<int> checkHolidayFile(const QString& path, const RKLocale& locale, QStringList& provinces)
{
    QSet<int> years;
    const QDomElement root = RKXMLLoader::loadDocumentElement(path);
    if (root.isNull())
        return years;
    const QString file = QFileInfo(path).fileName();
    if (root.firstChildElement(QStringLiteral("country")).isNull())
        problem(file + QStringLiteral(": no \"country\" element"));
    for (QDomElement country = root.firstChildElement(QStringLiteral("country")); !country.isNull();
         country = country.nextSiblingElement(QStringLiteral("country"))) {
        const QDomElement nationwide = country.firstChildElement(QStringLiteral("nationwide"));
        checkDays(file, nationwide);
        checkVacations(file, nationwide);
        for (QDomElement province = country.firstChildElement(QStringLiteral("province")); !province.isNull();
             province = province.nextSiblingElement(QStringLiteral("province"))) {
            const QString name = province.attribute(QStringLiteral("name"));
            const QString where = QStringLiteral("%1, province \"%2\"").arg(file, name);
            if (name.isEmpty())
                problem(file + QStringLiteral(": province without a name"));
            else if (provinces.contains(name))
                problem(where + QStringLiteral(": listed twice"));
            else
                provinces << name;
            if (province.attribute(QStringLiteral("title")).isEmpty())
                problem(where + QStringLiteral(": no title"));
            checkDays(where, province);
            checkVacations(where, province);
        }
        for (QDomElement v = country.firstChildElement(); !v.isNull(); v = v.nextSiblingElement()) {
            for (QDomElement vacation = v.firstChildElement(QStringLiteral("vacation")); !vacation.isNull();
                 vacation = vacation.nextSiblingElement(QStringLiteral("vacation"))) {
                const QDate start = QDate::fromString(vacation.attribute(QStringLiteral("start")), Qt::ISODate);
                if (start.isValid())
                    years << start.year();
            }
        }
    }
    Q_UNUSED(locale)
    return years;
}

RKCalendariumHolidayConfig configFor(const RKLocale& locale, const QString& province)
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(locale);
    // An empty province would be ignored; a name no file uses selects the nationwide days.
    config.setProvince(province.isEmpty() ? QStringLiteral("-") : province);
    config.setFeatures(RKCalendariumFeatures(QStringLiteral("holidays,vacations")));
    return config;
}

int checkHolidays(const QString& dataDir)
{
    const QList<RKLocale> calendarLanguages = RKCalendarWordsRegistry::instance().availalbleCalendarLanguages();
    const RKCalendariumHolidayCalculator& calculator = RKCalendariumHolidayCalculator::instance();
    const QList<RKLocale> loaded = calculator.availableLanguages();

    int files = 0;
    QSet<QString> withFile;
    QDirIterator it(QDir(dataDir).filePath(QStringLiteral("holidays")), {QStringLiteral("*.xml")}, QDir::Files);
    while (it.hasNext()) {
        const QString path = it.next();
        ++files;
        const RKLocale locale = RKLocale::decodeName(QFileInfo(path).completeBaseName());
        if (!locale.isValid() || !calendarLanguages.contains(locale)) {
            problem(QStringLiteral("%1: not a calendar language, the file is never read").arg(path));
            continue;
        }
        withFile << locale.name();
        if (!loaded.contains(locale))
            problem(QStringLiteral("%1: the holiday calculator did not load it").arg(path));
        QStringList provinces;
        const QSet<int> vacationYears = checkHolidayFile(path, locale, provinces);
        QStringList known = calculator.availableProvinces(locale);
        std::sort(provinces.begin(), provinces.end());
        std::sort(known.begin(), known.end());
        if (provinces != known)
            problem(QStringLiteral("%1: provinces %2 in the file, %3 in the calculator")
                        .arg(path, provinces.join(QLatin1Char(',')), known.join(QLatin1Char(','))));

        // Computing every region's years brings out the calculator's own warnings.
        QSet<int> years = vacationYears;
        for (int year = 2020; year <= 2030; ++year)
            years << year;
        provinces.prepend(QString());
        for (const QString& province : qAsConst(provinces)) {
            const RKCalendariumHolidayConfig config = configFor(locale, province);
            bool any = false;
            for (int year : qAsConst(years)) {
                const RKCalendariumHolidayList days = calculator.holidaysOfYear(RKCalendariumHolidayCacheKey(year, config));
                for (const RKCalendariumHoliday& day : days) {
                    if (!day.date().isValid())
                        problem(QStringLiteral("%1 %2 %3: \"%4\" falls on an impossible date")
                                    .arg(locale.name(), province).arg(year).arg(day.description()));
                    any = true;
                }
            }
            if (!any)
                problem(QStringLiteral("%1 %2: no marked day at all").arg(locale.name(), province));
        }
    }
    if (files == 0)
        problem(QStringLiteral("no holiday files in %1/holidays").arg(dataDir));
    // Every calendar language has its holidays: a new language needs its rules too.
    for (const RKLocale& locale : calendarLanguages) {
        if (!withFile.contains(locale.name()))
            problem(QStringLiteral("%1: a calendar language without a holiday file in %2/holidays").arg(locale.name(), dataDir));
    }
    return files;
}

void checkMoonPhases()
{
    static const QRegularExpression dayPattern(QStringLiteral("(\\d+)\\D+(\\d+)"));
    const QFileInfo file = RKResourceFile(RKResourceMoonPhases).fileInfo(false, QString());
    const QDomElement root = RKXMLLoader::loadDocumentElement(file);
    if (root.isNull())
        return;
    int expectedYear = FIRST_YEAR;
    int expectedStart = 0;
    QDate previous;
    for (QDomElement year = root.firstChildElement(); !year.isNull(); year = year.nextSiblingElement()) {
        const int number = year.attribute(QStringLiteral("count")).toInt();
        const int start = year.attribute(QStringLiteral("start")).toInt();
        const QString where = QStringLiteral("moon phases %1").arg(year.attribute(QStringLiteral("count")));
        if (number != expectedYear)
            problem(QStringLiteral("%1: expected the year %2").arg(where).arg(expectedYear));
        if (start < 1 || start > 4 || (expectedStart != 0 && start != expectedStart))
            problem(QStringLiteral("%1: start %2 does not continue the phases of the year before").arg(where).arg(start));
        int count = 0;
        for (QDomElement phase = year.firstChildElement(); !phase.isNull(); phase = phase.nextSiblingElement()) {
            const QRegularExpressionMatch match = dayPattern.match(phase.text());
            const QDate date = match.hasMatch() ? QDate(number, match.captured(1).toInt(), match.captured(2).toInt()) : QDate();
            ++count;
            if (!date.isValid()) {
                problem(QStringLiteral("%1: \"%2\" is not a date").arg(where, phase.text()));
                continue;
            }
            // Principal phases are 6.6 to 8.1 days apart; whole days in local time give 6 to 9.
            if (previous.isValid() && (previous.daysTo(date) < 6 || previous.daysTo(date) > 9))
                problem(QStringLiteral("%1: %2 is %3 days after the phase before")
                            .arg(where, date.toString(Qt::ISODate))
                            .arg(previous.daysTo(date)));
            previous = date;
        }
        expectedStart = (start - 1 + count) % 4 + 1;
        expectedYear = number + 1;
    }
    if (expectedYear != LAST_YEAR + 1)
        problem(QStringLiteral("moon phases: the years end at %1, expected %2").arg(expectedYear - 1).arg(LAST_YEAR));
}

// Clip art: well-formed SVG with layers, which the normaliser turns into top-level layers
// without "use" or "defs", and which the SVG renderer reads before and after.
int checkClipArt(const QString& dataDir)
{
    int count = 0;
    QDirIterator it(QDir(dataDir).filePath(QStringLiteral("clipart")), {QStringLiteral("*.svg")}, QDir::Files);
    while (it.hasNext()) {
        const QString path = it.next();
        ++count;
        const QDomDocument document = RKXMLLoader::loadDocument(path);
        if (document.isNull())
            continue;
        if (document.documentElement().tagName() != QLatin1String("svg")) {
            problem(path + QStringLiteral(": the root element is not \"svg\""));
            continue;
        }
        if (document.elementsByTagName(QStringLiteral("g")).isEmpty() || !QSvgRenderer(document.toByteArray()).isValid())
            problem(path + QStringLiteral(": the renderer cannot read it, or it has no groups"));
        const QDomDocument result = RKSVGNormalizer::prepareDomDocument(document, QFileInfo(path), QDomDocument());
        if (!QSvgRenderer(result.toByteArray()).isValid())
            problem(path + QStringLiteral(": the renderer cannot read it once normalised"));
        const QDomElement root = result.documentElement();
        if (!result.elementsByTagName(QStringLiteral("use")).isEmpty() || !root.firstChildElement(QStringLiteral("defs")).isNull())
            problem(path + QStringLiteral(": \"use\" or \"defs\" left after normalising"));
        int layers = 0;
        for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
            layers += child.hasAttribute(RKSVGNormalizer::STR_VAKO_LAYERTYPE) ? 1 : 0;
        if (layers == 0)
            problem(path + QStringLiteral(": no top-level layer (\"vako:layertype\") after normalising"));
    }
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    // The SVG renderer needs fonts, hence a GUI application (the build runs it offscreen).
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTemporaryDir writable;
    qputenv("RKXML_WRITABLE_DIR", writable.path().toLocal8Bit());
    qputenv("RKXML_RESOURCE_PATH", QByteArray());
    if (argc > 1)
        qputenv("RKXML_DATA_DIR", QByteArray(argv[1]));
    const QString dataDir = RKDirectoryConfig::instance().shippedDataDirectory();

    qInstallMessageHandler(collectWarnings);
    const int xmlFiles = checkAllXml(dataDir);
    checkCalendarWords();
    const int holidayFiles = checkHolidays(dataDir);
    checkMoonPhases();
    const int clipArtFiles = checkClipArt(dataDir);
    qInstallMessageHandler(nullptr);

    QTextStream out(stdout);
    out.setCodec("UTF-8");
    if (!problems().isEmpty()) {
        for (const QString& text : problems())
            out << "rkxml-datacheck: " << text << '\n';
        out << "rkxml-datacheck: " << problems().size() << " problem(s) in " << dataDir << '\n';
        return 1;
    }
    out << "rkxml-datacheck: " << longVacationNotes() << " notes on vacations of 51 days or more (accepted)\n";
    out << "rkxml-datacheck: " << xmlFiles << " XML files, " << holidayFiles << " holiday files, " << clipArtFiles
        << " clip-art files in " << dataDir
        << ": ok\n";
    return 0;
}
