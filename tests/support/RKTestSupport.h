#pragma once

#include <QDir>
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
