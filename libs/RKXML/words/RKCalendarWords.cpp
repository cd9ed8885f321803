#include "RKCalendarWords.h"

namespace {

QString nameOfChild(const QDomElement& element, const QString& tag)
{
    return element.firstChildElement(tag).attribute(QStringLiteral("name"));
}

template <class List>
void readChildren(const QDomElement& parent, const QString& tag, List* out)
{
    for (QDomElement child = parent.firstChildElement(tag); !child.isNull(); child = child.nextSiblingElement(tag))
        out->append(RKCalendarLocalizedNamedAtomic(child));
}

template <class List>
RKCalendarLocalizedNamedAtomic entryAt(const List& list, int n)
{
    if (n < 1 || n > list.size())
        return RKCalendarLocalizedNamedAtomic();
    return list.at(n - 1);
}

}

RKCalendarLocalizedNamedAtomic::RKCalendarLocalizedNamedAtomic()
    : myShortName(QStringLiteral("nn"))
    , myLongName(QStringLiteral("unknown"))
{
}

RKCalendarLocalizedNamedAtomic::RKCalendarLocalizedNamedAtomic(const QDomElement& element)
    : myShortName(nameOfChild(element, QStringLiteral("shortname")))
    , myLongName(nameOfChild(element, QStringLiteral("longname")))
{
}

RKCalendarDaysOfWeek::RKCalendarDaysOfWeek(const QDomElement& daysOfWeek)
{
    readChildren(daysOfWeek, QStringLiteral("day"), &myDays);
}

RKCalendarLocalizedNamedAtomic RKCalendarDaysOfWeek::dayOfWeek(int n) const
{
    return entryAt(myDays, n);
}

RKCalendarMonthNames::RKCalendarMonthNames(const QDomElement& monthNames)
{
    readChildren(monthNames, QStringLiteral("month"), &myMonths);
}

RKCalendarLocalizedNamedAtomic RKCalendarMonthNames::monthName(int n) const
{
    return entryAt(myMonths, n);
}

RKCalendarWords::RKCalendarWords(const QDomElement& language)
    : myMonthNames(language.firstChildElement(QStringLiteral("monthnames")))
    , myDaysOfWeek(language.firstChildElement(QStringLiteral("daysofweek")))
    , myWeekName(language.firstChildElement(QStringLiteral("weekname")))
    , myLanguage(RKLocale::fromXML(language))
{
}
