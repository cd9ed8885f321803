#include "RKXMLBuilder.h"

#include "private/RKCanonicalXmlWriter.h"
#include "private/RKSafeSave.h"
#include "private/RKXmlFileSniffer.h"

#include <QBuffer>

namespace {

QDomDocument ownerOf(QDomNode& parent)
{
    return parent.isDocument() ? parent.toDocument() : parent.ownerDocument();
}

QString number6(double v)
{
    return QString::number(v, 'g', 6);
}

// Lightest weight saved as "bold" = "yes": anything above QFont::Medium (57), so that
// DemiBold (63) and heavier count as bold and Normal (50) or Medium do not.
constexpr int lightestBoldWeight = 58;

}

// ---------------------------------------------------------------- builders

QDomElement RKXMLBuilder::buildRootElement(QDomDocument& document, const QString& tagName)
{
    QDomElement element = document.createElement(tagName);
    document.appendChild(element);
    return element;
}

QDomElement RKXMLBuilder::buildDomElement(QDomNode& parent, const QString& tagName)
{
    QDomElement element = ownerOf(parent).createElement(tagName);
    parent.appendChild(element);
    return element;
}

QDomElement RKXMLBuilder::buildDomElement(QDomNode& parent, const QString& tagName, const QString& text)
{
    QDomElement element = buildDomElement(parent, tagName);
    element.appendChild(ownerOf(parent).createTextNode(text));
    return element;
}

QDomElement RKXMLBuilder::buildDomElement(QDomNode& parent, const QString& tagName, int value)
{
    return buildDomElement(parent, tagName, QString::number(value));
}

QDomElement RKXMLBuilder::buildDomElement(QDomNode& parent, const QString& tagName, const QString& attrName, const QString& attrValue)
{
    QDomElement element = buildDomElement(parent, tagName);
    element.setAttribute(attrName, attrValue);
    return element;
}

QDomElement RKXMLBuilder::buildDomElement(QDomNode& parent, const QString& tagName, const QString& attrName, bool value)
{
    QDomElement element = buildDomElement(parent, tagName);
    addAttribute(element, attrName, value);
    return element;
}

QDomElement RKXMLBuilder::buildDomElementCData(QDomNode& parent, const QString& tagName, const QString& text)
{
    QDomElement element = buildDomElement(parent, tagName);
    appendCData(element, text);
    return element;
}

void RKXMLBuilder::appendCData(QDomElement& element, const QString& text)
{
    static const QString END = QStringLiteral("]]>");
    QDomDocument owner = element.ownerDocument();
    int from = 0;
    for (int at = text.indexOf(END); at >= 0; at = text.indexOf(END, at + 1)) {
        element.appendChild(owner.createCDATASection(text.mid(from, at + 2 - from)));
        from = at + 2;
    }
    element.appendChild(owner.createCDATASection(text.mid(from)));
}

QDomElement RKXMLBuilder::buildDomElement(QDomNode& parent, const QString& tagName, const QImage& image)
{
    QDomElement element = buildDomElement(parent, tagName);
    if (image.isNull())
        return element;
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    element.appendChild(ownerOf(parent).createTextNode(QString::fromLatin1(png.toBase64())));
    element.setAttribute(QStringLiteral("format"), static_cast<int>(image.format()));
    return element;
}

void RKXMLBuilder::buildUTF8ProcessingInstructions(QDomDocument& document)
{
    document.appendChild(document.createProcessingInstruction(QStringLiteral("xml"),
        QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")));
}

// ---------------------------------------------------------------- attributes

void RKXMLBuilder::addAttribute(QDomElement& element, const QString& name, const QString& value)
{
    element.setAttribute(name, value);
}

void RKXMLBuilder::addAttribute(QDomElement& element, const QString& name, int value)
{
    element.setAttribute(name, QString::number(value));
}

void RKXMLBuilder::addAttribute(QDomElement& element, const QString& name, bool value)
{
    element.setAttribute(name, value ? QStringLiteral("yes") : QStringLiteral("no"));
}

void RKXMLBuilder::addAttribute(QDomElement& element, const QFont& font)
{
    addAttribute(element, QStringLiteral("bold"), font.weight() >= lightestBoldWeight);
    element.setAttribute(QStringLiteral("face"), font.family());
    addAttribute(element, QStringLiteral("italic"), font.style() != QFont::StyleNormal);
    addAttribute(element, QStringLiteral("size"), font.pointSize());
}

void RKXMLBuilder::addAttribute(QDomElement& element, const QString& name, const QColor& color)
{
    element.setAttribute(name, color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb));
}

void RKXMLBuilder::addColorAttributeEx(QDomElement& element, const QString& name, const QColor& color)
{
    QString text = color.name(QColor::HexRgb);
    if (color.alpha() < 255)
        text += QStringLiteral(",%1").arg(QString::number(color.alpha(), 16).toUpper());
    element.setAttribute(name, text);
}

void RKXMLBuilder::addAttribute(QDomElement& element, const QString& name, const RKDistance& distance, const RKDistanceUnit& unit)
{
    element.setAttribute(name, number6(distance.valueIn(unit)));
}

void RKXMLBuilder::addRect(QDomElement& element, const QRectF& rect)
{
    const QRectF r = rect.normalized();
    element.setAttribute(QStringLiteral("left"), number6(r.left()));
    element.setAttribute(QStringLiteral("top"), number6(r.top()));
    element.setAttribute(QStringLiteral("height"), number6(r.height()));
    element.setAttribute(QStringLiteral("width"), number6(r.width()));
}

void RKXMLBuilder::addRotation(QDomElement& element, const RKAngle& angle, const QString& name)
{
    addAttribute(element, name, angle.wholeDegrees());
}

// ---------------------------------------------------------------- text functions

QString RKXMLBuilder::escape(const QString& text)
{
    QString result = text;
    result.replace(QLatin1Char('&'), QLatin1String("&amp;"));
    result.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    result.replace(QLatin1Char('>'), QLatin1String("&gt;"));
    result.replace(QLatin1Char('\''), QLatin1String("&apos;"));
    result.replace(QLatin1Char('"'), QLatin1String("&quot;"));
    return result;
}

QString RKXMLBuilder::saveLeft(const QString& text, int maxLength)
{
    if (maxLength < 0 || text.isEmpty())
        return QString();
    // The weights over-estimate the quote by one on purpose: callers size their fields by it.
    qint64 total = 0;
    int i = 0;
    for (; i < text.size(); ++i) {
        int weight = 1;
        switch (text.at(i).unicode()) {
        case '"': weight = 7; break;
        case '&': weight = 5; break;
        case '<': weight = 4; break;
        case '>':
            if (i >= 2 && text.at(i - 1) == QLatin1Char(']') && text.at(i - 2) == QLatin1Char(']'))
                weight = 4;
            break;
        default: break;
        }
        if (total + weight > maxLength)
            break;
        total += weight;
    }
    return text.left(i);
}

// ---------------------------------------------------------------- serialisation and saving

bool RKXMLBuilder::saveCanonicalXML(const QDomDocument& document, QIODevice* device, int indent)
{
    return RKCanonicalXmlWriter::write(document, device, indent);
}

QString RKXMLBuilder::toString(const QDomDocument& document, int indent)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    saveCanonicalXML(document, &buffer, indent);
    buffer.close();
    return QString::fromUtf8(bytes.constData(), static_cast<int>(qstrnlen(bytes.constData(), static_cast<uint>(bytes.size()))));
}

bool RKXMLBuilder::saveUTF8(const QDomDocument& document, const QFileInfo& target, RKErrorHistory* history)
{
    return RKSafeSave::save(document, target, history);
}

bool RKXMLBuilder::tryToSaveToTempFile(const QDomDocument& document, QFile* file, RKErrorHistory* history)
{
    return RKSafeSave::writeFile(document, file, history);
}

bool RKXMLBuilder::tryToCreateBackupFile(const QFileInfo& target, RKErrorHistory* history)
{
    return RKSafeSave::createBackup(target, history);
}

bool RKXMLBuilder::tryToCopyTempFileToRealFile(const QFileInfo& target, QFile* temporary, RKErrorHistory* history)
{
    return RKSafeSave::moveIntoPlace(target, temporary, history);
}

bool RKXMLBuilder::isProbablyXML(QFile* file)
{
    return RKXmlFileSniffer::isProbablyXML(file);
}
