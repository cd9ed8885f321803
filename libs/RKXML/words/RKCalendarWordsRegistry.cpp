#include "RKCalendarWordsRegistry.h"

#include <RKApplicationLocale.h>
#include <RKDirectoryConfig.h>
#include <RKXMLLoader.h>

#include <algorithm>

namespace {

QDomElement loadResource(const QString& relativePath)
{
    return RKXMLLoader::loadDocumentElement(RKSingleton<RKDirectoryConfig>::instance().resource(relativePath, false));
}

template <class Visitor>
void forEachLanguage(const QDomElement& root, Visitor visit)
{
    const QString tag = QStringLiteral("Language");
    for (QDomElement e = root.firstChildElement(tag); !e.isNull(); e = e.nextSiblingElement(tag))
        visit(e);
}

}

RKCalendarWordsRegistry::RKCalendarWordsRegistry()
{
    initLanguages();
    initWords();
}

void RKCalendarWordsRegistry::initLanguages()
{
    forEachLanguage(loadResource(QStringLiteral("international/CalendarLanguages.xml")),
        [this](const QDomElement& e) { myLanguages.append(RKLocale::fromXML(e)); });
}

void RKCalendarWordsRegistry::initWords()
{
    forEachLanguage(loadResource(QStringLiteral("international/CalendarWeekNames.xml")), [this](const QDomElement& e) {
        RKCalendarWords words(e);
        // Words of a language the languages file does not list are never used.
        if (myLanguages.contains(words.language()))
            myWords.insert(words.language(), words);
    });
}

RKCalendarWords RKCalendarWordsRegistry::words(const RKLocale& locale) const
{
    const RKCalendarWords exact = myWords.value(locale);
    if (exact.isValid())
        return exact;
    // Another country of the same language. Walking the languages file rather than
    // the hash keeps the choice the same from run to run: the first complete entry
    // in file order, else the first incomplete one, else the exact entry itself.
    const RKCalendarWords* incomplete = nullptr;
    for (const RKLocale& listed : myLanguages) {
        if (listed == locale || listed.language() != locale.language())
            continue;
        const auto found = myWords.constFind(listed);
        if (found == myWords.constEnd())
            continue;
        if (found->isValid())
            return *found;
        if (!incomplete)
            incomplete = &found.value();
    }
    return incomplete ? *incomplete : exact;
}

QString RKCalendarWordsRegistry::dayName(const RKLocale& locale, int day, bool shortForm) const
{
    return shortForm ? dayNameShort(locale, day) : dayNameLong(locale, day);
}

QString RKCalendarWordsRegistry::monthNamesLong(const RKLocale& locale, const QSet<int>& months) const
{
    QList<int> sorted = months.values();
    std::sort(sorted.begin(), sorted.end());
    const RKCalendarWords w = words(locale);
    QStringList names;
    for (int month : sorted)
        names << w.longMonth(month);
    return names.join(QStringLiteral(", "));
}

RKLocale RKCalendarWordsRegistry::defaultLanguage() const
{
    return RKLocale(RKSingleton<RKApplicationLocale>::instance().locale());
}

QMap<int, QString> RKCalendarWordsRegistry::createMonthMap() const
{
    const RKCalendarWords w = words(defaultLanguage());
    QMap<int, QString> map;
    for (int month = 1; month <= 12; ++month)
        map.insert(month, w.longMonth(month));
    return map;
}
