#include "RKPlatformIndependent.h"

void RKPlatformIndependent::notifyFileWritten(const QString& absolutePath)
{
    Q_EMIT fileWritten(absolutePath);
}
