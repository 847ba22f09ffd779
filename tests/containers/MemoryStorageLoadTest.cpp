// MemoryStorageLoadTest.cpp: whole files into storages, good, short and too large.
#include <kelgen/persistence/MemoryStorage.h>

#include <kelgen/framework/Archive.h>
#include <kelgen/framework/File.h>

#include <algorithm>
#include <cstring>

namespace {

struct Storage : CMemoryStorage
{
    using CMemoryStorage::CMemoryStorage;
    using CMemoryStorage::m_capacity;
    using CMemoryStorage::m_lockEnforced;
};

std::string Bytes(const CMemoryStorage& storage)
{
    const unsigned char* const block = storage.GetAllocation();
    return block ? std::string(block, block + storage.GetStorageSize()) : std::string();
}

/// A file of a given length that serves the same byte throughout, or fails.
class LengthFile : public CFile
{
public:
    ULONGLONG length = 0;
    UINT readable = 0;
    UINT asked = 0;
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

TEST(MemoryStorageLoad, ClosedStoragesReadNothing)
{
    LengthFile file;
    CArchive archive(&file, CArchive::load);
    Storage storage(nullptr);
    storage.m_lockEnforced = true;
    storage.FullLoad(archive);
    EXPECT_FALSE(file.sought);
}

TEST(MemoryStorageLoad, LoadsTheWholeFileFromItsBeginning)
{
    LengthFile file;
    file.length = file.readable = 5;
    CArchive archive(&file, CArchive::load);
    CMemoryStorage storage(nullptr);
    storage.FullLoad(archive);
    EXPECT_TRUE(file.sought);
    EXPECT_EQ("rrrrr", Bytes(storage));
    file.readable = 2;
    file.length = 3;
    storage.FullLoad(archive);
    EXPECT_EQ("rrr", Bytes(storage)) << "the error is swallowed, what was there stays";
    EXPECT_EQ(3u, storage.GetStorageSize());
}

TEST(MemoryStorageLoad, RefusesFilesBeyondTwoGigabytes)
{
    LengthFile file;
    CArchive archive(&file, CArchive::load);
    CMemoryStorage storage(nullptr);
    file.length = 0x80000000;
    const char* text = "";
    try {
        storage.FullLoad(archive);
    } catch (char* thrown) {
        text = thrown;
    }
    EXPECT_STREQ("File farly too large to be stored entirely in 32-bit memory.", text);
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
    const auto capacity = [](CMemoryStorageContainer& container) {
        return container.GetMemoryStorage()->*(&Storage::m_capacity);
    };
    CMemoryStorageContainer allocated(100);
    allocated.Allocate(1);
    EXPECT_EQ(101u, capacity(allocated));
    LengthFile file;
    file.length = file.readable = 1;
    CArchive archive(&file, CArchive::load);
    CMemoryStorageContainer loaded(100);
    loaded.FullLoad(archive);
    EXPECT_EQ(513u, capacity(loaded));
    EXPECT_EQ(1u, loaded.GetStorageSize_());
    CMemoryStorageContainer copied(100);
    copied = allocated;
    EXPECT_EQ(513u, capacity(copied));
}
