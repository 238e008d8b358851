// The picture of the pane as a file: a raster image, one page of PDF, or SVG.
#include <algorithm>

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>

#include "scene/svg_picture.h"
#include "window/program_pane.h"

namespace kv {

namespace {

constexpr int LongerSide = 2400;  // pixels of an image
constexpr int ShorterSide = 400;  // at least
constexpr double PageMargin = 10; // mm

QByteArray SvgOf(const Scene& scene, const QStringList& titles)
{
    PictureTitle title;
    title.Name = titles.value(0).toStdString();
    for (const QString& line : titles.mid(1))
        title.Lines.push_back(line.toStdString());
    return QByteArray::fromStdString(SvgPicture(scene, title));
}

// Titles above the sheet, in lines of the painter's font.
void PaintPage(QPainter& painter, const QRectF& page, const SceneViewer& view, const QStringList& titles)
{
    const double line = painter.fontMetrics().lineSpacing();
    painter.setPen(Qt::black);
    for (int i = 0; i < titles.size(); ++i)
        painter.drawText(QPointF(page.left() + line / 2, page.top() + line * (i + 1)), titles[i]);
    view.PaintWhole(painter, page.adjusted(0, line * (static_cast<double>(titles.size()) + 0.5), 0, 0));
}

QByteArray PdfOf(const SceneViewer& view, const QStringList& titles)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(titles.value(0));
    writer.setResolution(150);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageOrientation(QPageLayout::Landscape);
    writer.setPageMargins(QMarginsF(PageMargin, PageMargin, PageMargin, PageMargin), QPageLayout::Millimeter);
    QPainter painter(&writer);
    PaintPage(painter, QRectF(0, 0, writer.width(), writer.height()), view, titles);
    return painter.end() ? buffer.data() : QByteArray();
}

QByteArray ImageOf(const SceneViewer& view, const QStringList& titles, const char* format)
{
    const SheetBox& sheet = view.Shown().Sheet;
    const double longer = std::max({sheet.Width, sheet.Height, 1.0});
    const auto pixels = [&](double mm) {
        return std::max(ShorterSide, static_cast<int>(mm / longer * LongerSide));
    };
    QImage image(pixels(sheet.Width), pixels(sheet.Height), QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        QFont font = painter.font();
        font.setPixelSize(LongerSide / 80);
        painter.setFont(font);
        PaintPage(painter, image.rect(), view, titles);
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, format) ? buffer.data() : QByteArray();
}

} // namespace

bool ProgramPane::SavePicture(const QString& file) const
{
    if (!View->HasPanel())
        return false;
    const QStringList titles = {Header->text(), State->text()};
    QByteArray contents;
    if (file.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        contents = PdfOf(*View, titles);
    else if (file.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive))
        contents = SvgOf(View->Shown(), titles);
    else if (file.endsWith(QStringLiteral(".jpg"), Qt::CaseInsensitive))
        contents = ImageOf(*View, titles, "JPG");
    else
        contents = ImageOf(*View, titles, "PNG");
    QSaveFile place(file);
    return !contents.isEmpty() && place.open(QIODevice::WriteOnly) &&
           place.write(contents) == contents.size() && place.commit();
}

} // namespace kv
