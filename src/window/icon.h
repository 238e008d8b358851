// The program's icon, for the title bar and the task list.
#pragma once

#include <span>

#include <QIcon>
#include <QPixmap>

namespace kv {

std::span<const unsigned char> IconBytes(); // a PNG picture

inline QIcon ProgramIcon()
{
    QPixmap picture;
    picture.loadFromData(IconBytes().data(), static_cast<unsigned>(IconBytes().size()));
    return QIcon(picture);
}

} // namespace kv
