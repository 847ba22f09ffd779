// TextExamples.cpp: the examples of the headers of text and of std.h.
#include <kelgen/kelgen.h>
// quote kelgen/std.h
#include <kelgen/std.h>
// end

#include "support/Scratch.h"

#include <chrono>
#include <iostream>
#include <sstream>
#include <thread>

using namespace kelgen::test;

namespace {

/// Standard output as a text, while it lives.
class Printed
{
public:
    Printed() : m_before(std::cout.rdbuf(m_text.rdbuf())) {}
    ~Printed() { std::cout.rdbuf(m_before); }
    std::string Text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::streambuf* m_before;
};

std::string Utf8(const CWStr& text)
{
    return kelgen::ToUtf8(text);
}

}  // namespace

TEST(HeaderExamples, OfTheStandardLibrary)
{
    const Printed printed;
    CMap<int, int, CWStr, const CWStr&> map;
    map.SetAt(1, CWStr(u"one"));
    // quote kelgen/std.h
    for (const auto& [key, value] : map)
        std::cout << kelgen::ToUtf8(value) << '\n';
    // end
    EXPECT_EQ("one\n", printed.Text());
}

TEST(HeaderExamples, OfCodePages)
{
    const CWStr name(u"Größe");
    // quote kelgen/text/CodePageText.h
    std::string line = kelgen::ToUtf8(name);
    CWStr again = kelgen::FromUtf8(line);
    // end
    EXPECT_EQ(name, again);
}

TEST(HeaderExamples, OfWideText)
{
    // quote kelgen/text/WStr.h
    CWStr name(u"report"_w);
    CWStr copy(name);   // shares the block
    copy += u".txt"_w;  // copies it first
    // end
    EXPECT_EQ("report report.txt", Utf8(name) + ' ' + Utf8(copy));
}

TEST(HeaderExamples, OfListsOfWideText)
{
    // quote kelgen/text/WStrArray.h
    CWStrArray names;
    names.AddTokens(u"beta;alpha;;beta"_w, u";"_w, false);  // beta, alpha, beta
    names.Sort(CWStr::CompareNoCase);                       // alpha, beta, beta
    CWStr text;
    names.GetFormatString(text, u", "_w);  // "alpha, beta, beta"
    // end
    EXPECT_EQ("alpha, beta, beta", Utf8(text));
}

TEST(HeaderExamples, OfWideTokens)
{
    std::string used;
    const auto Use = [&used](const CWStr& token) { used += '[' + Utf8(token) + ']'; };
    // quote kelgen/text/WStrTokenizer.h
    CWStrTokenizer tokenizer(u"a,,b"_w, 4);
    CWStr token;
    while (tokenizer.GetNextToken(token, u","_w, false))
        Use(token);  // "a", "", "b"
    // end
    EXPECT_EQ("[a][][b]", used);
}

TEST(HeaderExamples, OfNarrowTokens)
{
    std::string used;
    const auto Use = [&used](const CString& token) { used += '[' + kelgen::ToUtf8(token) + ']'; };
    // quote kelgen/text/StrTokenizer.h
    CStrTokenizer tokenizer("a,,b", 4);
    CString token;
    while (tokenizer.GetNextToken(token, ",", 0))
        Use(token);  // "a", "", "b"
    // end
    EXPECT_EQ("[a][][b]", used);
}

TEST(HeaderExamples, OfWideArchives)
{
    const ScratchHome home;
    {
        CFile file("C:\\list.txt", CFile::modeCreate | CFile::modeWrite);
        file.Write(u"one\ntwo\n", 16);
    }
    std::string used;
    const auto Use = [&used](const CWStr& line) { used += Utf8(line) + ' '; };
    // quote kelgen/text/WArchive.h
    CFile file("C:\\list.txt", CFile::modeRead);
    CWArchive archive(&file, CArchive::load);
    CWStr line;
    while (archive.ReadString(line))
        Use(line);
    // end
    EXPECT_EQ("one two ", used);
    archive.Close();
    file.Close();
    ::DeleteFileA("C:\\list.txt");
}

TEST(HeaderExamples, OfTextsByNumber)
{
    // quote kelgen/text/IntegerText.h
    CIntegerText levels;
    levels.Add(0, "low");
    levels.Add(1, "high");
    int level = 0;
    levels.MapAt("high", level);  // true, 1
    // end
    EXPECT_EQ(1, level);
}

TEST(HeaderExamples, OfVariables)
{
    // quote kelgen/text/MapStrToStr.h
    CMapStrToStr variables;
    variables.SetAt("path", "C:\\x");
    CString text = "open{ $path}";
    variables.ReplaceVars(text);  // "open C:\x"; with an empty path "open"
    // end
    EXPECT_STREQ("open C:\\x", text);
    variables.SetAt("path", "");
    text = "open{ $path}";
    variables.ReplaceVars(text);
    EXPECT_STREQ("open", text);
}

TEST(HeaderExamples, OfNarrowText)
{
    // quote kelgen/text/Str.h
    CStr text;
    text = CString("abxab");
    text.ReverseFind("ab", -1);  // 3
    text.ReverseFind("ab", 4);   // 0
    // end
    EXPECT_EQ(3, text.ReverseFind("ab", -1));
    EXPECT_EQ(0, text.ReverseFind("ab", 4));
}

TEST(HeaderExamples, OfListsOfNarrowText)
{
    // quote kelgen/text/StrArray.h
    CStrArray names;
    names.AddTokens("beta;alpha;;beta", ";", 0);     // beta, alpha, beta
    names.Sort(CStrArray::CompareNoCase);            // alpha, beta, beta
    int place = names.FindNoCase("ALPHA");           // 0
    CString text = names.FormatString("%1 and %2");  // "alpha and beta"
    // end
    EXPECT_EQ(0, place);
    EXPECT_STREQ("alpha and beta", text);
}

TEST(HeaderExamples, OfRanges)
{
    // quote kelgen/std/Ranges.h
    auto names = kelgen::MakeArray<CWStrArray>({u"alpha"_w, u"beta"_w});
    // end
    EXPECT_EQ(2, names.GetSize());
    // quote kelgen/std/Ranges.h#2
    CMapStringToString ports;
    kelgen::SetEntries(ports, {{"http", "80"}, {"ssh", "22"}});
    // end
    EXPECT_STREQ("22", ports["ssh"]);
}

TEST(HeaderExamples, OfCallbacks)
{
    constexpr int kLevel = 1;
    gen::CPropertySet settings;
    settings.AddProperty(gen::CProperty(kLevel, "level", gen::eptInteger));
    int applied = 0;
    const auto Apply = [&applied](gen::CProperty& property) { applied = property.GetValue().GetValueInteger(); };
    struct
    {
        void Switch(bool on) { isOn = on; }
        void Toggle()
        {
            ++toggles;
            ::PostQuitMessage(0);
        }
        bool isOn = false;
        int toggles = 0;
    } lamp;
    // quote kelgen/std/Callbacks.h
    kelgen::PropertyListener watch(settings, [&](gen::CProperty& property) { Apply(property); });
    // end
    // quote kelgen/std/Callbacks.h#2
    kelgen::PropertyTrigger full(settings, kLevel, 100, [&](bool isFull) { lamp.Switch(isFull); });
    // end
    settings.Set(kLevel, 100);
    EXPECT_EQ(100, applied);
    EXPECT_TRUE(lamp.isOn);

    using namespace std::chrono_literals;
    const auto serve = [] {
        for (MSG message; ::GetMessageA(&message, nullptr, 0, 0) > 0;)
            ::DispatchMessageA(&message);
    };
    {
        // quote kelgen/std/Callbacks.h#3
        kelgen::Timer blink(500ms, [&] { lamp.Toggle(); });
        // end
        serve();
        EXPECT_LE(1, lamp.toggles);
    }
    struct
    {
        void Show(int result)
        {
            shown = result;
            ::PostQuitMessage(0);
        }
        int shown = 0;
    } view;
    const int result = 7;
    std::thread worker;
    // quote kelgen/std/Callbacks.h#4
    kelgen::ThreadTasks tasks;  // on the thread that is to run them
    worker = std::thread([&] { tasks.Post([&] { view.Show(result); }); });
    // end
    serve();
    worker.join();
    EXPECT_EQ(7, view.shown);
}
