#include "RKSVGImage.h"

#include "RKSVGNormalizer.h"
#include "RKXMLParser.h"

#include <RKDirectoryConfig.h>
#include <RKFileEncoder.h>
#include <RKFileHandler.h>
#include <RKXMLLoader.h>

namespace {
const QString STR_FILE_NAME = QStringLiteral("fileName");
const QString STR_GLINTORA_SEGMENT = QStringLiteral("/glintora/");

// A relative path is one that buildXML() shortened: it is found again in the resource
// directories. One that is not found there is kept as written.
QFileInfo uncachedFile(const QString& path)
{
    QFileInfo file(path);
    if (file.isRelative() && !path.isEmpty()) {
        const QFileInfo found = RKDirectoryConfig::instance().findInGlintoraDirs(path);
        if (!found.filePath().isEmpty())
            file = found;
    }
    file.setCaching(false);
    return file;
}
}

RKSVGImage::RKSVGImage(const QDomElement& element, bool encodedFile, bool normalizeFill)
    : RKSVGImageAbstract(element)
    , myFile(uncachedFile(element.attribute(STR_FILE_NAME)))
    , myEncodedFile(encodedFile)
    , myNormalizeFill(normalizeFill)
{
}

RKSVGImage::RKSVGImage(const QFileInfo& file, const RKCssSheetTitleIdMap& sheets,
    const QMap<QString, QString>& inheritedAttributes, bool encodedFile, bool normalizeFill)
    : RKSVGImageAbstract(sheets, inheritedAttributes)
    , myFile(file)
    , myEncodedFile(encodedFile)
    , myNormalizeFill(normalizeFill)
{
    myFile.setCaching(false);
}

QString RKSVGImage::fileName() const
{
    return myFile.fileName();
}

QString RKSVGImage::absoluteFilePath() const
{
    return myFile.filePath().isEmpty() ? QString() : myFile.absoluteFilePath();
}

QString RKSVGImage::id() const
{
    return absoluteFilePath().split(STR_GLINTORA_SEGMENT).last();
}

QDomDocument RKSVGImage::document() const
{
    const QByteArray bytes = myEncodedFile ? RKFileEncoder::encodeAndCopyCLP(myFile) : RKFileHandler::readBinaryFile(myFile);
    // An empty result of a non-empty or missing file has been explained by the reader; an
    // empty file goes on to the parser, which names it.
    if (bytes.isEmpty() && !(myFile.isFile() && myFile.size() == 0))
        return QDomDocument();
    QDomDocument document = RKXMLLoader::parse(bytes, absoluteFilePath());
    if (myNormalizeFill && !document.isNull())
        RKSVGNormalizer::setDefaultFillAttribute(document);
    return document;
}

QString RKSVGImage::uniqueName() const
{
    return absoluteFilePath();
}

uint RKSVGImage::calcHashValue() const
{
    const uint hash = qHash(absoluteFilePath(), 0);
    return hash == 0 ? 1 : hash;
}

RKSVGImageType RKSVGImage::type() const
{
    return RKSVGImageType(RKSVGImageTypeSVGImage);
}

bool RKSVGImage::isValid() const
{
    return myFile.exists();
}

uint RKSVGImage::hashValue() const
{
    return calcHashValue();
}

QDomElement RKSVGImage::buildXML(QDomElement& parent) const
{
    QDomElement image = RKSVGImageAbstract::buildXML(parent);
    image.setAttribute(STR_FILE_NAME, RKFileHandler::makeSVGPathMinimal(absoluteFilePath()));
    return image;
}
