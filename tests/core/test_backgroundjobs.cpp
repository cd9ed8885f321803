#include "RKTestSupport.h"

#include <RKBackgroundJobManager.h>
#include <RKFileEncoder.h>

#include <QSemaphore>
#include <QThread>

#include <atomic>
#include <memory>

namespace {

// Counts its runs per key; a job whose gate is set waits on it, so tests can hold it running.
class CountingJob : public RKBackgroundJob
{
public:
    static std::atomic<int> runs[4];
    static QSemaphore* gate;
    static std::atomic<Qt::HANDLE> lastThread;

    explicit CountingJob(int key) : myKey(key) {}
    RKBackgroundJob* clone() const override { return new CountingJob(myKey); }
    bool doStuff() const override
    {
        lastThread = QThread::currentThreadId();
        if (gate)
            gate->acquire();
        ++runs[myKey];
        return myKey != 3;
    }
    bool operator==(const RKBackgroundJob& other) const override
    {
        const auto* job = dynamic_cast<const CountingJob*>(&other);
        return job && job->myKey == myKey;
    }
    uint hash() const override { return 7; } // all collide: equality must decide

private:
    int myKey;
};
std::atomic<int> CountingJob::runs[4];
QSemaphore* CountingJob::gate = nullptr;
std::atomic<Qt::HANDLE> CountingJob::lastThread{nullptr};

}

class TestBackgroundJobs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { isolateUserFiles(); QVERIFY(myDir.isValid()); }
    void init()
    {
        for (auto& runs : CountingJob::runs)
            runs = 0;
    }

    void equalJobsRunOnceWhileWaitingOrRunning()
    {
        QSemaphore gate;
        CountingJob::gate = &gate;
        RKBackgroundJobManager& manager = RKBackgroundJobManager::instance();
        const RKBackgroundTask first = manager.schedule(new CountingJob(0), RKBackgroundJobPriority(2));
        for (int i = 0; i < 20; ++i)
            manager.schedule(new CountingJob(0), RKBackgroundJobPriority(2));
        const RKBackgroundTask other = manager.schedule(new CountingJob(1), RKBackgroundJobPriority(2));
        QCOMPARE(manager.pendingJobCount(), 2);
        QVERIFY(!manager.waitForIdle(50)); // held at the gate
        QVERIFY(!first.isFinished());
        std::unique_ptr<QThread> opener(QThread::create([&gate] { QThread::msleep(100); gate.release(2); }));
        opener->start();
        QVERIFY(manager.waitForIdle()); // no limit: returns once both ran
        QCOMPARE(first.state(), RKBackgroundTask::Succeeded);
        QCOMPARE(other.state(), RKBackgroundTask::Succeeded);
        opener->wait();
        CountingJob::gate = nullptr;
        QCOMPARE(CountingJob::runs[0].load(), 1);
        QCOMPARE(CountingJob::runs[1].load(), 1);

        // Once finished, the same work is accepted again.
        manager.schedule(new CountingJob(0), RKBackgroundJobPriority(2));
        QVERIFY(manager.waitForIdle(10000));
        QCOMPARE(CountingJob::runs[0].load(), 2);
    }

    void immediatePriorityRunsOnTheCallingThread()
    {
        const RKBackgroundTask task = RKBackgroundJobManager::instance().schedule(new CountingJob(3),
            RKBackgroundJobPriority(RKBackgroundJobPriority::Immediately));
        QCOMPARE(task.state(), RKBackgroundTask::Failed);
        QCOMPARE(CountingJob::lastThread.load(), QThread::currentThreadId());
        QVERIFY(!RKBackgroundJobManager::instance().schedule(nullptr, RKBackgroundJobPriority(2)).isValid());
    }

    void encodedFiles_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file
        QTest::addColumn<QByteArray>("expected");
        QTest::addColumn<QString>("warning");    // pattern, %1 the file's path
        const QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";
        const QString damaged = QStringLiteral("^Damaged encoded file \"%1\"$");
        QTest::newRow("plain") << svg << svg << QString();
        QTest::newRow("encoded") << RKFileEncoder::encode(svg) << svg << QString();
        QTest::newRow("magic only") << RKFileEncoder::CLP_MAGIC << QByteArray() << damaged;
        QTest::newRow("damaged") << QByteArray(RKFileEncoder::encode(svg)).replace(14, 6, "xxxxxx") << QByteArray() << damaged;
        QTest::newRow("truncated") << RKFileEncoder::encode(svg).left(20) << QByteArray() << damaged;
        QTest::newRow("huge claim") << QByteArray(RKFileEncoder::CLP_MAGIC + "\xff\xff\xff\xff" + "xyz") << QByteArray() << damaged;
        QTest::newRow("missing") << QByteArray() << QByteArray() << QStringLiteral("^Could not read file \"%1\": ");
    }
    void encodedFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, expected);
        QFETCH(QString, warning);
        const QString path = myDir.filePath(QStringLiteral("clip.svg"));
        QFile::remove(path);
        if (!content.isNull())
            writeTestFile(path, content);
        if (!warning.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning.arg(QRegularExpression::escape(path))));
        QCOMPARE(RKFileEncoder::encodeAndCopyCLP(QFileInfo(path)), expected);
    }

private:
    QTemporaryDir myDir;
};

QTEST_GUILESS_MAIN(TestBackgroundJobs)
#include "test_backgroundjobs.moc"
