#pragma once

#include "rkxml_export.h"

#include <RKAngle.h>

#include <QColor>
#include <QDomElement>
#include <QList>
#include <QString>

class QDebug;

/**
 * One named string value. Its text form is escaped(key) "=" escaped(value), where
 * backslash, comma, equals sign and slash are preceded by a backslash, so that pairs
 * can be joined with "," into one line.
 */
class RKXML_EXPORT RKKeyValuePair
{
public:
    RKKeyValuePair(const QString& key = QString(), const QString& value = QString());
    virtual ~RKKeyValuePair() = default;

    QString key() const { return myKey; }
    QString value() const { return myValue; }
    void setKey(const QString& key) { myKey = key; }
    void setValue(const QString& value) { myValue = value; }
    /// A pair needs a non-empty key; the value may be empty.
    bool isValid() const { return !myKey.isEmpty(); }

    bool operator==(const RKKeyValuePair& other) const;
    bool operator!=(const RKKeyValuePair& other) const { return !(*this == other); }
    /// By key; equal keys by value.
    bool operator<(const RKKeyValuePair& other) const;
    uint hashValue() const;

    QString serializeCSV() const;
    static QString escaped(const QString& text);
    static QString unEscaped(const QString& text);
    /// Splits at the first unescaped "="; text without one logs "Error decoding <text>" and gives an empty pair.
    static RKKeyValuePair deserializeCSV(const QString& text);

private:
    QString myKey;
    QString myValue;
};

inline uint qHash(const RKKeyValuePair& pair, uint seed = 0)
{
    return pair.hashValue() ^ seed;
}

/**
 * An ordered list of pairs whose keys the setters keep unique. Moves between memory,
 * one line of comma-separated text and the attributes of one XML element.
 *
 * Text forms of typed values: numbers through QString::number (doubles and angles in the
 * shortest form that reads back to the same double, e.g. "0.1", "1e+100"); colours as
 * QColor::name(), "#rrggbb" when opaque and "#aarrggbb" otherwise, an invalid colour as "".
 */
class RKXML_EXPORT RKKeyValuePairList
{
public:
    RKKeyValuePairList() = default;
    virtual ~RKKeyValuePairList() = default;

    int count() const { return myPairs.size(); }
    bool isEmpty() const { return myPairs.isEmpty(); }
    const RKKeyValuePair& at(int index) const { return myPairs.at(index); }
    QList<RKKeyValuePair> pairs() const { return myPairs; }
    bool contains(const QString& key) const { return indexOf(key) >= 0; }
    bool operator==(const RKKeyValuePairList& other) const { return myPairs == other.myPairs; }
    bool operator!=(const RKKeyValuePairList& other) const { return !(*this == other); }

    void sort();
    QString serializeCSV() const;
    /// Cuts at every unescaped ","; each piece (the last included, even when empty) becomes one pair.
    static RKKeyValuePairList deserialize(const QString& text);
    /// One attribute per pair: the key is the attribute name, so keys must be XML names.
    /// Characters XML cannot hold are stored as U+FFFD (one warning per call).
    void toXml(QDomElement& element) const;
    static RKKeyValuePairList fromXML(const QDomElement& element);

    /// Replaces the value of the pair with `key` in place, or appends a new pair.
    void setValue(const QString& key, const QString& value);
    void setValue(const QString& key, int value);
    void setValue(const QString& key, unsigned int value);
    void setValue(const QString& key, double value);
    void setValue(const QString& key, const RKAngle& value);
    void setValue(const QString& key, const QColor& value);
    void setValue(const QString& key, const char* value) = delete; // would pick a number overload

    /// Empty when the key is absent.
    QString value(const QString& key) const;
    /// 0 when absent or malformed.
    double realValue(const QString& key) const;
    int intValue(const QString& key) const;
    unsigned int uintValue(const QString& key) const;
    /// 0 degrees when absent or malformed.
    RKAngle angleValue(const QString& key) const;
    /// Invalid when absent, empty or malformed.
    QColor colorValue(const QString& key) const;

private:
    int indexOf(const QString& key) const;
    QList<RKKeyValuePair> myPairs;
};

RKXML_EXPORT QDebug operator<<(QDebug debug, const RKKeyValuePairList& list);
