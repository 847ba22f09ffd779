// FileTimesTest.cpp: calendar limits, packed times, times of files.
#include "support/Failures.h"
#include "support/Random.h"
#include "support/Scratch.h"

#include <vector>

using namespace kelgen::test;

namespace {

ULONGLONG Steps(const FILETIME& time)
{
    return (ULONGLONG{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

FILETIME FromSteps(ULONGLONG steps)
{
    return {static_cast<DWORD>(steps), static_cast<DWORD>(steps >> 32)};
}

}  // namespace

TEST(SystemTime, OnlyDatesThatExistConvert)
{
    struct Row
    {
        SYSTEMTIME time;
        bool valid;
    };
    for (const Row& row : std::vector<Row>{
             {{1601, 1, 0, 1, 0, 0, 0, 0}, true},
             {{1600, 12, 0, 31, 0, 0, 0, 0}, false},
             {{2024, 2, 0, 29, 0, 0, 0, 0}, true},
             {{2023, 2, 0, 30, 0, 0, 0, 0}, false},
             {{2100, 2, 0, 28, 0, 0, 0, 0}, true},
             {{2000, 2, 0, 29, 0, 0, 0, 0}, true},
             {{2024, 0, 0, 1, 0, 0, 0, 0}, false},
             {{2024, 13, 0, 1, 0, 0, 0, 0}, false},
             {{2024, 256 + 1, 0, 1, 0, 0, 0, 0}, false},
             {{2024, 1, 0, 256 + 1, 0, 0, 0, 0}, false},
             {{2024, 4, 0, 31, 0, 0, 0, 0}, false},
             {{2024, 4, 0, 0, 0, 0, 0, 0}, false},
             {{2024, 1, 9, 1, 23, 59, 59, 999}, true},
             {{2024, 1, 0, 1, 24, 0, 0, 0}, false},
             {{2024, 1, 0, 1, 0, 60, 0, 0}, false},
             {{2024, 1, 0, 1, 0, 0, 60, 0}, false},
             {{2024, 1, 0, 1, 0, 0, 0, 1000}, false},
             {{30827, 12, 0, 31, 23, 59, 59, 999}, true},
         }) {
        FILETIME time;
        SetLastError(0);
        EXPECT_EQ(row.valid, SystemTimeToFileTime(&row.time, &time) != FALSE)
            << row.time.wYear << ' ' << row.time.wMonth << ' ' << row.time.wDay;
        EXPECT_EQ(row.valid ? 0u : DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
    }
    const SYSTEMTIME begin{1601, 1, 0, 1, 0, 0, 0, 0};
    FILETIME first;
    EXPECT_TRUE(SystemTimeToFileTime(&begin, &first));
    EXPECT_EQ(0u, Steps(first));
}

TEST(SystemTime, GoesThereAndBack)
{
    Random random;
    for (int i = 0; i < 2000; ++i) {
        // Whole milliseconds, any day up to the last.
        const ULONGLONG steps = ((ULONGLONG{random()} << 31) ^ random()) % 0x7FFFFFFFFFFFFFFF / 10000 * 10000;
        const FILETIME time = FromSteps(steps);
        SYSTEMTIME calendar;
        FILETIME back;
        ASSERT_TRUE(FileTimeToSystemTime(&time, &calendar)) << steps;
        ASSERT_TRUE(SystemTimeToFileTime(&calendar, &back)) << steps;
        ASSERT_EQ(steps, Steps(back));
        ASSERT_EQ((steps / 864000000000ULL + 1) % 7, calendar.wDayOfWeek) << "1601 began on a Monday";
    }
    const FILETIME tooLate = FromSteps(0x8000000000000000);
    SYSTEMTIME calendar;
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !FileTimeToSystemTime(&tooLate, &calendar)));
}

TEST(DosTime, TwoSecondStepsFrom1980)
{
    const SYSTEMTIME calendar{2019, 12, 0, 31, 13, 14, 15, 999};
    FILETIME time;
    SystemTimeToFileTime(&calendar, &time);
    WORD date = 0, clock = 0;
    EXPECT_TRUE(FileTimeToDosDateTime(&time, &date, &clock));
    EXPECT_EQ(0x4F9F, date);
    EXPECT_EQ(0x69C7, clock);
    FILETIME back;
    EXPECT_TRUE(DosDateTimeToFileTime(date, clock, &back));
    EXPECT_EQ(Steps(time) - 19'990'000, Steps(back));

    const FILETIME tooEarly{};
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !FileTimeToDosDateTime(&tooEarly, &date, &clock)));
    EXPECT_FALSE(DosDateTimeToFileTime(0, 0, &back));
    EXPECT_FALSE(DosDateTimeToFileTime(0x5A21, 0xFFFF, &back));
    EXPECT_TRUE(DosDateTimeToFileTime(0x21, 0, &back));
}

TEST(FileTime, LocalAndBackIsTheSame)
{
    const FILETIME utc{0x12345678, 0x01D00000};
    FILETIME local, back;
    EXPECT_TRUE(FileTimeToLocalFileTime(&utc, &local));
    EXPECT_TRUE(LocalFileTimeToFileTime(&local, &back));
    EXPECT_EQ(0, CompareFileTime(&utc, &back));
    EXPECT_EQ(0u, (Steps(local) - Steps(utc)) % (ULONGLONG{15 * 60} * 10'000'000)) << "zones are quarters of an hour apart";
}

TEST(FileTime, OfAnOpenFile)
{
    const std::string name = ScratchFile("file");
    WriteBytes(name, "x");
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    const HANDLE file = CreateFileA(name.c_str(), 0, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    FILETIME written;
    EXPECT_TRUE(GetFileTime(file, nullptr, nullptr, &written));
    EXPECT_LT(Steps(now) - Steps(written) + 600'000'000, ULONGLONG{1'200'000'000}) << "within a minute";

    const FILETIME old{0x12345678, 0x01D00000};
    const HANDLE writer = CreateFileA(name.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(SetFileTime(writer, nullptr, nullptr, &old));
    EXPECT_TRUE(SetFileTime(writer, nullptr, nullptr, nullptr));
    EXPECT_TRUE(GetFileTime(file, nullptr, nullptr, &written));
    EXPECT_EQ(0, CompareFileTime(&old, &written));
    EXPECT_EQ(1, CompareFileTime(&now, &written));
    EXPECT_EQ(-1, CompareFileTime(&written, &now));
    CloseHandle(writer);
    CloseHandle(file);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !GetFileTime(INVALID_HANDLE_VALUE, &written, nullptr, nullptr)));
}
