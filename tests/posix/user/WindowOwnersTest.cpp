// WindowOwnersTest.cpp: what windows own goes with them and stays above them, however owners change.
#include "support/Random.h"

#include <map>
#include <vector>

using kelgen::test::Random;

namespace {

// The owner of each window there is.
using Owners = std::map<HWND, HWND>;

bool IsOwnedBy(const Owners& owners, HWND window, HWND owner)
{
    for (HWND next = owners.at(window); next; next = owners.at(next)) {
        if (next == owner)
            return true;
    }
    return false;
}

HWND AnyOf(Random& random, const Owners& owners)
{
    return std::next(owners.begin(), random.Between(0, static_cast<int>(owners.size()) - 1))->first;
}

bool IsAbove(HWND window, HWND other)
{
    HWND next = GetWindow(other, GW_HWNDPREV);
    while (next && next != window)
        next = GetWindow(next, GW_HWNDPREV);
    return next != nullptr;
}

}  // namespace

TEST(WindowOwners, RandomChangesEqualTheModel)
{
    Random random;
    Owners owners;
    std::vector<HWND> all;
    for (int step = 0; step < 2000; ++step) {
        const int action = owners.empty() ? 0 : random.Between(0, owners.size() > 30 ? 3 : 4);
        if (action == 0 || action == 4) {
            const HWND owner = owners.empty() || random.Between(0, 2) == 0 ? nullptr : AnyOf(random, owners);
            const HWND made = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, owner, nullptr, nullptr, nullptr);
            ASSERT_NE(nullptr, made);
            owners[made] = owner;
            all.push_back(made);
        } else if (action == 1) {
            const HWND window = AnyOf(random, owners);
            const HWND owner = random.Between(0, 2) == 0 ? nullptr : AnyOf(random, owners);
            if (owner == window || (owner && IsOwnedBy(owners, owner, window)))
                continue;
            SetWindowLongPtrA(window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
            owners[window] = owner;
        } else if (action == 2) {
            const HWND window = AnyOf(random, owners);
            // The topmost one is in its place already, whatever came to be owned by it below.
            if (!GetWindow(window, GW_HWNDPREV))
                continue;
            ASSERT_TRUE(SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE));
            for (const auto& [other, owner] : owners) {
                ASSERT_EQ(IsOwnedBy(owners, other, window), IsAbove(other, window));
            }
        } else {
            const HWND window = AnyOf(random, owners);
            const Owners before = owners;
            std::erase_if(owners, [&](const auto& entry) { return entry.first == window || IsOwnedBy(before, entry.first, window); });
            ASSERT_TRUE(DestroyWindow(window));
        }
        for (const HWND window : all)
            ASSERT_EQ(owners.contains(window), IsWindow(window) != FALSE);
        std::erase_if(all, [](HWND window) { return !IsWindow(window); });
        for (const auto& [window, owner] : owners)
            ASSERT_EQ(owner, GetWindow(window, GW_OWNER));
    }
    while (!owners.empty()) {
        const HWND window = owners.begin()->first;
        const Owners before = owners;
        std::erase_if(owners, [&](const auto& entry) { return entry.first == window || IsOwnedBy(before, entry.first, window); });
        ASSERT_TRUE(DestroyWindow(window));
    }
}
