#pragma once

// Compiling the shipped templates in-process, as "rkcalendar compile" does: the
// instructions of the page's content key (with a calculated holiday cache registered
// for the call) applied to the template, with the template's default colour scheme.

#include "RKTestSupport.h"

#include <RKCalculatedHolidayCache.h>
#include <RKCalendariumContentKey.h>
#include <RKCalendariumFeatures.h>
#include <RKCalendariumHolidayConfig.h>
#include <RKCssSheetParser.h>
#include <RKCssSheetTitleIdMap.h>
#include <RKSVGCompiler.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKSVGCompilerInstructionsFactory.h>
#include <RKXMLBuilder.h>

#include <QDomDocument>
#include <QFile>

struct CompiledPage {
    QDomDocument document;
    RKSVGCompilerInstructions instructions;
};

inline QString templatePath(const QString& name)
{
    return shippedDataPath(QStringLiteral("templates/%1.svg").arg(name));
}

/// `locale` like "de_DE", `province` empty for the nationwide days; all features on.
inline CompiledPage compileTemplate(const QString& name, const QDate& month, const QString& locale,
    const QString& province)
{
    CompiledPage page;
    QFile file(templatePath(name));
    if (!file.open(QIODevice::ReadOnly) || !page.document.setContent(&file, false))
        return page;
    const RKCssSheetTitleIdMap sheets = RKCssSheetParser::findStyleSheets(page.document, QFileInfo(file));
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale::decodeName(locale));
    // "-" names no province: the nationwide days only, as the tool does.
    config.setProvince(province.isEmpty() ? QStringLiteral("-") : province);
    config.setFeatures(RKCalendariumFeatures(QStringLiteral("holidays,vacations,moonphases")));
    const RKCalendariumContentKey key(RKCalendariumContentConfig(month, config), RKProjectIdentifier());
    RKCalculatedHolidayCache holidays;
    RKSVGCompilerInstructionsFactory& factory = RKSingleton<RKSVGCompilerInstructionsFactory>::instance();
    factory.addHolidayCache(&holidays);
    page.instructions = RKSingleton<RKSVGCompilerInstructionsCache>::instance().instructions(key);
    factory.removeHolidayCache(&holidays);

    RKSVGCompiler compiler;
    compiler.setDomDocument(page.document, false);
    compiler.setInstructions(page.instructions);
    compiler.setCss(sheets.findDefaultCssSheet());
    compiler.update();
    page.document = compiler.domDocument();
    return page;
}

/// The canonical text with the shipped data directory written as "@DATA@", so it is the same on every machine.
inline QString portableText(const QDomDocument& document)
{
    return RKXMLBuilder::toString(document, 1).replace(QDir::cleanPath(shippedDataPath(QString())), QStringLiteral("@DATA@"));
}
