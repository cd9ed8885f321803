#include "private/RKHolidayRuleDays.h"

#include <QRegularExpression>

namespace {
/// How the date of a rule day is found.
enum class RuleKind { None, Fixed, EasterOffset, WednesdayBefore22November };

struct RuleDay {
    RuleKind kind;
    int month;      // of Fixed days
    int day;        // of Fixed days
    int easterDays; // of EasterOffset days
};

/// Indexed by RKCalendariumHolidayDayId; entry 0 is unused.
const RuleDay RULE_DAYS[RKCalendariumHolidayDayIdLast + 1] = {
    {RuleKind::None, 0, 0, 0},
    {RuleKind::Fixed, 1, 6, 0},          // 1
    {RuleKind::EasterOffset, 0, 0, -3},  // 2
    {RuleKind::EasterOffset, 0, 0, -2},  // 3
    {RuleKind::EasterOffset, 0, 0, 0},   // 4
    {RuleKind::EasterOffset, 0, 0, 1},   // 5
    {RuleKind::Fixed, 5, 1, 0},          // 6
    {RuleKind::EasterOffset, 0, 0, 39},  // 7
    {RuleKind::EasterOffset, 0, 0, 49},  // 8
    {RuleKind::EasterOffset, 0, 0, 50},  // 9
    {RuleKind::EasterOffset, 0, 0, 60},  // 10
    {RuleKind::Fixed, 8, 15, 0},         // 11
    {RuleKind::Fixed, 10, 31, 0},        // 12
    {RuleKind::Fixed, 11, 1, 0},         // 13
    {RuleKind::WednesdayBefore22November, 0, 0, 0}, // 14
    {RuleKind::Fixed, 12, 24, 0},        // 15
    {RuleKind::Fixed, 12, 25, 0},        // 16
    {RuleKind::Fixed, 12, 26, 0},        // 17
    {RuleKind::Fixed, 12, 31, 0},        // 18
    {RuleKind::Fixed, 1, 1, 0},          // 19
    {RuleKind::EasterOffset, 0, 0, -48}, // 20
    {RuleKind::EasterOffset, 0, 0, -46}, // 21
    {RuleKind::EasterOffset, 0, 0, -7},  // 22
};
}

const QVector<RKCalendariumHolidayDayId>& RKHolidayRuleDays::christmasRelated()
{
    static const QVector<RKCalendariumHolidayDayId> ids = {19, 1, 6, 12, 13, 14, 15, 16, 17, 18};
    return ids;
}

const QVector<RKCalendariumHolidayDayId>& RKHolidayRuleDays::easterRelated()
{
    static const QVector<RKCalendariumHolidayDayId> ids = {20, 21, 22, 2, 3, 4, 5, 7, 8, 9, 10, 11};
    return ids;
}

QDate RKHolidayRuleDays::date(RKCalendariumHolidayDayId id, int year, const QDate& easter)
{
    if (id < RKCalendariumHolidayDayIdFirst || id > RKCalendariumHolidayDayIdLast)
        return QDate();
    const RuleDay& rule = RULE_DAYS[id];
    switch (rule.kind) {
    case RuleKind::Fixed:
        return QDate(year, rule.month, rule.day);
    case RuleKind::EasterOffset:
        return easter.addDays(rule.easterDays);
    case RuleKind::WednesdayBefore22November:
        return wednesdayBefore22November(year);
    case RuleKind::None:
        break;
    }
    return QDate();
}

QDate RKHolidayRuleDays::easterSunday(int year)
{
    // The correction in step I is grouped as it always was here: one week late
    // when H is 28 or 29 and G > 10 (1954, 2049, 2106, 2201, ...). 64-bit
    // intermediates only keep absurd years from overflowing.
    const qint64 y = year;
    const qint64 g = y % 19;
    const qint64 c = y / 100;
    const qint64 h = (c - y / 400 - (8 * c + 13) / 25 + 19 * g + 15) % 30;
    if (h + 1 == 0)
        return QDate(); // only for years before the Gregorian calendar
    const qint64 i = h - ((21 - g) / 11) * (h / 28) * (1 - 29 / (h + 1));
    const qint64 j = (y + y / 4 + i + 2 - c + y / 400) % 7;
    const qint64 l = i - j;
    if (l < 4)
        return QDate(year, 3, static_cast<int>(28 + l));
    return QDate(year, 4, static_cast<int>(l - 3));
}

QDate RKHolidayRuleDays::wednesdayBefore22November(int year)
{
    QDate date(year, 11, 22);
    while (date.isValid() && date.dayOfWeek() != Qt::Wednesday)
        date = date.addDays(-1);
    return date;
}

RKHolidayRuleDays::DatedRule RKHolidayRuleDays::matchDatedPattern(const QString& pattern)
{
    static const QRegularExpression expression(QStringLiteral("([\\w\\d]{4})\\D(\\d{1,2})\\D(\\d{1,2})"));
    DatedRule rule;
    const QRegularExpressionMatch match = expression.match(pattern);
    if (!match.hasMatch())
        return rule;
    rule.matched = true;
    rule.year = match.captured(1).toInt(nullptr, 10);
    rule.month = match.captured(2).toInt(nullptr, 10);
    rule.day = match.captured(3).toInt(nullptr, 10);
    return rule;
}
