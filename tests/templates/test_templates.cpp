// The shipped templates compiled with the shipped data: golden pages (byte for byte,
// through the canonical writer), and every keyed element filled or removed.
// RKXML_UPDATE_GOLDEN=1 rewrites the golden files instead of comparing.

#include "TemplateTestSupport.h"

#include <QDirIterator>

class TestTemplates : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void golden_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QDate>("month");
        QTest::addColumn<QString>("golden");
        // March 2024 starts on a Friday (five rows, Easter, moon phases, Bavarian vacations);
        // February 2021 starts on a Monday and has four rows only.
        for (const char* name : {"wall-month", "planner-month"}) {
            QTest::addRow("%s 2024-03", name) << name << QDate(2024, 3, 1) << QStringLiteral("%1-de_DE-BY-2024-03.svg").arg(name);
            QTest::addRow("%s 2021-02", name) << name << QDate(2021, 2, 1) << QStringLiteral("%1-de_DE-BY-2021-02.svg").arg(name);
        }
        QTest::newRow("year-overview 2027") << "year-overview" << QDate(2027, 1, 1) << "year-overview-de_DE-BY-2027.svg";
    }

    void golden()
    {
        QFETCH(QString, name);
        QFETCH(QDate, month);
        QFETCH(QString, golden);
        const QString text = portableText(compileTemplate(name, month, "de_DE", "BY").document);
        QVERIFY(text.contains(QLatin1String("<svg")));
        QFile file(testDataPath("templates/golden/" + golden));
        if (qEnvironmentVariableIsSet("RKXML_UPDATE_GOLDEN")) {
            QDir().mkpath(QFileInfo(file).absolutePath());
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(text.toUtf8());
            return;
        }
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName() + " missing; RKXML_UPDATE_GOLDEN=1 writes it"));
        QCOMPARE(text, QString::fromUtf8(file.readAll()));
    }

    void everyKeyFilled_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("province");
        QTest::addColumn<QDate>("month");
        const QStringList names = QDir(shippedDataPath("templates")).entryList({"*.svg"}, QDir::Files, QDir::Name);
        QVERIFY(names.size() >= 4);
        for (QString name : names) {
            name.chop(4);
            QTest::addRow("%s de_DE", qPrintable(name)) << name << "de_DE" << "BY" << QDate(2026, 12, 1);
            QTest::addRow("%s el_GR", qPrintable(name)) << name << "el_GR" << "" << QDate(2027, 1, 1);
            QTest::addRow("%s ru_RU", qPrintable(name)) << name << "ru_RU" << "" << QDate(2025, 9, 1);
            QTest::addRow("%s fr_FR", qPrintable(name)) << name << "fr_FR" << "" << QDate(2026, 2, 1);
        }
    }

    // A key that the factory does not make (a typing error in a template) stays with its
    // placeholder text; a class ending in "_empty" that survives shows a cell of another month.
    // Picture keys are filled on days with a picture only (here the moon phases).
    void everyKeyFilled()
    {
        QFETCH(QString, name);
        QFETCH(QString, locale);
        QFETCH(QString, province);
        QFETCH(QDate, month);
        const CompiledPage page = compileTemplate(name, month, locale, province);
        QVERIFY(!page.instructions.isEmpty());
        int keyed = 0;
        int pictures = 0;
        int withoutPicture = 0;
        QList<QDomElement> pending{page.document.documentElement()};
        while (!pending.isEmpty()) {
            const QDomElement element = pending.takeLast();
            const QString key = element.attribute(QStringLiteral("vako:cal"));
            if (!key.isEmpty()) {
                ++keyed;
                const bool filled = !page.instructions.replacements(key).isEmpty();
                if (key.contains(QLatin1String("_imageholiday")))
                    ++(filled ? pictures : withoutPicture);
                else
                    QVERIFY2(filled, qPrintable("not filled: " + key));
            }
            QVERIFY2(!element.attribute(QStringLiteral("class")).endsWith(QLatin1String("_empty")),
                qPrintable("not removed: " + key));
            for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
                pending << child;
        }
        QVERIFY(keyed > 10);
        if (withoutPicture > 0)
            QVERIFY2(pictures >= 3, qPrintable(QStringLiteral("%1 moon pictures").arg(pictures)));
        // The chosen colour scheme is in the page.
        QCOMPARE(page.document.documentElement().firstChildElement().attribute(QStringLiteral("title")),
            QStringLiteral("current"));
    }
};

QTEST_MAIN(TestTemplates)
#include "test_templates.moc"
