// StringTable.h: texts in the string tables of modules, as they lie there. Internal to the framework.
#pragma once

#include <kelgen/platform/Win32.h>

namespace kelgen::detail {

/// A text inside a module, without terminator; null when there is none. Valid while the module is loaded.
struct ResourceText
{
    const WCHAR* units = nullptr;
    int length = 0;

    explicit operator bool() const { return units != nullptr; }
};

/// The text of string number @p id in the thread's language. By contract: an empty text counts as none, since tables fill their gaps with
/// such.
ResourceText FindResourceText(HINSTANCE module, UINT id);
/// The text of exactly @p language.
ResourceText FindResourceText(HINSTANCE module, UINT id, WORD language);

}  // namespace kelgen::detail
