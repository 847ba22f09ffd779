// MessageFormat.cpp: FormatMessageW and FormatMessageA over one formatter.
#include <kelgen/platform/posix/nls/api/MessageFormat.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/SystemMessages.h>
#include <kelgen/platform/posix/threads/api/Memory.h>
#include <kelgen/platform/support/printf/PrintfFormatter.h>

#include <optional>
#include <string>
#include <vector>

using namespace kelgen::detail;
using namespace kelgen::posix;

namespace {

// An insert with a width beyond this is a bad format, not a reason to ask for gigabytes.
constexpr size_t kMostUnits = size_t{1} << 24;

/// The arguments by number; a list is read no further than the highest number asked for.
class InsertArguments
{
public:
    InsertArguments(DWORD flags, va_list* arguments)
        : m_array(flags & FORMAT_MESSAGE_ARGUMENT_ARRAY ? reinterpret_cast<const ULONG_PTR*>(arguments) : nullptr)
    {
        if (arguments && !m_array)
            m_list.emplace(*arguments);
    }

    bool HasAny() const { return m_array || m_list; }

    /// The first is 0. Values are pointer-sized; a list's 64-bit registers and slots hold smaller ones too.
    ULONG_PTR At(size_t index)
    {
        if (m_array)
            return m_array[index];
        while (m_read.size() <= index)
            m_read.push_back(reinterpret_cast<ULONG_PTR>(m_list->Pointer()));
        return m_read[index];
    }

private:
    const ULONG_PTR* m_array;
    std::optional<VaListArguments> m_list;
    std::vector<ULONG_PTR> m_read;
};

/// The arguments of one insert, in the order in which the formatter asks for them.
class OneInsert
{
public:
    OneInsert(InsertArguments& arguments, size_t first) : m_arguments(arguments), m_next(first) {}

    int Int() { return static_cast<int>(m_arguments.At(m_next++)); }
    long long LongLong() { return static_cast<long long>(m_arguments.At(m_next++)); }
    void* Pointer() { return reinterpret_cast<void*>(m_arguments.At(m_next++)); }
    double Double() { return 0; }

private:
    InsertArguments& m_arguments;
    size_t m_next;
};

template <class Unit>
class MessageFormatter
{
public:
    using Text = std::basic_string<Unit>;

    MessageFormatter(DWORD flags, va_list* arguments)
        : m_arguments(flags, arguments), m_inserts(!(flags & FORMAT_MESSAGE_IGNORE_INSERTS)),
          m_joinLines((flags & FORMAT_MESSAGE_MAX_WIDTH_MASK) == FORMAT_MESSAGE_MAX_WIDTH_MASK)
    {}

    /// False for a bad format.
    bool Format(const Unit* source)
    {
        while (*source) {
            if (*source == '%') {
                source = Escape(source + 1);
                if (!source)
                    return false;
                if (m_ended)
                    return true;
            } else if (*source == '\r' || *source == '\n') {
                source += source[0] == '\r' && source[1] == '\n' ? 2 : 1;
                if (m_joinLines)
                    result.push_back(' ');
                else
                    LineEnd();
            } else {
                result.push_back(*source++);
            }
        }
        return true;
    }

    Text result;

private:
    /// What follows a '%'; null for a bad format.
    const Unit* Escape(const Unit* source)
    {
        if (*source >= '1' && *source <= '9' && m_inserts)
            return Insert(source);

        switch (*source) {
        case 0:
            return nullptr;
        case '0':
            m_ended = true;
            break;
        case 'n':
            LineEnd();
            break;
        case 'r':
            result.push_back('\r');
            break;
        case 't':
            result.push_back('\t');
            break;
        default:
            if (!m_inserts)
                result.push_back('%');
            result.push_back(*source);
        }
        return source + 1;
    }

    const Unit* Insert(const Unit* source)
    {
        size_t number = static_cast<size_t>(*source++ - '0');
        if (*source >= '0' && *source <= '9')
            number = number * 10 + static_cast<size_t>(*source++ - '0');

        Text format(1, '%');
        if (*source == '!') {
            const Unit* const first = source + 1;
            for (++source; *source && *source != '!';)
                ++source;
            if (!*source)
                return nullptr;
            format.append(first, source++);
        } else {
            format.push_back('s');
        }
        return m_arguments.HasAny() && PutInsert(format, number - 1) ? source : nullptr;
    }

    /// False when there is nothing to print the argument as.
    bool PutInsert(Text format, size_t index)
    {
        // Floating-point values do not fit the pointer-sized arguments: their letters print themselves.
        if (const Unit letter = format.back(); std::string_view("eEfgGaA").find(static_cast<char>(letter)) != std::string_view::npos) {
            result.push_back(letter);
            return true;
        }
        const size_t first = index + m_starArguments;
        m_starArguments += static_cast<size_t>(std::count(format.begin(), format.end(), '*'));

        BoundedOutput<Unit> measure(nullptr, 0);
        OneInsert measured(m_arguments, first);
        PrintfFormatter(measure, measured).Format(format.c_str());
        if (measure.Length() > kMostUnits)
            return false;
        const size_t before = result.size();
        result.resize(before + measure.Length());
        BoundedOutput<Unit> output(result.data() + before, measure.Length());
        OneInsert insert(m_arguments, first);
        return PrintfFormatter(output, insert).Format(format.c_str());
    }

    void LineEnd()
    {
        result.push_back('\r');
        result.push_back('\n');
    }

    InsertArguments m_arguments;
    const bool m_inserts;
    const bool m_joinLines;
    bool m_ended = false;
    size_t m_starArguments = 0;
};

/// Hands the text to the caller's buffer or to one of its own.
template <class Unit>
DWORD Deliver(const std::basic_string<Unit>& result, DWORD flags, Unit* text, DWORD size)
{
    if (result.empty())
        return Fail(ERROR_NO_WORK_DONE, 0u);

    const size_t needed = result.size() + 1;
    if (flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) {
        const HLOCAL block = LocalAlloc(LMEM_FIXED, std::max<size_t>(needed, size) * sizeof(Unit));
        if (!block)
            return Fail(ERROR_NOT_ENOUGH_MEMORY, 0u);
        std::copy_n(result.c_str(), needed, static_cast<Unit*>(block));
        std::memcpy(static_cast<void*>(text), &block, sizeof block);
    } else if (size < needed) {
        if (size > 0) {
            std::copy_n(result.c_str(), size - 1, text);
            text[size - 1] = 0;
        }
        return Fail(ERROR_INSUFFICIENT_BUFFER, 0u);
    } else {
        std::copy_n(result.c_str(), needed, text);
    }
    return static_cast<DWORD>(result.size());
}

template <class Unit>
DWORD FormatMessageOf(DWORD flags, LPCVOID source, DWORD id, Unit* text, DWORD size, va_list* arguments)
{
    if (!text)
        return Fail(ERROR_INVALID_PARAMETER, 0u);

    std::basic_string<Unit> format;
    if (flags & FORMAT_MESSAGE_FROM_STRING) {
        if (!source)
            return Fail(ERROR_INVALID_PARAMETER, 0u);
        format = static_cast<const Unit*>(source);
    } else if (flags & FORMAT_MESSAGE_FROM_SYSTEM) {
        const std::string_view known = SystemMessage(id);
        if (known.empty())
            return Fail(ERROR_MR_MID_NOT_FOUND, 0u);
        format.assign(known.begin(), known.end());
    } else {
        return Fail(ERROR_INVALID_PARAMETER, 0u);
    }

    MessageFormatter<Unit> formatter(flags, arguments);
    if (!formatter.Format(format.c_str()))
        return Fail(ERROR_INVALID_PARAMETER, 0u);
    return Deliver(formatter.result, flags, text, size);
}

}  // namespace

DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD id, DWORD, LPWSTR text, DWORD size, va_list* arguments)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return FormatMessageOf(flags, source, id, text, size, arguments); });
}

DWORD FormatMessageA(DWORD flags, LPCVOID source, DWORD id, DWORD, LPSTR text, DWORD size, va_list* arguments)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return FormatMessageOf(flags, source, id, text, size, arguments); });
}
