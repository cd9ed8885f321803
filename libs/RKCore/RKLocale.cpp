#include "RKLocale.h"

#include <QDebug>
#include <QRegularExpression>

RKLocale::RKLocale(const QString& language, const QString& country)
    : myLanguage(language.trimmed().toLower())
    , myCountry(country.trimmed().toUpper())
{
}

RKLocale::RKLocale(const QLocale& locale)
{
    const QStringList pieces = locale.name().split(QLatin1Char('_'));
    if (locale.language() == QLocale::C)
        return;
    myLanguage = pieces.value(0).toLower();
    myCountry = pieces.value(1).toUpper();
}

QString RKLocale::name() const
{
    if (myCountry.isEmpty())
        return myLanguage;
    return myLanguage + QLatin1Char('_') + myCountry;
}

RKLocale RKLocale::decodeName(const QString& name)
{
    static const QRegularExpression pattern(QStringLiteral("^([A-Za-z]{2,3})(?:[_-]([A-Za-z]{2}|[0-9]{3}))?$"));
    const QRegularExpressionMatch match = pattern.match(name.trimmed());
    if (!match.hasMatch())
        return RKLocale();
    return RKLocale(match.captured(1), match.captured(2));
}

RKLocale RKLocale::fromXML(const QDomElement& element)
{
    return RKLocale(element.attribute(QStringLiteral("language")), element.attribute(QStringLiteral("country")));
}

void RKLocale::toXML(QDomElement& element) const
{
    element.setAttribute(QStringLiteral("language"), myLanguage);
    element.setAttribute(QStringLiteral("country"), myCountry);
}

QLocale RKLocale::toQLocale() const
{
    return QLocale(name());
}

QString RKLocale::englishName() const
{
    const QLocale locale = toQLocale();
    if (locale.language() == QLocale::C)
        return name();
    QString text = QLocale::languageToString(locale.language());
    if (!myCountry.isEmpty())
        text += QStringLiteral(" (%1)").arg(QLocale::countryToString(locale.country()));
    return text;
}

bool RKLocale::operator==(const RKLocale& other) const
{
    return myLanguage == other.myLanguage && myCountry == other.myCountry;
}

bool RKLocale::operator<(const RKLocale& other) const
{
    if (myLanguage != other.myLanguage)
        return myLanguage < other.myLanguage;
    return myCountry < other.myCountry;
}

uint qHash(const RKLocale& locale, uint seed)
{
    return qHash(locale.language(), seed) ^ (qHash(locale.country(), seed) * 31u);
}

QDebug operator<<(QDebug debug, const RKLocale& locale)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "RKLocale(" << locale.name() << ')';
    return debug;
}
