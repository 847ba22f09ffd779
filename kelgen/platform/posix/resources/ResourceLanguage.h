// ResourceLanguage.h: which language of a resource a call gives.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/api/Locale.h>

#include <iterator>
#include <vector>

namespace kelgen::posix {

/// True for a language that stands for the thread's, the user's or the system's.
inline bool IsNeutral(WORD language)
{
    return PRIMARYLANGID(language) == LANG_NEUTRAL;
}

/// The languages in which a resource is looked for when @p language is asked for, the first one that has it being given: @p language,
/// its primary one, neutral; for a neutral @p language also those of the thread, of the user, of the system and English.
std::vector<WORD> LanguagesFor(WORD language);

/// Of @p entries, whose language @p languageOf tells, the one to give for @p language; for a neutral one at last the first entry. Null
/// when there is none.
template <class Entries, class LanguageOf>
auto ChooseLanguage(const Entries& entries, WORD language, LanguageOf languageOf) -> decltype(&*std::begin(entries))
{
    const auto first = std::begin(entries);
    for (const WORD wanted : LanguagesFor(language))
        for (const auto& entry : entries)
            if (languageOf(entry) == wanted)
                return &entry;
    return IsNeutral(language) && first != std::end(entries) ? &*first : nullptr;
}

}  // namespace kelgen::posix
