#include "RKXMLBuilder.h"

#include <RKErrorHistory.h>
#include <RKMonolithFile.h>
#include <RKPlatformIndependent.h>

#include <QBuffer>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QUuid>
#include <QVector>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

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

// ---------------------------------------------------------------- canonical serialisation

namespace {

using Attribute = QPair<QString, QString>;

bool byName(const Attribute& a, const Attribute& b)
{
    return a.first < b.first;
}

void writeCanonically(QXmlStreamWriter& writer, const QDomNode& node, QVector<Attribute>& scratch);

void writeElement(QXmlStreamWriter& writer, const QDomElement& element, QVector<Attribute>& scratch)
{
    writer.writeStartElement(element.tagName());
    // Namespace declarations are plain attributes here (the DOM is built without namespace
    // processing), so "xmlns:vako" sorts and is written like any other attribute.
    const QDomNamedNodeMap attributes = element.attributes();
    const int count = attributes.count();
    if (count > 0) {
        scratch.clear();
        scratch.reserve(count);
        for (int i = 0; i < count; ++i) {
            const QDomAttr attr = attributes.item(i).toAttr();
            scratch.append(Attribute(attr.name(), attr.value()));
        }
        // Plain UTF-16 code unit order: upper case before lower case.
        std::sort(scratch.begin(), scratch.end(), byName);
        for (const Attribute& a : qAsConst(scratch))
            writer.writeAttribute(a.first, a.second);
    }
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (writer.hasError())
            return;
        writeCanonically(writer, child, scratch);
    }
    writer.writeEndElement();
}

void writeCanonically(QXmlStreamWriter& writer, const QDomNode& node, QVector<Attribute>& scratch)
{
    if (writer.hasError())
        return;
    switch (node.nodeType()) {
    case QDomNode::ElementNode:
        writeElement(writer, node.toElement(), scratch);
        break;
    case QDomNode::CommentNode:
        writer.writeComment(node.toComment().data());
        break;
    case QDomNode::CDATASectionNode:
        writer.writeCDATA(node.toCDATASection().data());
        break;
    case QDomNode::TextNode:
        writer.writeCharacters(node.toText().data());
        break;
    default:
        // Processing instructions inside the tree and entity references are not kept.
        break;
    }
}

}

bool RKXMLBuilder::saveCanonicalXML(const QDomDocument& document, QIODevice* device, int indent)
{
    if (!device)
        return false;
    QXmlStreamWriter writer(device);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(indent);
    writer.writeStartDocument();
    QVector<Attribute> scratch;
    // Whatever precedes the document element (declaration, instructions, comments, doctype)
    // is replaced by the declaration just written.
    for (QDomNode node = document.documentElement(); !node.isNull() && !writer.hasError(); node = node.nextSibling())
        writeCanonically(writer, node, scratch);
    writer.writeEndDocument();
    if (writer.hasError()) {
        qDebug() << "Fail to write Canonical XML.";
        return false;
    }
    return true;
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

// ---------------------------------------------------------------- safe saving

namespace {

// Pushes the file's data from the kernel to the device, so that the rename that follows
// never publishes a file whose blocks are not yet written. Devices that cannot be
// synchronised (pipes, character devices) report EINVAL: there is nothing to wait for.
bool syncToDisk(QFile* file)
{
    if (!file->flush())
        return false;
    const int handle = file->handle();
    if (handle < 0)
        return false;
    if (::fdatasync(handle) == 0)
        return true;
    return errno == EINVAL || errno == EROFS;
}

void removeIfPresent(const QString& path)
{
    if (QFileInfo::exists(path) || QFileInfo(path).isSymLink())
        QFile::remove(path);
}

}

bool RKXMLBuilder::saveUTF8(const QDomDocument& document, const QFileInfo& target, RKErrorHistory* history)
{
    const QString targetPath = target.absoluteFilePath();
    // A directory is never replaced by a file: renaming it away as the "backup" would succeed
    // and hide the user's directory behind a file of the same name.
    if (target.isDir()) {
        if (history)
            history->appendCouldNotOpenFileForReadWriteAccess(target);
        return false;
    }
    if (RKMonolithFile::isMonolithPath(targetPath)) {
        QFile direct(targetPath);
        return tryToSaveToTempFile(document, &direct, history);
    }

    QFile temporary(target.absolutePath() + QStringLiteral("/.") + QUuid::createUuid().toString());
    const QString temporaryPath = temporary.fileName();
    bool saved = tryToSaveToTempFile(document, &temporary, history);
    if (saved)
        saved = tryToCreateBackupFile(target, history);
    if (saved)
        saved = tryToCopyTempFileToRealFile(target, &temporary, history);
    if (saved) {
        RKPlatformIndependent::instance().notifyFileWritten(targetPath);
        return true;
    }
    removeIfPresent(temporaryPath);

    if (RKPlatformIndependent::instance().allowsInPlaceWriteFallback()) {
        QFile direct(targetPath);
        return tryToSaveToTempFile(document, &direct, history);
    }
    return false;
}

bool RKXMLBuilder::tryToSaveToTempFile(const QDomDocument& document, QFile* file, RKErrorHistory* history)
{
    if (!file->open(QIODevice::ReadWrite | QIODevice::Truncate | QIODevice::Text)) {
        if (history)
            history->appendCouldNotOpenFileForReadWriteAccess(QFileInfo(*file));
        return false;
    }
    bool written = saveCanonicalXML(document, file, 4);
    // A full device usually shows only here: the writer's bytes were still in QFile's buffer.
    if (written)
        written = syncToDisk(file);
    if (!written && history)
        history->append(RKErrorEvent(RKErrorEvent::SavingFailed, QStringLiteral("saving failed"), -1));
    file->close();
    return isProbablyXML(file);
}

bool RKXMLBuilder::tryToCreateBackupFile(const QFileInfo& target, RKErrorHistory* history)
{
    const QFileInfo current(target.absoluteFilePath());
    if (!current.exists())
        return true;
    // An empty file gets ".bak", any other "~": established names that users look for.
    const QString backupPath = current.absoluteFilePath() + (current.size() == 0 ? QStringLiteral(".bak") : QStringLiteral("~"));
    const QFileInfo backup(backupPath);
    if (backup.exists() || backup.isSymLink()) {
        if (!QFile::remove(backupPath)) {
            if (history)
                history->appendCouldNotDeleteFile(backup);
            return false;
        }
    }
    if (!QFile::rename(current.absoluteFilePath(), backupPath)) {
        if (history)
            history->appendCouldNotRenameFile(current, backup);
        return false;
    }
    return true;
}

bool RKXMLBuilder::tryToCopyTempFileToRealFile(const QFileInfo& target, QFile* temporary, RKErrorHistory* history)
{
    const bool renamed = temporary->rename(target.absoluteFilePath());
    if (!renamed && history)
        history->appendCouldNotOpenFileForReadWriteAccess(target);
    return renamed;
}

namespace {

const int headLength = 100;
const int tailLength = 50;
// A sequential device (pipe, character device) is read at most this far looking for its end.
const qint64 sequentialLimit = qint64(64) * 1024 * 1024;

// The name of the first tag that is not a declaration or instruction; false when the head has none.
bool firstTagName(const QByteArray& head, QByteArray* name)
{
    for (int lt = head.indexOf('<'); lt >= 0; lt = head.indexOf('<', lt + 1)) {
        if (lt + 1 >= head.size())
            return false;
        const char next = head.at(lt + 1);
        if (next == '!' || next == '?')
            continue;
        for (int i = lt + 1; i < head.size(); ++i) {
            const char c = head.at(i);
            if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '>') {
                *name = head.mid(lt + 1, i - lt - 1);
                return true;
            }
        }
        return false;
    }
    return false;
}

}

bool RKXMLBuilder::isProbablyXML(QFile* file)
{
    if (!file->open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    const QByteArray head = file->read(headLength);
    QByteArray name;
    if (!firstTagName(head, &name)) {
        file->close();
        return false;
    }
    // Only the last bytes matter: seek to them instead of reading a large file whole.
    QByteArray tail;
    if (!file->isSequential()) {
        const qint64 size = file->size();
        if (size > head.size())
            file->seek(std::max<qint64>(head.size(), size - tailLength));
        tail = head + file->read(tailLength);
    } else {
        tail = head;
        qint64 total = head.size();
        while (!file->atEnd() && total < sequentialLimit) {
            const QByteArray chunk = file->read(64 * 1024);
            if (chunk.isEmpty())
                break;
            total += chunk.size();
            tail = tail.right(tailLength) + chunk;
        }
    }
    file->close();
    tail = tail.right(tailLength).trimmed();
    return tail.contains('/' + name) || tail.contains("/>");
}
