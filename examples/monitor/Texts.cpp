// Texts.cpp: texts from string resources, and the table of languages.
#include "Texts.h"

#include "Resource.h"

namespace texts {

namespace {

// The platform's numbers of the languages, in the order of ELanguage.
constexpr LANGID kNumbers[] = {
    MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US),
    MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN),
};

CIntegerText MakeLanguages()
{
    CIntegerText languages;
    languages.Add(languageEnglish, "English");
    languages.Add(languageGerman, "Deutsch");
    return languages;
}

}  // namespace

const CIntegerText& Languages()
{
    static const CIntegerText languages = MakeLanguages();
    return languages;
}

void SetLanguage(int language)
{
    const LANGID number = kNumbers[language];
    // Windows looks at the one since version 6.0, at the other one before that.
    ::SetThreadUILanguage(number);
    ::SetThreadLocale(MAKELCID(number, SORT_DEFAULT));
}

CString Text(UINT id)
{
    CString text;
    text.LoadString(id);
    return text;
}

}  // namespace texts
