// Image files read the way the library reads them. The first input byte chooses the file's
// form (plain SVG, the encoded form of the rest, or the encoding header before the raw rest),
// whether closed shapes get the default fill, and how the drawing is fitted and mirrored. The
// decoder gives back exactly what was encoded; an image's document is the parse of the decoded
// bytes; the document cache hands out equal, private copies; the file's renderer and the
// composition's renderer draw into a small picture.
#include "FuzzSupport.h"

#include <RKDocumentCache.h>
#include <RKFileEncoder.h>
#include <RKSVGComposition.h>
#include <RKSVGImage.h>
#include <RKSVGImageRendererCache.h>
#include <RKSVGNormalizer.h>
#include <RKSVGRendererFactory.h>
#include <RKXMLLoader.h>

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <memory>

namespace {

enum Form { Plain, Encoded, RawAfterHeader };

QDomDocument expectedDocument(const QByteArray& svg, bool fill)
{
    if (svg.isEmpty())
        return QDomDocument();
    QDomDocument document = RKXMLLoader::parse(svg, QString());
    if (fill && !document.isNull())
        RKSVGNormalizer::setDefaultFillAttribute(document);
    return document;
}

void draw(QSvgRenderer* renderer, const RKSVGCompositionOptions& options)
{
    if (!renderer || !renderer->isValid())
        return;
    QImage picture(16, 12, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    RKSVGImageRendererCache::instance().doRendering(renderer, &painter, QRectF(1.5, 0.5, 13, 11), options);
}

}

FUZZ_PLAIN_INITIALIZE

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const uint8_t choice = data[0];
    const QByteArray rest = fuzz::bytes(data + 1, size - 1);
    const Form form = static_cast<Form>(choice % 3);
    const bool fill = (choice & 0x04) != 0;
    const RKSVGCompositionOptions options(static_cast<Qt::AspectRatioMode>((choice >> 5) % 3), RKMirrorRule((choice >> 3) & 3));

    const QByteArray content = form == Plain ? rest
        : form == Encoded                    ? RKFileEncoder::encode(rest)
                                             : RKFileEncoder::CLP_MAGIC + rest;
    const QFileInfo file(fuzz::writeFile(QStringLiteral("images/input.svg"), content));

    const QByteArray decoded = RKFileEncoder::encodeAndCopyCLP(file);
    if (form == Encoded || !content.startsWith(RKFileEncoder::CLP_MAGIC))
        fuzz::require(decoded == rest);

    RKSVGImage encodedImage(file, RKCssSheetTitleIdMap(), QMap<QString, QString>(), true, fill);
    const QString expected = fuzz::canonical(expectedDocument(decoded, fill));
    const QDomDocument document = encodedImage.document();
    fuzz::require(fuzz::canonical(document) == expected);
    fuzz::require(encodedImage.isValid() && encodedImage.uniqueName() == file.absoluteFilePath());

    RKSVGImage plainImage(file, RKCssSheetTitleIdMap(), QMap<QString, QString>(), false, fill);
    fuzz::require(fuzz::canonical(plainImage.document()) == fuzz::canonical(expectedDocument(content, fill)));

    // The cache is keyed by address: a new image at an old one's address must not meet its entry.
    RKDocumentCache& cache = RKDocumentCache::instance();
    cache.clearCache();
    QDomDocument first = cache.document(&encodedImage);
    fuzz::require(fuzz::canonical(first) == expected && cache.currentCacheSize() == 1);
    if (!first.documentElement().isNull())
        first.documentElement().appendChild(first.createElement(QStringLiteral("changed")));
    fuzz::require(fuzz::canonical(cache.document(&encodedImage)) == expected);

    const std::unique_ptr<QSvgRenderer> fromFile(RKSVGRendererFactory::createRenderer(file));
    draw(fromFile.get(), options);

    // The composition compiles the cached document; made now and not cached, it is ours to delete.
    const RKSVGComposition composition(&encodedImage, QString());
    const std::unique_ptr<QSvgRenderer> compiled(RKSVGImageRendererCache::instance().retrieveRenderer(
        composition, RKCachingOption(RKCachingOption::NoCache), RKBackgroundJobPriority(RKBackgroundJobPriority::Immediately)));
    fuzz::require(compiled != nullptr);
    if (document.isNull())
        fuzz::require(!compiled->isValid());
    draw(compiled.get(), options);
    cache.clearCache();
    return 0;
}
