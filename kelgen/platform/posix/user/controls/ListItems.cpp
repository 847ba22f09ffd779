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
    m_items.insert(m_items.begin() + index, std::move(item));
    if (current >= index)
        ++current;
    return index;
}

void ListItems::Erase(int index)
{
    m_items.erase(m_items.begin() + index);
    if (current == index)
        current = -1;
    else if (current > index)
        --current;
    top = std::max(0, std::min(top, Count() - 1));
}

void ListItems::Clear()
{
    m_items.clear();
    current = anchor = -1;
    top = 0;
}

int ListItems::PlaceOf(const ListItem& item, const std::function<int(const ListItem&, const ListItem&)>& compare) const
{
    const auto place =
        std::ranges::upper_bound(m_items, item, [&](const ListItem& left, const ListItem& right) { return compare(left, right) < 0; });
    return static_cast<int>(place - m_items.begin());
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
