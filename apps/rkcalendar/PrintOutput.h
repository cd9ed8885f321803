#pragma once

// The print side of rkcalendar render: paper sizes, bleed and crop marks, and the
// writers that put pages into a PDF, PNG or SVG files without ever leaving a partial file.

#include <QByteArray>
#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QPainter;
class QTemporaryFile;

/// A named paper format, portrait, in points.
struct PaperFormat {
    const char* name;
    double width;
    double height;
};

/// A4, A3, Letter and Tabloid.
const QList<PaperFormat>& paperFormats();
/// The format of that name (case-insensitive), or null.
const PaperFormat* findPaperFormat(const QString& name);

/// A length such as "210mm", "595pt", "8.5in" or "744" (CSS pixels) in points; -1 when malformed.
double lengthInPoints(const QString& text);

/**
 * Where a template lands on a printed page. The trimmed page is the paper (turned to the
 * template's orientation) or, without paper, the template's own size; the template is
 * scaled to fit it and centred. The bleed surrounds the trimmed page on every side; crop
 * marks need a further margin outside the bleed, so that they never touch the artwork.
 */
class PrintLayout
{
public:
    PrintLayout() = default;
    PrintLayout(const QSizeF& templateSize, const PaperFormat* paper, double bleedPoints, bool cropMarks);

    QSizeF pageSize() const;  ///< the whole sheet, in points
    QRectF trimRect() const;  ///< the trimmed page on the sheet
    QRectF bleedRect() const; ///< the trimmed page plus the bleed
    QRectF artRect() const;   ///< the template, fitted into the trimmed page
    bool hasCropMarks() const { return myCropMarks; }

    /// Trim marks at the four corners, in the margin outside the bleed.
    void drawCropMarks(QPainter& painter) const;

private:
    QSizeF myTemplateSize;
    QSizeF myTrimSize;
    double myBleed = 0;
    bool myCropMarks = false;
};

enum class OutputFormat { Pdf, Png, Svg };

/**
 * Collects the pages of one job and publishes them only when all have been written:
 * a PDF is one file, PNG and SVG pages are NAME-01.png, NAME-02.png, ... beside the
 * target. Everything is first written to temporary files in the target's directory and
 * renamed into place by commit(); a failure at any point, or destruction without
 * commit(), removes the temporaries and leaves existing files as they were.
 */
class PageWriter
{
public:
    /// Draws one page: the painter's unit is the point, the sheet spans layout.pageSize().
    using DrawPage = std::function<void(QPainter& painter)>;

    PageWriter(OutputFormat format, const QString& target, const PrintLayout& layout, int dpi, const QString& title);
    ~PageWriter();
    PageWriter(const PageWriter&) = delete;
    PageWriter& operator=(const PageWriter&) = delete;

    /// Adds a page. For SVG output `svg` is written and `draw` is not called.
    bool addPage(const DrawPage& draw, const QByteArray& svg);
    /// Publishes the pages; the paths written are in written().
    bool commit();

    QStringList written() const { return myWritten; }
    QString errorString() const { return myError; }

    /// The path of page `index` (0-based) for PNG and SVG output: "cal.png" gives "cal-01.png".
    static QString pagePath(const QString& target, int index);

private:
    bool fail(const QString& message);

    OutputFormat myFormat;
    QString myTarget;
    PrintLayout myLayout;
    int myDpi;
    QString myTitle;
    QString myError;
    QStringList myWritten;
    struct Pdf;
    std::unique_ptr<Pdf> myPdf;
    QList<QTemporaryFile*> myPages; // owned; PNG and SVG pages waiting for commit()
};
