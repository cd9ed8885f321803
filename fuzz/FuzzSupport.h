#pragma once
// Shared set-up of the fuzz targets: one GUI application (offscreen), messages silenced,
// a private directory for files made from the input, and the DOM parse every target uses.

#include <QByteArray>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdint>
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

// Stops the run with a finding: libFuzzer reports the input.
inline void require(bool condition)
{
    if (!condition)
        abort();
}

}
