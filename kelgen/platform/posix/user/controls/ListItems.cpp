// ListItems.cpp: inserting, removing and finding items.
#include <kelgen/platform/posix/user/controls/ListItems.h>

#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/nls/api/Locale.h>
#include <kelgen/platform/posix/nls/api/PlainText.h>

#include <algorithm>

namespace kelgen::posix::user {

int CompareListTexts(std::u16string_view left, std::u16string_view right)
{
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, reinterpret_cast<LPCWSTR>(left.data()), static_cast<int>(left.size()),
                          reinterpret_cast<LPCWSTR>(right.data()), static_cast<int>(right.size())) -
           CSTR_EQUAL;
}

int ListItems::Insert(int index, ListItem item)
{
    if (index < 0)
        index = Count();
    m_items.Insert(static_cast<std::size_t>(index), std::move(item));
    if (current >= index)
        ++current;
    return index;
}

void ListItems::Erase(int index)
{
    m_items.Erase(static_cast<std::size_t>(index));
    if (current == index)
        current = -1;
    else if (current > index)
        --current;
    top = std::max(0, std::min(top, Count() - 1));
}

void ListItems::Clear()
{
    m_items.Clear();
    current = anchor = -1;
    top = 0;
}

int ListItems::PlaceOf(const ListItem& item, const std::function<int(const ListItem&, const ListItem&)>& compare) const
{
    // The owner, which compares, may change the list meanwhile.
    int place = 0;
    for (int rest = Count(); rest > 0 && place + rest / 2 < Count();) {
        const int half = rest / 2;
        if (compare(item, (*this)[place + half]) < 0) {
            rest = half;
        } else {
            place += half + 1;
            rest -= half + 1;
        }
    }
    return place;
}

int ListItems::Find(int start, std::u16string_view text, bool exact) const
{
    for (int i = 0; i < Count(); ++i) {
        const int index = (std::max(start, -1) + 1 + i) % Count();
        std::u16string_view candidate = (*this)[index].text;
        if (!exact)
            candidate = candidate.substr(0, text.size());
        if (CompareNames(candidate, text) == 0)
            return index;
    }
    return -1;
}

}  // namespace kelgen::posix::user
