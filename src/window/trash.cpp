#include "window/trash.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/free_name.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "window/controls.h"

namespace kv {

namespace {

// Some systems keep a note beside each file of the trash; without the file it would be listed as a ruin.
void DropNote(const QFileInfo& file)
{
    QDir trash = file.dir();
    if (trash.dirName() == QLatin1String("files") && trash.cdUp())
        QFile::remove(
            trash.filePath(QStringLiteral("info/") + file.fileName() + QStringLiteral(".trashinfo")));
}

} // namespace

FileOutcome PutFileIntoTrash(const std::string& path, std::string& place)
{
    QFile file(QString::fromStdString(ToHostPath(path)));
    if (!file.moveToTrash())
        return {ErrorFileAccess, Ansi(file.errorString())};
    // The file's own name is its place in the trash now.
    place = file.fileName().toStdString();
    return {};
}

FileOutcome BringFileFromTrash(const std::string& place, const std::string& path)
{
    const QString home = QString::fromStdString(ToHostPath(path));
    QFile file(QString::fromStdString(place));
    if (QFileInfo::exists(home))
        return {ErrorFileExists, "another file of that name is there"};
    if (!file.rename(home))
        return {ErrorFileAccess, Ansi(file.errorString())};
    DropNote(QFileInfo(QString::fromStdString(place)));
    return {};
}

} // namespace kv
