#include <RKCalendariumHolidayCalculator.h>
#include <RKXMLParser.h>

#include <QDomDocument>
#include <cstdio>

// Reads an attribute and computes a date through the installed headers and libraries.
int main()
{
    QDomDocument document;
    if (!document.setContent(QStringLiteral("<page year=\"2024\"/>")))
        return 1;
    const int year = RKXMLParser::intAttribute(document.documentElement(), QStringLiteral("year"), 0);
    const QDate easter = RKCalendariumHolidayCalculator::eastern(year);
    std::printf("%s\n", qPrintable(easter.toString(Qt::ISODate)));
    return easter == QDate(2024, 3, 31) ? 0 : 2;
}
