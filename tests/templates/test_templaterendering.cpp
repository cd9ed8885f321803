// Every shipped template, compiled for a Latin, a Greek and a Cyrillic calendar language,
// drawn by Qt's SVG renderer and by librsvg's rsvg-convert: the two pictures may differ by
// at most 2 % in mean absolute pixel difference, so the templates keep to what both draw.

#include "RKImageSupport.h"
#include "TemplateTestSupport.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QSvgRenderer>
#include <QTemporaryDir>

namespace {

const int WIDTH = 600;

} // namespace

class TestTemplateRendering : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void qtAndLibrsvgAgree_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("province");
        for (const char* name : {"wall-month", "wall-cover", "planner-month", "year-overview"}) {
            QTest::addRow("%s de_DE", name) << name << "de_DE" << "BY";
            QTest::addRow("%s el_GR", name) << name << "el_GR" << "";
            QTest::addRow("%s ru_RU", name) << name << "ru_RU" << "";
        }
    }

    void qtAndLibrsvgAgree()
    {
        QFETCH(QString, name);
        QFETCH(QString, locale);
        QFETCH(QString, province);
        const QString rsvg = QStandardPaths::findExecutable(QStringLiteral("rsvg-convert"));
        if (rsvg.isEmpty())
            QSKIP("rsvg-convert (librsvg2-bin) is not installed");

        // librsvg only loads pictures beside or below the page, so the moon pictures are
        // copied next to it and linked relatively.
        QTemporaryDir dir;
        const QString moons = shippedDataPath(QStringLiteral("moonphases"));
        QDir().mkpath(dir.filePath(QStringLiteral("moonphases")));
        for (const QString& picture : QDir(moons).entryList({QStringLiteral("*.svg")}, QDir::Files))
            QFile::copy(QDir(moons).filePath(picture), dir.filePath(QStringLiteral("moonphases/") + picture));
        QString text = portableText(compileTemplate(name, QDate(2024, 3, 1), locale, province).document);
        text.replace(QStringLiteral("@DATA@/"), QString());
        const QString page = dir.filePath(QStringLiteral("page.svg"));
        QFile file(page);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        file.close();

        QSvgRenderer renderer(page);
        QVERIFY(renderer.isValid());
        const QSizeF size = renderer.viewBoxF().size();
        const int height = qRound(WIDTH * size.height() / size.width());
        QImage qt(WIDTH, height, QImage::Format_ARGB32);
        qt.fill(Qt::white);
        QPainter painter(&qt);
        renderer.render(&painter);
        painter.end();

        const QString png = dir.filePath(QStringLiteral("rsvg.png"));
        QProcess process;
        process.start(rsvg, {QStringLiteral("-w"), QString::number(WIDTH), QStringLiteral("-h"), QString::number(height),
                                QStringLiteral("-b"), QStringLiteral("white"), QStringLiteral("-o"), png, page});
        QVERIFY(process.waitForFinished(60000));
        QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
        const QImage other(png);
        QCOMPARE(other.size(), qt.size());

        const double difference = meanDifference(qt, other);
        if (qEnvironmentVariableIsSet("RKXML_KEEP_RENDERS")) {
            const QString keep = QString::fromLocal8Bit(qgetenv("RKXML_KEEP_RENDERS"));
            qt.save(QStringLiteral("%1/%2-%3-qt.png").arg(keep, name, locale));
            other.save(QStringLiteral("%1/%2-%3-rsvg.png").arg(keep, name, locale));
            qInfo("%s %s: mean difference %.4f", qPrintable(name), qPrintable(locale), difference);
        }
        QVERIFY2(difference <= 0.02, qPrintable(QStringLiteral("mean difference %1").arg(difference)));
    }
};

QTEST_MAIN(TestTemplateRendering)
#include "test_templaterendering.moc"
