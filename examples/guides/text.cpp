// text.cpp: 16-bit text, narrow text, and the code pages between them.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <algorithm>
#include <iostream>
#include <unordered_map>

int main()
{
    // CWStr holds 16-bit text. A copy shares the units until one of the two changes.
    CWStr name(u"Straße_7.txt");
    const CWStr before = name;
    name.Replace(u"_", u" ");
    name = name.Left(name.ReverseFind(u'.')) + u".md";
    std::cout << before << " -> " << name << ", " << name.GetLength() << " units\n";

    // Formats are printf's: %s is 16-bit text here.
    CWStr line;
    line.Format(u"%s has %d bytes", u"notes.md"_w, 4711);
    std::cout << line << '\n';

    // Bytes from outside come with a code page; inside, there is one kind of text.
    const std::string shiftJis = "\x93\xFA\x96\x7B";
    const CWStr japan = kelgen::FromCodePage(shiftJis, 932);
    const std::string utf8 = kelgen::ToUtf8(japan);
    std::cout << utf8 << ": " << japan.GetLength() << " units, " << utf8.size() << " bytes\n";

    // A page that lacks a character puts its default one there, and that is a loss.
    std::cout << "in page 1252: " << kelgen::ToCodePage(japan, 1252) << '\n';

    // CString is narrow text, in the program's own page: UTF-8 on Linux, the system's on Windows.
    const CString narrow = kelgen::NarrowFromUtf8("Straße");
    std::cout << narrow << " comes back whole: " << (kelgen::FromCodePage(kelgen::View(narrow), GetACP()) == u"Straße"_w) << '\n';

    // Lists split, sort and join.
    CWStrArray words;
    words.AddTokens(u"pear;apple;;Fig", u";", false);
    words.Sort(CWStr::CompareNoCase);
    CWStr joined;
    words.GetFormatString(joined, u", "_w);
    std::cout << joined << '\n';

    // The standard library takes them as views and keys, and walks them.
    std::unordered_map<CWStr, int> lengths;
    for (const CWStr& word : words)
        lengths[word] = word.GetLength();
    std::cout << "apple: " << lengths[u"apple"_w] << ", letters e: " << std::ranges::count(kelgen::View(joined), u'e') << '\n';
}
