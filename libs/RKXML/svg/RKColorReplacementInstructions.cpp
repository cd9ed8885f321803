#include "RKColorReplacementInstructions.h"

#include "RKXMLBuilder.h"
#include "RKXMLParser.h"

#include <QDebug>
#include <QStringList>
#include <QVarLengthArray>
#include <QVector>

#include <algorithm>

// The colours found; the scan below is hand-written but finds exactly these matches.
const QRegularExpression RKColorReplacementInstructions::myColorCatcherRegExp(QStringLiteral("(#[0-9a-fA-F]{6})"));
const QString RKColorReplacementInstructions::GROUP_NODE_NAME = QStringLiteral("colors");
const QString RKColorReplacementInstructions::ITEM_NODE_NAME = QStringLiteral("color");
const QString RKColorReplacementInstructions::SOURCE_ATTRIBUTE_NAME = QStringLiteral("source");
const QString RKColorReplacementInstructions::TARGET_ATTRIBUTE_NAME = QStringLiteral("target");

namespace {
const QString str_FILL = QStringLiteral("fill");
const QString str_STROKE = QStringLiteral("stroke");
const QString str_COLOR = QStringLiteral("color");
const QString str_STYLE = QStringLiteral("style");
const QString str_COLOR_SUFFIX = QStringLiteral("-color");
const QString str_OPACITY_SUFFIX = QStringLiteral("-opacity");

// ---- the one style parser: "property:value;..." into trimmed views of the style text.
// A declaration without ":" is skipped.
struct Declaration
{
    QStringRef property;
    QStringRef value;
};
using DeclarationList = QVarLengthArray<Declaration, 16>;

DeclarationList parseStyle(const QString& style)
{
    DeclarationList declarations;
    for (int start = 0; start < style.size();) {
        int end = style.indexOf(QLatin1Char(';'), start);
        if (end < 0)
            end = style.size();
        const QStringRef declaration = style.midRef(start, end - start);
        start = end + 1;
        const int colon = declaration.indexOf(QLatin1Char(':'));
        if (colon >= 0)
            declarations.append({ declaration.left(colon).trimmed(), declaration.mid(colon + 1).trimmed() });
    }
    return declarations;
}

// The style properties whose colours are found and replaced ("color" is what currentColor uses).
bool isColorProperty(const QStringRef& property)
{
    return property.compare(str_FILL, Qt::CaseInsensitive) == 0 || property.compare(str_STROKE, Qt::CaseInsensitive) == 0
        || property.compare(str_COLOR, Qt::CaseInsensitive) == 0 || property.endsWith(str_COLOR_SUFFIX, Qt::CaseInsensitive);
}

QString opacityProperty(const QStringRef& property)
{
    if (property.endsWith(str_COLOR_SUFFIX, Qt::CaseInsensitive))
        return property.left(property.size() - str_COLOR_SUFFIX.size()).toString() + str_OPACITY_SUFFIX;
    return property.toString() + str_OPACITY_SUFFIX;
}

// ---- the one colour scan: exactly the matches of myColorCatcherRegExp, without its cost.
int hexDigit(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    const ushort lower = u | 0x20;
    if (lower >= 'a' && lower <= 'f')
        return lower - 'a' + 10;
    return -1;
}

// Calls visit(position, rgb) for every "#" followed by six hexadecimal digits in `value`.
// Like the regular expression's global match, a found colour is skipped over whole.
template <class Visit>
void forEachHexColor(const QStringRef& value, Visit visit)
{
    const QChar* data = value.constData();
    const int size = value.size();
    for (int at = 0; at + 6 < size; ++at) {
        if (data[at].unicode() != '#')
            continue;
        quint32 rgb = 0;
        int k = 1;
        for (; k <= 6; ++k) {
            const int digit = hexDigit(data[at + k]);
            if (digit < 0)
                break;
            rgb = (rgb << 4) | quint32(digit);
        }
        if (k > 6) {
            visit(at, rgb);
            at += 6;
        }
    }
}

// Visits `root` and its descendant elements in document order, without recursion
// (deeply nested documents must not exhaust the stack).
template <class Element, class Visit>
void walkElements(Element root, Visit visit)
{
    Element current = root;
    while (!current.isNull()) {
        visit(current);
        Element next = current.firstChildElement();
        while (next.isNull() && current != root) {
            next = current.nextSiblingElement();
            if (next.isNull())
                current = current.parentNode().toElement();
        }
        current = next;
    }
}
}

// The table prepared for applying, built once per apply(): for each entry in key order the
// target's text and, for a translucent target, its opacity.
struct RKColorReplacementInstructions::RuleSet
{
    struct Rule
    {
        QString target;
        QString opacity; // empty when the target is opaque
        quint32 sourceRgb;
    };
    QVector<Rule> rules;
    QVector<quint32> ruleRgb; // sourceRgb of each rule, searched linearly: tables are small

    // Applies the first rule (in key order) whose source occurs in `value`: every occurrence
    // of it, in any case, becomes the target; both are seven characters, so this is done in
    // place. Returns that rule or null; `*changed` tells whether a character differs.
    const Rule* replaceFirstMatch(QString* value, bool* changed) const
    {
        QVarLengthArray<QPair<int, quint32>, 8> found;
        int best = -1;
        forEachHexColor(QStringRef(value), [this, &best, &found](int at, quint32 rgb) {
            const int index = ruleRgb.indexOf(rgb);
            if (index >= 0 && (best < 0 || index < best))
                best = index;
            found.append(qMakePair(at, rgb));
        });
        if (best < 0)
            return nullptr;
        const Rule& rule = rules.at(best);
        for (const auto& color : found) {
            if (color.second != rule.sourceRgb)
                continue;
            for (int k = 0; k < rule.target.size(); ++k) {
                if (value->at(color.first + k) != rule.target.at(k)) {
                    (*value)[color.first + k] = rule.target.at(k);
                    *changed = true;
                }
            }
        }
        return &rule;
    }
};

RKColorReplacementInstructions::RuleSet RKColorReplacementInstructions::rules() const
{
    RuleSet prepared;
    prepared.rules.reserve(myReplacements.size());
    prepared.ruleRgb.reserve(myReplacements.size());
    for (auto it = myReplacements.cbegin(); it != myReplacements.cend(); ++it) {
        const QColor& target = it.value();
        const QString opacity = target.alpha() <= 254 ? QString::number(target.alpha() / 255.0, 'g', 6) : QString();
        const quint32 rgb = it.key() & 0xffffffu;
        prepared.ruleRgb.append(rgb);
        prepared.rules.append({ target.name(), opacity, rgb });
    }
    return prepared;
}

void RKColorReplacementInstructions::extract(const QDomDocument& document)
{
    extractRecursively(document.documentElement());
}

void RKColorReplacementInstructions::extractRecursively(const QDomElement& element)
{
    if (element.isNull())
        return;
    walkElements(element, [this](const QDomElement& current) {
        extractAttribute(current, str_FILL);
        extractAttribute(current, str_STROKE);
        extractAttribute(current, str_STYLE);
    });
}

void RKColorReplacementInstructions::extractAttribute(const QDomElement& element, const QString& name)
{
    const QString value = element.attribute(name);
    if (!value.contains(QLatin1Char('#')))
        return;
    const auto collect = [this](int, quint32 rgb) {
        const QColor color = QColor::fromRgb(QRgb(rgb));
        myReplacements.insert(color.rgba(), color);
    };
    if (name != str_STYLE) {
        forEachHexColor(QStringRef(&value), collect);
        return;
    }
    for (const Declaration& declaration : parseStyle(value)) {
        if (isColorProperty(declaration.property))
            forEachHexColor(declaration.value, collect);
    }
}

void RKColorReplacementInstructions::apply(QDomDocument& document) const
{
    if (myReplacements.isEmpty())
        return;
    QDomElement root = document.documentElement();
    replaceColors(&root, rules());
}

void RKColorReplacementInstructions::replaceColors(QDomElement* element, const RuleSet& rules)
{
    if (element->isNull())
        return;
    walkElements(*element, [&rules](QDomElement& current) {
        replaceColorsInStyleAttribute(&current, rules);
        replaceColorInAttribute(&current, str_FILL, rules);
        replaceColorInAttribute(&current, str_STROKE, rules);
    });
}

void RKColorReplacementInstructions::replaceColorInAttribute(QDomElement* element, const QString& name,
    const RuleSet& rules)
{
    // Through the attribute node: one look-up for reading and writing.
    QDomAttr attribute = element->attributeNode(name);
    if (attribute.isNull())
        return;
    QString value = attribute.value();
    if (value.isEmpty())
        return;
    bool changed = false;
    const RuleSet::Rule* applied = rules.replaceFirstMatch(&value, &changed);
    if (!applied)
        return;
    if (changed)
        attribute.setValue(value);
    if (!applied->opacity.isEmpty())
        element->setAttribute(name + str_OPACITY_SUFFIX, applied->opacity);
}

void RKColorReplacementInstructions::replaceColorsInStyleAttribute(QDomElement* element, const RuleSet& rules)
{
    const QString style = element->attribute(str_STYLE);
    if (!style.contains(QLatin1Char('#')))
        return;

    // Declarations as views into `style`; only replaced values and added opacities own text.
    struct Part
    {
        Declaration original;
        QString newProperty;
        QString newValue;
        bool replaced;
    };
    QVarLengthArray<Part, 16> pieces;
    for (const Declaration& declaration : parseStyle(style))
        pieces.append({ declaration, QString(), QString(), false });

    bool changed = false;
    // Opacity declarations are appended, so the loop bound is taken before.
    const int count = pieces.size();
    for (int i = 0; i < count; ++i) {
        if (!isColorProperty(pieces[i].original.property))
            continue;
        QString value = pieces[i].original.value.toString();
        bool valueChanged = false;
        const RuleSet::Rule* applied = rules.replaceFirstMatch(&value, &valueChanged);
        if (!applied)
            continue;
        changed = true;
        pieces[i].newValue = value;
        pieces[i].replaced = true;
        if (applied->opacity.isEmpty())
            continue;
        const QString opacityName = opacityProperty(pieces[i].original.property);
        auto existing = std::find_if(pieces.begin(), pieces.end(), [&opacityName](const Part& part) {
            return part.newProperty.isEmpty() ? part.original.property == opacityName : part.newProperty == opacityName;
        });
        if (existing != pieces.end()) {
            existing->newValue = applied->opacity;
            existing->replaced = true;
        } else {
            pieces.append({ Declaration(), opacityName, applied->opacity, true });
        }
    }
    if (!changed)
        return;

    // Joined as "property:value" with ";" between declarations.
    QString rewritten;
    rewritten.reserve(style.size() + 32);
    for (const Part& part : pieces) {
        if (!rewritten.isEmpty())
            rewritten += QLatin1Char(';');
        if (part.newProperty.isEmpty())
            rewritten += part.original.property;
        else
            rewritten += part.newProperty;
        rewritten += QLatin1Char(':');
        if (part.replaced)
            rewritten += part.newValue;
        else
            rewritten += part.original.value;
    }
    if (rewritten != style)
        element->setAttribute(str_STYLE, rewritten);
}

QHash<QString, QString> RKColorReplacementInstructions::disAssembleStyle(const QString& style) const
{
    QHash<QString, QString> properties;
    for (const Declaration& d : parseStyle(style))
        properties.insert(d.property.toString(), d.value.toString());
    return properties;
}

void RKColorReplacementInstructions::toXML(QDomElement& parent, bool withGroup) const
{
    QDomElement group = withGroup ? RKXMLBuilder::buildDomElement(parent, GROUP_NODE_NAME) : parent;
    for (auto it = myReplacements.cbegin(); it != myReplacements.cend(); ++it) {
        QDomElement item = RKXMLBuilder::buildDomElement(group, ITEM_NODE_NAME);
        RKXMLBuilder::addColorAttributeEx(item, SOURCE_ATTRIBUTE_NAME, QColor::fromRgba(it.key()));
        RKXMLBuilder::addColorAttributeEx(item, TARGET_ATTRIBUTE_NAME, it.value());
    }
}

RKColorReplacementInstructions RKColorReplacementInstructions::fromXML(const QDomElement& element)
{
    RKColorReplacementInstructions instructions;
    QDomElement group = element.firstChildElement(GROUP_NODE_NAME);
    if (group.isNull())
        group = element;
    for (QDomElement item = group.firstChildElement(ITEM_NODE_NAME); !item.isNull();
         item = item.nextSiblingElement(ITEM_NODE_NAME)) {
        const QColor source = RKXMLParser::colorAttributeEx(item, SOURCE_ATTRIBUTE_NAME, QColor());
        const QColor target = RKXMLParser::colorAttributeEx(item, TARGET_ATTRIBUTE_NAME, QColor());
        if (source.isValid() && target.isValid())
            instructions.insert(source, target);
    }
    return instructions;
}

bool RKColorReplacementInstructions::containsReplacements() const
{
    for (auto it = myReplacements.cbegin(); it != myReplacements.cend(); ++it) {
        if (QColor::fromRgba(it.key()) != it.value())
            return true;
    }
    return false;
}

bool RKColorReplacementInstructions::matches(const RKColorReplacementInstructions& other) const
{
    if (myReplacements.size() == other.myReplacements.size()
        && std::equal(myReplacements.cbegin(), myReplacements.cend(), other.myReplacements.cbegin())
        && std::equal(myReplacements.keyBegin(), myReplacements.keyEnd(), other.myReplacements.keyBegin()))
        return true;
    if (myReplacements.isEmpty())
        return !other.containsReplacements();
    if (containsReplacements())
        return false;
    return other.myReplacements.isEmpty();
}

void RKColorReplacementInstructions::insert(const QColor& source, const QColor& target)
{
    // Kept at 8 bits per channel, as written to XML: a 12- or 16-bit colour ("#rrrgggbbb")
    // would otherwise not survive toXML() and fromXML(), and the tables would not match.
    if (source.isValid() && target.isValid())
        myReplacements.insert(source.rgba(), QColor::fromRgba(target.rgba()));
}

QDebug operator<<(QDebug debug, const RKColorReplacementInstructions& instructions)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "RKColorReplacementInstructions(";
    const QMap<quint32, QColor> table = instructions.replacements();
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        if (it != table.cbegin())
            debug << ", ";
        debug << QColor::fromRgba(it.key()).name(QColor::HexArgb) << " -> " << it.value().name(QColor::HexArgb);
    }
    debug << ')';
    return debug;
}
