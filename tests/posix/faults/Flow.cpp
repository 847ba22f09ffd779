// Flow.cpp: the runs, and what each may leave behind.
#include "posix/faults/Flow.h"

#include "support/faults/FailingMemory.h"
#include "support/system/Services.h"

#include <kelgen/framework/base/Exceptions.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <unistd.h>

namespace kelgen::test {

namespace {

struct Remains
{
    std::ptrdiff_t descriptors = 0;
    std::ptrdiff_t files = 0;
    int windows = 0;

    bool operator==(const Remains&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Remains& remains)
{
    return out << remains.descriptors << " descriptors, " << remains.files << " files, " << remains.windows << " windows";
}

Remains RemainsNow()
{
    namespace fs = std::filesystem;
    Remains remains;
    remains.descriptors = std::distance(fs::directory_iterator("/proc/self/fd"), {});
    const fs::path home = std::getenv("KELGEN_HOME");
    for (auto entry = fs::recursive_directory_iterator(home.parent_path()); entry != fs::recursive_directory_iterator(); ++entry)
        ++remains.files;
    const auto count = [](HWND, LPARAM number) -> BOOL {
        ++*reinterpret_cast<int*>(number);
        return TRUE;
    };
    EnumWindows(count, reinterpret_cast<LPARAM>(&remains.windows));
    for (HWND window = nullptr; (window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr));)
        ++remains.windows;
    return remains;
}

bool IsLackOfMemory(DWORD error)
{
    return error == ERROR_NOT_ENOUGH_MEMORY || error == ERROR_OUTOFMEMORY;
}

/// Whether a lack of memory is why the framework throws it: a file's or a resource's exception, for a call of the platform that failed.
bool TellsOfMemory(CException& exception, DWORD lastError)
{
    if (const CFileException* const file = DYNAMIC_DOWNCAST(CFileException, &exception))
        return IsLackOfMemory(static_cast<DWORD>(file->m_lOsError));
    return exception.IsKindOf(RUNTIME_CLASS(CResourceException)) && IsLackOfMemory(lastError);
}

/// One run: whether an allocation failed in it.
bool Run(const std::function<Outcome()>& work, int first, bool fromThereOn)
{
    FailingMemory memory(first, fromThereOn);
    Outcome outcome = {true};
    const char* wrong = nullptr;
    try {
        outcome = work();
    } catch (CMemoryException* e) {
        e->Delete();
    } catch (CException* e) {
        memory.End();
        if (!TellsOfMemory(*e, GetLastError()))
            wrong = e->GetRuntimeClass()->m_lpszClassName;
        e->Delete();
    } catch (const std::exception& e) {
        memory.End();
        wrong = typeid(e).name();
    }
    memory.End();
    if (wrong)
        ADD_FAILURE() << "throws " << wrong;
    if (!outcome.done && !IsLackOfMemory(outcome.error))
        ADD_FAILURE() << "fails with " << outcome.error;
    return memory.HasFailed();
}

int Step()
{
    const char* const chosen = std::getenv("KELGEN_FAULTS");
    return chosen && std::string(chosen) == "all" ? 1 : 7;
}

/// All runs of a kind. Returns their number.
int RunAll(const std::function<Outcome()>& work, const std::function<void()>& check, bool fromThereOn)
{
    constexpr int kMost = 100000;
    const Remains before = RemainsNow();
    int runs = 0;
    for (int first = 0; first < kMost; first += Step(), ++runs) {
        SCOPED_TRACE(std::to_string(first) + (fromThereOn ? " and all after it" : " alone"));
        const bool failed = Run(work, first, fromThereOn);
        if (check)
            check();
        // What has ended may still be on its way out.
        Eventually([&before] { return RemainsNow() == before; });
        EXPECT_EQ(before, RemainsNow());
        if (!failed || testing::Test::HasFailure())
            break;
    }
    return runs;
}

/// The program's resident memory in KB.
long Resident()
{
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

/// What a work came to hold after some of its runs.
struct Holding
{
    Remains remains;
    std::ptrdiff_t blocks;
    long resident;

    static Holding Now() { return {RemainsNow(), LiveBlocks(), Resident()}; }
};

/// Runs @p work for so many seconds. What the process holds must be the same at the end as after a third of the time, which is left to what
/// is made once and kept.
void Soak(const std::function<Outcome()>& work, const std::function<void()>& check, double seconds)
{
    using Clock = std::chrono::steady_clock;
    // Pages that the heap keeps, and numbers of closed handles, which wait in line before they come again.
    constexpr long kSpareResident = 16 * 1024;
    const Clock::time_point start = Clock::now();
    long runs = 0;
    const auto runFor = [&](double share) {
        do {
            ASSERT_TRUE(work().done) << "in run " << runs << ", error " << GetLastError();
            if (check)
                check();
            ++runs;
        } while (Clock::now() - start < std::chrono::duration<double>(seconds * share) && !testing::Test::HasFailure());
    };
    runFor(1.0 / 3);
    const Holding before = Holding::Now();
    runFor(1);
    // What has ended may still be on its way out.
    Eventually([&before] { return RemainsNow() == before.remains && LiveBlocks() <= before.blocks; });
    const Holding after = Holding::Now();
    EXPECT_EQ(before.remains, after.remains);
    EXPECT_LE(after.blocks, before.blocks) << "loses memory";
    EXPECT_LE(after.resident, before.resident + kSpareResident) << "KB";
    std::cout << testing::UnitTest::GetInstance()->current_test_info()->name() << ": " << runs << " runs, " << after.remains << ", "
              << after.blocks << " blocks (" << after.blocks - before.blocks << " more), " << after.resident << " KB resident ("
              << after.resident - before.resident << " more)" << std::endl;
}

}  // namespace

void RunWithoutMemory(const std::function<Outcome()>& work, const std::function<void()>& check)
{
    if (const char* const seconds = std::getenv("KELGEN_SOAK")) {
        Soak(work, check, std::strtod(seconds, nullptr));
        return;
    }
    // What is made once and kept, before anything fails.
    ASSERT_TRUE(work().done) << "with memory, error " << GetLastError();
    if (check)
        check();
    int runs = 0;
    // What is kept for later use comes to an end of its growth, what is lost does not.
    constexpr int kMostRounds = 150;
    bool grows = true;
    for (int round = 0; grows && round < kMostRounds; ++round) {
        const std::ptrdiff_t blocks = LiveBlocks();
        for (const bool fromThereOn : {false, true})
            runs += RunAll(work, check, fromThereOn);
        if (testing::Test::HasFailure())
            return;
        grows = LiveBlocks() > blocks;
    }
    EXPECT_FALSE(grows) << "loses memory";
    EXPECT_TRUE(runs > 0 || !FailsMalloc()) << "allocates nothing";
    testing::Test::RecordProperty("runs", runs);
}

}  // namespace kelgen::test
