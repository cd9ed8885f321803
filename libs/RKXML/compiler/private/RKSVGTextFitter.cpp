#include "private/RKSVGTextFitter.h"

#include "RKXMLParser.h"

#include <QCoreApplication>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHash>
#include <QStringList>
#include <QVector>

#include <cmath>

namespace {
const QString STR_TEXT = QStringLiteral("text");
const QString STR_BLOCK = QStringLiteral("vako:fitblock");
const QString STR_WIDTH = QStringLiteral("vako:fitwidth");
const QString STR_TOP = QStringLiteral("vako:fittop");
const QString STR_SIZE = QStringLiteral("vako:fitsize");
const QString STR_FONT = QStringLiteral("vako:fitfont");
const QString STR_KEY = QStringLiteral("vako:cal");
const QString STR_ID = QStringLiteral("id");
const QString STR_Y = QStringLiteral("y");
const QString STR_STYLE = QStringLiteral("style");
const QChar ELLIPSIS(0x2026);

// Widths are measured at this pixel size and scaled: hinting plays no part at it.
constexpr double MEASURE_SIZE = 100.0;
// Baseline distance of wrapped lines, in font sizes.
constexpr double LINE_PITCH = 1.2;
// The font shrinks in steps of 5 % of its size, down to 60 %.
constexpr int SHRINK_STEPS = 8;
constexpr double SHRINK_STEP = 0.05;

struct Block {
    QVector<QDomElement> texts;
};

/// Widths of texts in the block's font, per unit of font size.
class Measure
{
public:
    explicit Measure(const QString& family)
        : myMetrics(font(family))
    {
    }
    double width(const QString& text, double size) const
    {
        return myMetrics.horizontalAdvance(text) * size / MEASURE_SIZE;
    }

private:
    static QFont font(const QString& family)
    {
        QFont font(family);
        font.setPixelSize(int(MEASURE_SIZE));
        return font;
    }
    QFontMetricsF myMetrics;
};

/// `text` broken into lines no wider than `width` at `size`: at blanks, else between characters.
QStringList wrap(const QString& text, double width, double size, const Measure& measure)
{
    QStringList lines;
    QString line;
    const QStringList words = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QString word : words) {
        const QString joined = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
        if (measure.width(joined, size) <= width) {
            line = joined;
            continue;
        }
        if (!line.isEmpty())
            lines.append(line);
        line.clear();
        // A word wider than a line: as many characters per line as fit (at least one).
        while (measure.width(word, size) > width && word.size() > 1) {
            int take = 1;
            while (take < word.size() && measure.width(word.left(take + 1), size) <= width)
                ++take;
            lines.append(word.left(take));
            word.remove(0, take);
        }
        line = word;
    }
    if (!line.isEmpty())
        lines.append(line);
    return lines;
}

/// The attribute as a number; 0 when missing or not finite ("inf" and "nan" read as numbers).
double number(const QDomElement& element, const QString& name)
{
    const double value = RKXMLParser::doubleAttribute(element, name);
    return std::isfinite(value) ? value : 0.0;
}

void setLine(QDomElement& element, const QString& text, double y, double size, double templateSize, const QString& family)
{
    while (!element.firstChild().isNull())
        element.removeChild(element.firstChild());
    element.appendChild(element.ownerDocument().createTextNode(text));
    element.setAttribute(STR_Y, QString::number(y, 'g', 8));
    if (size < templateSize) {
        QString style = element.attribute(STR_STYLE);
        if (!style.isEmpty() && !style.trimmed().endsWith(QLatin1Char(';')))
            style += QLatin1Char(';');
        // The family too: Qt's renderer takes an element's font from its own style once it sets any part.
        element.setAttribute(STR_STYLE, style + QStringLiteral("font-family:'%1';font-size:%2px").arg(family).arg(size, 0, 'f', 2));
    }
}

bool fitBlock(const Block& block)
{
    const QDomElement& first = block.texts.first();
    const double width = number(first, STR_WIDTH);
    const double top = number(first, STR_TOP);
    const double size = number(first, STR_SIZE);
    if (width <= 0 || size <= 0)
        return false;
    const Measure measure(first.attribute(STR_FONT));
    double bottom = top;
    QVector<QDomElement> filled;
    for (const QDomElement& text : block.texts) {
        bottom = std::max(bottom, number(text, STR_Y));
        if (!text.text().trimmed().isEmpty())
            filled.append(text);
    }
    bool fits = true;
    for (const QDomElement& text : qAsConst(filled))
        fits = fits && measure.width(text.text(), size) <= width;
    if (fits)
        return false;

    // The largest size at which all lines fit; at the smallest, the lines that fit.
    double used = size;
    QVector<QStringList> lines;
    for (int step = 0; step <= SHRINK_STEPS; ++step) {
        used = size * (1.0 - SHRINK_STEP * step);
        lines.clear();
        int count = 0;
        for (const QDomElement& text : qAsConst(filled)) {
            lines.append(wrap(text.text(), width, used, measure));
            count += lines.last().size();
        }
        if ((count - 1) * used * LINE_PITCH <= bottom - top)
            break;
    }
    const double pitch = used * LINE_PITCH;
    int room = 1 + int(std::floor((bottom - top) / pitch + 1e-9));
    int count = 0;
    for (QStringList& text : lines) {
        if (text.size() > room - count) {
            text = text.mid(0, std::max(0, room - count));
            if (!text.isEmpty()) {
                QString& last = text.last();
                while (!last.isEmpty() && measure.width(last + ELLIPSIS, used) > width)
                    last.chop(1);
                last += ELLIPSIS;
            }
        }
        count += text.size();
    }

    // Line k of `count` (from the top) has its baseline count - 1 - k pitches above the bottom.
    int k = 0;
    auto baseline = [&]() { return bottom - (count - 1 - k) * pitch; };
    for (int n = 0; n < filled.size(); ++n) {
        QDomElement element = filled.at(n);
        const QStringList& text = lines.at(n);
        if (text.isEmpty()) { // no room left: the text is dropped
            setLine(element, QString(), bottom, size, size, QString());
            continue;
        }
        // The first line stays in the text element; each further one goes into a copy of it
        // (made after the first line set the font size) placed right after the line before.
        setLine(element, text.first(), baseline(), used, size, first.attribute(STR_FONT));
        QDomElement previous = element;
        for (int line = 1; line < text.size(); ++line) {
            ++k;
            QDomElement copy = element.cloneNode(false).toElement();
            copy.removeAttribute(STR_KEY);
            copy.removeAttribute(STR_ID);
            previous.parentNode().insertAfter(copy, previous);
            setLine(copy, text.at(line), baseline(), size, size, QString());
            previous = copy;
        }
        ++k;
    }
    return true;
}
}

int RKSVGTextFitter::fit(QDomDocument& document)
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return 0;
    QHash<QString, int> index;
    QVector<Block> blocks;
    const QDomNodeList texts = document.elementsByTagName(STR_TEXT);
    for (int n = 0; n < texts.size(); ++n) {
        const QDomElement text = texts.at(n).toElement();
        const QString name = text.attribute(STR_BLOCK);
        if (name.isEmpty())
            continue;
        auto found = index.constFind(name);
        if (found == index.constEnd()) {
            found = index.insert(name, blocks.size());
            blocks.append(Block());
        }
        blocks[found.value()].texts.append(text);
    }
    int changed = 0;
    for (const Block& block : qAsConst(blocks))
        changed += fitBlock(block) ? 1 : 0;
    return changed;
}
