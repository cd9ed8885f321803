#pragma once

#include <RKXMLBuilder.h>

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QString>
#include <QTemporaryDir>
#include <QtTest>

/// Path of a fixture under tests/data.
inline QString testDataPath(const QString& relative)
{
    return QDir(QStringLiteral(RKXML_TEST_DATA_DIR)).filePath(relative);
}

/// Path of a shipped resource under data/.
inline QString shippedDataPath(const QString& relative)
{
    return QDir(QStringLiteral(RKXML_SHIPPED_DATA_DIR)).filePath(relative);
}

/// The bytes of the file at `path`, or "<unreadable>" when it cannot be opened, so that a
/// missing file never compares equal to an expected empty one.
inline QByteArray readTestFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

/// Replaces the file at `path` by `bytes`, creating missing parent directories.
inline void writeTestFile(const QString& path, const QByteArray& bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// The root element of `xml`, null when `xml` does not parse. The documents are kept for the
/// life of the process so that their elements stay usable. Not thread-safe.
inline QDomElement testElement(const QString& xml)
{
    static QList<QDomDocument> documents;
    QDomDocument document;
    document.setContent(xml);
    documents.append(document);
    return document.documentElement();
}

/// `document` as the canonical writer writes it (attributes in a fixed order), without the
/// declaration and on one line, for comparing whole documents with a literal. `quote` stands
/// in for the attribute quotes, so that expected texts can be written without escapes.
inline QString canonicalLine(const QDomDocument& document, QChar quote = QLatin1Char('"'))
{
    QString text = RKXMLBuilder::toString(document, 0).section(QLatin1Char('\n'), 1).trimmed();
    return text.replace(QLatin1String(">\n<"), QLatin1String("><")).replace(QLatin1Char('"'), quote);
}

/**
 * Keeps tests away from the user's files: QStandardPaths test mode, and the
 * writable resource directory moved into a temporary directory that lives as
 * long as the process. Call before the first use of RKDirectoryConfig
 * (initTestCase()).
 */
inline QString isolateUserFiles()
{
    QStandardPaths::setTestModeEnabled(true);
    static QTemporaryDir writable;
    qputenv("RKXML_WRITABLE_DIR", writable.path().toLocal8Bit());
    return writable.path();
}
