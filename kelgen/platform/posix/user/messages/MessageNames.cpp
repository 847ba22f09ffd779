// MessageNames.cpp: numbers of messages that are known by name.
#include <kelgen/platform/posix/user/api/MessageCalls.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/nls/api/Nls.h>

#include <map>
#include <mutex>
#include <string>
#include <vector>

using namespace kelgen::posix;

namespace {

constexpr UINT kFirstName = 0xC000;
constexpr UINT kLastName = 0xFFFF;
constexpr std::size_t kLongestName = 255;

// The value of "#N"; 0 for any other text.
UINT PlainNumber(const std::u16string& name)
{
    if (name.size() < 2 || name[0] != u'#')
        return 0;
    UINT value = 0;
    for (const char16_t unit : name.substr(1)) {
        if (unit < u'0' || unit > u'9' || value >= kFirstName)
            return 0;
        value = value * 10 + (unit - u'0');
    }
    return value < kFirstName ? value : 0;
}

UINT NumberOf(std::u16string name)
{
    if (name.empty() || name.size() > kLongestName)
        return Fail(ERROR_INVALID_PARAMETER, 0u);
    if (const UINT number = PlainNumber(name))
        return number;
    for (char16_t& unit : name)
        unit = LowerUnit(unit);

    static std::mutex& lock = *new std::mutex;
    static auto& numbers = *new std::map<std::u16string, UINT>;
    const std::lock_guard guard(lock);
    const auto found = numbers.find(name);
    if (found != numbers.end())
        return found->second;
    const UINT next = kFirstName + static_cast<UINT>(numbers.size());
    if (next > kLastName)
        return Fail(ERROR_NOT_ENOUGH_MEMORY, 0u);
    return numbers[name] = next;
}

}  // namespace

UINT RegisterWindowMessageW(LPCWSTR name)
{
    return OrNoMemory(UINT{0}, [&]() -> UINT {
        if (IS_INTRESOURCE(name))
            return static_cast<UINT>(reinterpret_cast<UINT_PTR>(name));
        std::u16string text;
        while (*name)
            text.push_back(static_cast<char16_t>(*name++));
        return NumberOf(std::move(text));
    });
}

UINT RegisterWindowMessageA(LPCSTR name)
{
    return OrNoMemory(UINT{0}, [&]() -> UINT {
        if (IS_INTRESOURCE(name))
            return static_cast<UINT>(reinterpret_cast<UINT_PTR>(name));
        std::vector<WCHAR> wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, name, -1, nullptr, 0)) + 1);
        MultiByteToWideChar(CP_ACP, 0, name, -1, wide.data(), static_cast<int>(wide.size()));
        return RegisterWindowMessageW(wide.data());
    });
}
