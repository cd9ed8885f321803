#include "RKColorReplacementInstructions.h"

#include "RKXMLBuilder.h"
#include "RKXMLParser.h"

#include <QDebug>
#include <QStringList>
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
    const QVector<QStringRef> parts = style.splitRef(QLatin1Char(';'), Qt::SkipEmptyParts);
    declarations.reserve(parts.size());
    for (const QStringRef& part : parts) {
        const int colon = part.indexOf(QLatin1Char(':'));
        if (colon < 0)
            continue;
        declarations.append({ part.left(colon).trimmed().toString(), part.mid(colon + 1).trimmed().toString() });
    }
    return declarations;
}

bool isColorProperty(const QString& property)
{
    return property == str_FILL || property == str_STROKE || property.endsWith(str_COLOR_SUFFIX);
}

QString opacityProperty(const QString& property)
{
    if (property.endsWith(str_COLOR_SUFFIX))
        return property.left(property.size() - str_COLOR_SUFFIX.size()) + str_OPACITY_SUFFIX;
    return property + str_OPACITY_SUFFIX;
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

// One table entry prepared for applying: the texts are built once per apply().
struct RKColorReplacementInstructions::Rule
{
    QString source;
    QString target;
    QString opacity; // empty when the target is opaque
};

QVector<RKColorReplacementInstructions::Rule> RKColorReplacementInstructions::rules() const
{
    QVector<Rule> prepared;
    prepared.reserve(myReplacements.size());
    for (auto it = myReplacements.cbegin(); it != myReplacements.cend(); ++it) {
        const QColor& target = it.value();
        const QString opacity = target.alpha() <= 254 ? QString::number(target.alpha() / 255.0, 'g', 6) : QString();
        prepared.append({ QColor::fromRgba(it.key()).name(), target.name(), opacity });
    }
    return prepared;
}

namespace {
// Applies the first rule whose source occurs in `value`; returns that rule or null.
template <class Rule>
const Rule* replaceFirstMatch(QString* value, const QVector<Rule>& rules)
{
    if (!value->contains(QLatin1Char('#')))
        return nullptr;
    for (const Rule& rule : rules) {
        if (value->contains(rule.source, Qt::CaseInsensitive)) {
            value->replace(rule.source, rule.target, Qt::CaseInsensitive);
            return &rule;
        }
    }
    return nullptr;
}
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

void RKColorReplacementInstructions::replaceColors(QDomElement* element, const QVector<Rule>& rules) const
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
    const QVector<Rule>& rules)
{
    QString value = element->attribute(name);
    if (value.isEmpty())
        return;
    const Rule* applied = replaceFirstMatch(&value, rules);
    if (!applied)
        return;
    element->setAttribute(name, value);
    if (!applied->opacity.isEmpty())
        element->setAttribute(name + str_OPACITY_SUFFIX, applied->opacity);
}

void RKColorReplacementInstructions::replaceColorsInStyleAttribute(QDomElement* element, const QVector<Rule>& rules)
{
    const QString style = element->attribute(str_STYLE);
    if (!style.contains(QLatin1Char('#')))
        return;
    QVector<Declaration> declarations = splitStyle(style);
    bool changed = false;
    // Opacity declarations are appended, so the loop bound is taken before.
    const int count = declarations.size();
    for (int i = 0; i < count; ++i) {
        if (!isColorProperty(declarations.at(i).property))
            continue;
        const Rule* applied = replaceFirstMatch(&declarations[i].value, rules);
        if (!applied)
            continue;
        changed = true;
        if (applied->opacity.isEmpty())
            continue;
        const QString opacityName = opacityProperty(declarations.at(i).property);
        auto existing = std::find_if(declarations.begin(), declarations.end(),
            [&opacityName](const Declaration& d) { return d.property == opacityName; });
        if (existing != declarations.end())
            existing->value = applied->opacity;
        else
            declarations.append({ opacityName, applied->opacity });
    }
    if (!changed)
        return;
    QStringList joined;
    joined.reserve(declarations.size());
    for (const Declaration& d : qAsConst(declarations))
        joined << QStringLiteral("%1:%2").arg(d.property, d.value);
    element->setAttribute(str_STYLE, joined.join(QLatin1Char(';')));
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
