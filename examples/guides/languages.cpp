// languages.cpp: texts and other resources of the program, in two languages.
#include "languages.h"

#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <iostream>

namespace {

/// What this thread loads from now on is in @p language, where there is such.
void UseLanguage(LANGID language)
{
    // The first decides on Windows since 6.0 and on Linux, the second before that and under Wine.
    ::SetThreadUILanguage(language);
    ::SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
}

/// A text in the present language; one that is missing says so.
CWStr Text(UINT id)
{
    CWStr text;
    if (!text.LoadStringA(id))
        text.Format(u"<text %d>", static_cast<int>(id));
    return text;
}

void Show()
{
    std::cout << Text(IDS_SIZE) << '\n';

    // Numbered inserts, since a language puts them in an order of its own.
    CWStr line;
    line.FormatMessageA(Text(IDS_PROGRESS), 3, 12);
    std::cout << line << '\n';

    // Any file can be a resource, under a type of your own.
    CMemoryStorage help(nullptr);
    if (CResource::LoadResource(help, IDR_HELP, "TEXTFILE"))
        for (const unsigned char letter : kelgen::Span(help))
            std::cout << static_cast<char>(letter);
    std::cout << '\n';
}

}  // namespace

int main()
{
    UseLanguage(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US));
    Show();
    UseLanguage(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN));
    Show();
    // Nobody has translated into French: the user's language comes, or else English.
    UseLanguage(MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH));
    std::cout << Text(IDS_SIZE) << ' ' << Text(99) << '\n';
}
