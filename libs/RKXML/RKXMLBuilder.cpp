#include "RKXMLBuilder.h"

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
    element.appendChild(ownerOf(parent).createCDATASection(text));
    return element;
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
    addAttribute(element, QStringLiteral("bold"), font.weight() >= 58);
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
