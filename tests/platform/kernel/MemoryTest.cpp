// MemoryTest.cpp: blocks by handle, and the heap.
#include "support/Failures.h"

#include <cstring>

using namespace kelgen::test;

TEST(GlobalMemory, LocksAreCounted)
{
    const HGLOBAL memory = GlobalAlloc(GHND, 10);
    ASSERT_NE(nullptr, memory);
    EXPECT_TRUE(FailedWith(ERROR_NOT_LOCKED, !GlobalUnlock(memory)));
    void* const data = GlobalLock(memory);
    EXPECT_EQ(data, GlobalLock(memory));
    EXPECT_EQ(2u, GlobalFlags(memory));
    EXPECT_EQ(memory, GlobalHandle(data));
    EXPECT_EQ(10u, GlobalSize(memory));
    EXPECT_EQ(std::string(10, '\0'), std::string(static_cast<char*>(data), 10));
    EXPECT_TRUE(GlobalUnlock(memory));
    SetLastError(77);
    EXPECT_FALSE(GlobalUnlock(memory));
    EXPECT_EQ(0u, GetLastError());
    EXPECT_EQ(nullptr, GlobalFree(memory));
}

TEST(GlobalMemory, ResizingKeepsContents)
{
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, 4);
    std::memcpy(GlobalLock(memory), "abcd", 4);
    GlobalUnlock(memory);
    EXPECT_EQ(memory, GlobalReAlloc(memory, 100'000, GMEM_MOVEABLE | GMEM_ZEROINIT));
    EXPECT_EQ(100'000u, GlobalSize(memory));
    const char* data = static_cast<char*>(GlobalLock(memory));
    EXPECT_EQ(std::string("abcd\0\0", 6), std::string(data, 6));
    EXPECT_EQ(0, data[99'999]);
    GlobalUnlock(memory);
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !GlobalReAlloc(memory, 0, 0)));
    EXPECT_EQ(memory, GlobalReAlloc(memory, 0, GMEM_MOVEABLE));
    EXPECT_TRUE(FailedWith(ERROR_DISCARDED, !GlobalLock(memory)));
    GlobalFree(memory);

    memory = GlobalAlloc(GMEM_FIXED, 10);
    EXPECT_TRUE(FailedWith(ERROR_NOT_ENOUGH_MEMORY, !GlobalReAlloc(memory, 1'000'000, 0))) << "a fixed block stays where it is";
    memory = GlobalReAlloc(memory, 1'000'000, GMEM_MOVEABLE);
    EXPECT_EQ(1'000'000u, GlobalSize(memory));
    GlobalFree(memory);
}

TEST(GlobalMemory, FixedBlocksAreTheirOwnAddress)
{
    const HGLOBAL memory = GlobalAlloc(GPTR, 10);
    EXPECT_EQ(memory, GlobalLock(memory));
    EXPECT_TRUE(GlobalUnlock(memory));
    EXPECT_EQ(10u, GlobalSize(memory));
    EXPECT_EQ(0u, GlobalFlags(memory));
    GlobalFree(memory);
}

TEST(GlobalMemory, EmptyAndNullHandles)
{
    const HGLOBAL empty = GlobalAlloc(GMEM_MOVEABLE, 0);
    EXPECT_NE(nullptr, empty);
    EXPECT_TRUE(FailedWith(ERROR_DISCARDED, !GlobalLock(empty)));
    EXPECT_EQ(0x4000u, GlobalFlags(empty));
    GlobalFree(empty);

    EXPECT_EQ(nullptr, GlobalFree(nullptr));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !GlobalSize(nullptr)));
    EXPECT_EQ(UINT{GMEM_INVALID_HANDLE}, GlobalFlags(nullptr));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !GlobalReAlloc(nullptr, 5, 0)));
}

TEST(Heap, SizesAreExact)
{
    const HANDLE heap = GetProcessHeap();
    void* block = HeapAlloc(heap, HEAP_ZERO_MEMORY, 13);
    EXPECT_EQ(13u, HeapSize(heap, 0, block));
    std::memset(block, 'x', 13);
    block = HeapReAlloc(heap, HEAP_ZERO_MEMORY, block, 1000);
    EXPECT_EQ(1000u, HeapSize(heap, 0, block));
    EXPECT_EQ(std::string(13, 'x') + '\0', std::string(static_cast<char*>(block), 14));
    EXPECT_TRUE(HeapFree(heap, 0, block));
    EXPECT_TRUE(HeapFree(heap, 0, nullptr));
    EXPECT_EQ(nullptr, HeapReAlloc(heap, 0, nullptr, 5));
}
