// CharacterData.h: case mapping and character classes of the 16-bit units, independent of any locale.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

namespace kelgen::posix {

/// Every @p step-th unit from @p first to @p last maps to itself plus @p offset, modulo 0x10000.
struct CaseRange
{
    WCHAR first;
    WCHAR last;
    WCHAR step;
    WCHAR offset;
};

/// Every @p step-th unit from @p first to @p last.
struct UnitRange
{
    WCHAR first;
    WCHAR last;
    WCHAR step;
};

extern const CaseRange kUpperMap[];
extern const std::size_t kUpperMapCount;
extern const CaseRange kLowerMap[];
extern const std::size_t kLowerMapCount;
extern const UnitRange kLetters[];
extern const std::size_t kLettersCount;
extern const UnitRange kUpperCase[];
extern const std::size_t kUpperCaseCount;
extern const UnitRange kLowerCase[];
extern const std::size_t kLowerCaseCount;
extern const UnitRange kDigits[];
extern const std::size_t kDigitsCount;
extern const UnitRange kSpaces[];
extern const std::size_t kSpacesCount;

}  // namespace kelgen::posix
