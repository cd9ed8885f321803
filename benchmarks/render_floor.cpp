// The floor of `rkcalendar render`: already compiled SVG pages drawn with QSvgRenderer into
// one QPdfWriter document at the page size of the first, with the tool's PDF resolution.
// Usage: render_floor OUT.pdf WIDTHxHEIGHT PAGE.svg...   (the page size in points)

#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const QStringList size = QString::fromLocal8Bit(argc > 2 ? argv[2] : "").split(QLatin1Char('x'));
    const QSizeF points = size.size() == 2 ? QSizeF(size.at(0).toDouble(), size.at(1).toDouble()) : QSizeF();
    if (argc < 4 || points.isEmpty()) {
        std::fprintf(stderr, "usage: render_floor OUT.pdf WIDTHxHEIGHT PAGE.svg...\n");
        return 2;
    }
    const int resolution = 1200;
    QPdfWriter writer(QString::fromLocal8Bit(argv[1]));
    writer.setResolution(resolution);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
    for (int i = 3; i < argc; ++i) {
        QSvgRenderer renderer(QString::fromLocal8Bit(argv[i]));
        if (!renderer.isValid()) {
            std::fprintf(stderr, "render_floor: %s is not a valid SVG\n", argv[i]);
            return 1;
        }
        if (i == 3) {
            if (!painter.begin(&writer))
                return 1;
        } else {
            writer.newPage();
        }
        painter.save();
        painter.scale(resolution / 72.0, resolution / 72.0);
        renderer.render(&painter, QRectF(QPointF(0, 0), points));
        painter.restore();
    }
    return painter.end() ? 0 : 1;
}
