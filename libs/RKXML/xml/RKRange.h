#pragma once

#include <QDebug>

/**
 * Closed range [lower, upper]. A range whose bounds are both 0 counts as unset
 * for expandTo(); a range with upper < lower is invalid.
 */
template <class T>
class RKRange
{
public:
    RKRange(T lower = T(), T upper = T()) : myLower(lower), myUpper(upper) {}
    virtual ~RKRange() = default;

    T lower() const { return myLower; }
    T upper() const { return myUpper; }
    void setLower(T v) { myLower = v; }
    void setUpper(T v) { myUpper = v; }

    virtual bool operator==(const RKRange& other) const { return myLower == other.myLower && myUpper == other.myUpper; }
    virtual bool operator!=(const RKRange& other) const { return !(*this == other); }
    /// Valid ranges by lower then upper bound; a valid range sorts before an invalid one.
    virtual bool operator<(const RKRange& other) const
    {
        if (!isValid() || !other.isValid())
            return isValid();
        if (myLower != other.myLower)
            return myLower < other.myLower;
        return myUpper < other.myUpper;
    }
    /// An unset (0, 0) range becomes (v, v); otherwise the nearer bound moves out to v.
    virtual void expandTo(T v)
    {
        if (myLower == T() && myUpper == T()) {
            myLower = v;
            myUpper = v;
        } else if (v > myUpper) {
            myUpper = v;
        } else if (v < myLower) {
            myLower = v;
        }
    }
    virtual T center() const { return centerOf(myLower, myUpper); }
    virtual bool isValid() const { return myUpper >= myLower; }
    virtual bool contains(T v) const { return myLower <= v && v <= myUpper; }
    virtual bool contains(const RKRange& r) const { return contains(r.myLower) && contains(r.myUpper); }
    virtual bool intersects(const RKRange& r) const
    {
        return contains(r.myLower) || contains(r.myUpper) || r.contains(myLower) || r.contains(myUpper);
    }

private:
    // 32-bit arithmetic that wraps like the hardware instead of overflowing (no UB).
    static int centerOf(int a, int b)
    {
        const int sum = static_cast<int>(static_cast<unsigned int>(a) + static_cast<unsigned int>(b));
        return sum / 2;
    }
    template <class U>
    static U centerOf(U a, U b) { return (a + b) / 2; }

    T myLower;
    T myUpper;
};

template <class T>
QDebug operator<<(QDebug debug, const RKRange<T>& range)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "RKRange(" << range.lower() << ", " << range.upper() << ')';
    return debug;
}
