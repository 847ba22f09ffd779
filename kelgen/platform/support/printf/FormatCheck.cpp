// FormatCheck.cpp: reads formats as the runtime's formatter does.
#include <kelgen/platform/support/FormatCheck.h>

#include <kelgen/platform/support/Assert.h>
#include <kelgen/platform/support/printf/PrintfDirective.h>

#include <string>

namespace kelgen::detail {

namespace {

const char* NameOf(FormatArgument argument)
{
    switch (argument) {
    case FormatArgument::Int:
        return "a number of 32 bits";
    case FormatArgument::Int64:
        return "a number of 64 bits";
    case FormatArgument::Double:
        return "a floating-point number";
    case FormatArgument::NarrowText:
        return "narrow text";
    case FormatArgument::WideText:
        return "16-bit text";
    case FormatArgument::Untyped:
    case FormatArgument::Pointer:
        return "a pointer";
    case FormatArgument::Other:
        break;
    }
    return "something else";
}

bool Takes(FormatArgument wanted, FormatArgument given)
{
    if (wanted == given)
        return true;
    const bool isAddress = given == FormatArgument::NarrowText || given == FormatArgument::WideText || given == FormatArgument::Untyped;
    switch (wanted) {
    case FormatArgument::NarrowText:
    case FormatArgument::WideText:
        return given == FormatArgument::Untyped;
    case FormatArgument::Pointer:
        return isAddress || (sizeof(void*) == 8 && given == FormatArgument::Int64);
    default:
        return false;
    }
}

/// What the conversion takes; Other for one that takes nothing.
FormatArgument WantedBy(const PrintfDirective& directive, bool isWideFormat)
{
    switch (ArgumentOf(directive)) {
    case PrintfArgument::Int:
        return FormatArgument::Int;
    case PrintfArgument::Int64:
        return FormatArgument::Int64;
    case PrintfArgument::Double:
        return FormatArgument::Double;
    case PrintfArgument::None:
        return FormatArgument::Other;
    case PrintfArgument::Pointer:
        break;
    }
    if (directive.letter != 's' && directive.letter != 'S')
        return FormatArgument::Pointer;
    const bool unmarked = isWideFormat == (directive.letter == 's');
    const bool isWide = directive.size == PrintfSize::None ? unmarked : directive.size != PrintfSize::Narrow;
    return isWide ? FormatArgument::WideText : FormatArgument::NarrowText;
}

template <class Unit>
class FormatCheck
{
public:
    FormatCheck(const char* caller, const Unit* format, const FormatArgument* arguments, std::size_t count)
        : m_caller(caller), m_arguments(arguments), m_count(count), m_walk(format, *this)
    {}

    void Run()
    {
        for (PrintfDirective directive; m_walk.Next(directive);) {
            const FormatArgument wanted = WantedBy(directive, sizeof(Unit) > 1);
            if (wanted != FormatArgument::Other)
                Take(wanted, m_walk.End());
        }
    }

    /// The reader asks for a star's argument here. Its value does not matter.
    int Int()
    {
        const Unit* end = m_walk.Begin();
        while (*end && *end != '*')
            ++end;
        Take(FormatArgument::Int, *end ? end + 1 : end);
        return 0;
    }

private:
    void Take(FormatArgument wanted, const Unit* end)
    {
        const std::size_t at = m_next++;
        if (at >= m_count)
            ReportMisuse("%s: \"%s\" takes %s, and there is no argument %d", m_caller, Conversion(end).c_str(), NameOf(wanted),
                         static_cast<int>(at + 1));
        else if (!Takes(wanted, m_arguments[at]))
            ReportMisuse("%s: \"%s\" takes %s, but argument %d is %s", m_caller, Conversion(end).c_str(), NameOf(wanted),
                         static_cast<int>(at + 1), NameOf(m_arguments[at]));
    }

    std::string Conversion(const Unit* end) const
    {
        std::string text = "%";
        for (const Unit* at = m_walk.Begin(); at < end; ++at)
            text += static_cast<char>(*at);
        return text;
    }

    const char* const m_caller;
    const FormatArgument* const m_arguments;
    const std::size_t m_count;
    std::size_t m_next = 0;
    PrintfDirectiveWalk<Unit, FormatCheck> m_walk;
};

}  // namespace

void CheckFormat(const char* caller, const char* format, const FormatArgument* arguments, std::size_t count)
{
    FormatCheck<char>(caller, format, arguments, count).Run();
}

void CheckFormat(const char* caller, const unsigned short* format, const FormatArgument* arguments, std::size_t count)
{
    FormatCheck<unsigned short>(caller, format, arguments, count).Run();
}

}  // namespace kelgen::detail
