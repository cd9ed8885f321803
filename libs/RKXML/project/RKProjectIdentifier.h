#pragma once

#include "rkxml_export.h"

#include <QDomElement>
#include <QString>

class QDebug;

/**
 * Names the user's project by a generated unique text. Whether it is final
 * (ordered or saved as final) is kept by RKProjectIdentifierRegistry, by text,
 * so equal identifiers share their final state.
 */
class RKXML_EXPORT RKProjectIdentifier
{
public:
    /// Empty and therefore invalid.
    RKProjectIdentifier() = default;
    /// With `final` true the identifier is registered as final.
    RKProjectIdentifier(const QString& id, bool final);
    /// Reads "projectID" (a new identifier when absent) and registers it as final.
    explicit RKProjectIdentifier(const QDomElement& element);
    RKProjectIdentifier(const RKProjectIdentifier&) = default;
    RKProjectIdentifier(RKProjectIdentifier&&) = default;
    RKProjectIdentifier& operator=(const RKProjectIdentifier&) = default;
    RKProjectIdentifier& operator=(RKProjectIdentifier&&) = default;
    virtual ~RKProjectIdentifier() = default;

    /// A new identifier that is not final.
    static RKProjectIdentifier create();
    /// 36 characters: lower-case hexadecimal in groups 8-4-4-4-12.
    static QString createProjectID();

    QString projectID() const { return myProjectID; }
    bool isValid() const { return !myProjectID.isEmpty(); }
    void setFinal() const;
    bool isFinal() const;
    bool operator==(const RKProjectIdentifier& other) const { return myProjectID == other.myProjectID; }
    bool operator!=(const RKProjectIdentifier& other) const { return !(*this == other); }

    /// Sets the attribute "projectID".
    void encode(QDomElement& element) const;
    /// Path of the project's thumbnail in the program-data directory.
    QString thumbnailFile() const;
    /// One line in the legacy log: action, identifier, final state, article and order text.
    void log(const QString& action, const QString& articleId, const QString& orderTextName) const;

private:
    QString myProjectID;
};

RKXML_EXPORT uint qHash(const RKProjectIdentifier& id, uint seed = 0);
RKXML_EXPORT QDebug operator<<(QDebug debug, const RKProjectIdentifier& id);
