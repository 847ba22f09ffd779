// ListBoxTest.cpp: the items of list boxes, at any number of them.
#include "support/Random.h"

#include <kelgen/platform/Win32.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace kelgen::test;

namespace {

class ListBox
{
public:
    explicit ListBox(DWORD style)
        : m_window(CreateWindowExA(0, "LISTBOX", "", WS_POPUP | style, 0, 0, 90, 90, nullptr, nullptr, nullptr, nullptr))
    {}
    ~ListBox() { DestroyWindow(m_window); }

    int Send(UINT message, int index = 0, const char* text = nullptr)
    {
        return static_cast<int>(SendMessageA(m_window, message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
    }
    std::string TextAt(int index)
    {
        char text[32] = "";
        SendMessageA(m_window, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
        return text;
    }
    std::vector<std::string> Texts()
    {
        std::vector<std::string> texts;
        for (int i = 0; i < Send(LB_GETCOUNT); ++i)
            texts.push_back(TextAt(i));
        return texts;
    }

private:
    HWND m_window;
};

}  // namespace

// The selected item stays the same one while others come before it and go.
TEST(ListBox, KeepsItemsInTheOrderOfAPlainList)
{
    Random random;
    ListBox list(0);
    std::vector<std::string> model;
    for (int step = 0; step < 2000; ++step) {
        const int count = static_cast<int>(model.size());
        // Grows in the first half, at any place or at the end, shrinks in the other.
        const bool grows = random.Between(0, 9) < (step < 1000 ? 8 : 3);
        const int index = random.Between(0, std::max(count - 1, 0));
        if (grows || count == 0) {
            const int place = random.Between(0, 3) == 0 ? count : index;
            const std::string text = std::to_string(step);
            ASSERT_EQ(place, list.Send(LB_INSERTSTRING, place, text.c_str()));
            model.insert(model.begin() + place, text);
        } else {
            ASSERT_EQ(count - 1, list.Send(LB_DELETESTRING, index));
            model.erase(model.begin() + index);
        }
        ASSERT_EQ(static_cast<int>(model.size()), list.Send(LB_GETCOUNT));
        if (model.empty())
            continue;
        const int looked = random.Between(0, static_cast<int>(model.size()) - 1);
        ASSERT_EQ(model[static_cast<std::size_t>(looked)], list.TextAt(looked));
        ASSERT_EQ(looked, list.Send(LB_FINDSTRINGEXACT, -1, model[static_cast<std::size_t>(looked)].c_str()));
    }
    EXPECT_EQ(model, list.Texts());
    list.Send(LB_RESETCONTENT);
    EXPECT_EQ(0, list.Send(LB_GETCOUNT));
    EXPECT_EQ(0, list.Send(LB_INSERTSTRING, -1, "x"));
}

// Where equal items lie among themselves is each platform's own.
TEST(ListBox, SortsWhatIsAddedWithoutCase)
{
    Random random;
    ListBox list(LBS_SORT);
    std::vector<std::string> model;
    for (int step = 0; step < 600; ++step) {
        const std::string number = std::to_string(1000 + random.Between(0, 8999));
        const std::string text = (random.Between(0, 1) != 0 ? "a" : "A") + number;
        const auto isBefore = [](const std::string& left, const std::string& right) { return left.substr(1) < right.substr(1); };
        const auto place = std::lower_bound(model.begin(), model.end(), text, isBefore);
        if (place != model.end() && place->substr(1) == number)
            continue;
        const int index = static_cast<int>(place - model.begin());
        model.insert(place, text);
        ASSERT_EQ(index, list.Send(LB_ADDSTRING, 0, text.c_str())) << text << " as number " << step;
    }
    EXPECT_EQ(model, list.Texts());
}
