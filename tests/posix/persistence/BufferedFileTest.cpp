// BufferedFileTest.cpp: a disk without room.
#include <kelgen/persistence/BufferedFile.h>

#include "framework/Thrown.h"

using namespace kelgen::test;

TEST(BufferedFile, FullDiskIsReportedWhenBytesAreSentOut)
{
    const std::string diskFull = "CFileException " + std::to_string(CFileException::diskFull);
    CBufferedFile file("Z:\\dev\\full", CFile::modeWrite | CFile::shareDenyNone, 128, 128);
    const std::string bytes(129, 'x');
    file.Write(bytes.data(), 100);
    EXPECT_EQ(diskFull, Thrown([&] { file.Write(bytes.data(), 100); }));
    EXPECT_EQ(100u, file.GetPosition());
    EXPECT_EQ(diskFull, Thrown([&] { file.Flush(); }));
    EXPECT_EQ(diskFull, Thrown([&] { file.Close(); }));
    EXPECT_EQ(diskFull, Thrown([&] { file.Seek(0, CFile::begin); })) << "the bytes are still there";
}
