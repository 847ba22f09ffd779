// ListViewModel.h: a list view's items and columns.
#pragma once

#include <kelgen/platform/posix/user/api/ListView.h>
#include <kelgen/platform/posix/user/controls/ChunkedArray.h>
#include <kelgen/platform/posix/user/controls/ControlBase.h>

#include <string>
#include <vector>

namespace kelgen::posix::user {

struct ListViewItem
{
    std::u16string text;
    std::vector<std::u16string> others;  // of sub-items from 1 on, as far as there are any
    UINT state = 0;
    int image = 0;
    LPARAM data = 0;

    std::u16string_view Text(int subItem) const
    {
        if (subItem == 0)
            return text;
        return static_cast<std::size_t>(subItem) <= others.size() ? std::u16string_view(others[static_cast<std::size_t>(subItem) - 1])
                                                                  : u"";
    }
    void SetText(int subItem, std::u16string newText);
};

struct ListViewColumn
{
    std::u16string heading;
    int format = LVCFMT_LEFT;
    int width = 10;
    int subItem = 0;

    int Width() const { return width < 0 ? 0 : width > 10000 ? 10000 : width; }
};

/// The heights of the columns' headings and of an item in a report.
constexpr int kListViewHeader = 17;
constexpr int kListViewRow = 14;

struct ListViewState final : ControlData
{
    void Show(const Window& list, ControlPicture& picture) const override;
    /// How many items are wholly in view, at least one.
    int PageOf(const Window& list) const;
    /// How many would be in a client area of that height.
    int RowsIn(const Window& list, LONG height) const;
    void ScrollTo(const Window& list, int item);
    /// Scrolls by pixels to the right and rows down, as far as there is anything.
    void ScrollBy(const Window& list, int across, int rows);
    int WidthOfColumns() const;

    int top = 0;
    int left = 0;  // how many pixels of the columns lie left of the view
    int rowHeight = kListViewRow;
    HFONT font = nullptr;
    ChunkedArray<ListViewItem> items;
    std::vector<ListViewColumn> columns;
    DWORD extendedStyle = 0;

    int Count() const { return static_cast<int>(items.Size()); }
    bool Has(int index) const { return index >= 0 && index < Count(); }
    /// A sub-item is the first one or one that has a column.
    bool HasText(int index, int subItem) const
    {
        return Has(index) && subItem >= 0 && (subItem == 0 || subItem < static_cast<int>(columns.size()));
    }
    ListViewItem& operator[](int index) { return items[static_cast<std::size_t>(index)]; }
    /// The first item after @p index whose state has all of @p state; -1 when there is none.
    int Next(int index, UINT state) const;
    int CountSelected() const;
};

}  // namespace kelgen::posix::user
