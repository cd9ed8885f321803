// Swaps every colour of each SVG file given (or found below a directory) for its inverse and
// checks that extraction afterwards finds exactly the targets. Prints the files that fail and
// a summary line; exit code 1 when any file fails.
//   rkxml-colorswap DIR|FILE...
#include <RKColorReplacementInstructions.h>

#include <QCoreApplication>
#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QSet>
#include <QTextStream>

namespace {

quint32 inverse(quint32 argb)
{
    return (~argb & 0xffffffu) | 0xff000000u;
}

// "ok", "unreadable" or a description of the mismatch.
QString check(const QString& path)
{
    QFile file(path);
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file, false))
        return QStringLiteral("unreadable");
    RKColorReplacementInstructions found;
    found.extract(document);
    RKColorReplacementInstructions swap;
    QSet<quint32> targets;
    for (quint32 argb : found.replacements().keys()) {
        swap.insert(QColor::fromRgba(argb), QColor::fromRgba(inverse(argb)));
        targets.insert(inverse(argb));
    }
    swap.apply(document);
    RKColorReplacementInstructions after;
    after.extract(document);
    QSet<quint32> seen;
    for (quint32 argb : after.replacements().keys())
        seen.insert(argb);
    if (seen == targets)
        return QStringLiteral("ok");
    QStringList left;
    for (quint32 argb : seen - targets)
        left << QColor::fromRgba(argb).name();
    return QStringLiteral("colours not replaced: ") + left.join(QLatin1Char(' '));
}

}

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QStringList files;
    for (const QString& argument : app.arguments().mid(1)) {
        if (QFileInfo(argument).isDir()) {
            QDirIterator it(argument, {QStringLiteral("*.svg")}, QDir::Files, QDirIterator::Subdirectories);
            while (it.hasNext())
                files << it.next();
        } else {
            files << argument;
        }
    }
    files.sort();
    int failed = 0;
    int unreadable = 0;
    for (const QString& path : qAsConst(files)) {
        const QString verdict = check(path);
        if (verdict == QLatin1String("unreadable")) {
            ++unreadable;
        } else if (verdict != QLatin1String("ok")) {
            ++failed;
            out << path << ": " << verdict << '\n';
        }
    }
    out << files.size() << " files, " << unreadable << " not XML, " << failed << " with colours not swapped\n";
    return failed == 0 ? 0 : 1;
}
