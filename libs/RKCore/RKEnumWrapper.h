#pragma once

#include "RKEnumToStringTable.h"

#include <QMutex>
#include <atomic>

/**
 * Base of the value classes that hold one enumeration bit set E (a signed
 * 32-bit integer) and convert it to and from words through one process-wide
 * table per enumeration, built on first use by the concrete class's fillTable().
 */
template <class E>
class RKEnumWrapper
{
public:
    RKEnumWrapper(E value = static_cast<E>(0)) : myValue(static_cast<int>(value)) {}
    virtual ~RKEnumWrapper() = default;

    E value() const { return static_cast<E>(myValue); }
    int toInt() const { return myValue; }
    void setValue(E value) { myValue = static_cast<int>(value); }

    virtual bool operator<(const RKEnumWrapper& other) const { return myValue < other.myValue; }
    virtual bool operator<=(const RKEnumWrapper& other) const { return myValue <= other.myValue; }
    virtual bool operator>(const RKEnumWrapper& other) const { return myValue > other.myValue; }
    virtual bool operator==(const RKEnumWrapper& other) const { return myValue == other.myValue; }
    virtual bool operator==(E other) const { return myValue == static_cast<int>(other); }
    virtual bool operator!=(const RKEnumWrapper& other) const { return myValue != other.myValue; }
    virtual bool operator!=(E other) const { return myValue != static_cast<int>(other); }
    virtual RKEnumWrapper& operator|=(const RKEnumWrapper& other) { myValue |= other.myValue; return *this; }
    virtual RKEnumWrapper& operator|=(E other) { myValue |= static_cast<int>(other); return *this; }
    virtual RKEnumWrapper& operator&=(const RKEnumWrapper& other) { myValue &= other.myValue; return *this; }
    virtual RKEnumWrapper& operator&=(E other) { myValue &= static_cast<int>(other); return *this; }
    virtual E operator&(const RKEnumWrapper& other) const { return static_cast<E>(myValue & other.myValue); }
    virtual E operator|(const RKEnumWrapper& other) const { return static_cast<E>(myValue | other.myValue); }
    /// Clears the given bits.
    virtual void exclude(const RKEnumWrapper& other) { myValue &= ~other.myValue; }
    virtual void exclude(E other) { myValue &= ~static_cast<int>(other); }
    /// Sets the given bits.
    virtual void expandTo(const RKEnumWrapper& other) { myValue |= other.myValue; }
    virtual void expandTo(E other) { myValue |= static_cast<int>(other); }
    /// Keeps only the given bits.
    virtual void reduceTo(E other) { myValue &= static_cast<int>(other); }
    virtual E reducedTo(E other) const { return static_cast<E>(myValue & static_cast<int>(other)); }
    virtual bool isValid() const { return myValue != 0; }
    virtual void fillTable(RKEnumToStringTable<E>* table) const = 0;

    /// The enumeration's word table, filled by the first caller's fillTable(); lives until exit.
    const RKEnumToStringTable<E>& enumToStringTable() const
    {
        static std::atomic<RKEnumToStringTable<E>*> table{nullptr};
        static QMutex mutex;
        RKEnumToStringTable<E>* current = table.load(std::memory_order_acquire);
        if (!current) {
            QMutexLocker lock(&mutex);
            current = table.load(std::memory_order_relaxed);
            if (!current) {
                current = new RKEnumToStringTable<E>();
                fillTable(current);
                table.store(current, std::memory_order_release);
            }
        }
        return *current;
    }

    QStringList encodeAsList() const { return enumToStringTable().encodeAsList(value()); }
    QString encodeCSV() const { return enumToStringTable().encodeCSV(value()); }
    QString encode() const { return enumToStringTable().encode(value()); }

protected:
    void decodeFrom(const QString& csv) { myValue = static_cast<int>(enumToStringTable().decodeCSV(csv)); }

private:
    int myValue;
};
