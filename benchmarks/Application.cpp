// Application.cpp: a broadcast to the application's frames, list views filled, combo boxes exchanged with members.
#include "ApplicationOperations.h"

#include <kelgen/app/App.h>
#include <kelgen/app/DDX.h>
#include <kelgen/app/FrameWnd.h>
#include <kelgen/framework/dialogs/Controls.h>
#include <kelgen/framework/dialogs/ListCtrl.h>

#include <algorithm>
#include <memory>

using namespace bench;

namespace {

class Frame : public CKelGenFrameWnd
{
public:
    Frame() { require(Create(nullptr, "", WS_POPUP, CRect(0, 0, 10, 10)), "Create"); }
    LRESULT OnAppLanguage(UINT, LPARAM) override
    {
        ++s_count;
        return 0;
    }

    static inline long s_count = 0;
};

void Broadcast(State& st)
{
    CKelGenApp app("Benchmark");
    std::vector<std::unique_ptr<Frame>> frames(frameCount);
    for (auto& frame : frames)
        frame = std::make_unique<Frame>();
    for (auto _ : st) {
        Frame::s_count = 0;
        app.OnAppLanguage(CKelGenApp::WPARAM_LANGUAGE_UPDATE, 0);
        require(Frame::s_count == frameCount, "OnAppLanguage");
    }
}

/// A hidden window for controls.
class Owner : public CWnd
{
public:
    Owner() { require(CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr), "CreateEx"); }
    ~Owner() override { DestroyWindow(); }
};

void ListInsert(State& st)
{
    const std::vector<std::string> texts = itemTexts(listItems);
    Owner owner;
    CListCtrl list;
    require(list.Create(WS_CHILD | LVS_REPORT, CRect(0, 0, 100, 100), &owner, 1), "Create");
    list.InsertColumn(0, "text", LVCFMT_LEFT, 90);
    for (auto _ : st) {
        for (int i = 0; i < listItems; ++i)
            list.InsertItem(i, texts[static_cast<std::size_t>(i)].c_str());
        require(list.GetItemCount() == listItems, "InsertItem");
        list.DeleteAllItems();
    }
    list.DestroyWindow();
}

void ListInsertStd(State& st)
{
    const std::vector<std::string> texts = itemTexts(listItems);
    std::vector<std::string> list;
    for (auto _ : st) {
        for (const std::string& text : texts)
            list.push_back(text);
        DoNotOptimize(list.data());
        std::vector<std::string>().swap(list);
    }
}

// One more among so many in order, at any place; what it removes again is the last one.
template <class Add, class RemoveLast>
void AddToSorted(State& st, Add add, RemoveLast removeLast)
{
    const auto count = static_cast<std::size_t>(st.range(0));
    for (std::size_t i = 0; i < count; ++i)
        add(std::to_string(1000000 + i));
    std::size_t i = 0;
    for (auto _ : st) {
        add(std::to_string(1000000 + (i += 7919) % count));
        removeLast(count);
    }
}

void AddToSortedList(State& st)
{
    Owner owner;
    CListBox list;
    require(list.Create(WS_CHILD | LBS_SORT, CRect(0, 0, 100, 100), &owner, 1), "Create");
    AddToSorted(
        st, [&](const std::string& text) { list.AddString(text.c_str()); },
        [&](std::size_t count) { list.DeleteString(static_cast<UINT>(count)); });
    list.DestroyWindow();
}

void AddToSortedStd(State& st)
{
    std::vector<std::string> list;
    AddToSorted(
        st, [&](const std::string& text) { list.insert(std::upper_bound(list.begin(), list.end(), text), text); },
        [&](std::size_t) { list.pop_back(); });
}

constexpr UINT kCombo = 14;
constexpr UINT kNoText = 60000;

struct Combo
{
    Combo() { require(box.Create(WS_CHILD | CBS_DROPDOWN, CRect(0, 0, 90, 90), &owner, kCombo), "Create"); }
    ~Combo() { box.DestroyWindow(); }
    void Exchange(BOOL save, CStrArray& items)
    {
        CDataExchange exchange(&owner, save);
        CDDX::DDXComboBoxV001(&exchange, kCombo, &items, kNoText);
    }

    Owner owner;
    CComboBox box;
};

CStrArray ComboItems()
{
    CStrArray items;
    for (const std::string& text : itemTexts(comboItems))
        items.Add(text.c_str());
    return items;
}

void ComboLoad(State& st)
{
    Combo combo;
    CStrArray items = ComboItems();
    for (auto _ : st)
        combo.Exchange(FALSE, items);
    require(combo.box.GetCount() == comboItems + 1, "load");
}

void ComboSave(State& st)
{
    Combo combo;
    CStrArray items = ComboItems();
    combo.Exchange(FALSE, items);
    for (auto _ : st)
        combo.Exchange(TRUE, items);
    require(items.GetSize() == comboItems, "save");
}

void ComboSaveStd(State& st)
{
    const std::vector<std::string> texts = itemTexts(comboItems);
    for (auto _ : st) {
        std::vector<std::string> items;
        for (const std::string& text : texts) {
            if (std::find(items.begin(), items.end(), text) == items.end())
                items.push_back(text);
        }
        require(items.size() == texts.size(), "add unique");
    }
}

COUNTED(Broadcast)->Name("App/Broadcast100/kelgen");
COUNTED(ListInsert)->Name("App/ListInsert10000/kelgen");
COUNTED(ListInsertStd)->Name("App/ListInsert10000/std_vector");
COUNTED(AddToSortedList)->Name("App/ListBoxSorted/kelgen")->Arg(100)->Arg(1000)->Arg(10000)->Arg(40000);
COUNTED(AddToSortedStd)->Name("App/ListBoxSorted/std_vector")->Arg(100)->Arg(1000)->Arg(10000)->Arg(40000);
COUNTED(ComboLoad)->Name("App/ComboLoad1000/kelgen");
COUNTED(ComboSave)->Name("App/ComboSave1000/kelgen");
COUNTED(ComboSaveStd)->Name("App/ComboSave1000/std_vector_unique");

}  // namespace
