// rkcalendar render: print-ready calendars as PDF, PNG or SVG pages.
//
// Pages go the library's own way: one calendar image per template, one composition per
// page and month, compiled and turned into renderers by background jobs on the job
// manager's threads, then drawn into the page. The work goes year by year: after a
// page is drawn its renderer is taken out of the renderer cache and deleted, and the
// instruction cache is cleared after each year, so memory stays flat over long batches.

#include "Command.h"
#include "HolidayCommandSupport.h"
#include "PrintOutput.h"
#include "TemplateCommandSupport.h"

#include <RKBackgroundJobManager.h>
#include <RKCalendariumContentKey.h>
#include <RKColorReplacementInstructions.h>
#include <RKCssSheetCache.h>
#include <RKCssSheetParser.h>
#include <RKSVGComposition.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKSVGImageCalendar.h>
#include <RKSVGImageRendererCache.h>

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>
#include <unistd.h>

using namespace HolidayCommandSupport;
using namespace TemplateCommandSupport;

namespace {

const QString BACKGROUND_ID = QStringLiteral("background");
const int DEFAULT_DPI = 150;
const int MAX_DPI = 1200;
const double MAX_BLEED_MM = 20.0;
const double POINTS_PER_MM = 72.0 / 25.4;

struct FormatName {
    const char* name;
    OutputFormat format;
};
const FormatName FORMATS[] = {{"pdf", OutputFormat::Pdf}, {"png", OutputFormat::Png}, {"svg", OutputFormat::Svg}};

// Locales whose default paper is Letter rather than the template's own (A4) size.
const char* const LETTER_LOCALES[] = {"en_US", "en_CA"};

const OutputFormat* findFormat(const QString& name)
{
    for (const FormatName& each : FORMATS) {
        if (name.compare(QLatin1String(each.name), Qt::CaseInsensitive) == 0)
            return &each.format;
    }
    return nullptr;
}

QString formatSuffix(OutputFormat format)
{
    for (const FormatName& each : FORMATS) {
        if (each.format == format)
            return QLatin1String(each.name);
    }
    return QString();
}

// One loaded template: its document (with the background marked) as a calendar image.
struct LoadedTemplate {
    QString name;
    QSizeF size; // points
    RKCssSheetTitleIdMap sheets;
    std::unique_ptr<RKSVGImageCalendar> image;
};

// The full-page element the bleed is filled with: id="background" when the template has
// one, else the first "rect" of class "page" directly under the root, which is then marked.
void markBackground(QDomDocument& document)
{
    const QDomElement root = document.documentElement();
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.attribute(QStringLiteral("id")) == BACKGROUND_ID)
            return;
    }
    for (QDomElement rect = root.firstChildElement(QStringLiteral("rect")); !rect.isNull();
         rect = rect.nextSiblingElement(QStringLiteral("rect"))) {
        if (rect.attribute(QStringLiteral("class")).split(QLatin1Char(' ')).contains(QStringLiteral("page"))) {
            rect.setAttribute(QStringLiteral("id"), BACKGROUND_ID);
            return;
        }
    }
}

QSizeF documentSize(const QDomDocument& document)
{
    const QDomElement root = document.documentElement();
    const double width = lengthInPoints(root.attribute(QStringLiteral("width")));
    const double height = lengthInPoints(root.attribute(QStringLiteral("height")));
    if (width > 0 && height > 0)
        return QSizeF(width, height);
    const QStringList box = root.attribute(QStringLiteral("viewBox")).simplified().split(QLatin1Char(' '));
    return box.size() == 4 ? QSizeF(box.at(2).toDouble(), box.at(3).toDouble()) : QSizeF();
}

/**
 * The style sheets of `sheets` with the colours of `replacements` replaced, written into
 * `directory`; the returned map names those copies. Template colours live in the sheets,
 * which the compiler's colour replacement (attributes only) does not reach.
 */
RKCssSheetTitleIdMap recolouredSheets(const RKCssSheetTitleIdMap& sheets, const RKColorReplacementInstructions& replacements,
    const QString& directory, QString& error)
{
    static const QRegularExpression colour(QStringLiteral("#[0-9a-fA-F]{6}\\b"));
    const QMap<quint32, QColor> table = replacements.replacements();
    QHash<QString, QString> copies;
    const auto copy = [&](const QString& path) -> QString {
        if (path.isEmpty() || copies.contains(path))
            return copies.value(path);
        const QString text = RKCssSheetCache::instance().cssString(path);
        if (text.isEmpty()) {
            error = QStringLiteral("cannot read the style sheet %1").arg(path);
            return QString();
        }
        QString result;
        int last = 0;
        for (auto it = colour.globalMatch(text); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            const auto target = table.constFind(QColor(match.captured()).rgba());
            result += text.midRef(last, match.capturedStart() - last);
            result += target == table.cend() ? match.captured() : target->name();
            last = match.capturedEnd();
        }
        result += text.midRef(last);
        const QString name = QDir(directory).filePath(QStringLiteral("%1-%2").arg(copies.size()).arg(QFileInfo(path).fileName()));
        QFile output(name);
        if (!output.open(QIODevice::WriteOnly) || output.write(result.toUtf8()) < 0) {
            error = QStringLiteral("cannot write %1: %2").arg(name, output.errorString());
            return QString();
        }
        copies.insert(path, name);
        return name;
    };
    RKCssSheetTitleIdMap map = sheets;
    for (const QString& title : sheets.keys())
        map.insert(title, copy(sheets.value(title)));
    map.setStandardSheet(copy(sheets.standardSheet()));
    if (!sheets.customCssSheet().isEmpty())
        map.setCustomCssSheet(copy(sheets.customCssSheet()));
    return map;
}

bool loadCalendarTemplate(const QFileInfo& file, LoadedTemplate& loaded, const RKColorReplacementInstructions& colours,
    const QString& cssDirectory, QString& error)
{
    QDomDocument document;
    if (!loadTemplate(file, document, error))
        return false;
    markBackground(document);
    loaded.name = file.completeBaseName();
    loaded.size = documentSize(document);
    loaded.sheets = RKCssSheetParser::findStyleSheets(document, file);
    if (colours.containsReplacements()) {
        loaded.sheets = recolouredSheets(loaded.sheets, colours, cssDirectory, error);
        if (!error.isEmpty())
            return false;
    }
    loaded.image = std::make_unique<RKSVGImageCalendar>(document, loaded.sheets);
    return true;
}

// "--template NAME|PATH": a shipped name, or a path to an SVG file.
QFileInfo resolveTemplate(const QString& text)
{
    if (text.contains(QLatin1Char('/')) || text.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        const QFileInfo file(text);
        return file.isFile() ? file : QFileInfo();
    }
    return findTemplate(text);
}

// The cover of a "<family>-month" template: "<family>-cover" beside it or shipped; else none.
QFileInfo coverOf(const QFileInfo& file)
{
    static const QString MONTH = QStringLiteral("-month");
    const QString base = file.completeBaseName();
    if (!base.endsWith(MONTH))
        return QFileInfo();
    const QString cover = base.left(base.size() - MONTH.size()) + QStringLiteral("-cover");
    const QFileInfo beside(file.dir().filePath(cover + QStringLiteral(".svg")));
    return beside.isFile() ? beside : findTemplate(cover);
}

bool parseColours(const QStringList& texts, RKColorReplacementInstructions& colours, CommandContext& context)
{
    for (const QString& text : texts) {
        const QStringList sides = text.split(QLatin1Char('='));
        const QColor source = sides.size() == 2 ? QColor(sides.at(0).trimmed()) : QColor();
        const QColor target = sides.size() == 2 ? QColor(sides.at(1).trimmed()) : QColor();
        if (!source.isValid() || !target.isValid()) {
            context.warn(QStringLiteral("malformed --color \"%1\" (SOURCE=TARGET with colours such as #c0392b or a "
                                        "colour name, e.g. '#c0392b=#1a5fb4')")
                             .arg(text));
            return false;
        }
        colours.insert(source, target);
    }
    return true;
}

// One page: which template, and the month its content starts with.
struct PageSpec {
    const LoadedTemplate* source;
    QDate first;
};

// "[####......] 5/26 pages compiled and drawn" on a terminal; nothing otherwise.
class Progress
{
public:
    Progress(int total, bool enabled)
        : myTotal(total), myEnabled(enabled)
    {
    }
    ~Progress()
    {
        if (myEnabled && myShown)
            std::fputs("\n", stderr);
    }
    void show(int done)
    {
        if (!myEnabled || myTotal <= 0)
            return;
        const int width = 30;
        const int filled = width * done / myTotal;
        std::fprintf(stderr, "\r[%s%s] %d/%d pages compiled and drawn", QByteArray(filled, '#').constData(),
            QByteArray(width - filled, '.').constData(), done, myTotal);
        std::fflush(stderr);
        myShown = true;
    }

private:
    int myTotal;
    bool myEnabled;
    bool myShown = false;
};

/// Fills the bleed with the template's background element stretched over the bleed box.
void drawBleed(QSvgRenderer* renderer, QPainter& painter, const PrintLayout& layout)
{
    if (layout.bleedRect() == layout.trimRect() || !renderer->elementExists(BACKGROUND_ID))
        return;
    QMutexLocker lock(RKSVGImageRendererCache::findMutex(renderer));
    renderer->render(&painter, BACKGROUND_ID, layout.bleedRect());
}

int runRender(CommandContext& context)
{
    // Template and pages.
    const QString templateText = context.value(QStringLiteral("template"), QStringLiteral("wall-month"));
    const QFileInfo templateFile = resolveTemplate(templateText);
    if (!templateFile.exists()) {
        return context.usageError(
            QStringLiteral("unknown template \"%1\" (valid: %2, or the path of an SVG file)").arg(templateText, templateNames()));
    }
    if (context.isSet(QStringLiteral("year")) && context.isSet(QStringLiteral("month")))
        return context.usageError(QStringLiteral("--year and --month exclude each other"));
    if (context.isSet(QStringLiteral("months")) && !context.isSet(QStringLiteral("month")))
        return context.usageError(QStringLiteral("--months needs --month"));
    if (context.isSet(QStringLiteral("years")) && context.isSet(QStringLiteral("month")))
        return context.usageError(QStringLiteral("--years goes with --year, not --month"));

    int year = QDate::currentDate().year() + 1;
    QDate firstMonth;
    int months = 0;
    int years = 1;
    if (context.isSet(QStringLiteral("month"))) {
        if (!parseMonth(context.value(QStringLiteral("month")), firstMonth, context))
            return ExitUsage;
        bool ok = false;
        months = context.value(QStringLiteral("months"), QStringLiteral("1")).toInt(&ok);
        if (!ok || months < 1 || months > 120)
            return context.usageError(QStringLiteral("--months must be a number from 1 to 120"));
        year = firstMonth.year();
    } else {
        if (context.isSet(QStringLiteral("year")) && !parseYear(QStringLiteral("--year"), context.value(QStringLiteral("year")), year, context))
            return ExitUsage;
        bool ok = false;
        years = context.value(QStringLiteral("years"), QStringLiteral("1")).toInt(&ok);
        if (!ok || years < 1 || years > 100 || year + years - 1 > 9999)
            return context.usageError(QStringLiteral("--years must be a number from 1 to 100 ending by 9999"));
    }
    const QDate lastDay = months > 0 ? firstMonth.addMonths(months).addDays(-1) : QDate(year + years - 1, 12, 31);
    if (lastDay.year() > 9999)
        return context.usageError(QStringLiteral("the pages must end by 9999-12"));

    // Holidays.
    RKLocale locale;
    const QString province = context.value(QStringLiteral("province"));
    const QString features = context.value(QStringLiteral("features"), QLatin1String(ALL_FEATURES));
    if (!parseCalendarLocale(context.value(QStringLiteral("locale"), QStringLiteral("de_DE")), locale, context)
        || !checkProvince(locale, province, context) || !checkFeatures(features, context))
        return ExitUsage;
    const RKCalendariumHolidayConfig config = makeConfig(locale, province, features);

    // Colours.
    RKColorReplacementInstructions colours;
    if (!parseColours(context.values(QStringLiteral("color")), colours, context))
        return ExitUsage;

    // Output.
    const QString output = context.value(QStringLiteral("output"));
    OutputFormat format = OutputFormat::Pdf;
    if (context.isSet(QStringLiteral("format"))) {
        const OutputFormat* named = findFormat(context.value(QStringLiteral("format")));
        if (!named)
            return context.usageError(QStringLiteral("unknown format \"%1\" (valid: pdf, png, svg)").arg(context.value(QStringLiteral("format"))));
        format = *named;
    } else if (const OutputFormat* bySuffix = findFormat(QFileInfo(output).suffix())) {
        format = *bySuffix;
    }
    bool ok = true;
    const int dpi = context.value(QStringLiteral("dpi"), QString::number(DEFAULT_DPI)).toInt(&ok);
    if (!ok || dpi < 10 || dpi > MAX_DPI)
        return context.usageError(QStringLiteral("--dpi must be a number from 10 to %1").arg(MAX_DPI));
    const double bleedMm = context.value(QStringLiteral("bleed"), QStringLiteral("0")).toDouble(&ok);
    if (!ok || bleedMm < 0 || bleedMm > MAX_BLEED_MM)
        return context.usageError(QStringLiteral("--bleed must be a length in millimetres from 0 to %1").arg(MAX_BLEED_MM));
    const PaperFormat* paper = nullptr;
    if (context.isSet(QStringLiteral("paper"))) {
        paper = findPaperFormat(context.value(QStringLiteral("paper")));
        if (!paper) {
            QStringList names;
            for (const PaperFormat& each : paperFormats())
                names << QLatin1String(each.name);
            return context.usageError(QStringLiteral("unknown paper \"%1\" (valid: %2)")
                                          .arg(context.value(QStringLiteral("paper")), names.join(QStringLiteral(", "))));
        }
    } else {
        for (const char* each : LETTER_LOCALES) {
            if (locale.name() == QLatin1String(each))
                paper = findPaperFormat(QStringLiteral("Letter"));
        }
    }

    // Templates, recoloured when asked.
    QTemporaryDir cssDirectory;
    if (colours.containsReplacements() && !cssDirectory.isValid())
        return context.fail(ExitFailure, QStringLiteral("cannot make a temporary directory: %1").arg(cssDirectory.errorString()));
    QString error;
    LoadedTemplate main;
    if (!loadCalendarTemplate(templateFile, main, colours, cssDirectory.path(), error))
        return context.fail(ExitFailure, QStringLiteral("cannot read template %1: %2").arg(templateFile.filePath(), error));
    const QString style = findStyleTitle(main.sheets, context.value(QStringLiteral("style")));
    if (style.isEmpty()) {
        return context.usageError(QStringLiteral("unknown style \"%1\" for template %2 (valid: %3)")
                                      .arg(context.value(QStringLiteral("style")), main.name, styleTitles(main.sheets)));
    }
    if (!main.size.isValid() || main.size.isEmpty())
        return context.usageError(QStringLiteral("template %1 has no size (width and height)").arg(templateFile.filePath()));
    LoadedTemplate cover;
    const QFileInfo coverFile = months == 0 ? coverOf(templateFile) : QFileInfo();
    if (coverFile.exists() && !loadCalendarTemplate(coverFile, cover, colours, cssDirectory.path(), error))
        return context.fail(ExitFailure, QStringLiteral("cannot read template %1: %2").arg(coverFile.filePath(), error));

    // Pages, grouped by year: a year calendar is the cover and twelve months for a month
    // template, one page for any other.
    QList<QList<PageSpec>> batches;
    if (months > 0) {
        for (int i = 0; i < months; ++i) {
            const QDate first = firstMonth.addMonths(i);
            if (batches.isEmpty() || batches.last().last().first.year() != first.year())
                batches.append(QList<PageSpec>());
            batches.last().append(PageSpec{&main, first});
        }
    } else {
        const bool monthly = main.name.endsWith(QStringLiteral("-month"));
        for (int y = year; y < year + years; ++y) {
            QList<PageSpec> pages;
            if (cover.image)
                pages.append(PageSpec{&cover, QDate(y, 1, 1)});
            for (int m = 1; m <= (monthly ? 12 : 1); ++m)
                pages.append(PageSpec{&main, QDate(y, m, 1)});
            batches.append(pages);
        }
    }
    int total = 0;
    for (const QList<PageSpec>& batch : qAsConst(batches))
        total += batch.size();

    for (const QString& warning : coverageWarnings(locale, config, year, lastDay.year()))
        context.warn(QStringLiteral("warning: %1").arg(warning));

    const QString target = output.isEmpty()
        ? QStringLiteral("%1-%2.%3").arg(main.name).arg(year).arg(formatSuffix(format))
        : output;
    const PrintLayout layout(main.size, paper, bleedMm * POINTS_PER_MM, context.isSet(QStringLiteral("crop-marks")));
    PageWriter writer(format, target, layout, dpi, QStringLiteral("%1 %2").arg(main.name).arg(year));

    const HolidayCacheRegistration holidays;
    RKSVGImageRendererCache& renderers = RKSVGImageRendererCache::instance();
    RKBackgroundJobManager& jobs = RKBackgroundJobManager::instance();
    Progress progress(2 * total, isatty(STDERR_FILENO) && !context.isSet(QStringLiteral("quiet")));
    int done = 0;
    progress.show(done);
    for (const QList<PageSpec>& batch : qAsConst(batches)) {
        QList<RKSVGComposition> pages;
        for (const PageSpec& pageSpec : batch) {
            RKSVGComposition page(pageSpec.source->image.get(), pageSpec.source->sheets.value(style));
            page.setContent(RKCalendariumContentKey(RKCalendariumContentConfig(pageSpec.first, config), RKProjectIdentifier()));
            page.setColorReplacements(colours);
            pages.append(page);
        }
        if (format != OutputFormat::Svg) {
            // Every page of the year compiled and loaded on the worker threads at once.
            for (const RKSVGComposition& page : qAsConst(pages))
                renderers.retrieveRenderer(page, RKCachingOption(RKCachingOption::UseCache), RKBackgroundJobPriority());
            while (!jobs.waitForIdle(100))
                progress.show(done + pages.size() - jobs.pendingJobCount());
        }
        done += pages.size();
        progress.show(done);
        for (const RKSVGComposition& page : qAsConst(pages)) {
            bool added = false;
            if (format == OutputFormat::Svg) {
                added = writer.addPage(PageWriter::DrawPage(), page.compileAsByteArray());
            } else {
                std::unique_ptr<QSvgRenderer> renderer(renderers.findRenderer(page));
                renderers.invalidate(page); // the renderer is ours now
                if (!renderer || !renderer->isValid()) {
                    return context.fail(ExitFailure,
                        QStringLiteral("the page of %1 from template %2 does not compile to a valid SVG")
                            .arg(page.calendariumContent().config().date().toString(QStringLiteral("yyyy-MM")), page.debugName()));
                }
                added = writer.addPage(
                    [&](QPainter& painter) {
                        drawBleed(renderer.get(), painter, layout);
                        renderers.doRendering(renderer.get(), &painter, layout.artRect(), RKSVGCompositionOptions());
                        if (layout.hasCropMarks())
                            layout.drawCropMarks(painter);
                    },
                    QByteArray());
            }
            if (!added)
                return context.fail(ExitFailure, writer.errorString());
            progress.show(++done);
        }
        RKSVGCompilerInstructionsCache::instance().clear();
    }
    if (!writer.commit())
        return context.fail(ExitFailure, writer.errorString());
    for (const QString& path : writer.written())
        context.out() << QFileInfo(path).absoluteFilePath() << '\n';
    return ExitOk;
}

Command renderCommand()
{
    Command command;
    command.name = QStringLiteral("render");
    command.description = QStringLiteral("print-ready calendar pages as PDF, PNG or SVG");
    command.options = QList<QCommandLineOption>{
        valueOption(QStringLiteral("template"),
            QStringLiteral("template name (see 'rkcalendar templates') or SVG file (default: wall-month)"),
            QStringLiteral("name")),
        valueOption(QStringLiteral("year"),
            QStringLiteral("a year calendar: cover and twelve months, or one page (default: the coming year)"),
            QStringLiteral("year")),
        valueOption(QStringLiteral("years"), QStringLiteral("that many year calendars from --year (default: 1)"),
            QStringLiteral("n")),
        valueOption(QStringLiteral("month"), QStringLiteral("the first month, YYYY-MM"), QStringLiteral("month")),
        valueOption(QStringLiteral("months"), QStringLiteral("pages from --month on (default: 1)"), QStringLiteral("n")),
        valueOption(QStringLiteral("locale"), QStringLiteral("calendar language, e.g. de_DE (default: de_DE)"),
            QStringLiteral("locale")),
        valueOption(QStringLiteral("style"), QStringLiteral("colour scheme: Standard, Blue, Green (default: the template's)"),
            QStringLiteral("title")),
        valueOption(QStringLiteral("color"), QStringLiteral("replace a colour, e.g. '#c0392b=#1a5fb4' (repeatable)"),
            QStringLiteral("source=target")),
        valueOption(QStringLiteral("format"), QStringLiteral("pdf, png or svg (default: from the output's suffix, else pdf)"),
            QStringLiteral("format")),
        valueOption(QStringLiteral("dpi"), QStringLiteral("resolution of PNG pages (default: 150)"), QStringLiteral("n")),
        valueOption(QStringLiteral("paper"),
            QStringLiteral("A4, A3, Letter or Tabloid; the template fitted and centred (default: the template's size, "
                           "Letter for en_US and en_CA)"),
            QStringLiteral("paper")),
        valueOption(QStringLiteral("bleed"), QStringLiteral("bleed on every side in millimetres (default: 0)"),
            QStringLiteral("mm")),
        flagOption(QStringLiteral("crop-marks"), QStringLiteral("trim marks outside the trimmed page")),
        flagOption(QStringLiteral("quiet"), QStringLiteral("no progress bar")),
        QCommandLineOption({QStringLiteral("o"), QStringLiteral("output")},
            QStringLiteral("file to write; PNG and SVG pages become NAME-01.png, ... (default: <template>-<year>.pdf)"),
            QStringLiteral("file"))}
        + regionOptions(QLatin1String(ALL_FEATURES));
    command.repeatable = QStringList{QStringLiteral("color")};
    command.needsGui = true;
    command.run = runRender;
    return command;
}

const CommandRegistration registration(renderCommand());

} // namespace
