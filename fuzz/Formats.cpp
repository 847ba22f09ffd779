// Formats.cpp: any bytes as a format of printf's and as a message with inserts, over arguments that every conversion can take.
#include "Input.h"

#include <kelgen/platform/Win32.h>
#include <kelgen/platform/support/WideFormat.h>

#include <cstdint>
#include <sys/mman.h>

using namespace fuzz;

namespace {

// A page at an address whose low half is a small number: its address is a text, a width, a number, and a place for "%n".
class Argument
{
public:
    Argument()
    {
        // Each sanitizer keeps other places for itself.
        for (const std::uintptr_t high : {0x5678, 0x2000, 0x10}) {
            void* const wanted = reinterpret_cast<void*>(high << 32);
            void* const place = mmap(wanted, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
            if (place == wanted) {
                m_text = static_cast<char*>(place) + 8;
                break;
            }
            if (place != MAP_FAILED)
                munmap(place, 4096);
        }
        Require(m_text != nullptr);
        Restore();
    }

    /// As if nothing had been stored there.
    void Restore() { std::memcpy(m_text, "a\0b\0\0\0\0\0", 8); }
    char* Get() const { return m_text; }

private:
    char* m_text = nullptr;
};

const Argument& Value()
{
    static Argument value;
    value.Restore();
    return value;
}

// Beyond this widths and precisions are a matter of time alone.
bool HasLongNumber(const std::string& text)
{
    int digits = 0;
    for (const char c : text) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > 3)
            return true;
    }
    return false;
}

int Narrow(char* text, std::size_t capacity, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = kelgen::FormatNarrow(text, capacity, format, arguments);
    va_end(arguments);
    return result;
}

int Wide(WCHAR* text, std::size_t capacity, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = kelgen::FormatWide(text, capacity, format, arguments);
    va_end(arguments);
    return result;
}

/// Arguments in registers and beyond, as many as any of the formats asks for.
template <class Char, class FORMAT>
int Call(FORMAT format, Char* text, std::size_t capacity, const Char* what)
{
    char* const p = Value().Get();
    const double d = 1234.5;
    return format(text, capacity, what, p, p, p, d, d, d, d, d, d, d, d, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p,
                  p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p, p,
                  p, p, p);
}

/// The size call agrees, and a shorter room holds the beginning.
template <class Char, class FORMAT>
void SizesAgree(FORMAT format, const std::string& source)
{
    auto what = Terminated<Char>(source);
    const int length = Call<Char>(format, nullptr, 0, what.Get());
    if (length < 0)
        return;
    const std::size_t size = static_cast<std::size_t>(length);
    Exact<Char> whole(size + 1);
    Require(Call<Char>(format, whole.Get(), size + 1, what.Get()) == length && whole[size] == 0);
    if (length > 0) {
        Exact<Char> part(size - 1);
        Require(Call<Char>(format, part.Get(), size - 1, what.Get()) == (size == 0 ? length : -1));
        Require(std::equal(part.Get(), part.Get() + part.Size(), whole.Get()));
    }
}

template <class Char, class CALL>
void FormatMessageAgrees(CALL call, const std::string& source, DWORD flags)
{
    auto what = Terminated<Char>(source);
    ULONG_PTR values[256];
    std::fill(std::begin(values), std::end(values), reinterpret_cast<ULONG_PTR>(Value().Get()));
    const auto format = [&](DWORD more, Char* text, DWORD room) {
        return call(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY | flags | more, what.Get(), 0, 0, text, room,
                    reinterpret_cast<va_list*>(values));
    };
    Char* block = nullptr;
    const DWORD length = format(FORMAT_MESSAGE_ALLOCATE_BUFFER, reinterpret_cast<Char*>(&block), 0);
    if (length == 0) {
        Require(block == nullptr);
        return;
    }
    Value();
    Exact<Char> same(length + 1);
    Require(format(0, same.Get(), length + 1) == length && std::equal(block, block + length + 1, same.Get()));
    Value();
    Exact<Char> part(length);
    SetLastError(0);
    Require(format(0, part.Get(), length) == 0 && GetLastError() == ERROR_INSUFFICIENT_BUFFER && part[length - 1] == 0);
    LocalFree(block);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    const unsigned kind = input.Below(4);
    const std::string source = input.Rest<char>();
    const std::size_t asked =
        static_cast<std::size_t>(std::count(source.begin(), source.end(), '%') + std::count(source.begin(), source.end(), '*'));
    if (HasLongNumber(source) || asked > 48)
        return 0;
    const DWORD flags = source.size() % 2 == 0 ? 0 : FORMAT_MESSAGE_MAX_WIDTH_MASK;
    switch (kind) {
    case 0:
        SizesAgree<char>(Narrow, source);
        break;
    case 1:
        SizesAgree<WCHAR>(Wide, source);
        break;
    case 2:
        FormatMessageAgrees<char>(FormatMessageA, source, flags);
        break;
    default:
        FormatMessageAgrees<WCHAR>(FormatMessageW, source, flags);
    }
    return 0;
}
