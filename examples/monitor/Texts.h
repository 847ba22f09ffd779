// Texts.h: the program's texts in the language of the moment.
#pragma once

#include <kelgen/text/IntegerText.h>

namespace texts {

enum ELanguage
{
    languageEnglish,
    languageGerman,
};

/// The languages' numbers and their names.
const CIntegerText& Languages();

/// The language from now on. Who shows texts hears of it by CKelGenApp::APPM_LANGUAGE, which the caller sends.
void SetLanguage(int language);

/// The number of the language's resource (text, menu, dialog) for that of the English one.
UINT ResourceId(UINT id);

/// The text; empty when the program has none of that number.
CString Text(UINT id);

}  // namespace texts
