#pragma once
// Shared set-up of the fuzz targets: one GUI application (offscreen), messages silenced,
// a private directory for files made from the input, and the DOM parse every target uses.

#include <QByteArray>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTransform>

#include <RKSVGTransformReader.h>
#include <RKXMLBuilder.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

inline void dropMessages(QtMsgType, const QMessageLogContext&, const QString&) {}

// Call from LLVMFuzzerInitialize. Environment variables must be set before this.
inline void initialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(dropMessages);
    static QGuiApplication app(*argc, *argv);
}

// A directory that lives as long as the process.
inline QString workDir()
{
    static QTemporaryDir dir;
    return dir.path();
}

inline QByteArray bytes(const uint8_t* data, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size));
}

inline QString writeFile(const QString& relative, const QByteArray& content)
{
    const QString path = workDir() + QLatin1Char('/') + relative;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        abort();
    file.write(content);
    return path;
}

inline bool parse(const QByteArray& data, QDomDocument* document)
{
    return document->setContent(data, false);
}

// Stops the run with a finding: libFuzzer reports the input; the line of the broken
// property goes to stderr first (messages are silenced, so plain stdio).
inline void require(bool condition, const char* file = __builtin_FILE(), int line = __builtin_LINE())
{
    if (condition)
        return;
    std::fprintf(stderr, "property failed: %s:%d\n", file, line);
    abort();
}

// The canonical text of a document (attribute order fixed, prolog left out).
inline QString canonical(const QDomDocument& document)
{
    return RKXMLBuilder::toString(document, 1);
}

// The canonical text of an element and its subtree.
inline QString canonical(const QDomElement& element)
{
    QDomDocument document;
    document.appendChild(document.importNode(element, true));
    return canonical(document);
}

// Copies a file of the shipped data into the work directory under the same relative path.
inline void copyShipped(const QString& relative)
{
    QFile file(QStringLiteral(RKXML_SHIPPED_DATA_DIR "/") + relative);
    if (!file.open(QIODevice::ReadOnly))
        abort();
    writeFile(relative, file.readAll());
}

inline bool isFinite(const QTransform& t)
{
    const double values[] = { t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33() };
    for (double v : values) {
        if (!std::isfinite(v))
            return false;
    }
    return true;
}

// Whether the transform reader accepts `list`: a list in error reads as the identity, and so
// does a list that means it; a transform appended after it shows which (wrong only for a list
// that is exactly that transform's inverse).
inline bool acceptedTransform(const QString& list)
{
    const QString trimmed = list.trimmed();
    if (trimmed.isEmpty())
        return true;
    if (trimmed.endsWith(QLatin1Char(',')))
        return false;
    return !RKSVGTransformReader::parseTransformationMatrix(list + QStringLiteral(" matrix(1.7 0.3 -0.2 0.9 3.3 -4.1)")).isIdentity();
}

// The largest magnitude among the entries, at least 1.
inline double magnitude(const QTransform& t)
{
    const double values[] = { t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33() };
    double result = 1.0;
    for (double v : values)
        result = std::max(result, std::fabs(v));
    return result;
}

// Equal up to rounding: each entry within `tolerance` times `scale`, the size of the
// largest intermediate value a computation of the two may have gone through.
inline bool nearlyEqual(const QTransform& a, const QTransform& b, double scale, double tolerance = 1e-9)
{
    const double x[] = { a.m11(), a.m12(), a.m13(), a.m21(), a.m22(), a.m23(), a.m31(), a.m32(), a.m33() };
    const double y[] = { b.m11(), b.m12(), b.m13(), b.m21(), b.m22(), b.m23(), b.m31(), b.m32(), b.m33() };
    for (int i = 0; i < 9; ++i) {
        if (!(std::fabs(x[i] - y[i]) <= tolerance * scale))
            return false;
    }
    return true;
}

// Qt's reader cuts numbers at 255 characters, reads numbers a float cannot hold normally
// as 0, and does not take the codes 133 and 160 for white space as ours does; such lists
// are left out of the comparison.
inline bool qtReadsAlike(const QString& text)
{
    if (text.contains(QChar(133)) || text.contains(QChar(160)))
        return false;
    int run = 0;
    for (QChar c : text) {
        const bool part = (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.')
            || c == QLatin1Char('e') || c == QLatin1Char('E') || c == QLatin1Char('+') || c == QLatin1Char('-');
        run = part ? run + 1 : 0;
        if (run > 200)
            return false;
    }
    const QChar* const end = text.constData() + text.size();
    for (int open = text.indexOf(QLatin1Char('(')); open >= 0; open = text.indexOf(QLatin1Char('('), open + 1)) {
        const QChar* position = text.constData() + open + 1;
        RKSVGTransformReader::Numbers numbers;
        RKSVGTransformReader::parseNumbersArray(position, end, numbers);
        for (double v : numbers) {
            if (v != 0.0 && !(std::fabs(v) >= 1.17549435e-38 && std::fabs(v) <= 3.40282347e38))
                return false;
        }
    }
    return true;
}

}

// The libFuzzer start-up hook of a target that needs nothing but the shared set-up.
#define FUZZ_PLAIN_INITIALIZE                                                                      \
    extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)                                   \
    {                                                                                              \
        fuzz::initialize(argc, argv);                                                              \
        return 0;                                                                                  \
    }
