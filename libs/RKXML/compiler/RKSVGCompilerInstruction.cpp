#include "RKSVGCompilerInstruction.h"

#include <RKTextTransform.h>

#include <QDebug>
#include <QDomText>

namespace {
const char* const TYPE_NAMES[] = {"doNothing", "setText", "setAttribute"};
}

RKSVGCompilerInstruction::RKSVGCompilerInstruction(const QString& value)
    : myType(SetText)
    , myTargetValue(value)
{
}

RKSVGCompilerInstruction::RKSVGCompilerInstruction(const QString& attribute, const QString& value)
    : myType(SetAttribute)
    , myTargetValue(value)
    , myTargetAttribute(attribute)
{
}

bool RKSVGCompilerInstruction::operator==(const RKSVGCompilerInstruction& other) const
{
    return myType == other.myType && myTargetValue == other.myTargetValue
        && myTargetAttribute == other.myTargetAttribute;
}

QString RKSVGCompilerInstruction::transformedValue(const RKTextTransform& transform) const
{
    return transform.apply(myTargetValue);
}

QString RKSVGCompilerInstruction::describe() const
{
    const bool known = myType >= DoNothing && myType <= SetAttribute;
    const QString typeName = known ? QLatin1String(TYPE_NAMES[myType]) : QString();
    return QStringLiteral("%1: %2=%3").arg(typeName, myTargetAttribute, myTargetValue);
}

void RKSVGCompilerInstruction::applyInstruction(QDomElement* element) const
{
    if (!element || element->isNull())
        return;
    switch (myType) {
    case SetAttribute:
        replaceAttribute(element);
        break;
    case SetText:
        replaceText(element);
        break;
    case DoNothing:
        break;
    }
}

void RKSVGCompilerInstruction::replaceAttribute(QDomElement* element) const
{
    if (!element || element->isNull())
        return;
    element->setAttribute(myTargetAttribute, myTargetValue);
}

void RKSVGCompilerInstruction::replaceText(QDomElement* element) const
{
    if (!element || element->isNull())
        return;
    const QString text = transformedValue(RKTextTransform::parse(*element));
    if (tryToReplaceTextNode(element, text))
        return;
    element->appendChild(element->ownerDocument().createTextNode(text));
}

bool RKSVGCompilerInstruction::tryToReplaceTextNode(QDomElement* element, const QString& text) const
{
    if (!element || element->isNull())
        return false;
    for (QDomNode child = element->firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isText()) {
            child.toText().setData(text);
            return true;
        }
    }
    return false;
}

QDebug operator<<(QDebug debug, const RKSVGCompilerInstruction& instruction)
{
    QDebugStateSaver saver(debug);
    debug.noquote() << instruction.describe();
    return debug;
}
