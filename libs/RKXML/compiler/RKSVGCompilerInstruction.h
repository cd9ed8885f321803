#pragma once

#include "rkxml_export.h"

#include <QDomElement>
#include <QMetaType>
#include <QString>

class QDebug;
class RKTextTransform;

/**
 * One edit of a template element: set its text, set one attribute, or nothing.
 * An immutable value; copies are cheap (two implicitly shared strings).
 */
class RKXML_EXPORT RKSVGCompilerInstruction
{
public:
    enum InstructionType : qint32 { DoNothing = 0, SetText = 1, SetAttribute = 2 };

    /// Does nothing; both strings null.
    RKSVGCompilerInstruction() = default;
    /// Sets the element's text to `value`.
    explicit RKSVGCompilerInstruction(const QString& value);
    /// Sets the element's `attribute` to `value`. Note the order: attribute first.
    RKSVGCompilerInstruction(const QString& attribute, const QString& value);
    virtual ~RKSVGCompilerInstruction() = default;

    InstructionType type() const { return myType; }
    QString targetValue() const { return myTargetValue; }
    QString targetAttribute() const { return myTargetAttribute; }

    /// Type, value and attribute equal.
    bool operator==(const RKSVGCompilerInstruction& other) const;
    bool operator!=(const RKSVGCompilerInstruction& other) const { return !(*this == other); }

    /// The value passed through `transform`.
    QString transformedValue(const RKTextTransform& transform) const;
    /// "<type name>: <attribute>=<value>"; the type name is "doNothing", "setText" or "setAttribute".
    QString describe() const;

    /// Applies the edit; a null pointer or a null element is left alone.
    void applyInstruction(QDomElement* element) const;
    /// Sets targetAttribute to targetValue, overwriting an existing value.
    void replaceAttribute(QDomElement* element) const;
    /**
     * Sets the element's text to the value, transformed by the element's own
     * "text-transform": the first direct text child takes the text; without
     * one, a new text node is appended after the element's children.
     */
    void replaceText(QDomElement* element) const;
    /// Puts `text` into the first direct text child (CDATA included); false when there is none.
    bool tryToReplaceTextNode(QDomElement* element, const QString& text) const;

private:
    InstructionType myType = DoNothing;
    QString myTargetValue;
    QString myTargetAttribute;
};

/// Writes describe().
RKXML_EXPORT QDebug operator<<(QDebug debug, const RKSVGCompilerInstruction& instruction);

Q_DECLARE_METATYPE(RKSVGCompilerInstruction)
