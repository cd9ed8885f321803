#include "RKApplicationLocale.h"

QLocale RKApplicationLocale::locale() const
{
    QMutexLocker lock(&myMutex);
    return myLocale;
}

void RKApplicationLocale::setLocale(const QLocale& locale)
{
    QMutexLocker lock(&myMutex);
    myLocale = locale;
}

QString RKApplicationLocale::languageToCode() const
{
    const QLocale current = locale();
    if (current.language() == QLocale::C)
        return QStringLiteral("en");
    return current.name().section(QLatin1Char('_'), 0, 0);
}
