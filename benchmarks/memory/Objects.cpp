// Objects.cpp: the bytes of heap that one of many takes, of ours and of the standard library's. Prints a line for each: its name, whose it
// is and the bytes.
#include <kelgen/framework/collections/Map.h>
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/property/PropertySet.h>
#include <kelgen/text/WStr.h>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

constexpr std::size_t kMany = 10000;

std::size_t HeapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

/// @p make: makes so many, and returns who owns them. What is made once for all is there before many are made.
template <class Make>
void Print(const char* name, const char* whose, Make make)
{
    static_cast<void>(make(std::size_t{1}));
    const std::size_t before = HeapInUse();
    const auto owner = make(kMany);
    std::printf("%s\t%s\t%.0f\n", name, whose, static_cast<double>(HeapInUse() - before) / kMany);
}

HWND MakeWindow()
{
    return ::CreateWindowExA(0, "STATIC", "a title", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
}

struct Windows
{
    explicit Windows(std::size_t count) : windows(count)
    {
        for (HWND& window : windows)
            window = MakeWindow();
    }
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    ~Windows()
    {
        for (const HWND window : windows)
            ::DestroyWindow(window);
    }
    std::vector<HWND> windows;
};

struct Window : CWnd
{
    Window() { CreateEx(0, AfxRegisterWndClass(0), "a title", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr); }
    ~Window() override { DestroyWindow(); }
};

struct Timers
{
    explicit Timers(std::size_t count)
    {
        for (UINT_PTR id = 1; id <= count; ++id)
            ::SetTimer(window, id, 100000, nullptr);
    }
    Timers(const Timers&) = delete;
    Timers& operator=(const Timers&) = delete;
    ~Timers() { ::DestroyWindow(window); }
    HWND window = MakeWindow();
};

template <class Text>
std::vector<Text> Texts(std::size_t units, std::size_t count)
{
    const std::u16string from(units, u'a');
    std::vector<Text> texts(count);
    for (Text& text : texts) {
        if constexpr (std::is_same_v<Text, CWStr>)
            text = CWStr(reinterpret_cast<const unsigned short*>(from.data()), static_cast<int>(units));
        else
            text = from;
    }
    return texts;
}

}  // namespace

int main()
{
    char home[] = "/tmp/kelgen-memory-XXXXXX";
    if (!mkdtemp(home) || setenv("KELGEN_HOME", home, 1) != 0)
        return 1;
    Print("window of the platform", "kelgen", [](std::size_t count) { return std::make_unique<Windows>(count); });
    Print("window with its object", "kelgen", [](std::size_t count) { return std::make_unique<std::deque<Window>>(count); });
    Print("timer", "kelgen", [](std::size_t count) { return std::make_unique<Timers>(count); });
    Print("property in a set", "kelgen", [](std::size_t count) {
        auto set = std::make_unique<gen::CPropertySet>();
        for (std::size_t i = 0; i < count; ++i)
            set->AddProperty(gen::CProperty(static_cast<int>(i), "a name", gen::eptInteger));
        return set;
    });
    for (const std::size_t units : {5, 40}) {
        const std::string name = "text of " + std::to_string(units) + " units";
        Print(name.c_str(), "kelgen", [units](std::size_t count) { return Texts<CWStr>(units, count); });
        Print(name.c_str(), "std::u16string", [units](std::size_t count) { return Texts<std::u16string>(units, count); });
    }
    Print("entry of a map of numbers", "kelgen", [](std::size_t count) {
        auto map = std::make_unique<CMap<int, int, int, int>>();
        map->InitHashTable(12007);
        for (std::size_t i = 0; i < count; ++i)
            (*map)[static_cast<int>(i)] = 1;
        return map;
    });
    Print("entry of a map of numbers", "std::unordered_map", [](std::size_t count) {
        auto map = std::make_unique<std::unordered_map<int, int>>();
        for (std::size_t i = 0; i < count; ++i)
            (*map)[static_cast<int>(i)] = 1;
        return map;
    });
}
