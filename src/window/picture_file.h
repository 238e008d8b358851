// A picture of a program or drawing as a file: an image, one page of PDF, or SVG.
#pragma once

#include <functional>

#include <QPainter>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

#include "scene/scene.h"

namespace kv {

struct PictureToWrite {
    const Scene& Picture;
    QStringList Titles; // above the sheet, a line each
    std::function<void(QPainter&, const QRectF&)> PaintSheet;
    QSize ImageSize; // pixels
};

QSize ImageSizeByLongerSide(const SheetBox& sheet, int pixels);
// Titles and sheet one below the other; a sheet that is far higher than wide gets a rim.
QSize ImageSizeByWidth(const SheetBox& sheet, int pixels);
// By the letters at the file's end: .pdf, .svg, .jpg, else PNG. Empty: it is written; else why it is not.
QString WritePicture(const QString& file, const PictureToWrite& picture);

} // namespace kv
