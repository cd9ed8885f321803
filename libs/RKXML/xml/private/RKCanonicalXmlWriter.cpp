#include "RKCanonicalXmlWriter.h"

#include "RKXmlCharacterFilter.h"

#include <QDebug>
#include <QIODevice>
#include <QVector>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

using Attribute = QPair<QString, QString>;

class Writer
{
public:
    Writer(QIODevice* device, int indent)
        : myWriter(device)
    {
        myWriter.setAutoFormatting(true);
        myWriter.setAutoFormattingIndent(indent);
    }

    bool write(const QDomDocument& document)
    {
        myWriter.writeStartDocument();
        // Whatever precedes the document element (declaration, instructions, comments,
        // doctype) is replaced by the declaration just written.
        for (QDomNode node = document.documentElement(); !node.isNull() && !myWriter.hasError(); node = node.nextSibling())
            writeNode(node);
        myWriter.writeEndDocument();
        return !myWriter.hasError();
    }

private:
    // Depth first without recursion: a deeply nested document must not exhaust the stack.
    void writeNode(const QDomNode& root)
    {
        QDomNode node = root;
        while (!myWriter.hasError()) {
            if (writeOpening(node)) {
                const QDomNode child = node.firstChild();
                if (!child.isNull()) {
                    node = child;
                    continue;
                }
                myWriter.writeEndElement();
            }
            while (node != root && node.nextSibling().isNull()) {
                node = node.parentNode();
                myWriter.writeEndElement();
            }
            if (node == root)
                return;
            node = node.nextSibling();
        }
    }

    // Writes a leaf node whole, or an element's start tag; true for an element.
    bool writeOpening(const QDomNode& node)
    {
        switch (node.nodeType()) {
        case QDomNode::ElementNode:
            writeStartElement(node.toElement());
            return true;
        case QDomNode::CommentNode:
            myWriter.writeComment(myFilter(node.toComment().data()));
            break;
        case QDomNode::CDATASectionNode:
            myWriter.writeCDATA(myFilter(node.toCDATASection().data()));
            break;
        case QDomNode::TextNode:
            myWriter.writeCharacters(myFilter(node.toText().data()));
            break;
        default:
            // Processing instructions inside the tree and entity references are not kept.
            break;
        }
        return false;
    }

    void writeStartElement(const QDomElement& element)
    {
        myWriter.writeStartElement(myFilter(element.tagName()));
        // Namespace declarations are plain attributes here (the DOM is built without namespace
        // processing), so "xmlns:vako" sorts and is written like any other attribute.
        const QDomNamedNodeMap attributes = element.attributes();
        const int count = attributes.count();
        if (count == 0)
            return;
        myScratch.clear();
        myScratch.reserve(count);
        for (int i = 0; i < count; ++i) {
            const QDomAttr attr = attributes.item(i).toAttr();
            myScratch.append(Attribute(attr.name(), attr.value()));
        }
        // Plain UTF-16 code unit order: upper case before lower case.
        std::sort(myScratch.begin(), myScratch.end(),
            [](const Attribute& a, const Attribute& b) { return a.first < b.first; });
        for (const Attribute& a : qAsConst(myScratch))
            myWriter.writeAttribute(myFilter(a.first), myFilter(a.second));
    }

    QXmlStreamWriter myWriter;
    RKXmlCharacterFilter myFilter;
    QVector<Attribute> myScratch;
};

}

bool RKCanonicalXmlWriter::write(const QDomDocument& document, QIODevice* device, int indent)
{
    if (!device)
        return false;
    Writer writer(device, indent);
    if (writer.write(document))
        return true;
    qDebug() << "Fail to write Canonical XML.";
    return false;
}
