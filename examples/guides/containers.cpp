// containers.cpp: arrays, sorting, lists and maps, with and without the standard library.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <algorithm>
#include <iostream>
#include <numeric>

namespace {

/// A class of the host's.
struct Order
{
    CString customer;
    int amount = 0;
};

/// The comparison that arrays sort by: negative, 0 or positive.
int ByAmount(const Order& left, const Order& right)
{
    return left.amount - right.amount;
}

/// Keeps the names in step while the numbers are sorted.
void FollowNames(void* names, int i, int j)
{
    static_cast<CFastArray<CString, const CString&>*>(names)->Swap(i, j);
}

}  // namespace

/// Arrays move their elements by their bytes: a class with members for which that is right says so.
template <>
constexpr bool kelgen::is_movable_bitwise<Order> = true;

int main()
{
    // An array of your own class. CBaseArray sorts by a function, range-for and the standard algorithms walk it.
    CBaseArray<Order, const Order&> orders;
    orders.Add({"Weber", 120});
    orders.Add({"Okafor", 30});
    orders.Add({"Lindqvist", 75});
    orders.BubbleSort(ByAmount);
    for (const Order& order : orders)
        std::cout << order.customer << ' ' << order.amount << '\n';
    const int sum = std::accumulate(begin(orders), end(orders), 0, [](int total, const Order& each) { return total + each.amount; });
    std::cout << "sum " << sum << '\n';

    // Elements that know == and < need no function.
    CBaseComparableArray<int> numbers(5, 4, 2, 7, 2, 1);
    std::cout << numbers.Remove(2) << " went, 7 is " << (numbers.Contains(7) ? "there" : "missing") << '\n';
    std::ranges::sort(kelgen::Span(numbers));
    std::cout << numbers[0] << ' ' << numbers[1] << ' ' << numbers[2] << '\n';

    // Two arrays sorted by one of them: the sort tells each exchange.
    CBaseArray<DWORD, DWORD> ids(3, 30, 10, 20);
    auto names = kelgen::MakeArray<CFastArray<CString, const CString&>>({"thirty", "ten", "twenty"});
    CStdSort::QuickSort(ids, CStdSort::DWordCompare, FollowNames, &names);
    std::cout << ids[0] << ' ' << names[0] << ", " << ids[2] << ' ' << names[2] << '\n';

    // CFastArray keeps the elements that are taken out of use, so that refilling costs nothing.
    names.RemoveAll();
    names.Add("only");
    std::cout << names.GetSize() << " in use, slots for " << static_cast<CArray<CString, const CString&>&>(names).GetSize() << '\n';

    // A map. Its order is its own: sort what you show.
    CMapStringToString ports;
    kelgen::SetEntries(ports, {{"ssh", "22"}, {"http", "80"}, {"smtp", "25"}});
    CBaseComparableArray<CString, const CString&> keys;
    for (const auto& [service, port] : ports)
        keys.Add(service);
    keys.BubbleSort();
    for (const CString& key : keys)
        std::cout << key << '=' << ports[key] << ' ';
    std::cout << '\n';
}
