#include "RKCalendariumHolidayConfigDefault.h"

#include "RKXMLBuilder.h"

#include <RKDirectoryConfig.h>
#include <RKXMLLoader.h>

#include <QDomDocument>

RKCalendariumHolidayConfigDefault::RKCalendariumHolidayConfigDefault()
{
    load();
}

bool RKCalendariumHolidayConfigDefault::setDefaultConfig(const RKCalendariumHolidayConfig& config, RKErrorHistory* history)
{
    myConfig = config;
    return save(history);
}

void RKCalendariumHolidayConfigDefault::setFeature(const RKCalendariumFeatures& feature, bool on)
{
    myConfig.setFeature(feature, on);
}

QFileInfo RKCalendariumHolidayConfigDefault::file() const
{
    return QFileInfo(RKSingleton<RKDirectoryConfig>::instance().versionIndependentWritableResource(
        QStringLiteral("calendarium_config.xml")));
}

void RKCalendariumHolidayConfigDefault::load()
{
    const QFileInfo info = file();
    // A first start has no file yet; that is not worth the loader's warning.
    const QDomElement root = info.exists() ? RKXMLLoader::loadDocumentElement(info) : QDomElement();
    if (root.isNull()) {
        myConfig = RKCalendariumHolidayConfig();
        return;
    }
    myConfig.readFromXML(root);
    static const RKCalendariumFeaturesEnum neverStored[] = {
        RKCalendariumFeaturePersonalEntries,
        RKCalendariumFeatureHolidays,
        RKCalendariumFeatureHolidayColors,
        RKCalendariumFeatureVacations,
    };
    for (RKCalendariumFeaturesEnum flag : neverStored)
        myConfig.removeFeatures(RKCalendariumFeatures(flag));
}

bool RKCalendariumHolidayConfigDefault::save(RKErrorHistory* history)
{
    QDomDocument document;
    RKXMLBuilder::buildUTF8ProcessingInstructions(document);
    QDomElement root = document.createElement(QStringLiteral("default"));
    document.appendChild(root);
    myConfig.writeToXML(root);
    // Through a temporary file: a failed save leaves the previous file as it was.
    return RKXMLBuilder::saveUTF8(document, file(), history);
}
