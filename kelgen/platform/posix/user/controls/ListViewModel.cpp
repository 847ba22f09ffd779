// ListViewModel.cpp: a list view's items and columns.
#include <kelgen/platform/posix/user/controls/ListViewModel.h>

#include <algorithm>

namespace kelgen::posix::user {

void ListViewItem::SetText(int subItem, std::u16string text)
{
    const auto place = static_cast<std::size_t>(subItem);
    if (place >= texts.size())
        texts.resize(place + 1);
    texts[place] = std::move(text);
}

int ListViewState::Next(int index, UINT state) const
{
    for (int i = std::max(index, -1) + 1; i < Count(); ++i) {
        if ((items[static_cast<std::size_t>(i)].state & state) == state)
            return i;
    }
    return -1;
}

int ListViewState::WidthOfColumns() const
{
    long long width = 0;
    for (const ListViewColumn& column : columns)
        width += column.Width();
    return static_cast<int>(std::min<long long>(width, 0x7FFFFFFF));
}

int ListViewState::CountSelected() const
{
    return static_cast<int>(std::count_if(items.begin(), items.end(), [](const ListViewItem& item) { return item.state & LVIS_SELECTED; }));
}

}  // namespace kelgen::posix::user
