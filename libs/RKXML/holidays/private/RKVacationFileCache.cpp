#include "private/RKVacationFileCache.h"

#include "private/RKHolidayTables.h"

#include <RKXMLLoader.h>

namespace {
const QString STR_COUNTRY = QStringLiteral("country");
const QString STR_NATIONWIDE = QStringLiteral("nationwide");
const QString STR_PROVINCE = QStringLiteral("province");
const QString STR_VACATION = QStringLiteral("vacation");
const QString STR_NAME = QStringLiteral("name");
const QString STR_START = QStringLiteral("start");
const QString STR_END = QStringLiteral("end");
}

QVector<RKVacationEntry> RKVacationEntry::readAll(const QDomElement& parent)
{
    QVector<RKVacationEntry> entries;
    for (QDomElement vacation = parent.firstChildElement(STR_VACATION); !vacation.isNull();
         vacation = vacation.nextSiblingElement(STR_VACATION)) {
        RKVacationEntry entry;
        entry.startText = vacation.attribute(STR_START);
        entry.endText = vacation.attribute(STR_END);
        entry.name = vacation.attribute(STR_NAME);
        entry.start = QDate::fromString(entry.startText, Qt::ISODate);
        entry.end = QDate::fromString(entry.endText, Qt::ISODate);
        entries.append(entry);
    }
    return entries;
}

QSharedPointer<const RKVacationFileCache::File> RKVacationFileCache::parse(const QDomElement& root, const RKFileStamp& stamp)
{
    QSharedPointer<File> file(new File);
    file->stamp = stamp;
    for (QDomElement country = root.firstChildElement(STR_COUNTRY); !country.isNull();
         country = country.nextSiblingElement(STR_COUNTRY)) {
        Country parsed;
        parsed.nationwide = RKVacationEntry::readAll(country.firstChildElement(STR_NATIONWIDE));
        for (QDomElement province = country.firstChildElement(STR_PROVINCE); !province.isNull();
             province = province.nextSiblingElement(STR_PROVINCE)) {
            // As for the days: a province without a name is no province.
            const QString name = province.attribute(STR_NAME);
            if (!name.isEmpty())
                parsed.provinces.append({name, RKVacationEntry::readAll(province)});
        }
        file->countries.append(parsed);
    }
    return file;
}

QSharedPointer<const RKVacationFileCache::File> RKVacationFileCache::file(const RKLocale& locale) const
{
    const RKFileStamp stamp = RKFileStamp::of(RKHolidayTables::holidayFile(locale));
    std::lock_guard<std::mutex> lock(myMutex);
    const auto cached = myFiles.constFind(locale.name());
    if (cached != myFiles.constEnd() && cached.value()->stamp == stamp)
        return cached.value();
    const QDomElement root = stamp.exists ? RKXMLLoader::loadDocumentElement(stamp.path) : QDomElement();
    const QSharedPointer<const File> parsed = parse(root, stamp);
    myFiles.insert(locale.name(), parsed);
    return parsed;
}

void RKVacationFileCache::seed(const RKLocale& locale, const RKFileStamp& stamp, const QDomElement& root)
{
    const QSharedPointer<const File> parsed = parse(root, stamp);
    std::lock_guard<std::mutex> lock(myMutex);
    myFiles.insert(locale.name(), parsed);
}

void RKVacationFileCache::clear()
{
    std::lock_guard<std::mutex> lock(myMutex);
    myFiles.clear();
}
