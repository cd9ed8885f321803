// rkxml-corpus: runs an SVG processing mode over every *.svg below the given directories,
// renders each file before and after with QSvgRenderer and reports parse failures, crashes,
// time per file and the files whose picture changed.
//
// Usage: rkxml-corpus [--mode normalize|fill] [--size 128] [--threshold 1.0] [--jobs 2]
//                     [--limit N] [--images DIR] [--list] DIR...
//
// Each file is processed in a worker process (this program with --worker), so a crash or a
// hang is counted against that file and the run goes on with a fresh worker.
//
// To add a mode, add an entry to modes(): a name, a line of help, the transformation that is
// timed, and optionally its steps (for finding the step that changed a picture).

#include <RKSVGNormalizer.h>
#include <RKXMLBuilder.h>

#include <QCommandLineParser>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMutex>
#include <QPainter>
#include <QProcess>
#include <QSet>
#include <QSvgRenderer>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <functional>

namespace {

struct Step
{
    QString name;
    std::function<QDomDocument(QDomDocument, const QFileInfo&)> apply;
};

struct Mode
{
    QString name;
    QString help;
    std::function<QDomDocument(const QDomDocument&, const QFileInfo&)> run;
    QVector<Step> steps; // applied in order, they give the same result as `run`
};

QVector<Step> normalizerSteps()
{
    return {
        { "makeAbsoluteHRefs", [](QDomDocument d, const QFileInfo& f) { RKSVGNormalizer::makeAbsoluteHRefs(d, f.absoluteDir()); return d; } },
        { "removeComments", [](QDomDocument d, const QFileInfo&) { RKSVGNormalizer::removeComments(d.documentElement()); return d; } },
        { "expandUseTags", [](QDomDocument d, const QFileInfo&) { RKSVGNormalizer::expandUseTags(d); return d; } },
        { "removeGsWithoutLayerType", [](QDomDocument d, const QFileInfo&) { RKSVGNormalizer::removeGsWithoutLayerType(d); return d; } },
        { "normalize", [](QDomDocument d, const QFileInfo&) { return RKSVGNormalizer::normalize(d); } },
        { "removeElementsWithoutChilds",
            [](QDomDocument d, const QFileInfo&) { RKSVGNormalizer::removeElementsWithoutChilds(d, { QStringLiteral("g") }); return d; } },
        { "mergeLayertypeRenderWithNoCalEmbed",
            [](QDomDocument d, const QFileInfo&) { RKSVGNormalizer::mergeLayertypeRenderWithNoCalEmbed(d); return d; } },
    };
}

const QVector<Mode>& modes()
{
    static const QVector<Mode> table = {
        { "normalize", "the normaliser's whole pipeline (prepareDomDocument, no logo)",
            [](const QDomDocument& d, const QFileInfo& f) { return RKSVGNormalizer::prepareDomDocument(d, f, QDomDocument()); },
            normalizerSteps() },
        { "fill", "the pipeline, then the default fill of closed shapes",
            [](const QDomDocument& d, const QFileInfo& f) {
                QDomDocument result = RKSVGNormalizer::prepareDomDocument(d, f, QDomDocument());
                RKSVGNormalizer::setDefaultFillAttribute(result);
                return result;
            },
            normalizerSteps() + QVector<Step>{ { "setDefaultFillAttribute", [](QDomDocument d, const QFileInfo&) {
                RKSVGNormalizer::setDefaultFillAttribute(d);
                return d;
            } } } },
    };
    return table;
}

const Mode* findMode(const QString& name)
{
    for (const Mode& mode : modes()) {
        if (mode.name == name)
            return &mode;
    }
    return nullptr;
}

// ------------------------------------------------------------------ worker side

class CpuTimer
{
public:
    CpuTimer() { myStart = now(); }
    /// Milliseconds of CPU time of this thread since the start or the last restart.
    double restart()
    {
        const double current = now();
        const double elapsed = current - myStart;
        myStart = current;
        return elapsed;
    }

private:
    static double now()
    {
        timespec time {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time.tv_sec * 1e3 + time.tv_nsec / 1e6;
    }
    double myStart = 0;
};

// The picture on white, `size` pixels square; null when the renderer cannot read the text.
QImage render(const QByteArray& svg, int size)
{
    QSvgRenderer renderer(svg);
    if (!renderer.isValid())
        return QImage();
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    return image;
}

// Mean absolute difference of the colour channels, in per cent of full scale.
double difference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return 100.0;
    qint64 sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        const QRgb* left = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const QRgb* right = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            sum += qAbs(qRed(left[x]) - qRed(right[x])) + qAbs(qGreen(left[x]) - qGreen(right[x]))
                + qAbs(qBlue(left[x]) - qBlue(right[x]));
    }
    return 100.0 * double(sum) / (double(a.width()) * a.height() * 3 * 255);
}

QByteArray serialize(const QDomDocument& document)
{
    return RKXMLBuilder::toString(document, 1).toUtf8();
}

QString safeName(const QString& path)
{
    QString name = path;
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    return name.right(120);
}

// One result line: path, status, reason, parse ms, mode ms, renderable, difference %, step.
QString processFile(const QString& path, const Mode& mode, int size, double threshold, const QString& imageDir)
{
    const QStringList fields = [&]() -> QStringList {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return { "unreadable", file.errorString() };
        const QByteArray bytes = file.readAll();
        const QFileInfo info(path);
        // Thread CPU time: what the file costs, whatever else the machine is doing.
        CpuTimer timer;
        QDomDocument document;
        QString message;
        int line = 0;
        int column = 0;
        if (!document.setContent(bytes, false, &message, &line, &column))
            return { "parse", QStringLiteral("line %1, column %2: %3").arg(line).arg(column).arg(message) };
        const double parseMs = timer.restart();
        const QDomDocument result = mode.run(document, info);
        const double modeMs = timer.restart();

        const QImage before = render(bytes, size);
        if (before.isNull())
            return { "ok", QString(), QString::number(parseMs), QString::number(modeMs), "0", "0", QString() };
        const QImage after = render(serialize(result), size);
        const double diff = after.isNull() ? 100.0 : difference(before, after);
        // The steps whose own change of the picture is over the threshold.
        QStringList changedBy;
        if (diff > threshold && !mode.steps.isEmpty()) {
            QDomDocument current = document.cloneNode(true).toDocument();
            QImage previous = before;
            for (const Step& s : mode.steps) {
                current = s.apply(current, info);
                const QImage image = render(serialize(current), size);
                if (image.isNull() || previous.isNull() || difference(previous, image) > threshold)
                    changedBy << s.name;
                previous = image;
            }
        }
        const QString step = changedBy.join(QLatin1Char(','));
        if (diff > threshold && !imageDir.isEmpty()) {
            QImage pair(2 * size, size, QImage::Format_ARGB32_Premultiplied);
            pair.fill(Qt::red);
            QPainter painter(&pair);
            painter.drawImage(0, 0, before);
            if (!after.isNull())
                painter.drawImage(size, 0, after);
            painter.end();
            pair.save(QDir(imageDir).filePath(safeName(path) + QStringLiteral(".png")));
        }
        return { "ok", QString(), QString::number(parseMs), QString::number(modeMs), "1", QString::number(diff), step };
    }();
    QStringList line = { path };
    line += fields;
    for (QString& field : line)
        field.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    return line.join(QLatin1Char('\t'));
}

void quiet(QtMsgType, const QMessageLogContext&, const QString&) {}

int runWorker(const Mode& mode, int size, double threshold, const QString& imageDir)
{
    qInstallMessageHandler(quiet); // the renderer's notes on unsupported features
    QTextStream in(stdin);
    QTextStream out(stdout);
    QString path;
    while (in.readLineInto(&path)) {
        out << processFile(path, mode, size, threshold, imageDir) << '\n';
        out.flush();
    }
    return 0;
}

// ------------------------------------------------------------------ controller side

struct Result
{
    QString path;
    QString status; // ok, parse, unreadable, crash, timeout
    QString reason;
    double parseMs = 0;
    double modeMs = 0;
    bool renderable = false;
    double difference = 0;
    QString step;
};

Result parseLine(const QString& line)
{
    const QStringList f = line.split(QLatin1Char('\t'));
    Result r;
    r.path = f.value(0);
    r.status = f.value(1);
    r.reason = f.value(2);
    r.parseMs = f.value(3).toDouble();
    r.modeMs = f.value(4).toDouble();
    r.renderable = f.value(5) == QLatin1String("1");
    r.difference = f.value(6).toDouble();
    r.step = f.value(7);
    return r;
}

class Controller
{
public:
    Controller(QStringList files, QStringList workerArguments, int timeoutMs)
        : myFiles(std::move(files)), myWorkerArguments(std::move(workerArguments)), myTimeoutMs(timeoutMs)
    {
        myResults.resize(myFiles.size());
    }

    void run(int jobs)
    {
        QVector<QThread*> threads;
        for (int i = 0; i < jobs; ++i) {
            threads.append(QThread::create([this]() { work(); }));
            threads.last()->start();
        }
        for (QThread* thread : threads) {
            thread->wait();
            delete thread;
        }
    }

    const QVector<Result>& results() const { return myResults; }

private:
    void work()
    {
        QProcess* worker = nullptr;
        auto start = [&]() {
            delete worker;
            worker = new QProcess;
            worker->setProcessChannelMode(QProcess::ForwardedErrorChannel);
            worker->start(QCoreApplication::applicationFilePath(), myWorkerArguments);
            worker->waitForStarted();
        };
        start();
        for (int index = myNext++; index < myFiles.size(); index = myNext++) {
            const QString& path = myFiles.at(index);
            worker->write(path.toUtf8() + '\n');
            worker->waitForBytesWritten();
            QElapsedTimer timer;
            timer.start();
            Result result;
            while (!worker->canReadLine()) {
                if (worker->state() != QProcess::Running || timer.elapsed() > myTimeoutMs)
                    break;
                worker->waitForReadyRead(100);
            }
            if (worker->canReadLine()) {
                result = parseLine(QString::fromUtf8(worker->readLine()).chopped(1));
            } else {
                result.path = path;
                result.status = worker->state() == QProcess::Running ? QStringLiteral("timeout") : QStringLiteral("crash");
                result.reason = worker->state() == QProcess::Running
                    ? QStringLiteral("no answer in %1 s").arg(myTimeoutMs / 1000)
                    : QStringLiteral("worker ended (exit status %1, code %2)").arg(worker->exitStatus()).arg(worker->exitCode());
                worker->kill();
                worker->waitForFinished();
                start();
            }
            myResults[index] = result;
            const int done = ++myDone;
            if (done % 250 == 0) {
                QMutexLocker lock(&myOutputLock);
                QTextStream(stderr) << "rkxml-corpus: " << done << " of " << myFiles.size() << " files\n";
            }
        }
        worker->closeWriteChannel();
        worker->waitForFinished();
        delete worker;
    }

    QStringList myFiles;
    QStringList myWorkerArguments;
    int myTimeoutMs;
    QVector<Result> myResults;
    std::atomic<int> myNext { 0 };
    std::atomic<int> myDone { 0 };
    QMutex myOutputLock;
};

double median(QVector<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

int report(const QVector<Result>& results, const Mode& mode, double threshold, int worst, QTextStream& out)
{
    QVector<const Result*> failures;
    QVector<const Result*> crashes;
    QVector<const Result*> rendered;
    QVector<double> parseTimes;
    QVector<double> modeTimes;
    QVector<double> totalTimes;
    const Result* slowest = nullptr;
    int unrenderable = 0;
    for (const Result& r : results) {
        if (r.status == QLatin1String("parse") || r.status == QLatin1String("unreadable")) {
            failures.append(&r);
        } else if (r.status != QLatin1String("ok")) {
            crashes.append(&r);
        } else {
            parseTimes.append(r.parseMs);
            modeTimes.append(r.modeMs);
            totalTimes.append(r.parseMs + r.modeMs);
            if (!slowest || r.modeMs > slowest->modeMs)
                slowest = &r;
            if (r.renderable)
                rendered.append(&r);
            else
                ++unrenderable;
        }
    }
    std::sort(rendered.begin(), rendered.end(), [](const Result* a, const Result* b) { return a->difference > b->difference; });
    const int differing = int(std::count_if(rendered.cbegin(), rendered.cend(),
        [threshold](const Result* r) { return r->difference > threshold; }));
    const int tooSlow = int(std::count_if(totalTimes.cbegin(), totalTimes.cend(), [](double ms) { return ms > 1000.0; }));

    out << "mode: " << mode.name << " (" << mode.help << ")\n";
    out << "files read: " << results.size() << '\n';
    out << "parse failures: " << failures.size() << '\n';
    for (const Result* r : failures)
        out << "  " << r->path << ": " << r->reason << '\n';
    out << "crashes and timeouts: " << crashes.size() << '\n';
    for (const Result* r : crashes)
        out << "  " << r->status << ' ' << r->path << ": " << r->reason << '\n';
    out << "CPU time per file, parse: median " << QString::number(median(parseTimes), 'f', 2) << " ms, worst "
        << QString::number(parseTimes.isEmpty() ? 0 : *std::max_element(parseTimes.cbegin(), parseTimes.cend()), 'f', 1) << " ms\n";
    out << "CPU time per file, " << mode.name << ": median " << QString::number(median(modeTimes), 'f', 2) << " ms, worst "
        << QString::number(slowest ? slowest->modeMs : 0, 'f', 1) << " ms" << (slowest ? " (" + slowest->path + ")" : QString())
        << '\n';
    out << "files over one second (parse and " << mode.name << "): " << tooSlow << '\n';
    out << "originals the renderer cannot draw: " << unrenderable << '\n';
    out << "pictures changed by more than " << threshold << " % mean absolute pixel difference: " << differing << " of "
        << rendered.size() << " (" << QString::number(rendered.isEmpty() ? 0 : 100.0 * differing / rendered.size(), 'f', 1)
        << " %)\n";
    QMap<QString, int> byStep;
    for (const Result* r : rendered) {
        if (r->difference <= threshold)
            continue;
        const QStringList steps = r->step.split(QLatin1Char(','), Qt::SkipEmptyParts);
        for (const QString& step : steps)
            ++byStep[step];
        if (steps.isEmpty())
            ++byStep[QStringLiteral("(no single step)")];
    }
    for (auto it = byStep.cbegin(); it != byStep.cend(); ++it)
        out << "  changed by " << it.key() << ": " << it.value() << '\n';
    out << "worst " << worst << ":\n";
    for (int i = 0; i < std::min(worst, int(rendered.size())); ++i)
        out << "  " << QString::number(rendered.at(i)->difference, 'f', 2) << " %  " << rendered.at(i)->path
            << (rendered.at(i)->step.isEmpty() ? QString() : "  [" + rendered.at(i)->step + "]") << '\n';
    return crashes.isEmpty() && tooSlow == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Runs an SVG processing mode over real clip art and compares renderings."));
    parser.addHelpOption();
    QStringList modeNames;
    for (const Mode& mode : modes())
        modeNames << mode.name + ": " + mode.help;
    const QCommandLineOption modeOption(QStringLiteral("mode"), "Processing mode (default normalize). " + modeNames.join("; "),
        QStringLiteral("name"), QStringLiteral("normalize"));
    const QCommandLineOption sizeOption(QStringLiteral("size"), "Rendering size in pixels.", QStringLiteral("px"), QStringLiteral("128"));
    const QCommandLineOption thresholdOption(QStringLiteral("threshold"), "Per cent difference that counts as changed.",
        QStringLiteral("percent"), QStringLiteral("1.0"));
    const QCommandLineOption jobsOption(QStringLiteral("jobs"), "Worker processes.", QStringLiteral("n"), QStringLiteral("2"));
    const QCommandLineOption limitOption(QStringLiteral("limit"), "Only the first n files (sorted).", QStringLiteral("n"), QStringLiteral("0"));
    const QCommandLineOption worstOption(QStringLiteral("worst"), "How many of the most changed files to list.", QStringLiteral("n"),
        QStringLiteral("10"));
    const QCommandLineOption timeoutOption(QStringLiteral("timeout"), "Seconds a worker may take for one file.", QStringLiteral("s"),
        QStringLiteral("60"));
    const QCommandLineOption imagesOption(QStringLiteral("images"), "Write before/after pictures of changed files here.",
        QStringLiteral("dir"));
    const QCommandLineOption workerOption(QStringLiteral("worker"), "Internal: process paths read from standard input.");
    parser.addOptions({ modeOption, sizeOption, thresholdOption, jobsOption, limitOption, worstOption, timeoutOption,
        imagesOption, workerOption });
    parser.addPositionalArgument(QStringLiteral("dir"), QStringLiteral("Directories searched for *.svg files."));
    parser.process(app);

    QTextStream out(stdout);
    QTextStream err(stderr);
    const Mode* mode = findMode(parser.value(modeOption));
    if (!mode) {
        err << "rkxml-corpus: unknown mode \"" << parser.value(modeOption) << "\"; modes: " << modeNames.join(", ") << '\n';
        return 2;
    }
    const int size = qBound(8, parser.value(sizeOption).toInt(), 2048);
    const double threshold = parser.value(thresholdOption).toDouble();
    if (parser.isSet(workerOption))
        return runWorker(*mode, size, threshold, parser.value(imagesOption));

    QStringList files;
    QSet<QString> seen;
    for (const QString& dir : parser.positionalArguments()) {
        QDirIterator it(dir, { QStringLiteral("*.svg") }, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            // Links to the same file are counted once.
            const QString path = it.next();
            const QString target = QFileInfo(path).canonicalFilePath();
            if (!seen.contains(target)) {
                seen.insert(target);
                files << path;
            }
        }
    }
    std::sort(files.begin(), files.end());
    const int limit = parser.value(limitOption).toInt();
    if (limit > 0 && files.size() > limit)
        files = files.mid(0, limit);
    if (files.isEmpty()) {
        err << "rkxml-corpus: no *.svg files in " << parser.positionalArguments().join(", ") << '\n';
        return 2;
    }
    if (parser.isSet(imagesOption))
        QDir().mkpath(parser.value(imagesOption));

    QStringList workerArguments = { "--worker", "--mode", mode->name, "--size", QString::number(size), "--threshold",
        QString::number(threshold) };
    if (parser.isSet(imagesOption))
        workerArguments << "--images" << parser.value(imagesOption);
    Controller controller(files, workerArguments, 1000 * qMax(1, parser.value(timeoutOption).toInt()));
    controller.run(qBound(1, parser.value(jobsOption).toInt(), 16));
    return report(controller.results(), *mode, threshold, parser.value(worstOption).toInt(), out);
}
