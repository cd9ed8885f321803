#include "RKCssSheetRegistry.h"

#include "RKDefaultCssSheetFactory.h"

#include <RKDirectoryConfig.h>

#include <QDebug>

namespace {
constexpr int CACHE_SIZE = 100;
}

RKCssSheetRegistry::RKCssSheetRegistry()
    : mySheets(CACHE_SIZE)
{
}

RKCssSheet RKCssSheetRegistry::document(const QString& id)
{
    if (id.isEmpty())
        return RKCssSheet();
    std::lock_guard<std::mutex> lock(myMutex);
    if (const RKCssSheet* cached = mySheets.object(id))
        return *cached;
    const QFileInfo file = RKDirectoryConfig::instance().findInGlintoraDirs(id);
    if (file.filePath().isEmpty()) {
        qWarning().noquote() << QStringLiteral("file with CSSId=%1 not found").arg(id);
        return RKCssSheet();
    }
    const RKCssSheet sheet(file);
    mySheets.insert(id, new RKCssSheet(sheet), 1);
    return sheet;
}

bool RKCssSheetRegistry::isValidId(const QString& id)
{
    return RKDefaultCssSheetFactory::cssAvailable(id) || document(id).isValid();
}

int RKCssSheetRegistry::maximumCacheSize() const
{
    std::lock_guard<std::mutex> lock(myMutex);
    return mySheets.maxCost();
}

int RKCssSheetRegistry::currentCacheSize() const
{
    std::lock_guard<std::mutex> lock(myMutex);
    return mySheets.totalCost();
}

void RKCssSheetRegistry::clearCache()
{
    std::lock_guard<std::mutex> lock(myMutex);
    mySheets.clear();
}

bool RKCssSheetRegistry::isEmpty() const
{
    std::lock_guard<std::mutex> lock(myMutex);
    return mySheets.isEmpty();
}
