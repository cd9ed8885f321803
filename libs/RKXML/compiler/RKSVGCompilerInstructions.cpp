#include "RKSVGCompilerInstructions.h"

#include <QDebug>

#include <algorithm>
#include <tuple>

namespace {
const QString STR_IMAGEHOLIDAY = QStringLiteral("imageholiday");

bool lessThan(const RKSVGCompilerInstruction& a, const RKSVGCompilerInstruction& b)
{
    const auto aType = a.type();
    const auto bType = b.type();
    const QString aValue = a.targetValue();
    const QString bValue = b.targetValue();
    const QString aAttribute = a.targetAttribute();
    const QString bAttribute = b.targetAttribute();
    return std::tie(aType, aValue, aAttribute) < std::tie(bType, bValue, bAttribute);
}

/// The instructions of one key compared as multisets.
bool sameMultiset(QList<RKSVGCompilerInstruction> a, QList<RKSVGCompilerInstruction> b)
{
    if (a.size() != b.size())
        return false;
    if (a.size() == 1)
        return a.first() == b.first();
    std::sort(a.begin(), a.end(), lessThan);
    std::sort(b.begin(), b.end(), lessThan);
    return a == b;
}
}

RKSVGCompilerInstructions::RKSVGCompilerInstructions(const QString& attributeName)
    : myAttributeName(attributeName)
{
}

void RKSVGCompilerInstructions::addInstruction(const QString& key, const RKSVGCompilerInstruction& instruction)
{
    myInstructions.insert(key, instruction);
    if (key.contains(STR_IMAGEHOLIDAY))
        qDebug() << key << instruction;
}

void RKSVGCompilerInstructions::addInstruction(const QString& key, const QString& text)
{
    addInstruction(key, RKSVGCompilerInstruction(text));
}

void RKSVGCompilerInstructions::addInstruction(const QString& key, const QString& attribute, const QString& value)
{
    addInstruction(key, RKSVGCompilerInstruction(attribute, value));
}

uint RKSVGCompilerInstructions::hashValue() const
{
    return qHash(myDescription, 0);
}

bool RKSVGCompilerInstructions::operator==(const RKSVGCompilerInstructions& other) const
{
    if (myAttributeName != other.myAttributeName || myDescription != other.myDescription)
        return false;
    if (myInstructions.size() != other.myInstructions.size())
        return false;
    // Equal totals and equal multisets for every key of this set cover the other set's keys too.
    const QList<QString> keys = myInstructions.uniqueKeys();
    for (const QString& key : keys) {
        if (!sameMultiset(myInstructions.values(key), other.myInstructions.values(key)))
            return false;
    }
    return true;
}
