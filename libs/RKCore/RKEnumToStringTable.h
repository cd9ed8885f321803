#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/**
 * Words of an enumeration whose values are bit sets held in a signed 32-bit
 * integer. Decoding is case-insensitive (words are stored lower-cased); each
 * value is written back with the first word inserted for it, as inserted.
 */
template <class E>
class RKEnumToStringTable
{
public:
    void insert(const QString& word, E value)
    {
        myValues.insert(word.toLower(), value);
        if (!myWords.contains(static_cast<int>(value)))
            myWords.insert(static_cast<int>(value), word);
    }

    void setUnknownWord(const QString& word) { myUnknownWord = word; }
    void setUnknownValue(E value) { myUnknownValue = value; }
    QString unknownWord() const { return myUnknownWord; }
    E unknownValue() const { return myUnknownValue; }

    /// Trimmed, lower-cased look-up; `fallback` when the word is not in the table.
    E decode(const QString& word, E fallback) const
    {
        return myValues.value(word.trimmed().toLower(), fallback);
    }

    /// OR of the comma-separated pieces; a part that is not a word contributes the unknown value.
    E decodeCSV(const QString& text) const
    {
        int result = 0;
        for (const QString& part : text.split(QLatin1Char(',')))
            result |= static_cast<int>(decode(part, myUnknownValue));
        return static_cast<E>(result);
    }

    /// The words of the single bits of `value`, lowest bit first; empty for values below 1.
    QStringList encodeAsList(E value) const
    {
        QStringList words;
        const int bits = static_cast<int>(value);
        if (bits < 1)
            return words;
        for (unsigned int bit = 1; bit != 0 && bit <= static_cast<unsigned int>(bits); bit <<= 1) {
            if ((static_cast<unsigned int>(bits) & bit) == 0)
                continue;
            const auto found = myWords.constFind(static_cast<int>(bit));
            if (found != myWords.constEnd())
                words << found.value();
        }
        return words;
    }

    /// encodeAsList joined with ", "; the unknown word when there is none.
    QString encodeCSV(E value) const
    {
        const QStringList words = encodeAsList(value);
        return words.isEmpty() ? myUnknownWord : words.join(QStringLiteral(", "));
    }

    /// The word recorded for exactly `value`, or the unknown word.
    QString encode(E value) const
    {
        return myWords.value(static_cast<int>(value), myUnknownWord);
    }

    /// All words as inserted, lower-cased keys, for listing valid choices.
    QStringList words() const
    {
        QStringList out = myWords.values();
        out.sort();
        return out;
    }

private:
    QHash<QString, E> myValues;
    QHash<int, QString> myWords;
    QString myUnknownWord;
    E myUnknownValue = static_cast<E>(0);
};
