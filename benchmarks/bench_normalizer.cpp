#include <RKSVGNormalizer.h>

#include <QDomDocument>
#include <QFileInfo>

#include <benchmark/benchmark.h>

namespace {

// A large clip-art file in the shape of the shipped ones (about 750 kB, half the size of the largest
// files of public clip-art collections): 400 groups in "defs", each used three times from a
// render layer that sits in two plain groups with transforms, paths with comments between
// them, and a calendar-embedded text in every tenth layer.
QByteArray largeClipArt()
{
    QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                      "xmlns:vako=\"urn:rkxml:vako\" width=\"2000\" height=\"2000\" viewBox=\"0 0 2000 2000\">\n<defs>\n";
    const int groups = 400;
    for (int k = 0; k < groups; ++k) {
        text += "  <g id=\"part" + QByteArray::number(k) + "\">\n";
        for (int i = 0; i < 4; ++i)
            text += "    <path d=\"M0 0 C6 -10 20 -12 30 -6 C20 0 8 6 0 0 Z\" fill=\"#5f9e45\" stroke=\"#3f7a2c\" stroke-width=\"1\" "
                    "transform=\"rotate(" + QByteArray::number(i * 90) + ")\"/>\n";
        text += "  </g>\n";
    }
    text += "</defs>\n";
    for (int k = 0; k < groups; ++k) {
        const QByteArray n = QByteArray::number(k);
        text += "<!-- piece " + n + " -->\n<g transform=\"translate(" + QByteArray::number(k % 20 * 100) + " "
            + QByteArray::number(k / 20 * 100) + ")\">\n <g transform=\"scale(0.9)\">\n  <g id=\"layer" + n
            + "\" vako:layertype=\"render\" transform=\"rotate(" + QByteArray::number(k % 360) + " 50 50)\">\n";
        for (int i = 0; i < 8; ++i)
            text += "   <path class=\"shape\" fill-rule=\"evenodd\" d=\"M" + QByteArray::number(i) + " 0 L40 " + QByteArray::number(i * 3)
                + " C50 60 70 80 " + QByteArray::number(90 - i) + " 95 Z\" fill=\"#e86a92\" stroke=\"#d9a520\"/>\n";
        for (int i = 0; i < 3; ++i)
            text += "   <use xlink:href=\"#part" + n + "\" x=\"4\" transform=\"translate(" + QByteArray::number(20 * i) + " 30)\"/>\n";
        if (k % 10 == 0)
            text += "   <text vako:cal_embed=\"true\" x=\"50\" y=\"90\" font-size=\"11\">May</text>\n";
        text += "   <circle cx=\"50\" cy=\"50\" r=\"5\" fill=\"#f7d04a\"/>\n  </g>\n </g>\n</g>\n";
    }
    text += "</svg>\n";
    return text;
}

const QByteArray& clipArt()
{
    static const QByteArray text = largeClipArt();
    return text;
}

void PrepareDomDocument_Ours(benchmark::State& state)
{
    QDomDocument document;
    document.setContent(clipArt());
    const QFileInfo file(QStringLiteral("/clipart/large.svg"));
    for (auto _ : state) {
        QDomDocument result = RKSVGNormalizer::prepareDomDocument(document, file, QDomDocument());
        benchmark::DoNotOptimize(result);
    }
    state.counters["bytes"] = clipArt().size();
}
BENCHMARK(PrepareDomDocument_Ours)->Unit(benchmark::kMillisecond);

// Parsing the same file with QDom: the cost every use of a clip-art file pays anyway.
void PrepareDomDocument_Baseline(benchmark::State& state)
{
    for (auto _ : state) {
        QDomDocument document;
        document.setContent(clipArt());
        benchmark::DoNotOptimize(document);
    }
    state.counters["bytes"] = clipArt().size();
}
BENCHMARK(PrepareDomDocument_Baseline)->Unit(benchmark::kMillisecond);

}

BENCHMARK_MAIN();
