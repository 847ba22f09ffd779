// MemoryFileTest.cpp: the position's arithmetic, and growth.
#include <kelgen/persistence/MemoryFile.h>

#include "framework/Thrown.h"

#include <climits>
#include <cstring>

using kelgen::test::Thrown;

namespace {

std::string Contents(CMemoryFile& file)
{
    return std::string(reinterpret_cast<const char*>(file.GetAllocation()), file.GetStorageSize_());
}

}  // namespace

TEST(MemoryFile, ConstructorsMakeTheStorageThatTheySay)
{
    char data[] = "data";
    CMemoryFile plain, sized(300), none(-1), ignored(data, 4);
    EXPECT_TRUE(plain.IsValid());
    EXPECT_EQ(300u, sized.GetLength() + sized.GetPosition() + plain.GetLength());
    EXPECT_FALSE(none.IsValid() || ignored.IsValid());
    ignored.Write("ab", 2);
    EXPECT_EQ("ab", Contents(ignored));
}

TEST(MemoryFile, ReadBeyondTheEndGivesTheWrappedCountAndTheBytesLeft)
{
    CMemoryFile file;
    file.Write("0123456789", 10);
    char buffer[16];
    EXPECT_EQ(0u, file.Read(buffer, 5)) << "at the end";

    file.SeekToBegin();
    EXPECT_EQ(4u, file.Read(buffer, 4));
    std::memset(buffer, '-', sizeof buffer);
    EXPECT_EQ(6u - 9u, file.Read(buffer, 9));
    EXPECT_EQ("456789----------", std::string(buffer, sizeof buffer));
    EXPECT_EQ(1u, file.GetPosition()) << "4 + (6 - 9)";

    // Only the count is this large: nothing behind the storage's nine bytes is touched.
    EXPECT_EQ(UINT_MAX, file.Read(buffer, UINT_MAX)) << "an end that wraps is not beyond";
    EXPECT_EQ(0u, file.GetPosition());
    EXPECT_EQ("123456789-------", std::string(buffer, sizeof buffer));

    EXPECT_EQ(10u, file.Read(buffer, 10)) << "all of it is not beyond";
    file.SeekToBegin();
    EXPECT_EQ(10u - 16u, file.Read(buffer, 16));
    EXPECT_EQ(0xFFFFFFFAu, file.GetPosition());
    EXPECT_EQ(0u, file.Read(buffer, 1));
    EXPECT_EQ("CMemoryException", Thrown([&] { file.Write(buffer, 8); })) << "beyond 4 GB";
    EXPECT_EQ("0123456789", Contents(file));
    EXPECT_EQ(0xFFFFFFFAu, file.GetPosition());
}

TEST(MemoryFile, WriteGrowsToExactlyItsEnd)
{
    CMemoryFile file;
    file.Write("abcdef", 6);
    unsigned char* third = file.GetAllocation() + 2;
    file.KeepStoragePointer(reinterpret_cast<void**>(&third));
    file.SeekToBegin();
    file.Write("XY", 2);
    EXPECT_EQ("XYcdef", Contents(file));
    file.Write("12345", 5);
    file.Write(nullptr, 0);
    std::string expected = "XY12345";
    EXPECT_EQ(expected, Contents(file));
    // The block moves under the bytes that are written.
    for (int i = 0; i < 10; ++i) {
        file.Write(file.GetAllocation(), static_cast<UINT>(file.GetLength()));
        expected += expected;
    }
    EXPECT_EQ(expected, Contents(file));
    EXPECT_EQ(expected.size(), file.GetPosition());
    EXPECT_EQ(file.GetAllocation() + 2, third);
}

TEST(MemoryFile, CreateKeepsThePositionTruncateAndClearDoNot)
{
    CMemoryFile file;
    file.Write("0123456789", 10);
    file.Create(4);
    EXPECT_EQ(10u, file.GetPosition());
    EXPECT_EQ(4u, file.GetLength());
    char one;
    EXPECT_EQ(0u, file.Read(&one, 1));
    file.Write("A", 1);
    EXPECT_EQ("0123456789A", Contents(file)) << "a block never shrinks";
    file.Truncate(2);
    EXPECT_EQ(0u, file.GetPosition());
    EXPECT_EQ("01", Contents(file));
    file.Read(&one, 1);
    file.Clear();
    EXPECT_EQ(0u, file.GetPosition() + file.GetLength());
    EXPECT_TRUE(file.IsValid());
}

TEST(MemoryFile, AllocationThatGivesTooLittleIsNotOverrun)
{
    struct CStingyFile : CMemoryFile
    {
        void Allocate(DWORD n) override { CMemoryFile::Allocate(std::min<DWORD>(n, 5)); }
    };
    CStingyFile file;
    file.Write("0123456789", 10);
    EXPECT_EQ("01234", Contents(file));
    EXPECT_EQ(10u, file.GetPosition());
    file.Write("x", 1);
    EXPECT_EQ("01234", Contents(file));
}
