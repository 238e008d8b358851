// Contents first, then the file in one go: a failure leaves what was there.
#include "window/picture_file.h"

#include <algorithm>

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>

#include "scene/svg_picture.h"

namespace kv {

namespace {

constexpr int ShorterSide = 400;  // pixels of an image, at least
constexpr int MostPixels = 16000; // of a side
constexpr int LinesOfImage = 80;  // of titles, that would fill the longer side
constexpr double PageMargin = 10; // mm

QByteArray SvgOf(const PictureToWrite& picture)
{
    PictureTitle title;
    title.Name = picture.Titles.value(0).toStdString();
    for (const QString& line : picture.Titles.mid(1))
        title.Lines.push_back(line.toStdString());
    return QByteArray::fromStdString(SvgPicture(picture.Picture, title));
}

// Titles above the sheet, in lines of the painter's font.
void PaintPage(QPainter& painter, const QRectF& page, const PictureToWrite& picture)
{
    const double line = painter.fontMetrics().lineSpacing();
    const QStringList& titles = picture.Titles;
    painter.setPen(Qt::black);
    for (int i = 0; i < titles.size(); ++i)
        painter.drawText(QPointF(page.left() + line / 2, page.top() + line * (i + 1)), titles[i]);
    picture.PaintSheet(painter, page.adjusted(0, line * (static_cast<double>(titles.size()) + 0.5), 0, 0));
}

QByteArray PdfOf(const PictureToWrite& picture)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(picture.Titles.value(0));
    writer.setResolution(150);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageOrientation(QPageLayout::Landscape);
    writer.setPageMargins(QMarginsF(PageMargin, PageMargin, PageMargin, PageMargin), QPageLayout::Millimeter);
    QPainter painter(&writer);
    PaintPage(painter, QRectF(0, 0, writer.width(), writer.height()), picture);
    return painter.end() ? buffer.data() : QByteArray();
}

QByteArray ImageOf(const PictureToWrite& picture, const char* format)
{
    QImage image(picture.ImageSize, QImage::Format_RGB32);
    if (image.isNull())
        return {};
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        QFont font = painter.font();
        font.setPixelSize(std::max(image.width(), image.height()) / LinesOfImage);
        painter.setFont(font);
        PaintPage(painter, image.rect(), picture);
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, format) ? buffer.data() : QByteArray();
}

QByteArray ContentsOf(const QString& file, const PictureToWrite& picture)
{
    const auto ends = [&](const char* letters) {
        return file.endsWith(QLatin1String(letters), Qt::CaseInsensitive);
    };
    if (ends(".pdf"))
        return PdfOf(picture);
    if (ends(".svg"))
        return SvgOf(picture);
    return ImageOf(picture, ends(".jpg") ? "JPG" : "PNG");
}

} // namespace

QSize ImageSizeByLongerSide(const SheetBox& sheet, int pixels)
{
    const double longer = std::max({sheet.Width, sheet.Height, 1.0});
    const auto side = [&](double mm) {
        return std::max(ShorterSide, static_cast<int>(mm / longer * pixels));
    };
    return {side(sheet.Width), side(sheet.Height)};
}

QSize ImageSizeByWidth(const SheetBox& sheet, int pixels)
{
    constexpr double titles = 4.0 / LinesOfImage; // of the width
    const double height = pixels * (sheet.Height / std::max(sheet.Width, 1.0) + titles);
    return {pixels, static_cast<int>(std::clamp(height, pixels / 8.0, static_cast<double>(MostPixels)))};
}

QString WritePicture(const QString& file, const PictureToWrite& picture)
{
    const QByteArray contents = ContentsOf(file, picture);
    if (contents.isEmpty())
        return QStringLiteral("the picture could not be made");
    QSaveFile place(file);
    const bool isWritten =
        place.open(QIODevice::WriteOnly) && place.write(contents) == contents.size() && place.commit();
    return isWritten ? QString() : place.errorString();
}

} // namespace kv
