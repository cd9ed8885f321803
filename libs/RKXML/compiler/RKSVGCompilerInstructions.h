#pragma once

#include "RKSVGCompilerInstruction.h"
#include "rkxml_export.h"

#include <QList>
#include <QMultiHash>
#include <QMetaType>
#include <QString>

/**
 * The edits of one calendar page, filed by element key, together with the name
 * of the attribute on which template elements carry their keys ("vako:cal" for
 * sets made by RKSVGCompilerInstructionsFactory) and a description of the
 * content key the set was made for. A plain value with implicitly shared
 * containers: copying is cheap, and copies may go to other threads.
 */
class RKXML_EXPORT RKSVGCompilerInstructions
{
public:
    RKSVGCompilerInstructions() = default;
    explicit RKSVGCompilerInstructions(const QString& attributeName);
    virtual ~RKSVGCompilerInstructions() = default;

    /// Adds (never replaces) an instruction under `key`; keys holding "imageholiday" are traced at debug level.
    void addInstruction(const QString& key, const RKSVGCompilerInstruction& instruction);
    /// Adds a set-text instruction.
    void addInstruction(const QString& key, const QString& text);
    /// Adds a set-attribute instruction for attribute = value.
    void addInstruction(const QString& key, const QString& attribute, const QString& value);

    /// The instructions under `key`, the most recently added first.
    QList<RKSVGCompilerInstruction> replacements(const QString& key) const { return myInstructions.values(key); }
    QMultiHash<QString, RKSVGCompilerInstruction> allReplacements() const { return myInstructions; }
    /// Whether `key` holds any instruction (cheaper than replacements(key).isEmpty()).
    bool contains(const QString& key) const { return myInstructions.contains(key); }
    /// No instruction; the attribute name and the description do not count.
    bool isEmpty() const { return myInstructions.isEmpty(); }
    /// Number of instructions.
    int size() const { return myInstructions.size(); }
    /// Makes room for `size` instructions in advance.
    void reserve(int size) { myInstructions.reserve(size); }

    QString attributeName() const { return myAttributeName; }
    void setAttributeName(const QString& name) { myAttributeName = name; }
    QString description() const { return myDescription; }
    void setDescription(const QString& description) { myDescription = description; }
    /// qHash of the description.
    uint hashValue() const;

    /// Same attribute name and description, and per key the same instructions in any order.
    bool operator==(const RKSVGCompilerInstructions& other) const;
    bool operator!=(const RKSVGCompilerInstructions& other) const { return !(*this == other); }

private:
    QMultiHash<QString, RKSVGCompilerInstruction> myInstructions;
    QString myAttributeName;
    QString myDescription;
};

Q_DECLARE_METATYPE(RKSVGCompilerInstructions)
