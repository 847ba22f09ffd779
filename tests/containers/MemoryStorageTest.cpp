// MemoryStorageTest.cpp: growth, pointers that follow, ownership, the lock, and whole files, good, short and too large.
#include <kelgen/containers/MemoryStorage.h>

#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/files/File.h>

#include "framework/Thrown.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>

using kelgen::test::Thrown;

namespace {

struct Storage : CMemoryStorage
{
    using CMemoryStorage::CMemoryStorage, CMemoryStorage::m_addUp, CMemoryStorage::m_capacity;
    using CMemoryStorage::m_locked, CMemoryStorage::m_lockEnforced;
};

void Fill(CMemoryStorage& storage, const std::string& bytes)
{
    storage.SetDataAndSize(reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())), static_cast<int>(bytes.size()));
}

std::string Bytes(const CMemoryStorage& storage)
{
    const unsigned char* const block = storage.GetAllocation();
    return block ? std::string(block, block + storage.GetStorageSize()) : std::string();
}

/// A file of a given length that serves the same byte throughout, or fails.
struct LengthFile : CFile
{
    ULONGLONG length = 0;
    UINT readable = 0, asked = 0;
    bool sought = false;

    ULONGLONG GetLength() const override { return length; }
    ULONGLONG Seek(LONGLONG offset, UINT from) override
    {
        sought = offset == 0 && from == CFile::begin;
        return 0;
    }
    UINT Read(void* buffer, UINT count) override
    {
        asked = count;
        std::memset(buffer, 'r', std::min(count, readable));
        if (count > readable)
            throw new CFileException(CFileException::hardIO);
        return count;
    }
};

}  // namespace

TEST(MemoryStorage, GrowsByTheAddUpAndNeverShrinks)
{
    Storage storage(nullptr);
    EXPECT_EQ(nullptr, storage.GetAllocation());
    storage.Allocate(0);
    EXPECT_EQ(0u, storage.m_capacity);
    storage.Allocate(100);
    const unsigned char* const block = storage.GetAllocation();
    storage.Allocate(612);
    EXPECT_EQ(612u, storage.m_capacity);
    EXPECT_EQ(block, storage.GetAllocation());
    storage.AllocateAddUp(1);
    EXPECT_EQ(613u, storage.GetStorageSize());
    EXPECT_EQ(1125u, storage.m_capacity);
    storage.Allocate(0);
    EXPECT_EQ(nullptr, storage.GetAllocation()) << "the block is kept, but size 0 shows none";
    EXPECT_EQ(1125u, storage.m_capacity);
}

TEST(MemoryStorage, SizesThatNoBlockHoldsChangeNothing)
{
    Storage storage(nullptr);
    Fill(storage, "abc");
    EXPECT_EQ("CMemoryException", Thrown([&] { storage.Allocate(0xFFFFFFFF); }));
    EXPECT_EQ("CMemoryException", Thrown([&] { storage.AllocateAddUp(0xFFFFFFFF); }));
    EXPECT_EQ("CMemoryException", Thrown([&] { storage.SetDataAndSize(nullptr, -1); }));
    EXPECT_EQ("abc", Bytes(storage));
    EXPECT_EQ(515u, storage.m_capacity);
}

TEST(MemoryStorage, IsClosedWhileEnforcedAndNotLocked)
{
    Storage storage(nullptr);
    Fill(storage, "abc");
    Storage copy(nullptr);
    storage.m_lockEnforced = true;
    EXPECT_FALSE(storage.IsEnabled());
    EXPECT_EQ(nullptr, storage.GetAllocation());
    EXPECT_EQ("CMemoryException", Thrown([&] { storage.Allocate(1); }));
    storage.Lock();
    EXPECT_FALSE(storage.IsEnabled()) << "locking does not open it";
    storage.Unlock();
    copy = storage;
    EXPECT_EQ(3u, copy.GetStorageSize());
    EXPECT_FALSE(copy == storage);
    storage.m_locked = true;
    EXPECT_TRUE(storage.IsEnabled());
    EXPECT_EQ("abc", Bytes(storage));
}

TEST(MemoryStorage, CopiesAndComparesBytes)
{
    char bytes[] = "abcdef";
    CMemoryStorage left(nullptr, bytes, 6);
    CMemoryStorage right(nullptr);
    EXPECT_FALSE(left == right);
    left.SetDataAndSize(left.GetAllocation() + 2, 3);
    left = *&left;
    EXPECT_EQ("cde", Bytes(left)) << "of itself";
    right = left;
    EXPECT_TRUE(left == right);
    EXPECT_TRUE(left == left);
    right.GetAllocation()[2] = 'X';
    EXPECT_EQ("cde", Bytes(left));
    EXPECT_FALSE(left == right);
    left.Allocate(0);
    CMemoryStorage fresh(nullptr);
    EXPECT_TRUE(left == fresh) << "empty with and without a block";
}

TEST(MemoryStorage, ComparisonWaitsForTheOthersLock)
{
    CMemoryStorage left(nullptr), right(nullptr);
    Fill(left, "a");
    Fill(right, "b");
    right.Lock();
    std::atomic<bool> equal = false;
    std::thread comparer([&] { equal = left == right; });
    Fill(right, "a");
    right.Unlock();
    comparer.join();
    EXPECT_TRUE(equal);
}

TEST(MemoryStorage, DetachGivesTheBlockAway)
{
    Storage storage(nullptr);
    storage.m_addUp = 7;
    Fill(storage, "abc");
    storage.m_locked = true;
    unsigned char* const block = storage.DetachStorage();
    EXPECT_EQ(0, std::memcmp(block, "abc", 3));
    std::free(block);
    EXPECT_EQ((std::vector<DWORD>{0, 0, 512, 0}),
              (std::vector<DWORD>{storage.GetStorageSize(), storage.m_capacity, storage.m_addUp, storage.IsLocked()}));
    EXPECT_EQ(nullptr, storage.DetachStorage());
}

TEST(MemoryStorageContainer, KeptPointersFollowTheBlock)
{
    CMemoryStorageContainer container(16);
    void* cursor = reinterpret_cast<void*>(INT_PTR{10});
    void* second = nullptr;
    EXPECT_TRUE(container.KeepStoragePointer(&cursor));
    EXPECT_TRUE(container.KeepStoragePointer(&second));
    for (DWORD size = 100; size < 4'000'000; size *= 3) {
        container.Allocate(size);
        ASSERT_EQ(container.GetAllocation() + 10, cursor) << size;
        ASSERT_EQ(container.GetAllocation(), second) << size;
    }
    const DWORD size = container.GetStorageSize_();
    container.AllocateAddUp(0);
    EXPECT_EQ(size, container.GetStorageSize_());
    container.AllocateAddUp(500);
    EXPECT_EQ(size + 500, container.GetStorageSize_());
    EXPECT_EQ(container.GetAllocation() + 10, cursor);
    EXPECT_TRUE(container.OffsetStorageKeptPointers(-3));
    EXPECT_EQ(container.GetAllocation() + 7, cursor);
}

TEST(MemoryStorageContainer, OwnsWhatItIsGivenToOwnAndMayHaveNone)
{
    static int alive;
    alive = 0;
    struct Counted : CMemoryStorage
    {
        Counted() : CMemoryStorage(nullptr) { ++alive; }
        ~Counted() override { --alive; }
    };
    {
        char bytes[] = "abc";
        CMemoryStorageContainer container(bytes, 3);
        EXPECT_FALSE(container.IsValid() || container.GetAllocation() || container.Lock() || container.Unlock());
        EXPECT_EQ(0u, container.GetStorageSize_()) << "what may be added to";
        container.Allocate(2);
        EXPECT_EQ(2u + 512, container.GetMemoryStorage()->*&Storage::m_capacity);
        EXPECT_TRUE(container.Lock() && container.Unlock());
        Counted borrowed;
        container.FullLoad(new Counted, true);
        EXPECT_EQ(2, alive);
        container.FullLoad(&borrowed, false);
        EXPECT_EQ(1, alive);
        container.FullLoad(new Counted, true);
        CMemoryStorage* const held = container.GetMemoryStorage();
        container.FullLoad(held, true);
        EXPECT_EQ(2, alive) << "given what it holds";
        container.FullLoad(nullptr, false);
        EXPECT_EQ(1, alive);
        EXPECT_FALSE(container.IsValid());
    }
    EXPECT_EQ(0, alive);
}

TEST(MemoryStorageContainer, AssignmentCopiesAndForgetsPointers)
{
    CMemoryStorageContainer source(0), target(0);
    source.Allocate(3);
    std::memcpy(source.GetAllocation(), "abc", 3);
    CMemoryStorage held(nullptr);
    target.FullLoad(&held, false);
    void* kept = &held;
    target.KeepStoragePointer(&kept);
    target = source;
    EXPECT_EQ("abc", Bytes(*target.GetMemoryStorage()));
    EXPECT_NE(source.GetAllocation(), target.GetAllocation());
    target.Allocate(1'000'000);
    EXPECT_EQ(&held, kept);
    const CMemoryStorageContainer none(0);
    CMemoryStorage* const previous = target.GetMemoryStorage();
    target = none;
    EXPECT_FALSE(target.IsValid());
    delete previous;
}

TEST(MemoryStorageLoad, LoadsTheWholeFileFromItsBeginning)
{
    LengthFile file;
    file.length = file.readable = 5;
    CArchive archive(&file, CArchive::load);
    Storage storage(nullptr);
    storage.m_lockEnforced = true;
    storage.FullLoad(archive);
    EXPECT_FALSE(file.sought) << "a closed storage reads nothing";
    storage.m_lockEnforced = false;
    storage.FullLoad(archive);
    EXPECT_TRUE(file.sought);
    EXPECT_EQ("rrrrr", Bytes(storage));
    file.readable = 2;
    file.length = 3;
    storage.FullLoad(archive);
    EXPECT_EQ("rrr", Bytes(storage)) << "the error is swallowed, what was there stays";
}

TEST(MemoryStorageLoad, RefusesFilesBeyondTwoGigabytes)
{
    LengthFile file;
    CArchive archive(&file, CArchive::load);
    CMemoryStorage storage(nullptr);
    file.length = 0x80000000;
    try {
        storage.FullLoad(archive);
        ADD_FAILURE() << "loaded";
    } catch (char* thrown) {
        EXPECT_STREQ("File farly too large to be stored entirely in 32-bit memory.", thrown);
    }
    EXPECT_FALSE(file.sought);

    file.length = 0x7FFFFFFF;
    try {
        storage.FullLoad(archive);
        EXPECT_EQ(0x7FFFFFFFu, file.asked);
    } catch (CMemoryException* error) {
        error->Delete();
    }
    EXPECT_TRUE(file.sought);
}

TEST(MemoryStorageLoad, AddUpReachesOnlyStoragesThatAllocateMakes)
{
    const auto capacity = [](CMemoryStorageContainer& container) { return container.GetMemoryStorage()->*(&Storage::m_capacity); };
    CMemoryStorageContainer allocated(100), loaded(100), copied(100);
    allocated.Allocate(1);
    EXPECT_EQ(101u, capacity(allocated));
    LengthFile file;
    file.length = file.readable = 1;
    CArchive archive(&file, CArchive::load);
    loaded.FullLoad(archive);
    EXPECT_EQ(513u, capacity(loaded));
    EXPECT_EQ(1u, loaded.GetStorageSize_());
    copied = allocated;
    EXPECT_EQ(513u, capacity(copied));
}
