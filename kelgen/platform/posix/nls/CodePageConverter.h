// CodePageConverter.h: the C library's converter of one code page, asked one character at a time.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <iconv.h>

#include <optional>
#include <string>

namespace kelgen::posix {

/// Owns a converter in each direction.
class CodePageConverter
{
public:
    /// Throws: std::bad_alloc when the C library lacks memory or files for it, which says nothing of the name.
    explicit CodePageConverter(const std::string& name);
    ~CodePageConverter();
    CodePageConverter(CodePageConverter&& other) noexcept;
    CodePageConverter& operator=(CodePageConverter&&) = delete;

    /// False when the C library does not know the name.
    bool IsOpen() const { return m_decoder != kClosed && m_encoder != kClosed; }

    /// What some bytes become.
    struct Result
    {
        std::optional<WCHAR> unit;  // none when they are not exactly one character of one unit
        bool isIncomplete = false;  // they only start a character
    };
    Result ToUnit(std::string bytes);

    /// The byte, or lead byte * 256 + trail byte, of @p unit.
    std::optional<WORD> ToCode(WCHAR unit);

private:
    static inline const iconv_t kClosed = reinterpret_cast<iconv_t>(-1);

    /// The converter; kClosed for a name that is unknown.
    static iconv_t Opened(const char* to, const char* from);
    static void Close(iconv_t converter);

    iconv_t m_decoder = kClosed;
    iconv_t m_encoder = kClosed;
};

}  // namespace kelgen::posix
