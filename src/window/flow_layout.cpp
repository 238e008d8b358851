#include "window/flow_layout.h"

#include <algorithm>

namespace kv {

FlowLayout::FlowLayout(int gap) : Gap(gap)
{
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item)
{
    Items.emplace_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? Items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    if (index < 0 || index >= count())
        return nullptr;
    QLayoutItem* const item = Items[static_cast<std::size_t>(index)].release();
    Items.erase(Items.begin() + index);
    return item;
}

int FlowLayout::heightForWidth(int width) const
{
    return Arrange({0, 0, width, 0}, false);
}

QSize FlowLayout::minimumSize() const
{
    QSize least(0, 0);
    for (const auto& item : Items)
        least = least.expandedTo(item->minimumSize());
    return least;
}

QSize FlowLayout::sizeHint() const
{
    QSize row(0, 0);
    for (const auto& item : Items) {
        const QSize size = item->sizeHint();
        row = {row.width() + (row.width() > 0 ? Gap : 0) + size.width(),
               std::max(row.height(), size.height())};
    }
    return row;
}

void FlowLayout::setGeometry(const QRect& area)
{
    QLayout::setGeometry(area);
    static_cast<void>(Arrange(area, true));
}

int FlowLayout::Arrange(const QRect& area, bool isMeant) const
{
    int x = 0, y = 0, rowHeight = 0;
    for (const auto& item : Items) {
        const QSize size = item->sizeHint();
        if (x > 0 && x + size.width() > area.width()) {
            x = 0;
            y += rowHeight + Gap;
            rowHeight = 0;
        }
        if (isMeant)
            item->setGeometry({area.topLeft() + QPoint(x, y), size});
        x += size.width() + Gap;
        rowHeight = std::max(rowHeight, size.height());
    }
    return y + rowHeight;
}

} // namespace kv
