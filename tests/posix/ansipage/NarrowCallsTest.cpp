// NarrowCallsTest.cpp: names and texts of narrow calls where the ANSI code page is UTF-8.
#include <kelgen/framework/files/File.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/std.h>
#include <kelgen/text/WStrArray.h>

#include "support/Rows.h"
#include "support/Scratch.h"

#include <algorithm>
#include <filesystem>

using namespace kelgen::test;

namespace {

constexpr WCHAR kUmlaut = 0xE4;

const std::string kNames[] = {"neu\xC3\xA4.txt", "\xE4\xB8\xAD\xF0\x9F\x98\x80", "raw\xE4\xFF", "half\xC3"};

// A top-level window of a class whose procedure takes narrow or wide text.
class PageWindow
{
public:
    explicit PageWindow(bool wide)
    {
        if (wide)
            m_window = CreateWindowExW(0, AsClass(u"EDIT"), nullptr, ES_MULTILINE, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
        else
            m_window = CreateWindowExA(0, Class(), "", 0, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    }
    ~PageWindow() { DestroyWindow(m_window); }
    PageWindow(const PageWindow&) = delete;
    PageWindow& operator=(const PageWindow&) = delete;

    HWND Get() const { return m_window; }

private:
    static LPCWSTR AsClass(const char16_t* name) { return reinterpret_cast<LPCWSTR>(name); }
    static LPCSTR Class()
    {
        static const ATOM registered = [] {
            WNDCLASSA type{};
            type.lpfnWndProc = DefWindowProcA;
            type.lpszClassName = "kelgen page window";
            return RegisterClassA(&type);
        }();
        return registered ? "kelgen page window" : nullptr;
    }

    HWND m_window;
};

}  // namespace

TEST(NarrowNames, AreTheFileSystemsBytes)
{
    const std::string folder = ScratchFolder().string();
    for (const std::string& name : kNames) {
        const std::string path = folder + '/' + name;
        CFile file((folder + "\\" + name).c_str(), CFile::modeCreate | CFile::modeWrite);
        file.Write("x", 1);
        file.Close();
        EXPECT_EQ("x", ReadBytes(path)) << name;

        WIN32_FIND_DATAA found;
        const HANDLE find = FindFirstFileA((folder + "/*.*").c_str(), &found);
        while (found.cFileName[0] == '.')
            ASSERT_TRUE(FindNextFileA(find, &found));
        FindClose(find);
        EXPECT_EQ(name, found.cFileName);

        const std::string moved = path + "\xC3\xB6";
        EXPECT_TRUE(MoveFileA(path.c_str(), moved.c_str())) << name;
        EXPECT_TRUE(std::filesystem::exists(moved)) << name;
        char full[MAX_PATH];
        char* last = nullptr;
        EXPECT_LT(0u, GetFullPathNameA(moved.c_str(), sizeof full, full, &last));
        EXPECT_EQ(name + "\xC3\xB6", last);
        EXPECT_TRUE(DeleteFileA(full)) << name;
        EXPECT_FALSE(std::filesystem::exists(moved)) << name;
    }
}

TEST(NarrowNames, SurviveTheSixteenBitCalls)
{
    const std::string folder = ScratchFolder().string();
    for (const std::string& name : kNames) {
        WriteBytes(folder + '/' + name, "x");
        WCHAR wide[MAX_PATH];
        ASSERT_LT(0u, [&] {
            WIN32_FIND_DATAW found;
            const std::u16string pattern(std::filesystem::path(folder + "/*").u16string());
            const HANDLE find = FindFirstFileW(reinterpret_cast<LPCWSTR>(pattern.c_str()), &found);
            while (found.cFileName[0] == '.')
                FindNextFileW(find, &found);
            FindClose(find);
            SetCurrentDirectoryA(folder.c_str());
            return GetFullPathNameW(found.cFileName, MAX_PATH, wide, nullptr);
        }());
        EXPECT_TRUE(DeleteFileW(wide)) << name;
        EXPECT_FALSE(std::filesystem::exists(folder + '/' + name)) << name;
    }
    SetCurrentDirectoryA("/");
}

TEST(NarrowNames, OfTheCurrentFolderAndTheEnvironmentAreTheSystemsBytes)
{
    const std::string folder = ScratchFolder().string();
    char text[MAX_PATH];
    for (const std::string& name : kNames) {
        ASSERT_TRUE(CreateDirectoryA((folder + '/' + name).c_str(), nullptr));
        ASSERT_TRUE(SetCurrentDirectoryA((folder + '/' + name).c_str()));
        EXPECT_LT(0u, GetCurrentDirectoryA(sizeof text, text));
        EXPECT_EQ(name, std::string(text).substr(std::string(text).rfind('\\') + 1));
        EXPECT_TRUE(SetEnvironmentVariableA("KELGEN_TEXT", name.c_str()));
        EXPECT_STREQ(name.c_str(), getenv("KELGEN_TEXT"));
        EXPECT_EQ(name.size() + 3, ExpandEnvironmentStringsA("<%KELGEN_TEXT%>", text, sizeof text));
        EXPECT_EQ('<' + name + '>', text);
    }
    SetCurrentDirectoryA("/");
}

TEST(NarrowNames, AreTheBytesOfPaths)
{
    for (const std::string& name : kNames) {
        EXPECT_EQ(name, kelgen::View(kelgen::NarrowFromPath(name)));
        EXPECT_EQ(std::filesystem::path(name), kelgen::ToPath(CString(name.c_str())));
    }
}

TEST(NarrowTexts, OfWindowsAreCutBehindWholeCharacters)
{
    const char* const text = "a\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80";
    for (const bool isWide : {false, true}) {
        const PageWindow window(isWide);
        ASSERT_TRUE(SetWindowTextA(window.Get(), text));
        EXPECT_EQ(10, GetWindowTextLengthA(window.Get())) << isWide;
        EXPECT_EQ(5, GetWindowTextLengthW(window.Get())) << isWide;
        for (const auto& [room, given] : Table<int, std::string>{
                 {11, text},
                 {10, "a\xC3\xA4\xE4\xB8\xAD"},
                 {7, "a\xC3\xA4\xE4\xB8\xAD"},
                 {6, "a\xC3\xA4"},
                 {3, "a"},
             }) {
            char buffer[16];
            EXPECT_EQ(static_cast<int>(given.size()), GetWindowTextA(window.Get(), buffer, room)) << isWide << room;
            EXPECT_EQ(given, buffer) << isWide << room;
        }
        WCHAR wide[16];
        EXPECT_EQ(5, GetWindowTextW(window.Get(), wide, 16)) << isWide;
        EXPECT_EQ(kUmlaut, wide[1]) << isWide;
    }
}

TEST(NarrowTexts, OfCharacterMessagesHoldWholeCharacters)
{
    for (const auto& [unit, bytes] : Table<char16_t, WPARAM>{
             {u'a', 'a'},
             {u'\x00E4', 0xC3A4},
             {u'\x4E2D', 0xE4B8AD},
         }) {
        const PageWindow edit(true);
        MSG message;
        ASSERT_TRUE(PostMessageW(edit.Get(), WM_CHAR, unit, 1));
        ASSERT_TRUE(PeekMessageA(&message, edit.Get(), WM_CHAR, WM_CHAR, PM_REMOVE));
        EXPECT_EQ(bytes, message.wParam);
        DispatchMessageA(&message);
        ASSERT_TRUE(PostMessageA(edit.Get(), WM_CHAR, bytes, 1));
        ASSERT_TRUE(PeekMessageW(&message, edit.Get(), WM_CHAR, WM_CHAR, PM_REMOVE));
        EXPECT_EQ(unit, message.wParam);
        DispatchMessageW(&message);
        WCHAR text[8] = {};
        GetWindowTextW(edit.Get(), text, 8);
        EXPECT_EQ((std::u16string{unit, unit}), reinterpret_cast<const char16_t*>(text));
    }
}

TEST(NarrowTexts, OfTheOemPageAreUtf8Too)
{
    EXPECT_EQ(65001u, GetOEMCP());
    struct ProfileApp : CWinApp
    {
        ProfileApp() : CWinApp("Narrow texts") { SetRegistryKey("Kelgen page test"); }
    } app;
    CWStrArray texts;
    texts.Add(u"\u00E4\u4E2D");
    texts.WriteToRegistry("Section", "Text");
    CWStrArray again;
    EXPECT_EQ(1, again.AddFromRegistry("Section", "Text"));
    EXPECT_TRUE(again.GetAt(0) == u"\u00E4\u4E2D");
    EXPECT_EQ("\xC3\xA4\xE4\xB8\xAD", app.GetProfileString("Section", "Text.0"));
}

TEST(NarrowTexts, OfTheRegistryFitIntoWhatQueriesTell)
{
    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\Narrow", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr));
    const std::string name = "\xE4\xB8\xAD\xE4\xB8\xAD";
    const auto* bytes = reinterpret_cast<const BYTE*>(name.c_str());
    ASSERT_EQ(ERROR_SUCCESS, RegSetValueExA(key, name.c_str(), 0, REG_SZ, bytes, static_cast<DWORD>(name.size() + 1)));
    DWORD longestName = 0, longestData = 0;
    ASSERT_EQ(ERROR_SUCCESS, RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &longestName,
                                              &longestData, nullptr, nullptr));
    std::string given(longestName + 1, '\0');
    std::string data(longestData, '\0');
    ++longestName;
    EXPECT_EQ(ERROR_SUCCESS,
              RegEnumValueA(key, 0, given.data(), &longestName, nullptr, nullptr, reinterpret_cast<LPBYTE>(data.data()), &longestData));
    EXPECT_EQ(name, given.c_str());
    EXPECT_EQ(name, data.c_str());
    RegCloseKey(key);
}
