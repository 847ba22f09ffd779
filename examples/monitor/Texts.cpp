// Texts.cpp: texts from string resources, and the table of languages.
#include "Texts.h"

#include "Resource.h"

namespace texts {

namespace {

int current = languageEnglish;

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
    current = language;
}

UINT ResourceId(UINT id)
{
    return id + static_cast<UINT>(current) * LANGUAGE_STEP;
}

CString Text(UINT id)
{
    CString text;
    text.LoadString(ResourceId(id));
    return text;
}

}  // namespace texts
