// Integer decoding and canonical writing against the Qt calls they replace.
#include <RKXMLBuilder.h>
#include <RKXMLParser.h>

#include <QBuffer>
#include <QDomDocument>
#include <QStringList>

#include <benchmark/benchmark.h>

namespace {

// The same mix for both cases: plain, padded, negative and malformed values, as templates carry them.
const QStringList& integerMix()
{
    static const QStringList mix = [] {
        QStringList list;
        for (int i = 0; i < 256; ++i) {
            switch (i % 4) {
            case 0: list << QString::number(i * 37); break;
            case 1: list << QStringLiteral("  %1 ").arg(i * 11); break;
            case 2: list << QString::number(-i * 5); break;
            default: list << QStringLiteral("%1px").arg(i); break;
            }
        }
        return list;
    }();
    return mix;
}

void FastDecodeInt_Ours(benchmark::State& state)
{
    const QStringList& mix = integerMix();
    for (auto _ : state) {
        int sum = 0;
        for (const QString& text : mix) {
            bool ok = false;
            sum += RKXMLParser::fastDecodeInt(text, &ok) + ok;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * mix.size());
}

void FastDecodeInt_Baseline(benchmark::State& state)
{
    const QStringList& mix = integerMix();
    for (auto _ : state) {
        int sum = 0;
        for (const QString& text : mix) {
            bool ok = false;
            sum += text.toInt(&ok) + ok;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * mix.size());
}

// About 5 MB once written: a calendar-like SVG with thousands of elements of several attributes.
const QDomDocument& largeSvg()
{
    static const QDomDocument document = [] {
        QDomDocument doc;
        QDomElement svg = RKXMLBuilder::buildRootElement(doc, QStringLiteral("svg"));
        svg.setAttribute(QStringLiteral("xmlns"), QStringLiteral("http://www.w3.org/2000/svg"));
        svg.setAttribute(QStringLiteral("xmlns:vako"), QStringLiteral("http://example.invalid/vako"));
        svg.setAttribute(QStringLiteral("width"), 2100);
        svg.setAttribute(QStringLiteral("height"), 2970);
        for (int page = 0; page < 700; ++page) {
            QDomElement group = RKXMLBuilder::buildDomElement(svg, QStringLiteral("g"));
            group.setAttribute(QStringLiteral("id"), QStringLiteral("page_%1").arg(page));
            group.setAttribute(QStringLiteral("vako:layertype"), QStringLiteral("calendar"));
            for (int day = 0; day < 31; ++day) {
                QDomElement rect = RKXMLBuilder::buildDomElement(group, QStringLiteral("rect"));
                rect.setAttribute(QStringLiteral("y"), 400 + (day / 7) * 200);
                rect.setAttribute(QStringLiteral("x"), 100 + (day % 7) * 250);
                rect.setAttribute(QStringLiteral("width"), 250);
                rect.setAttribute(QStringLiteral("height"), 200);
                rect.setAttribute(QStringLiteral("vako:cal"), QStringLiteral("day_%1").arg(day + 1));
                rect.setAttribute(QStringLiteral("class"), day % 6 ? QStringLiteral("day") : QStringLiteral("day_empty"));
                rect.setAttribute(QStringLiteral("style"), QStringLiteral("fill:#ffffff;stroke:#000000;stroke-width:2"));
                QDomElement text = RKXMLBuilder::buildDomElement(group, QStringLiteral("text"), QString::number(day + 1));
                text.setAttribute(QStringLiteral("x"), 120 + (day % 7) * 250);
                text.setAttribute(QStringLiteral("y"), 450 + (day / 7) * 200);
                text.setAttribute(QStringLiteral("vako:cal"), QStringLiteral("daynum_%1").arg(day + 1));
                text.setAttribute(QStringLiteral("font-family"), QStringLiteral("Sans & Serif"));
            }
        }
        return doc;
    }();
    return document;
}

void SaveCanonicalXML_Ours(benchmark::State& state)
{
    const QDomDocument& document = largeSvg();
    qint64 bytes = 0;
    for (auto _ : state) {
        QByteArray out;
        QBuffer buffer(&out);
        buffer.open(QIODevice::WriteOnly);
        benchmark::DoNotOptimize(RKXMLBuilder::saveCanonicalXML(document, &buffer, 4));
        bytes = out.size();
    }
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["MB"] = double(bytes) / 1e6;
}

void SaveCanonicalXML_Baseline(benchmark::State& state)
{
    const QDomDocument& document = largeSvg();
    qint64 bytes = 0;
    for (auto _ : state) {
        const QByteArray out = document.toByteArray(4);
        benchmark::DoNotOptimize(out.constData());
        bytes = out.size();
    }
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["MB"] = double(bytes) / 1e6;
}

}

BENCHMARK(FastDecodeInt_Ours);
BENCHMARK(FastDecodeInt_Baseline);
BENCHMARK(SaveCanonicalXML_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveCanonicalXML_Baseline)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
