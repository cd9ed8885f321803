#include "RKCalendariumContentKey.h"

#include <QHash>

RKCalendariumContentKey::RKCalendariumContentKey(RKCalendariumContentConfig config, RKProjectIdentifier project)
    : myConfig(std::move(config))
    , myProject(std::move(project))
{
}

bool RKCalendariumContentKey::operator==(const RKCalendariumContentKey& other) const
{
    return myConfig == other.myConfig && myProject == other.myProject;
}

uint RKCalendariumContentKey::hashKey() const
{
    return myConfig.hashKey() ^ qHash(myProject.projectID(), 0);
}

RKCalendariumContentKey RKCalendariumContentKey::addMonths(int months) const
{
    return RKCalendariumContentKey(myConfig.addMonths(months), myProject);
}

RKCalendariumContentKey RKCalendariumContentKey::addDays(int days) const
{
    return RKCalendariumContentKey(myConfig.addDays(days), myProject);
}

RKCalendariumContentKey RKCalendariumContentKey::moveToDay(QDate date) const
{
    return RKCalendariumContentKey(myConfig.moveToDay(date), myProject);
}

RKCalendariumContentKey RKCalendariumContentKey::moveToDayInMonth(int day) const
{
    return RKCalendariumContentKey(myConfig.moveToDayInMonth(day), myProject);
}
