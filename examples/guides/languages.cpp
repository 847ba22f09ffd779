// languages.cpp: texts and other resources of the program, in two languages.
#include "languages.h"

#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <iostream>

namespace {

enum Language : UINT
{
    kEnglish,
    kGerman,
};

Language language = kEnglish;

/// The number of a resource in the present language.
UINT Number(UINT id)
{
    return id + language * LANGUAGE_STEP;
}

/// A text in the present language, or else in the first one: a text that nobody has translated yet still says something.
CWStr Text(UINT id)
{
    CWStr text;
    if (!text.LoadStringA(Number(id)) && !text.LoadStringA(id))
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
    if (CResource::LoadResource(help, Number(IDR_HELP), "TEXTFILE"))
        for (const unsigned char letter : kelgen::Span(help))
            std::cout << static_cast<char>(letter);
    std::cout << '\n';
}

}  // namespace

int main()
{
    Show();
    language = kGerman;
    Show();
    std::cout << Text(99) << '\n';
}
