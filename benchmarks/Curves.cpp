// Curves.cpp: what one more costs among more and more of its kind, beside what the standard library takes for the same.
#include "CurveOperations.h"
#include "WatchOperations.h"

#include <kelgen/containers/BaseComparableArray.h>
#include <kelgen/framework/collections/Map.h>
#include <kelgen/framework/dialogs/ListCtrl.h>
#include <kelgen/persistence/IniFile.h>
#include <kelgen/property/PropertySet.h>
#include <kelgen/system/FileChangeEvent.h>
#include <kelgen/text/WStrArray.h>
#include <kelgen/window/WndInterface.h>

#include <sys/inotify.h>

#include <deque>
#include <fstream>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>

using namespace bench;

namespace {

// ---- windows, timers, hooks, listeners

HWND MakeWindow()
{
    return ::CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
}

void Windows(State& st)
{
    std::vector<HWND> windows(many(st));
    for (HWND& window : windows)
        require((window = MakeWindow()) != nullptr, "CreateWindowExA");
    replaceEach(
        st, windows, [](HWND window) { ::DestroyWindow(window); }, MakeWindow);
    for (const HWND window : windows)
        ::DestroyWindow(window);
}

// The least that a window is: a text and a procedure, found by a number, and in an order.
struct Thing
{
    std::list<int>::iterator place;
    std::string text;
    std::function<void()> procedure;
};

void Things(State& st)
{
    std::unordered_map<int, std::unique_ptr<Thing>> things;
    std::list<int> order;
    int last = 0;
    const auto make = [&] {
        order.push_front(++last);
        things[last] = std::make_unique<Thing>(Thing{order.begin(), "", [] {}});
        return last;
    };
    std::vector<int> numbers(many(st));
    for (int& number : numbers)
        number = make();
    replaceEach(
        st, numbers,
        [&](int number) {
            order.erase(things[number]->place);
            things.erase(number);
        },
        make);
}

void Timers(State& st)
{
    const HWND window = MakeWindow();
    std::vector<UINT_PTR> timers(many(st));
    UINT_PTR last = 0;
    const auto start = [&] {
        ++last;
        return ::SetTimer(window, last, static_cast<UINT>(100000 + last % 7919), nullptr);
    };
    for (UINT_PTR& timer : timers)
        timer = start();
    replaceEach(
        st, timers, [&](UINT_PTR timer) { ::KillTimer(window, timer); }, start);
    ::DestroyWindow(window);
}

void TimersInMap(State& st)
{
    std::multimap<long, int> due;
    std::vector<std::multimap<long, int>::iterator> timers(many(st));
    int last = 0;
    const auto start = [&] {
        ++last;
        return due.emplace(100000 + last % 7919, last);
    };
    for (auto& timer : timers)
        timer = start();
    replaceEach(
        st, timers, [&](auto timer) { due.erase(timer); }, start);
}

struct Receiver : CWnd, C000WndInterface
{
    Receiver() { require(CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr), "CreateEx"); }
    ~Receiver() override { DestroyWindow(); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override { return _000WindowProc(message, wParam, lParam); }
    LRESULT _000DefaultWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override { return CWnd::WindowProc(message, wParam, lParam); }
};

struct Filter : C000WndProcInterface
{
    bool _000BeforeWndProc(UINT, WPARAM, LPARAM, LRESULT&) override { return ++seen < 0; }
    long seen = 0;
};

void Hooks(State& st)
{
    std::deque<Filter> filters(many(st));
    Receiver receiver;
    for (Filter& filter : filters)
        receiver._000HookBeforeWndProc(C000WndProcInterface::CHook(&C000WndProcInterface::_000BeforeWndProc, &filter));
    callEach(st, [&] { ::SendMessageA(receiver.m_hWnd, WM_APP, 0, 0); });
}

struct Listener : gen::CPropertySetListener
{
    void OnPropertyValueChange(gen::CPropertySet*, gen::CProperty* property) override { sum += property->GetValue().GetValueInteger(); }
    long sum = 0;
};

void Listeners(State& st)
{
    gen::CPropertySet set;
    set.AddProperty(gen::CProperty(1, "value", gen::eptInteger));
    std::deque<Listener> listeners(many(st));
    for (Listener& listener : listeners)
        set.AddListener(&listener);
    int value = 0;
    callEach(st, [&] { set.PropertyAt(0).GetValue().SetValueInteger(++value); });
}

void Functions(State& st)
{
    long seen = 0;
    std::vector<std::function<void(int)>> functions(many(st), [&seen](int value) { seen += value; });
    int value = 0;
    callEach(st, [&] {
        ++value;
        for (const auto& function : functions)
            function(value);
    });
}

// ---- stores

constexpr char kKey[] = "Software\\kelgen-curves";

struct RegistryKey
{
    RegistryKey() { require(::RegCreateKeyA(HKEY_CURRENT_USER, kKey, &key) == ERROR_SUCCESS, "RegCreateKeyA"); }
    ~RegistryKey()
    {
        ::RegCloseKey(key);
        ::RegDeleteTreeA(HKEY_CURRENT_USER, kKey);
    }
    HKEY key = nullptr;
};

void RegistryValues(State& st)
{
    RegistryKey registry;
    const auto set = [&](const std::string& name) {
        require(::RegSetValueExA(registry.key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>("value"), 6) == ERROR_SUCCESS, "set");
    };
    oneOfMany(st, set, [&](const std::string& name) {
        BYTE value[16];
        DWORD size = sizeof value;
        require(::RegQueryValueExA(registry.key, name.c_str(), nullptr, nullptr, value, &size) == ERROR_SUCCESS, "query");
    });
}

void RegistryKeys(State& st)
{
    RegistryKey registry;
    const auto open = [&](const std::string& name) {
        HKEY key = nullptr;
        require(::RegCreateKeyA(registry.key, name.c_str(), &key) == ERROR_SUCCESS, "RegCreateKeyA");
        ::RegCloseKey(key);
    };
    oneOfMany(st, open, open);
}

// What a store of files costs: each value a file of its own in one folder.
void FilesInFolder(State& st)
{
    const std::filesystem::path folder = scratch("curve");
    std::filesystem::create_directories(folder);
    oneOfMany(
        st, [&](const std::string& name) { std::ofstream(folder / name) << "value"; },
        [&](const std::string& name) {
            std::string value;
            require(!!(std::ifstream(folder / name) >> value), "read");
        });
    std::filesystem::remove_all(folder);
}

std::string IniOf(State& st)
{
    const std::string path = scratch("curve.ini");
    std::ofstream file(path);
    for (std::size_t i = 0; i < many(st); ++i)
        file << "[section " << i << "]\nname=value\nother=" << i << '\n';
    return path;
}

void IniSections(State& st)
{
    const std::string path = IniOf(st);
    fillEach(st, [&] {
        _kelgen::CIniFile ini;
        require(ini.LoadFile(path.c_str()) && ini.FindSection(("section " + std::to_string(many(st) - 1)).c_str()), "CIniFile");
    });
}

void IniInMap(State& st)
{
    const std::string path = IniOf(st);
    fillEach(st, [&] {
        std::unordered_map<std::string, std::map<std::string, std::string>> sections;
        std::map<std::string, std::string>* section = nullptr;
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);) {
            const std::size_t equals = line.find('=');
            if (line[0] == '[')
                section = &sections[line.substr(1, line.size() - 2)];
            else if (section && equals != line.npos)
                (*section)[line.substr(0, equals)] = line.substr(equals + 1);
        }
        require(sections.size() == many(st), "sections");
    });
}

// ---- watched files: of so many in one folder one changes

struct Watcher : CFileChangeEvent
{
    void OnFileAlarm(EFileAlarm, const char*) override { seen.add(); }
    Seen seen;
};

void WatchedFiles(State& st)
{
    ChangingFile file;
    Watcher watcher;
    const auto add = [&](const std::string& path) { watcher.AddFile(("Z:" + path).c_str()); };
    for (std::size_t i = 1; i < many(st); ++i) {
        const std::string other = file.path + std::to_string(i);
        std::ofstream(other).flush();
        add(other);
    }
    add(file.path);
    watchChanges(st, file, watcher);
}

// ---- containers and texts

struct Owner : CWnd
{
    Owner() { require(CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr), "CreateEx"); }
    ~Owner() override { DestroyWindow(); }
};

void ListItems(State& st)
{
    Owner owner;
    CListCtrl list;
    require(list.Create(WS_CHILD | LVS_REPORT, CRect(0, 0, 100, 100), &owner, 1), "Create");
    for (std::size_t i = 0; i < many(st); ++i)
        list.InsertItem(static_cast<int>(i), "an item's text, as long as some");
    for (auto _ : st) {
        list.InsertItem(static_cast<int>(many(st) / 2), "an item's text, as long as others");
        list.DeleteItem(static_cast<int>(many(st) / 2));
    }
    list.DestroyWindow();
}

void ItemsInVector(State& st)
{
    std::vector<std::string> items(many(st), "an item's text, as long as some");
    const auto middle = static_cast<std::ptrdiff_t>(many(st) / 2);
    for (auto _ : st) {
        items.insert(items.begin() + middle, "an item's text, as long as others");
        items.erase(items.begin() + middle);
    }
}

void MapEntries(State& st)
{
    fillEach(st, [&] {
        CMap<int, int, int, int> map;
        for (std::size_t i = 0; i < many(st); ++i)
            map[static_cast<int>(i * 7919)] = 1;
    });
}

void UnorderedMapEntries(State& st)
{
    fillEach(st, [&] {
        std::unordered_map<int, int> map;
        for (std::size_t i = 0; i < many(st); ++i)
            map[static_cast<int>(i * 7919)] = 1;
    });
}

void ArrayElements(State& st)
{
    fillEach(st, [&] {
        CBaseComparableArray<int, int> array;
        for (std::size_t i = 0; i < many(st); ++i)
            array.Add(1);
        DoNotOptimize(array.GetData());
    });
}

void VectorElements(State& st)
{
    fillEach(st, [&] {
        std::vector<int> vector;
        for (std::size_t i = 0; i < many(st); ++i)
            vector.push_back(1);
        DoNotOptimize(vector.data());
    });
}

std::u16string Tokens(State& st)
{
    std::u16string text;
    for (std::size_t i = 0; i < many(st); ++i)
        text += u"token,";
    return text;
}

void StringTokens(State& st)
{
    const CWStr text = bench::text<CWStr>(Tokens(st));
    fillEach(st, [&] {
        CWStrArray tokens;
        tokens.AddTokens(static_cast<const unsigned short*>(text), u",", false);
        require(static_cast<std::size_t>(tokens.GetSize()) == many(st), "AddTokens");
    });
}

void StdTokens(State& st)
{
    const std::u16string text = Tokens(st);
    fillEach(st, [&] {
        std::vector<std::u16string> tokens;
        for (std::size_t from = 0, to = 0; (to = text.find(u',', from)) != text.npos; from = to + 1)
            tokens.push_back(text.substr(from, to - from));
        require(tokens.size() == many(st), "find");
    });
}

// ---- threads

void PostsOfThreads(State& st)
{
    const HWND window = MakeWindow();
    postFromThreads(
        st, [&] { ::PostMessageA(window, WM_APP, 0, 0); },
        [&] {
            MSG message;
            do
                ::GetMessageA(&message, nullptr, 0, 0);
            while (message.message != WM_APP);
        });
    ::DestroyWindow(window);
}

void FunctionsOfThreads(State& st)
{
    std::deque<std::function<void()>> queue;
    std::mutex mutex;
    std::condition_variable filled;
    long seen = 0;
    postFromThreads(
        st,
        [&] {
            {
                const std::lock_guard lock(mutex);
                queue.emplace_back([&seen] { ++seen; });
            }
            filled.notify_one();
        },
        [&] {
            std::unique_lock lock(mutex);
            filled.wait(lock, [&] { return !queue.empty(); });
            const auto next = std::move(queue.front());
            queue.pop_front();
            lock.unlock();
            next();
        });
}

CURVE("Window", Windows, "std_unordered_map", Things, 100, 1000, 10000, 30000)
CURVE("Timer", Timers, "std_multimap", TimersInMap, 100, 1000, 10000, 100000)
CURVE("Hook", Hooks, "std_function", Functions, 10, 100, 1000, 10000)
CURVE("Listener", Listeners, "std_function", Functions, 10, 100, 1000, 10000)
CURVE("RegistryValue", RegistryValues, "std_files", FilesInFolder, 10, 100, 1000, 10000)
CURVE("RegistryKey", RegistryKeys, "std_files", FilesInFolder, 10, 100, 1000, 10000)
CURVE("IniSection", IniSections, "std_map", IniInMap, 100, 1000, 10000, 100000)
CURVE("ListItem", ListItems, "std_vector", ItemsInVector, 100, 1000, 10000, 100000)
CURVE("MapEntry", MapEntries, "std_unordered_map", UnorderedMapEntries, 100, 1000, 10000, 100000)
CURVE("Token", StringTokens, "std_find", StdTokens, 100, 1000, 10000, 100000)
CURVE("ArrayElement", ArrayElements, "std_vector", VectorElements, 1000, 10000, 100000, 1000000)
CURVE_OF_THREADS("Post", PostsOfThreads, "std_deque", FunctionsOfThreads, 1, 2, 4, 8)
CURVE_OF_THREADS("StringToThread", freeElsewhere<CWStr>, "std_u16string", freeElsewhere<std::u16string>, 1, 2, 4, 8)
COUNTED(WatchedFiles)->Name("Curve/WatchedFile/kelgen")->ArgsProduct({{1, 10, 100, 1000}})->UseRealTime();

}  // namespace
