#include "PrintOutput.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace {

const double POINTS_PER_MM = 72.0 / 25.4;
// Crop marks: 5 mm long, in a margin of 6 mm outside the bleed, 0.25 pt wide.
const double MARK_LENGTH = 5 * POINTS_PER_MM;
const double MARK_MARGIN = 6 * POINTS_PER_MM;
const double MARK_WIDTH = 0.25;
// QPdfWriter works in device units; 1200 per inch keeps coordinates exact enough.
const int PDF_RESOLUTION = 1200;

struct Unit {
    const char* suffix;
    double points;
};
const Unit UNITS[] = {{"pt", 1.0}, {"mm", POINTS_PER_MM}, {"cm", 10 * POINTS_PER_MM}, {"in", 72.0}, {"pc", 12.0},
    {"px", 0.75}, {"", 0.75}};

} // namespace

const QList<PaperFormat>& paperFormats()
{
    static const QList<PaperFormat> formats = {{"A4", 210 * POINTS_PER_MM, 297 * POINTS_PER_MM},
        {"A3", 297 * POINTS_PER_MM, 420 * POINTS_PER_MM}, {"Letter", 612, 792}, {"Tabloid", 792, 1224}};
    return formats;
}

const PaperFormat* findPaperFormat(const QString& name)
{
    for (const PaperFormat& format : paperFormats()) {
        if (name.compare(QLatin1String(format.name), Qt::CaseInsensitive) == 0)
            return &format;
    }
    return nullptr;
}

double lengthInPoints(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*([0-9]*\\.?[0-9]+(?:[eE][-+]?[0-9]+)?)\\s*([a-z]*)\\s*$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return -1;
    for (const Unit& unit : UNITS) {
        if (match.captured(2) == QLatin1String(unit.suffix))
            return match.captured(1).toDouble() * unit.points;
    }
    return -1;
}

PrintLayout::PrintLayout(const QSizeF& templateSize, const PaperFormat* paper, double bleedPoints, bool cropMarks)
    : myTemplateSize(templateSize)
    , myTrimSize(templateSize)
    , myBleed(qMax(0.0, bleedPoints))
    , myCropMarks(cropMarks)
{
    if (paper) {
        const bool landscape = templateSize.width() > templateSize.height();
        myTrimSize = landscape ? QSizeF(paper->height, paper->width) : QSizeF(paper->width, paper->height);
    }
}

QSizeF PrintLayout::pageSize() const
{
    const double margin = myBleed + (myCropMarks ? MARK_MARGIN : 0.0);
    return myTrimSize + QSizeF(2 * margin, 2 * margin);
}

QRectF PrintLayout::trimRect() const
{
    const double margin = myBleed + (myCropMarks ? MARK_MARGIN : 0.0);
    return QRectF(QPointF(margin, margin), myTrimSize);
}

QRectF PrintLayout::bleedRect() const
{
    return trimRect().adjusted(-myBleed, -myBleed, myBleed, myBleed);
}

QRectF PrintLayout::artRect() const
{
    const QRectF trim = trimRect();
    if (myTemplateSize.isEmpty())
        return trim;
    const QSizeF fitted = myTemplateSize.scaled(trim.size(), Qt::KeepAspectRatio);
    return QRectF(trim.center() - QPointF(fitted.width() / 2, fitted.height() / 2), fitted);
}

void PrintLayout::drawCropMarks(QPainter& painter) const
{
    if (!myCropMarks)
        return;
    painter.save();
    painter.setPen(QPen(Qt::black, MARK_WIDTH));
    const QRectF trim = trimRect();
    const double gap = myBleed; // marks start where the bleed ends
    const QPointF corners[] = {trim.topLeft(), trim.topRight(), trim.bottomLeft(), trim.bottomRight()};
    for (const QPointF& corner : corners) {
        const double sx = corner.x() < trim.center().x() ? -1 : 1;
        const double sy = corner.y() < trim.center().y() ? -1 : 1;
        painter.drawLine(QPointF(corner.x() + sx * gap, corner.y()), QPointF(corner.x() + sx * (gap + MARK_LENGTH), corner.y()));
        painter.drawLine(QPointF(corner.x(), corner.y() + sy * gap), QPointF(corner.x(), corner.y() + sy * (gap + MARK_LENGTH)));
    }
    painter.restore();
}

struct PageWriter::Pdf {
    QSaveFile file;
    std::unique_ptr<QPdfWriter> writer;
    std::unique_ptr<QPainter> painter;
    explicit Pdf(const QString& path)
        : file(path)
    {
    }
};

PageWriter::PageWriter(OutputFormat format, const QString& target, const PrintLayout& layout, int dpi, const QString& title)
    : myFormat(format)
    , myTarget(target)
    , myLayout(layout)
    , myDpi(dpi)
    , myTitle(title)
{
}

PageWriter::~PageWriter()
{
    if (myPdf) {
        myPdf->painter.reset();
        myPdf->writer.reset();
        myPdf->file.cancelWriting();
    }
    qDeleteAll(myPages); // auto-removing temporary files
}

QString PageWriter::pagePath(const QString& target, int index)
{
    const QFileInfo info(target);
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    const QString base = info.suffix().isEmpty() ? info.fileName() : info.completeBaseName();
    return info.dir().filePath(QStringLiteral("%1-%2%3").arg(base).arg(index + 1, 2, 10, QLatin1Char('0')).arg(suffix));
}

bool PageWriter::fail(const QString& message)
{
    if (myError.isEmpty())
        myError = message;
    return false;
}

bool PageWriter::addPage(const DrawPage& draw, const QByteArray& svg)
{
    if (!myError.isEmpty())
        return false;
    const QSizeF page = myLayout.pageSize();
    if (myFormat == OutputFormat::Pdf) {
        if (!myPdf) {
            myPdf.reset(new Pdf(myTarget));
            if (!myPdf->file.open(QIODevice::WriteOnly))
                return fail(QStringLiteral("cannot write %1: %2").arg(myTarget, myPdf->file.errorString()));
            myPdf->writer.reset(new QPdfWriter(&myPdf->file));
            myPdf->writer->setResolution(PDF_RESOLUTION);
            myPdf->writer->setPageSize(QPageSize(page, QPageSize::Point, QString(), QPageSize::ExactMatch));
            myPdf->writer->setPageMargins(QMarginsF(0, 0, 0, 0));
            myPdf->writer->setTitle(myTitle);
            myPdf->writer->setCreator(QStringLiteral("rkcalendar"));
            myPdf->painter.reset(new QPainter(myPdf->writer.get()));
            if (!myPdf->painter->isActive())
                return fail(QStringLiteral("cannot start the PDF %1").arg(myTarget));
        } else if (!myPdf->writer->newPage()) {
            return fail(QStringLiteral("cannot add a page to %1").arg(myTarget));
        }
        QPainter& painter = *myPdf->painter;
        painter.save();
        painter.scale(PDF_RESOLUTION / 72.0, PDF_RESOLUTION / 72.0);
        draw(painter);
        painter.restore();
        if (myPdf->file.error() != QFileDevice::NoError)
            return fail(QStringLiteral("cannot write %1: %2").arg(myTarget, myPdf->file.errorString()));
        return true;
    }

    const QString path = pagePath(myTarget, myPages.size());
    auto* file = new QTemporaryFile(path + QStringLiteral(".XXXXXX"));
    myPages.append(file);
    if (!file->open())
        return fail(QStringLiteral("cannot write %1: %2").arg(path, file->errorString()));
    QByteArray bytes = svg;
    if (myFormat == OutputFormat::Png) {
        const QSize pixels = (page * myDpi / 72.0).toSize();
        QImage image(pixels, QImage::Format_RGB32);
        if (image.isNull())
            return fail(QStringLiteral("a page of %1 x %2 pixels is too large (lower --dpi)").arg(pixels.width()).arg(pixels.height()));
        image.setDotsPerMeterX(qRound(myDpi / 0.0254));
        image.setDotsPerMeterY(qRound(myDpi / 0.0254));
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.scale(myDpi / 72.0, myDpi / 72.0);
            draw(painter);
        }
        if (!image.save(file, "PNG"))
            return fail(QStringLiteral("cannot write %1: %2").arg(path, file->errorString()));
        bytes.clear();
    } else if (file->write(bytes) != bytes.size()) {
        return fail(QStringLiteral("cannot write %1: %2").arg(path, file->errorString()));
    }
    if (!file->flush())
        return fail(QStringLiteral("cannot write %1: %2").arg(path, file->errorString()));
    return true;
}

bool PageWriter::commit()
{
    if (!myError.isEmpty())
        return false;
    if (myFormat == OutputFormat::Pdf) {
        if (!myPdf)
            return fail(QStringLiteral("no pages to write"));
        if (!myPdf->painter->end())
            return fail(QStringLiteral("cannot finish the PDF %1").arg(myTarget));
        myPdf->painter.reset();
        myPdf->writer.reset();
        if (!myPdf->file.commit())
            return fail(QStringLiteral("cannot write %1: %2").arg(myTarget, myPdf->file.errorString()));
        myPdf.reset();
        myWritten << myTarget;
        return true;
    }
    for (QTemporaryFile* file : qAsConst(myPages)) {
        if (!file->flush() || fsync(file->handle()) != 0)
            return fail(QStringLiteral("cannot write %1: %2").arg(file->fileName(), file->errorString()));
    }
    for (int i = 0; i < myPages.size(); ++i) {
        const QString path = pagePath(myTarget, i);
        QTemporaryFile* file = myPages.at(i);
        file->close();
        if (std::rename(QFile::encodeName(file->fileName()).constData(), QFile::encodeName(path).constData()) != 0)
            return fail(QStringLiteral("cannot write %1: %2").arg(path, QString::fromLocal8Bit(strerror(errno))));
        file->setAutoRemove(false);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
        myWritten << path;
    }
    return true;
}
