// CSS sheets read from a file made from the input (directly and through the cache), and the
// style-sheet processing instructions of a template made from the input.
#include "FuzzSupport.h"

#include <RKCssSheet.h>
#include <RKCssSheetCache.h>
#include <RKCssSheetParser.h>
#include <RKSingleton.h>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    fuzz::initialize(argc, argv);
    fuzz::writeFile(QStringLiteral("a.css"), "svg{fill:#000}");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray input = fuzz::bytes(data, size);
    const QString path = fuzz::writeFile(QStringLiteral("sheet.css"), input);
    const RKCssSheet sheet{QFileInfo(path)};
    const QString css = sheet.readCssFromFile();
    // Bad bytes cost at most themselves: never more characters lost than bytes.
    fuzz::require(css.size() >= input.count('\n') && !css.contains(QChar(0)));
    RKCssSheetCache& cache = RKSingleton<RKCssSheetCache>::instance();
    cache.clearCache();
    fuzz::require(cache.cssString(sheet) == css);

    const QString svg = fuzz::writeFile(QStringLiteral("template.svg"), input);
    QDomDocument document;
    if (fuzz::parse(input, &document)) {
        RKCssSheetParser parser;
        parser.findStyleSheets(document, QFileInfo(svg));
        cache.styleSheetsIn(QFileInfo(svg));
    }
    return 0;
}
