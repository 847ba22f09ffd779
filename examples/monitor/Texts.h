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

/// The language from now on, an ELanguage, in which this thread loads texts, menus and dialogs. Who shows them hears of it by
/// CKelGenApp::APPM_LANGUAGE, which the caller sends.
void SetLanguage(int language);

/// The text; empty when the program has none of that number.
CString Text(UINT id);

}  // namespace texts
