// CodePageConverter.cpp: iconv, reset before every character because some pages wait for combining marks.
#include <kelgen/platform/posix/nls/CodePageConverter.h>

#include <cerrno>
#include <new>
#include <utility>

namespace kelgen::posix {

namespace {

constexpr const char* kUnits = "UTF-16LE";

struct Conversion
{
    std::size_t produced = 0;
    int error = 0;
};

// Converts @p size bytes, all of them or none.
Conversion Convert(iconv_t converter, char* from, std::size_t size, char* to, std::size_t room)
{
    const std::size_t capacity = room;
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    if (iconv(converter, &from, &size, &to, &room) == static_cast<std::size_t>(-1))
        return {0, errno};

    iconv(converter, nullptr, nullptr, &to, &room);
    return {capacity - room, 0};
}

}  // namespace

CodePageConverter::CodePageConverter(const std::string& name) : m_decoder(Opened(kUnits, name.c_str()))
{
    try {
        m_encoder = Opened(name.c_str(), kUnits);
    } catch (const std::bad_alloc&) {
        Close(m_decoder);
        throw;
    }
}

CodePageConverter::CodePageConverter(CodePageConverter&& other) noexcept
    : m_decoder(std::exchange(other.m_decoder, kClosed)), m_encoder(std::exchange(other.m_encoder, kClosed))
{}

CodePageConverter::~CodePageConverter()
{
    Close(m_decoder);
    Close(m_encoder);
}

iconv_t CodePageConverter::Opened(const char* to, const char* from)
{
    const iconv_t opened = iconv_open(to, from);
    if (opened == kClosed && errno != EINVAL)
        throw std::bad_alloc();
    return opened;
}

void CodePageConverter::Close(iconv_t converter)
{
    if (converter != kClosed)
        iconv_close(converter);
}

CodePageConverter::Result CodePageConverter::ToUnit(std::string bytes)
{
    char units[16];
    const Conversion conversion = Convert(m_decoder, bytes.data(), bytes.size(), units, sizeof units);
    Result result;
    result.isIncomplete = conversion.error == EINVAL;
    if (conversion.produced == 2)
        result.unit = static_cast<WCHAR>(static_cast<BYTE>(units[0]) | static_cast<BYTE>(units[1]) << 8);
    return result;
}

std::optional<WORD> CodePageConverter::ToCode(WCHAR unit)
{
    char units[] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    char bytes[16];
    const Conversion conversion = Convert(m_encoder, units, sizeof units, bytes, sizeof bytes);
    if (conversion.produced == 1)
        return static_cast<BYTE>(bytes[0]);
    if (conversion.produced == 2)
        return static_cast<WORD>(static_cast<BYTE>(bytes[0]) << 8 | static_cast<BYTE>(bytes[1]));
    return std::nullopt;
}

}  // namespace kelgen::posix
