// ResourceLanguage.cpp: the order of languages.
#include <kelgen/platform/posix/resources/ResourceLanguage.h>

namespace kelgen::posix {

namespace {

void Append(std::vector<WORD>& languages, WORD language)
{
    languages.push_back(language);
    languages.push_back(MAKELANGID(PRIMARYLANGID(language), SUBLANG_NEUTRAL));
}

}  // namespace

std::vector<WORD> LanguagesFor(WORD language)
{
    constexpr std::size_t kMost = 10;
    std::vector<WORD> languages;
    languages.reserve(kMost);
    Append(languages, language);
    languages.push_back(LANG_NEUTRAL);
    if (!IsNeutral(language))
        return languages;

    if (SUBLANGID(language) != SUBLANG_SYS_DEFAULT) {
        if (GetThreadUILanguage() != GetUserDefaultUILanguage())
            Append(languages, GetThreadUILanguage());
        // By contract: the locale's primary language does not count, so that translations for other countries are passed by.
        languages.push_back(LANGIDFROMLCID(GetThreadLocale()));
    }
    Append(languages, GetUserDefaultUILanguage());
    Append(languages, GetSystemDefaultUILanguage());
    languages.push_back(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US));
    return languages;
}

}  // namespace kelgen::posix
