#include "RKColorReplacementInstructions.h"

#include "RKXMLBuilder.h"
#include "RKXMLParser.h"

#include <QDebug>
#include <QStringList>
#include <QVarLengthArray>
#include <QVector>

#include <algorithm>

const QRegularExpression RKColorReplacementInstructions::myColorCatcherRegExp(QStringLiteral("(#[0-9a-fA-F]{6})"));
const QString RKColorReplacementInstructions::GROUP_NODE_NAME = QStringLiteral("colors");
const QString RKColorReplacementInstructions::ITEM_NODE_NAME = QStringLiteral("color");
const QString RKColorReplacementInstructions::SOURCE_ATTRIBUTE_NAME = QStringLiteral("source");
const QString RKColorReplacementInstructions::TARGET_ATTRIBUTE_NAME = QStringLiteral("target");

namespace {
const QString str_FILL = QStringLiteral("fill");
const QString str_STROKE = QStringLiteral("stroke");
const QString str_STYLE = QStringLiteral("style");
const QString str_COLOR_SUFFIX = QStringLiteral("-color");
const QString str_OPACITY_SUFFIX = QStringLiteral("-opacity");

struct Declaration
{
    QString property;
    QString value;
};

QVector<Declaration> splitStyle(const QString& style)
{
    QVector<Declaration> declarations;
    const QVector<QStringRef> pieces = style.splitRef(QLatin1Char(';'), Qt::SkipEmptyParts);
    declarations.reserve(pieces.size());
    for (const QStringRef& part : pieces) {
        const int colon = part.indexOf(QLatin1Char(':'));
        if (colon < 0)
            continue;
        declarations.append({ part.left(colon).trimmed().toString(), part.mid(colon + 1).trimmed().toString() });
    }
    return declarations;
}

bool isColorProperty(const QStringRef& property)
{
    return property == str_FILL || property == str_STROKE || property.endsWith(str_COLOR_SUFFIX);
}

QString opacityProperty(const QStringRef& property)
{
    if (property.endsWith(str_COLOR_SUFFIX))
        return property.left(property.size() - str_COLOR_SUFFIX.size()).toString() + str_OPACITY_SUFFIX;
    return property.toString() + str_OPACITY_SUFFIX;
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

// The table prepared for applying, built once per apply(): the colour texts, and
// for each "#rrggbb" the first entry (in key order) whose source has that name.
struct RKColorReplacementInstructions::RuleSet
{
    struct Rule
    {
        QString source;
        QString target;
        QString opacity; // empty when the target is opaque
        quint32 sourceRgb;
    };
    QVector<Rule> rules;
    QVector<quint32> ruleRgb; // sourceRgb of each rule, searched linearly: tables are small

    // Index of the first rule with this source colour, or -1.
    int indexOf(quint32 rgb) const { return ruleRgb.indexOf(rgb); }
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
        prepared.rules.append({ QColor::fromRgba(it.key()).name(), target.name(), opacity, rgb });
    }
    return prepared;
}

namespace {
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

// Calls visit(position, rgb) for every "#" followed by six hexadecimal digits in `value`
// between `from` and `to` (exclusive).
template <class Visit>
void forEachHexColor(const QString& value, int from, int to, Visit visit)
{
    // A plain loop: attribute values are short, and QString::indexOf costs more than it saves here.
    const QChar* data = value.constData();
    for (int at = from; at + 6 < to; ++at) {
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
        if (k > 6)
            visit(at, rgb);
    }
}

// Colours found in one value: position of the "#" and the colour.
using HexColorList = QVarLengthArray<QPair<int, quint32>, 8>;

// Index of the first rule (in key order) whose source name occurs in `value`, or -1;
// `found` receives every six-digit colour of the value. Same result as searching each
// source name in turn, ignoring case, but one pass over the value.
template <class RuleSet>
int firstRuleIn(const QString& value, int from, int to, const RuleSet& set, HexColorList* found)
{
    int best = -1;
    forEachHexColor(value, from, to, [&set, &best, found](int at, quint32 rgb) {
        const int index = set.indexOf(rgb);
        if (index >= 0 && (best < 0 || index < best))
            best = index;
        found->append(qMakePair(at, rgb));
    });
    return best;
}

template <class RuleSet>
bool containsRule(const QString& value, const RuleSet& set)
{
    HexColorList found;
    return firstRuleIn(value, 0, value.size(), set, &found) >= 0;
}

// Applies the first rule whose source occurs in `value`: every occurrence of the source,
// in any case, becomes the target. Both are seven characters, so this is done in place.
// Returns that rule, or null; `*changed` tells whether a character differs. Only the
// part of `value` between `from` and `to` (exclusive) is looked at.
template <class RuleSet>
const typename RuleSet::Rule* replaceFirstMatch(QString* value, int from, int to, const RuleSet& set, bool* changed)
{
    HexColorList found;
    const int index = firstRuleIn(*value, from, to, set, &found);
    if (index < 0)
        return nullptr;
    const auto& rule = set.rules.at(index);
    const QChar* target = rule.target.constData();
    for (const auto& color : found) {
        if (color.second != rule.sourceRgb)
            continue;
        const int at = color.first;
        for (int k = 0; k < rule.target.size(); ++k) {
            if (value->at(at + k) != target[k]) {
                value->data()[at + k] = target[k]; // detaches once, then a plain write
                *changed = true;
            }
        }
    }
    return &rule;
}
}

namespace {
// Fast path for a style already written as "property:value;property:value" (no blanks
// around names and values, no empty declarations): there, replacing the seven
// characters of a colour in place gives exactly the text that splitting and joining
// would. Returns false, leaving the element alone, when the style is not in that form
// or a translucent target needs an opacity declaration.
template <class RuleSet>
bool replaceInNormalizedStyle(QDomElement* element, const QString& style, const RuleSet& rules, const QString& styleName)
{
    const int size = style.size();
    if (size == 0 || style.at(size - 1) == QLatin1Char(';'))
        return false;
    QString result = style;
    bool changed = false;
    for (int start = 0; start < size;) {
        int end = style.indexOf(QLatin1Char(';'), start);
        if (end < 0)
            end = size;
        const int colon = style.indexOf(QLatin1Char(':'), start);
        if (colon < 0 || colon >= end || colon == start || style.at(start).isSpace() || style.at(colon - 1).isSpace()
            || style.at(end - 1).isSpace() || (colon + 1 < end && style.at(colon + 1).isSpace()))
            return false;
        if (isColorProperty(style.midRef(start, colon - start))) {
            const auto* applied = replaceFirstMatch(&result, colon + 1, end, rules, &changed);
            if (applied && !applied->opacity.isEmpty())
                return false;
        }
        start = end + 1;
    }
    if (changed)
        element->setAttribute(styleName, result);
    return true;
}
}

bool RKColorReplacementInstructions::replaceColorsInNormalizedStyle(QDomElement* element, const QString& style,
    const RuleSet& rules)
{
    return replaceInNormalizedStyle(element, style, rules, str_STYLE);
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
    QRegularExpressionMatchIterator it = myColorCatcherRegExp.globalMatch(value);
    while (it.hasNext()) {
        QColor color;
        color.setNamedColor(it.next().captured(1));
        myReplacements.insert(color.rgba(), color);
    }
}

void RKColorReplacementInstructions::apply(QDomDocument& document) const
{
    if (myReplacements.isEmpty())
        return;
    QDomElement root = document.documentElement();
    replaceColors(&root, rules());
}

void RKColorReplacementInstructions::replaceColors(QDomElement* element) const
{
    if (element && !myReplacements.isEmpty())
        replaceColors(element, rules());
}

void RKColorReplacementInstructions::replaceColorInAttribute(QDomElement* element, const QString& name) const
{
    if (element)
        replaceColorInAttribute(element, name, rules());
}

void RKColorReplacementInstructions::replaceColorsInStyleAttribute(QDomElement* element) const
{
    if (element)
        replaceColorsInStyleAttribute(element, rules());
}

void RKColorReplacementInstructions::replaceColors(QDomElement* element, const RuleSet& rules) const
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
    const auto* applied = replaceFirstMatch(&value, 0, value.size(), rules, &changed);
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
    if (!containsRule(style, rules))
        return;
    if (replaceColorsInNormalizedStyle(element, style, rules))
        return;

    // Declarations as views into `style`; only replaced values and added opacities own text.
    struct Part
    {
        QStringRef property;
        QStringRef value;
        QString newProperty;
        QString newValue;
        bool replaced;
    };
    QVarLengthArray<Part, 16> pieces;
    for (int start = 0; start < style.size();) {
        int end = style.indexOf(QLatin1Char(';'), start);
        if (end < 0)
            end = style.size();
        const QStringRef declaration = style.midRef(start, end - start);
        start = end + 1;
        const int colon = declaration.indexOf(QLatin1Char(':'));
        if (colon >= 0)
            pieces.append({ declaration.left(colon).trimmed(), declaration.mid(colon + 1).trimmed(), QString(), QString(), false });
    }

    bool changed = false;
    // Opacity declarations are appended, so the loop bound is taken before.
    const int count = pieces.size();
    for (int i = 0; i < count; ++i) {
        if (!isColorProperty(pieces[i].property))
            continue;
        QString value = pieces[i].value.toString();
        bool valueChanged = false;
        const auto* applied = replaceFirstMatch(&value, 0, value.size(), rules, &valueChanged);
        if (!applied)
            continue;
        changed = true;
        pieces[i].newValue = value;
        pieces[i].replaced = true;
        if (applied->opacity.isEmpty())
            continue;
        const QString opacityName = opacityProperty(pieces[i].property);
        auto existing = std::find_if(pieces.begin(), pieces.end(), [&opacityName](const Part& part) {
            return part.newProperty.isEmpty() ? part.property == opacityName : part.newProperty == opacityName;
        });
        if (existing != pieces.end()) {
            existing->newValue = applied->opacity;
            existing->replaced = true;
        } else {
            pieces.append({ QStringRef(), QStringRef(), opacityName, applied->opacity, true });
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
            rewritten += part.property;
        else
            rewritten += part.newProperty;
        rewritten += QLatin1Char(':');
        if (part.replaced)
            rewritten += part.newValue;
        else
            rewritten += part.value;
    }
    if (rewritten != style)
        element->setAttribute(str_STYLE, rewritten);
}

QHash<QString, QString> RKColorReplacementInstructions::disAssembleStyle(const QString& style) const
{
    QHash<QString, QString> properties;
    for (const Declaration& d : splitStyle(style))
        properties.insert(d.property, d.value);
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
            instructions.myReplacements.insert(source.rgba(), target);
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
    if (source.isValid() && target.isValid())
        myReplacements.insert(source.rgba(), target);
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
