// ListItems.h: the items of a list box, searched and sorted by text without case.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/user/controls/ChunkedArray.h>

#include <functional>
#include <string>
#include <string_view>

namespace kelgen::posix::user {

struct ListItem
{
    std::u16string text;
    ULONG_PTR data = 0;
    bool isSelected = false;
    int height = 0;
};

/// Items with one current item, which in a list of single selection is the selected one; -1 for none.
class ListItems
{
public:
    int Count() const { return static_cast<int>(m_items.Size()); }
    bool Has(int index) const { return index >= 0 && index < Count(); }
    ListItem& operator[](int index) { return m_items[static_cast<std::size_t>(index)]; }
    const ListItem& operator[](int index) const { return m_items[static_cast<std::size_t>(index)]; }

    /// Inserts before @p index, -1: at the end. The current item stays the same one.
    int Insert(int index, ListItem item);
    /// Removes the item; when it is the current one, nothing is.
    void Erase(int index);
    void Clear();

    /// Where @p item belongs by its text, or by @p compare, which tells the order of two items.
    int PlaceOf(const ListItem& item, const std::function<int(const ListItem&, const ListItem&)>& compare) const;

    /// The first item after @p start (-1: the first), around the end, that starts with @p text, or is it when @p exact; -1.
    int Find(int start, std::u16string_view text, bool exact) const;

    int current = -1;
    int anchor = -1;
    int top = 0;

private:
    ChunkedArray<ListItem> m_items;
};

/// The order of two texts in lists.
int CompareListTexts(std::u16string_view left, std::u16string_view right);

}  // namespace kelgen::posix::user
