#pragma once

#include "rkcore_export.h"

#include <QDomElement>
#include <QHash>
#include <QLocale>
#include <QString>

class QDebug;

/**
 * A language (ISO 639-1, lower case) and a country (ISO 3166-1 alpha-2, upper
 * case). The default value has neither and is not valid. Keys calendar words
 * and holiday data files by its name(), e.g. "de_DE".
 */
class RKCORE_EXPORT RKLocale
{
public:
    RKLocale() = default;
    RKLocale(const QString& language, const QString& country);
    explicit RKLocale(const QLocale& locale);
    virtual ~RKLocale() = default;

    QString language() const { return myLanguage; }
    QString country() const { return myCountry; }
    bool isValid() const { return !myLanguage.isEmpty(); }

    /// "de_DE"; only the language when there is no country; empty when invalid.
    QString name() const;
    /// Reads "de_DE", "de-DE" or "de"; anything else gives an invalid locale.
    static RKLocale decodeName(const QString& name);
    /// Reads the attributes "language" and "country" of `element`.
    static RKLocale fromXML(const QDomElement& element);
    void toXML(QDomElement& element) const;

    QLocale toQLocale() const;
    /// Language and country in English, e.g. "German (Germany)".
    QString englishName() const;

    bool operator==(const RKLocale& other) const;
    bool operator!=(const RKLocale& other) const { return !(*this == other); }
    /// By language, then country.
    bool operator<(const RKLocale& other) const;

private:
    QString myLanguage;
    QString myCountry;
};

RKCORE_EXPORT uint qHash(const RKLocale& locale, uint seed = 0);
RKCORE_EXPORT QDebug operator<<(QDebug debug, const RKLocale& locale);
