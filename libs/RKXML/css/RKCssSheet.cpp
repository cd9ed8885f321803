#include "RKCssSheet.h"

#include <QDebug>
#include <QFile>
#include <QRegularExpression>

namespace {
const QRegularExpression str_HREF_EXPRESSION(QStringLiteral("href\\s*=\\s*\"([^ \"]+)\""));
const QString str_ID_SEPARATOR = QStringLiteral("/glintora/");
const QString str_CSS_SUFFIX = QStringLiteral(".css");
const QString str_STRANGE_FONT = QStringLiteral("font-family: Function-Light");
const QString str_FONT_REPLACEMENT = QStringLiteral("font-family: 'Arial Narrow','Times New Roman'");

// Invalid UTF-8 (stray bytes, overlong forms, encoded surrogates, a cut-off sequence) costs
// only the bad characters, each becoming U+FFFD; so does a NUL, which would otherwise end
// the text for every later consumer that reads it as a C string.
QString decodeCss(const QByteArray& bytes)
{
    QString css = QString::fromUtf8(bytes.constData(), bytes.size());
    css.replace(QChar(0), QChar(0xFFFD));
    return css;
}

QString absoluteCleanPath(const QFileInfo& file)
{
    return file.filePath().isEmpty() ? QString() : QDir::cleanPath(file.absoluteFilePath());
}
}

RKCssSheet::RKCssSheet(const QFileInfo& file)
    : myAbsolutePath(absoluteCleanPath(file))
{
}

RKCssSheet::RKCssSheet(const QDomProcessingInstruction& instruction, const QDir& baseDir)
{
    QRegularExpressionMatchIterator it = str_HREF_EXPRESSION.globalMatch(instruction.data());
    while (it.hasNext())
        myAbsolutePath = QDir::cleanPath(baseDir.absoluteFilePath(it.next().captured(1)));
}

bool RKCssSheet::isValid() const
{
    return !myAbsolutePath.isEmpty() && QFileInfo::exists(myAbsolutePath);
}

QFileInfo RKCssSheet::fileInfo() const
{
    return myAbsolutePath.isEmpty() ? QFileInfo() : QFileInfo(myAbsolutePath);
}

QString RKCssSheet::id() const
{
    const int at = myAbsolutePath.lastIndexOf(str_ID_SEPARATOR);
    return at < 0 ? myAbsolutePath : myAbsolutePath.mid(at + str_ID_SEPARATOR.size());
}

QString RKCssSheet::readCssFromFile() const
{
    if (!myAbsolutePath.endsWith(str_CSS_SUFFIX))
        return QString();
    QFile file(myAbsolutePath);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << QStringLiteral("-- unable to open file: ") + myAbsolutePath;
        return QLatin1String("");
    }
    const QByteArray bytes = file.readAll();
    file.close();
    QString css = decodeCss(bytes);
    patchStrangeFonts(&css);
    return css;
}

void RKCssSheet::patchStrangeFonts(QString* css)
{
    if (css)
        css->replace(str_STRANGE_FONT, str_FONT_REPLACEMENT, Qt::CaseSensitive);
}
