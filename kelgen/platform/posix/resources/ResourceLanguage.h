// ResourceLanguage.h: which language of a resource a call gives.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/api/Locale.h>

#include <iterator>
#include <vector>

namespace kelgen::posix {

/// Of @p entries, whose language @p languageOf tells, the one to give for @p language: it, its primary language or neutral; for a
/// neutral @p language also the thread's, English and at last the first one. Null when there is none.
template <class Entries, class LanguageOf>
auto ChooseLanguage(const Entries& entries, WORD language, LanguageOf languageOf) -> decltype(&*std::begin(entries))
{
    std::vector<WORD> wanted = {language, MAKELANGID(PRIMARYLANGID(language), SUBLANG_NEUTRAL), 0};
    const bool anyLanguage = PRIMARYLANGID(language) == LANG_NEUTRAL;
    if (anyLanguage) {
        const WORD ofThread = LANGIDFROMLCID(GetThreadLocale());
        wanted.insert(wanted.end(),
                      {ofThread, MAKELANGID(PRIMARYLANGID(ofThread), SUBLANG_NEUTRAL), MAKELANGID(LANG_ENGLISH, SUBLANG_DEFAULT)});
    }
    for (const WORD candidate : wanted)
        for (const auto& entry : entries)
            if (languageOf(entry) == candidate)
                return &entry;
    return anyLanguage && std::begin(entries) != std::end(entries) ? &*std::begin(entries) : nullptr;
}

}  // namespace kelgen::posix
