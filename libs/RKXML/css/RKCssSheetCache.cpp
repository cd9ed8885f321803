#include "RKCssSheetCache.h"

#include "RKCssSheetParser.h"
#include "RKCssSheetRegistry.h"
#include "RKDefaultCssSheetFactory.h"

#include <RKXMLLoader.h>

#include <QDebug>
#include <QDir>

namespace {
constexpr int CACHE_SIZE = 100;
}

std::recursive_mutex RKCssSheetCache::ourMutex;

RKCssSheetCache::RKCssSheetCache()
    : myCssTexts(CACHE_SIZE)
    , myMaps(CACHE_SIZE)
{
}

QString RKCssSheetCache::cssString(const QString& id)
{
    std::lock_guard<std::recursive_mutex> lock(ourMutex);
    if (const QString* cached = myCssTexts.object(id))
        return *cached;
    const QString css = loadCss(id);
    myCssTexts.insert(id, new QString(css), 1);
    return css;
}

QString RKCssSheetCache::cssString(const RKCssSheet& sheet)
{
    return sheet.isValid() ? cssString(sheet.id()) : QString();
}

QString RKCssSheetCache::loadCss(const QString& id) const
{
    const QString generated = RKDefaultCssSheetFactory::cssString(id);
    if (!generated.isEmpty())
        return generated;
    const RKCssSheet sheet = RKSingleton<RKCssSheetRegistry>::instance().document(id);
    return sheet.isValid() ? sheet.readCssFromFile() : QString();
}

RKCssSheetTitleIdMap RKCssSheetCache::styleSheetsIn(const QFileInfo& file)
{
    const QString path = file.filePath().isEmpty() ? QString() : QDir::cleanPath(file.absoluteFilePath());
    std::lock_guard<std::recursive_mutex> lock(ourMutex);
    if (const RKCssSheetTitleIdMap* cached = myMaps.object(path))
        return *cached;

    const int cycleStart = myFilesBeingRead.indexOf(path);
    if (cycleStart >= 0) {
        for (int i = cycleStart + 1; i < myIncomplete.size(); ++i)
            myIncomplete[i] = true;
        qWarning().noquote() << QStringLiteral("include cycle: file already being read: ") + path;
        return RKCssSheetTitleIdMap();
    }

    const QDomDocument document = RKXMLLoader::loadDocument(path);
    if (document.isNull()) {
        qWarning().noquote() << QStringLiteral("include fails: file not found: ") + path;
        return RKCssSheetTitleIdMap();
    }

    myFilesBeingRead.append(path);
    myIncomplete.append(false);
    const RKCssSheetTitleIdMap map = RKCssSheetParser::findStyleSheets(document, QFileInfo(path));
    myFilesBeingRead.removeLast();
    const bool incomplete = myIncomplete.takeLast();
    if (!incomplete)
        myMaps.insert(path, new RKCssSheetTitleIdMap(map), 1);
    return map;
}

int RKCssSheetCache::maximumCacheSize() const
{
    std::lock_guard<std::recursive_mutex> lock(ourMutex);
    return myCssTexts.maxCost();
}

int RKCssSheetCache::currentCacheSize() const
{
    std::lock_guard<std::recursive_mutex> lock(ourMutex);
    return myCssTexts.totalCost();
}

void RKCssSheetCache::clearCache()
{
    std::lock_guard<std::recursive_mutex> lock(ourMutex);
    myCssTexts.clear();
    myMaps.clear();
}

bool RKCssSheetCache::isEmpty() const
{
    std::lock_guard<std::recursive_mutex> lock(ourMutex);
    return myCssTexts.isEmpty() && myMaps.isEmpty();
}
