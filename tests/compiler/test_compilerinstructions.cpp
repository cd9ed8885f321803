#include "RKTestSupport.h"

#include <RKAbstractHolidayCache.h>
#include <RKSVGCompilerInstructions.h>
#include <RKSVGCompilerInstructionsCache.h>
#include <RKSVGCompilerInstructionsFactory.h>

#include <QAtomicInt>
#include <QDomDocument>
#include <QThread>

namespace {
/// Counts how often the factory asks it for a day's names: once per day shown per build.
class CountingHolidayCache : public RKAbstractHolidayCache
{
public:
    bool hasHolidayOfType(const RKCalendariumContentKey&, const RKCalendariumHolidayType&) const override { return false; }
    QStringList holidaysAt(const RKCalendariumContentKey&) const override
    {
        calls.ref();
        return QStringList();
    }
    RKHolidayImage holidayImageAt(const RKCalendariumContentKey&) const override { return RKHolidayImage(QString(), QSize(-1, -1)); }
    mutable QAtomicInt calls;
};

RKCalendariumContentKey pageKey(const QString& project)
{
    RKCalendariumHolidayConfig config;
    config.setLanguage(RKLocale(QStringLiteral("de"), QStringLiteral("DE")));
    return RKCalendariumContentKey(RKCalendariumContentConfig(QDate(2024, 3, 1), config), RKProjectIdentifier(project, false));
}

RKSVGCompilerInstructions setOf(const QList<QPair<QString, RKSVGCompilerInstruction>>& entries, const QString& description)
{
    RKSVGCompilerInstructions set(QStringLiteral("vako:cal"));
    set.setDescription(description);
    for (const auto& entry : entries)
        set.addInstruction(entry.first, entry.second);
    return set;
}
}

class TestCompilerInstructions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); }

    void applyText_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("no text child: one node appended") << "<text/>" << "5" << "<text>5</text>";
        QTest::newRow("first text child replaced, later kept") << "<text>a<tspan/>b</text>" << "5" << "<text>5<tspan/>b</text>";
        QTest::newRow("element first, then text") << "<text><tspan>x</tspan>old</text>" << "5" << "<text><tspan>x</tspan>5</text>";
        QTest::newRow("nested text only: appended after") << "<text><tspan>x</tspan></text>" << "5" << "<text><tspan>x</tspan>5</text>";
        QTest::newRow("uppercase attribute") << "<text text-transform=\"uppercase\">m</text>" << "März" << "<text>MÄRZ</text>";
        QTest::newRow("style wins over attribute") << "<text text-transform=\"uppercase\" style=\"text-transform: Lowercase\"/>" << "MÄRZ"
                                                   << "<text>märz</text>";
        QTest::newRow("capitalize words") << "<text style=\"fill:red;text-transform:capitalize\"/>" << "erster (mai) tag" << "<text>Erster (Mai) Tag</text>";
        QTest::newRow("unknown transform is none") << "<text text-transform=\"shout\"/>" << "ab" << "<text>ab</text>";
    }
    void applyText()
    {
        QFETCH(QString, element);
        QFETCH(QString, value);
        QFETCH(QString, expected);
        QDomDocument document;
        QVERIFY(document.setContent(element));
        QDomElement root = document.documentElement();
        const RKSVGCompilerInstruction instruction(value);
        // Attribute order varies between runs: compare the element without its attributes.
        const auto content = [&root]() {
            QDomDocument holder;
            QDomElement bare = holder.importNode(root, true).toElement();
            const QDomNamedNodeMap attributes = root.attributes();
            for (int i = 0; i < attributes.count(); ++i)
                bare.removeAttribute(attributes.item(i).nodeName());
            holder.appendChild(bare);
            return holder.toString(-1).trimmed();
        };
        instruction.applyInstruction(&root);
        QCOMPARE(content(), expected);
        // Applied again, the text node is reused, not doubled.
        instruction.applyInstruction(&root);
        QCOMPARE(content(), expected);
    }

    void attributeAndNothing()
    {
        QDomDocument document;
        document.setContent(QStringLiteral("<rect class=\"old\"/>"));
        QDomElement rect = document.documentElement();
        RKSVGCompilerInstruction(QStringLiteral("class"), QStringLiteral("new")).applyInstruction(&rect);
        RKSVGCompilerInstruction().applyInstruction(&rect);
        RKSVGCompilerInstruction(QStringLiteral("x")).applyInstruction(nullptr);
        QCOMPARE(document.toString(-1).trimmed(), QStringLiteral("<rect class=\"new\"/>"));
    }

    void replacementsNewestFirst()
    {
        RKSVGCompilerInstructions set;
        set.addInstruction(QStringLiteral("k"), QStringLiteral("first"));
        set.addInstruction(QStringLiteral("k"), QStringLiteral("class"), QStringLiteral("c"));
        set.addInstruction(QStringLiteral("k"), QStringLiteral("class"), QStringLiteral("c"));
        const QList<RKSVGCompilerInstruction> all = set.replacements(QStringLiteral("k"));
        QCOMPARE(all.size(), 3);
        QCOMPARE(all.first().type(), RKSVGCompilerInstruction::SetAttribute);
        QCOMPARE(all.last(), RKSVGCompilerInstruction(QStringLiteral("first")));
        QTest::ignoreMessage(QtDebugMsg, "\"cm_imageholiday00\" setAttribute: xlink:href=moon.svg");
        set.addInstruction(QStringLiteral("cm_imageholiday00"), QStringLiteral("xlink:href"), QStringLiteral("moon.svg"));
    }

    void setEquality_data()
    {
        using Entries = QList<QPair<QString, RKSVGCompilerInstruction>>;
        const RKSVGCompilerInstruction a(QStringLiteral("a")), b(QStringLiteral("b")), c(QStringLiteral("class"), QStringLiteral("a"));
        QTest::addColumn<RKSVGCompilerInstructions>("left");
        QTest::addColumn<RKSVGCompilerInstructions>("right");
        QTest::addColumn<bool>("equal");
        QTest::newRow("order of adding does not matter") << setOf(Entries{{"k", a}, {"k", b}, {"j", c}}, "d") << setOf(Entries{{"j", c}, {"k", b}, {"k", a}}, "d") << true;
        QTest::newRow("description differs") << setOf(Entries{{"k", a}}, "d") << setOf(Entries{{"k", a}}, "e") << false;
        QTest::newRow("multiplicity counts") << setOf(Entries{{"k", a}, {"k", a}, {"k", b}}, "d") << setOf(Entries{{"k", a}, {"k", b}, {"k", b}}, "d") << false;
        QTest::newRow("same instruction, other key") << setOf(Entries{{"k", a}, {"j", b}}, "d") << setOf(Entries{{"k", b}, {"j", a}}, "d") << false;
        QTest::newRow("text versus attribute of same value") << setOf(Entries{{"k", a}}, "d") << setOf(Entries{{"k", RKSVGCompilerInstruction("class", "a")}}, "d") << false;
    }
    void setEquality()
    {
        QFETCH(RKSVGCompilerInstructions, left);
        QFETCH(RKSVGCompilerInstructions, right);
        QFETCH(bool, equal);
        QCOMPARE(left == right, equal);
        QCOMPARE(right == left, equal);
        QCOMPARE(left != right, !equal);
    }

    // The cache asks the factory once per key, also when threads ask at the same time.
    void cacheBuildsOnce()
    {
        static CountingHolidayCache counter; // outlives the factory's use of it
        RKSVGCompilerInstructionsFactory& factory = RKSingleton<RKSVGCompilerInstructionsFactory>::instance();
        RKSVGCompilerInstructionsCache& cache = RKSingleton<RKSVGCompilerInstructionsCache>::instance();
        factory.addHolidayCache(&counter);
        const RKSVGCompilerInstructions reference = factory.createInstructions(pageKey(QStringLiteral("p0")));
        const int perBuild = counter.calls.fetchAndStoreRelaxed(0);
        QVERIFY(perBuild > 0);

        const QStringList projects{QStringLiteral("p1"), QStringLiteral("p2"), QStringLiteral("p3")};
        QAtomicInt mismatches;
        QVector<QThread*> threads;
        for (int t = 0; t < 4; ++t) {
            threads.append(QThread::create([&]() {
                for (int round = 0; round < 3; ++round) {
                    for (const QString& project : projects) {
                        if (cache.instructions(pageKey(project)).allReplacements() != reference.allReplacements())
                            mismatches.ref();
                    }
                }
            }));
        }
        for (QThread* thread : threads)
            thread->start();
        for (QThread* thread : threads) {
            thread->wait();
            delete thread;
        }
        QCOMPARE(mismatches.loadRelaxed(), 0);
        QCOMPARE(counter.calls.loadRelaxed(), perBuild * projects.size());
        QCOMPARE(cache.size(), projects.size());

        cache.instructions(pageKey(QStringLiteral("p1")));
        QCOMPARE(counter.calls.loadRelaxed(), perBuild * projects.size());
        cache.clear();
        QCOMPARE(cache.size(), 0);
        cache.instructions(pageKey(QStringLiteral("p1")));
        QCOMPARE(counter.calls.loadRelaxed(), perBuild * (projects.size() + 1));
        factory.removeHolidayCache(&counter);
    }
};

QTEST_GUILESS_MAIN(TestCompilerInstructions)
#include "test_compilerinstructions.moc"
