#include "RKCssSheetTitleIdMap.h"

#include "RKXMLBuilder.h"
#include "RKXMLParser.h"

#include <RKFileHandler.h>

#include <QDebug>

#include <algorithm>

namespace {
const QString str_MAP_ELEMENT = QStringLiteral("cssSheetTitleIdMap");
const QString str_ENTRY_ELEMENT = QStringLiteral("entry");
const QString str_KEY = QStringLiteral("key");
const QString str_VALUE = QStringLiteral("value");
const QString str_DEFAULT_TITLE = QStringLiteral("DefaultCssSheetTitle");
const QString str_STANDARD_SHEET = QStringLiteral("StandardSheet");
const QString str_CUSTOM_SHEET_READ = QStringLiteral("CustomCssSheetTitle");
const QString str_CUSTOM_SHEET_WRITE = QStringLiteral("CustomCssSheet");
const QString str_CSS_SUFFIX = QStringLiteral(".css");
const QString str_DEFAULT_MARKER = QStringLiteral(" (default)");
}

RKCssSheetTitleIdMap::RKCssSheetTitleIdMap(const QDomElement& parent)
{
    const QDomElement map = parent.firstChildElement(str_MAP_ELEMENT);
    if (map.isNull()) {
        qWarning().noquote() << QStringLiteral("could not find element cssSheetTitleIdMap");
        return;
    }
    for (QDomElement entry = map.firstChildElement(str_ENTRY_ELEMENT); !entry.isNull();
         entry = entry.nextSiblingElement(str_ENTRY_ELEMENT))
        myEntries.insert(RKXMLParser::attribute(entry, str_KEY, QString(), false),
            RKXMLParser::attribute(entry, str_VALUE, QString(), false));
    myDefaultCssSheetTitle = RKXMLParser::attribute(map, str_DEFAULT_TITLE, QString(), false);
    myStandardSheet = RKXMLParser::attribute(map, str_STANDARD_SHEET, QString(), false);
    myCustomCssSheet = RKXMLParser::attribute(map, str_CUSTOM_SHEET_READ, QString(), false);
}

bool RKCssSheetTitleIdMap::operator==(const RKCssSheetTitleIdMap& other) const
{
    return myEntries == other.myEntries && myDefaultCssSheetTitle == other.myDefaultCssSheetTitle
        && myCustomCssSheet == other.myCustomCssSheet && myStandardSheet == other.myStandardSheet;
}

QDomElement RKCssSheetTitleIdMap::buildXML(QDomElement& parent) const
{
    QDomElement map = RKXMLBuilder::buildDomElement(parent, str_MAP_ELEMENT);
    for (const QString& title : keys()) {
        QDomElement entry = RKXMLBuilder::buildDomElement(map, str_ENTRY_ELEMENT);
        RKXMLBuilder::addAttribute(entry, str_KEY, title);
        RKXMLBuilder::addAttribute(entry, str_VALUE, RKFileHandler::makeSVGPathMinimal(myEntries.value(title)));
    }
    RKXMLBuilder::addAttribute(map, str_DEFAULT_TITLE, myDefaultCssSheetTitle);
    RKXMLBuilder::addAttribute(map, str_STANDARD_SHEET, myStandardSheet);
    RKXMLBuilder::addAttribute(map, str_CUSTOM_SHEET_WRITE, myCustomCssSheet);
    return map;
}

void RKCssSheetTitleIdMap::insert(const QString& title, const QString& id)
{
    myEntries.insert(title, id);
}

bool RKCssSheetTitleIdMap::contains(const QString& title) const
{
    return myEntries.contains(title);
}

QString RKCssSheetTitleIdMap::value(const QString& title, const QString& defaultValue) const
{
    return myEntries.value(title, defaultValue);
}

QString RKCssSheetTitleIdMap::key(const QString& id) const
{
    for (const QString& title : keys()) {
        if (myEntries.value(title) == id)
            return title;
    }
    return QString();
}

QStringList RKCssSheetTitleIdMap::keys() const
{
    QStringList titles = myEntries.keys();
    std::sort(titles.begin(), titles.end());
    return titles;
}

QStringList RKCssSheetTitleIdMap::values() const
{
    QStringList ids;
    for (const QString& title : keys())
        ids << myEntries.value(title);
    return ids;
}

bool RKCssSheetTitleIdMap::isEmpty() const
{
    return myEntries.isEmpty();
}

void RKCssSheetTitleIdMap::setDefaultCssSheetTitle(const QString& title)
{
    myDefaultCssSheetTitle = title;
}

QString RKCssSheetTitleIdMap::defaultCssSheetTitle() const
{
    if (myEntries.isEmpty())
        return QString();
    if (!myDefaultCssSheetTitle.isEmpty())
        return myDefaultCssSheetTitle;
    return keys().first();
}

bool RKCssSheetTitleIdMap::hasExplicitDefaultCssSheet() const
{
    return !myDefaultCssSheetTitle.isEmpty();
}

QString RKCssSheetTitleIdMap::defaultCssSheet() const
{
    const QString title = defaultCssSheetTitle();
    const QString id = myEntries.value(title);
    if (id.isEmpty() && !title.isEmpty())
        return title + str_CSS_SUFFIX;
    return id;
}

QString RKCssSheetTitleIdMap::findDefaultCssSheet() const
{
    const QString id = defaultCssSheet();
    if (!id.isEmpty())
        return id;
    for (const QString& candidate : values()) {
        if (!candidate.isEmpty())
            return candidate;
    }
    return QString();
}

void RKCssSheetTitleIdMap::setDefaultCssSheet(const QString& id)
{
    QString title = key(id);
    if (title.isEmpty() && id.size() >= 4)
        title = key(id.left(id.size() - 4));
    myDefaultCssSheetTitle = title;
}

void RKCssSheetTitleIdMap::setCustomCssSheet(const QString& id)
{
    myCustomCssSheet = id;
}

QString RKCssSheetTitleIdMap::customCssSheet() const
{
    return myCustomCssSheet;
}

void RKCssSheetTitleIdMap::setStandardSheet(const QString& id)
{
    myStandardSheet = id;
}

QString RKCssSheetTitleIdMap::standardSheet() const
{
    return myStandardSheet;
}

void RKCssSheetTitleIdMap::merge(const RKCssSheetTitleIdMap& other)
{
    for (auto it = other.myEntries.cbegin(); it != other.myEntries.cend(); ++it)
        myEntries.insert(it.key(), it.value());
}

QString RKCssSheetTitleIdMap::findStyleByName(const QStringList& names) const
{
    for (const QString& name : names) {
        if (myEntries.contains(name))
            return myEntries.value(name);
    }
    const QStringList titles = keys();
    for (const QString& name : names) {
        for (const QString& title : titles) {
            if (title.compare(name, Qt::CaseInsensitive) == 0)
                return myEntries.value(title);
        }
    }
    return QString();
}

QStringList RKCssSheetTitleIdMap::toDebugStringList() const
{
    QStringList lines;
    for (const QString& title : keys()) {
        const QString marker = title == myDefaultCssSheetTitle ? str_DEFAULT_MARKER : QString();
        lines << QStringLiteral("%1%3 <=> %2").arg(title, myEntries.value(title), marker);
    }
    return lines;
}
