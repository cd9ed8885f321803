#pragma once

#include <QHash>
#include <QList>
#include <QPair>
#include <QMap>
#include <QString>
#include <QStringList>

/**
 * Case-insensitive words for an enum or QFlags type T. Unknown words map to the
 * unknown value; when writing, only single-bit values are named, so masks and
 * composite values are written as their bits.
 */
template <class T>
class RKEnumWordTable
{
public:
    void insert(const QString& word, T value)
    {
        myTable.insert(word.toUpper(), value);
        myInsertionOrder.append(qMakePair(word, value));
    }
    void setUnknownWord(const QString& word) { myUnknownWord = word; }
    void setUnknownValue(T value) { myUnknownValue = value; }
    QString unknownWord() const { return myUnknownWord; }
    T unknownValue() const { return myUnknownValue; }

    T find(const QString& word) const { return myTable.value(word.toUpper(), myUnknownValue); }

    /// OR of the comma-separated words; an empty or unknown part adds the unknown value.
    T fromCommaSeparatedString(const QString& text) const
    {
        int result = 0;
        for (const QString& part : text.toUpper().split(QLatin1Char(',')))
            result |= static_cast<int>(find(part.trimmed()));
        return T(result);
    }

    /// Words of the single-bit values set in `flags`, ascending by bit, joined with ",";
    /// for a bit with synonyms the first word inserted is written, as inserted.
    QString toCommaSeparatedString(T flags) const
    {
        const auto set = static_cast<unsigned int>(static_cast<int>(flags));
        QMap<unsigned int, QString> byBit;
        for (const auto& entry : myInsertionOrder) {
            const QString& word = entry.first;
            const auto bit = static_cast<unsigned int>(static_cast<int>(entry.second));
            if (bit == 0 || (bit & (bit - 1)) != 0 || (set & bit) == 0 || byBit.contains(bit))
                continue;
            if (myTable.value(word.toUpper()) != entry.second)
                continue; // replaced by a later insert of the same word
            byBit.insert(bit, word);
        }
        return QStringList(byBit.values()).join(QLatin1Char(','));
    }

private:
    QHash<QString, T> myTable;
    QList<QPair<QString, T>> myInsertionOrder;
    QString myUnknownWord;
    T myUnknownValue = T();
};
