#include "RKCalendariumHolidayConfigDefault.h"

#include "RKXMLBuilder.h"

#include <RKDirectoryConfig.h>
#include <RKXMLLoader.h>

#include <QDomDocument>
#include <QFile>

RKCalendariumHolidayConfigDefault::RKCalendariumHolidayConfigDefault()
{
    load();
}

void RKCalendariumHolidayConfigDefault::setDefaultConfig(const RKCalendariumHolidayConfig& config)
{
    myConfig = config;
    save();
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

void RKCalendariumHolidayConfigDefault::save()
{
    QDomDocument document;
    RKXMLBuilder::buildUTF8ProcessingInstructions(document);
    QDomElement root = document.createElement(QStringLiteral("default"));
    document.appendChild(root);
    myConfig.writeToXML(root);
    QFile out(file().absoluteFilePath());
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return;
    out.write(document.toByteArray(2));
    out.close();
}
