#include "RKProjectIdentifier.h"

#include "RKProjectIdentifierRegistry.h"
#include "RKXMLParser.h"

#include <RKDirectoryConfig.h>
#include <RKLogger.h>

#include <QDebug>
#include <QUuid>

namespace {
const QString& projectIdAttribute()
{
    static const QString name = QStringLiteral("projectID");
    return name;
}
}

RKProjectIdentifier::RKProjectIdentifier(const QString& id, bool final)
    : myProjectID(id)
{
    if (final)
        setFinal();
}

RKProjectIdentifier::RKProjectIdentifier(const QDomElement& element)
    : myProjectID(RKXMLParser::attribute(element, projectIdAttribute(), createProjectID(), true))
{
    setFinal();
}

RKProjectIdentifier RKProjectIdentifier::create()
{
    return RKProjectIdentifier(createProjectID(), false);
}

QString RKProjectIdentifier::createProjectID()
{
    QString id = QUuid::createUuid().toString();
    id.remove(QLatin1Char('{'));
    id.remove(QLatin1Char('}'));
    return id;
}

void RKProjectIdentifier::setFinal() const
{
    RKSingleton<RKProjectIdentifierRegistry>::instance().finalize(*this);
}

bool RKProjectIdentifier::isFinal() const
{
    return RKSingleton<RKProjectIdentifierRegistry>::instance().isFinalized(*this);
}

void RKProjectIdentifier::encode(QDomElement& element) const
{
    element.setAttribute(projectIdAttribute(), myProjectID);
}

QString RKProjectIdentifier::thumbnailFile() const
{
    return RKSingleton<RKDirectoryConfig>::instance().programDataTLMPath(QStringLiteral("projectRegistry/%1.png").arg(myProjectID));
}

void RKProjectIdentifier::log(const QString& action, const QString& articleId, const QString& orderTextName) const
{
    RKSingleton<RKLogger>::instance().legacyLog(
        QStringLiteral("ProjectRegistry ACTION:%1 VALUE:%2 FINAL:%3 ARTICLEID:%4 ORDERTXTNAME:%5")
            .arg(action, myProjectID, QString::number(isFinal() ? 1 : 0), articleId, orderTextName));
}

uint qHash(const RKProjectIdentifier& id, uint seed)
{
    return qHash(id.projectID(), seed);
}

QDebug operator<<(QDebug debug, const RKProjectIdentifier& id)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "RKProjectIdentifier(" << id.projectID() << ')';
    return debug;
}
