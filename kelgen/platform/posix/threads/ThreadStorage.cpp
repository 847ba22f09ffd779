// ThreadStorage.cpp: TlsAlloc and its values; an index that is freed and taken again reads null in every thread.
#include <kelgen/platform/posix/threads/api/Threads.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>

#include <array>
#include <atomic>
#include <vector>

using namespace kelgen::posix;

namespace {

constexpr DWORD kIndexCount = 1088;

// Odd while the index is in use: values stored under an older number are stale.
std::array<std::atomic<DWORD>, kIndexCount> useNumbers;

struct StoredValue
{
    DWORD useNumber = 0;
    LPVOID value = nullptr;
};

std::vector<StoredValue>& OwnValues()
{
    static thread_local std::vector<StoredValue> values;
    return values;
}

bool IsInUse(DWORD useNumber)
{
    return useNumber % 2 == 1;
}

}  // namespace

DWORD TlsAlloc()
{
    for (DWORD index = 0; index < kIndexCount; ++index) {
        DWORD number = useNumbers[index].load();
        if (!IsInUse(number) && useNumbers[index].compare_exchange_strong(number, number + 1))
            return index;
    }
    return Fail(ERROR_NO_MORE_ITEMS, TLS_OUT_OF_INDEXES);
}

BOOL TlsFree(DWORD index)
{
    if (index >= kIndexCount)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    DWORD number = useNumbers[index].load();
    if (!IsInUse(number) || !useNumbers[index].compare_exchange_strong(number, number + 1))
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return TRUE;
}

LPVOID TlsGetValue(DWORD index)
{
    if (index >= kIndexCount)
        return Fail(ERROR_INVALID_PARAMETER, LPVOID{});

    SetLastError(NO_ERROR);
    const auto& values = OwnValues();
    if (index >= values.size() || values[index].useNumber != useNumbers[index].load(std::memory_order_relaxed))
        return nullptr;
    return values[index].value;
}

BOOL TlsSetValue(DWORD index, LPVOID value)
{
    if (index >= kIndexCount)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);

    auto& values = OwnValues();
    if (index >= values.size())
        values.resize(index + 1);
    values[index] = {useNumbers[index].load(std::memory_order_relaxed), value};
    return TRUE;
}
