// BufferedFileTest.cpp: the buffered file against the contract's arithmetic, what reaches the inner file, and its failures.
#include <kelgen/persistence/BufferedFile.h>

#include <kelgen/framework/files/MemFile.h>

#include "framework/Thrown.h"
#include "support/Random.h"
#include "support/Scratch.h"

#include <algorithm>
#include <cstring>

using namespace kelgen::test;

namespace {

/// A file in memory that notes what it is asked for.
struct CNotingFile : CMemFile
{
    explicit CNotingFile(const std::string& bytes = {})
    {
        CMemFile::Write(bytes.data(), static_cast<UINT>(bytes.size()));
        CMemFile::Seek(0, begin);
    }

    UINT Read(void* buf, UINT n) override
    {
        Note("r" + std::to_string(n), CFileException::hardIO);
        return CMemFile::Read(buf, n);
    }
    void Write(const void* buf, UINT n) override
    {
        Note("w" + std::to_string(n), CFileException::diskFull);
        CMemFile::Write(buf, n);
    }
    ULONGLONG Seek(LONGLONG offset, UINT from) override
    {
        notes += "s" + std::to_string(offset) + "," + std::to_string(from) + " ";
        return CMemFile::Seek(offset, from);
    }
    void Flush() override { notes += "f "; }
    void Close() override { notes += "c "; }

    std::string TakeNotes() { return std::exchange(notes, {}); }
    std::string Contents() const { return std::string(m_lpBuffer, m_lpBuffer + GetLength()); }

    bool failing = false;

private:
    void Note(const std::string& note, int cause)
    {
        notes += note + " ";
        if (failing)
            AfxThrowFileException(cause);
    }

    std::string notes;
};

std::string Bytes(std::size_t count)
{
    std::string bytes(count, 0);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<char>('a' + i % 23);
    return bytes;
}

std::string ReadSome(CFile& file, UINT n)
{
    std::string bytes(n, '-');
    const UINT got = file.Read(bytes.data(), n);
    return bytes.substr(0, got);
}

/// The contract's steps, byte by byte, over a plain string, with the notes that they leave; what lies in no buffer reads as '-'.
class Model
{
public:
    Model(std::string bytes, std::size_t readSize, std::size_t writeSize)
        : inner(std::move(bytes)), m_readSize(readSize), m_writeSize(writeSize)
    {}

    std::string Read(UINT n)
    {
        if (m_mode == 2 && !m_buffer.empty())
            Flush();
        m_mode = 1;
        const ULONGLONG available = m_at - position;
        const auto take = static_cast<UINT>(std::min<ULONGLONG>(n, available));
        std::string result;
        for (std::size_t index = m_buffer.size() - available; result.size() < take; ++index)  // one before the buffer wraps
            result += index < m_buffer.size() ? m_buffer[index] : '-';
        if (n > available) {
            const std::size_t remaining = n - take;
            if (remaining <= m_readSize) {
                m_buffer = ReadInner(m_readSize);
                result += m_buffer.substr(0, remaining);
            } else {
                result += ReadInner(remaining);
            }
        }
        position += result.size();
        return result;
    }

    void Write(const std::string& bytes)
    {
        if (m_mode == 1)
            m_buffer.clear();
        m_mode = 2;
        if (m_buffer.size() + bytes.size() > m_writeSize) {
            WriteInner(m_buffer);
            position += m_buffer.size();
            m_buffer.clear();
            if (bytes.size() > m_writeSize) {
                WriteInner(bytes);
                position += bytes.size();
                return;
            }
        }
        m_buffer += bytes;
        position += bytes.size();
    }

    ULONGLONG Seek(LONGLONG offset, UINT from)
    {
        if (m_mode == 1) {
            const LONGLONG origins[] = {0, static_cast<LONGLONG>(position), static_cast<LONGLONG>(inner.size())};
            const LONGLONG target = origins[from] + offset, last = static_cast<LONGLONG>(m_at);
            if (target >= 0 && target < last && target >= last - static_cast<LONGLONG>(m_buffer.size()))
                return position = static_cast<ULONGLONG>(target);
        }
        Flush();
        notes += "s" + std::to_string(offset) + "," + std::to_string(from) + " ";
        const LONGLONG origins[] = {0, static_cast<LONGLONG>(m_at), static_cast<LONGLONG>(inner.size())};
        if (origins[from] + offset < 0)
            return ULONGLONG(-1);
        position = m_at = static_cast<std::size_t>(origins[from] + offset);
        m_buffer.clear();
        return position;
    }

    void Flush()
    {
        if (m_mode == 2) {
            WriteInner(m_buffer);
            m_buffer.clear();
            notes += "f ";
        }
        m_mode = 0;
    }

    ULONGLONG InnerPosition() const { return m_at; }

    std::string inner, notes;
    ULONGLONG position = 0;

private:
    std::string ReadInner(std::size_t n)
    {
        notes += "r" + std::to_string(n) + " ";
        const std::string read = m_at < inner.size() ? inner.substr(m_at, n) : std::string();
        m_at += read.size();
        return read;
    }

    void WriteInner(const std::string& bytes)
    {
        notes += "w" + std::to_string(bytes.size()) + " ";
        if (bytes.empty())
            return;
        inner.resize(std::max(inner.size(), m_at + bytes.size()), 0);
        inner.replace(m_at, bytes.size(), bytes);
        m_at += bytes.size();
    }

    int m_mode = 0;
    std::size_t m_readSize, m_writeSize, m_at = 0;
    std::string m_buffer;
};

/// Does the same with both, and compares after each step.
void Compare(CBufferedFile& file, Model& model, Random& random)
{
    const auto size = static_cast<UINT>(random.Between(0, 5) ? random.Between(0, 150) : random.Between(0, 600));
    switch (random.Between(0, 6)) {
    case 0:
    case 1:
    case 2: {
        const std::string expected = model.Read(size);
        std::string bytes(size, '-');
        ASSERT_EQ(expected.size(), file.Read(bytes.data(), size));
        ASSERT_EQ(expected, bytes.substr(0, expected.size()));
        break;
    }
    case 3:
    case 4: {
        const std::string bytes(size, static_cast<char>(random.Between('A', 'Z')));
        model.Write(bytes);
        file.Write(bytes.data(), size);
        break;
    }
    case 5: {
        // Often the first byte behind what was read ahead.
        const LONGLONG offset = random.Between(0, 3) ? random.Between(-300, 300) : static_cast<LONGLONG>(model.InnerPosition());
        const auto from = static_cast<UINT>(random.Between(0, 2));
        const ULONGLONG expected = model.Seek(offset, from);
        ULONGLONG reached = ULONGLONG(-1);
        Thrown([&] { reached = file.Seek(offset, from); });
        ASSERT_EQ(expected, reached) << offset << " from " << from;
        break;
    }
    default:
        model.Flush();
        file.Flush();
    }
    ASSERT_EQ(model.position, file.GetPosition());
    ASSERT_EQ(model.inner.size(), file.GetLength()) << "by contract without what was collected";
}

}  // namespace

TEST(BufferedFile, SizesAreHeldInBounds)
{
    CNotingFile inner(Bytes(3000000));
    CBufferedFile file(&inner, 50, 50);
    ReadSome(file, 1);
    EXPECT_EQ("r128 ", inner.TakeNotes());
    file.SetReadBufferSize(2000000);
    ReadSome(file, 128);
    EXPECT_EQ("r1048576 ", inner.TakeNotes());
    file.SetWriteBufferSize(0);
    file.Write(Bytes(129).data(), 129);
    EXPECT_EQ("w0 w129 ", inner.TakeNotes());
    file.SetWriteBufferSize(0xFFFFFFFF);
    const std::string much = Bytes(0x100000);
    file.Write(much.data(), 0x100000);
    EXPECT_EQ("", inner.TakeNotes());
    file.Write("x", 1);
    EXPECT_EQ("w1048576 ", inner.TakeNotes());
}

TEST(BufferedFile, CloseSendsOutAndTheDestructorDoesNot)
{
    const std::string path = ScratchFile("written");
    {
        CBufferedFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite, 128, 128);
        file.Write("kept", 4);
        file.Close();
        EXPECT_EQ("CFileException 6", Thrown([&] { file.GetLength(); }));
    }
    EXPECT_EQ("kept", ReadBytes(path));
    {
        CBufferedFile file(path.c_str(), CFile::modeWrite, 128, 128);
        file.Write("lost", 4);
    }
    EXPECT_EQ("kept", ReadBytes(path));
    EXPECT_EQ("CFileException 2", Thrown([&] { CBufferedFile(ScratchFile("missing").c_str(), CFile::modeRead, 128, 128); }));

    CNotingFile inner;
    {
        CBufferedFile file(&inner, 128, 128);
        file.SetFilePath("C:\\name.bin");
        EXPECT_STREQ("", inner.GetFilePath());
        file.Close();
    }
    EXPECT_EQ("c ", inner.TakeNotes()) << "a caller's file is not deleted, and nothing is flushed without writing";
}

TEST(BufferedFile, FailuresLoseNothing)
{
    const std::string bytes = Bytes(1000);
    CNotingFile source(bytes);
    CBufferedFile reader(&source, 128, 128);
    ReadSome(reader, 100);
    source.failing = true;
    EXPECT_EQ("CFileException 10", Thrown([&] { ReadSome(reader, 100); }));
    source.failing = false;
    EXPECT_EQ(bytes.substr(100, 100), ReadSome(reader, 100)) << "tried again";

    CNotingFile target;
    CBufferedFile writer(&target, 128, 128);
    writer.Write("collected", 9);
    target.failing = true;
    EXPECT_EQ("CFileException 13", Thrown([&] { writer.Flush(); }));
    EXPECT_EQ("CFileException 13", Thrown([&] { writer.Write(bytes.data(), 128); }));
    EXPECT_EQ(9u, writer.GetPosition());
    target.failing = false;
    writer.Flush();
    EXPECT_EQ("collected", target.Contents());
}

TEST(BufferedFile, FileThatShrinksEndsWhereItEnds)
{
    const std::string path = ScratchFile("shrinking");
    const std::string bytes = Bytes(1000);
    WriteBytes(path, bytes);
    CBufferedFile file(path.c_str(), CFile::modeRead | CFile::shareDenyNone, 128, 128);
    EXPECT_EQ(bytes.substr(0, 10), ReadSome(file, 10));
    {
        CFile other(path.c_str(), CFile::modeReadWrite | CFile::shareDenyNone);
        other.SetLength(50);
    }
    EXPECT_EQ(50u, file.GetLength());
    EXPECT_EQ(bytes.substr(10, 100), ReadSome(file, 100)) << "read ahead before";
    EXPECT_EQ(bytes.substr(110, 18), ReadSome(file, 100));
    EXPECT_EQ("", ReadSome(file, 1000));
    EXPECT_EQ(40u, file.Seek(-10, CFile::end));
    EXPECT_EQ(10u, ReadSome(file, 1000).size());
}

TEST(BufferedFile, InnerFileThatIsMovedLeavesABoundedCopy)
{
    CNotingFile inner(Bytes(1000));
    CBufferedFile file(&inner, 128, 128);
    EXPECT_EQ(Bytes(10), ReadSome(file, 10));
    inner.Seek(22, CFile::current);
    // By contract the buffer's last byte is the one before the inner file's position: 12 bytes lie in front of it.
    std::string read(20, '-');
    EXPECT_EQ(20u, file.Read(read.data(), 20));
    EXPECT_EQ(std::string(12, '-') + Bytes(8), read);
}

TEST(BufferedFile, OverstatingFileIsBounded)
{
    struct COverstatingFile : CNotingFile
    {
        using CNotingFile::CNotingFile;
        UINT Read(void* buf, UINT n) override { return CNotingFile::Read(buf, n) + 100000; }
    };
    COverstatingFile inner(Bytes(1000));
    CBufferedFile file(&inner, 128, 128);
    EXPECT_EQ(Bytes(10), ReadSome(file, 10));
    EXPECT_EQ(10u, file.GetPosition());
}

TEST(BufferedFile, EveryOrderOfCallsFollowsTheContract)
{
    Random random;
    for (int round = 0; round < 200; ++round) {
        const std::string bytes = Bytes(static_cast<std::size_t>(random.Between(0, 1500)));
        const int readSize = random.Between(128, 300), writeSize = random.Between(128, 300);
        Model model(bytes, static_cast<std::size_t>(readSize), static_cast<std::size_t>(writeSize));
        CNotingFile inner(bytes);
        CBufferedFile file(&inner, static_cast<DWORD>(readSize), static_cast<DWORD>(writeSize));
        for (int step = 0; step < 60; ++step) {
            ASSERT_NO_FATAL_FAILURE(Compare(file, model, random)) << "round " << round << " step " << step;
            ASSERT_EQ(model.inner, inner.Contents());
            ASSERT_EQ(std::exchange(model.notes, {}), inner.TakeNotes());
        }
    }
}

TEST(BufferedFile, OwnedFilesFollowItToo)
{
    Random random;
    const std::string path = ScratchFile("model");
    for (int round = 0; round < 4; ++round) {
        const std::string bytes = Bytes(static_cast<std::size_t>(random.Between(0, 1500)));
        WriteBytes(path, bytes);
        Model model(bytes, 200, 150);
        {
            CBufferedFile file(path.c_str(), CFile::modeReadWrite, 200, 150);
            for (int step = 0; step < 100; ++step)
                ASSERT_NO_FATAL_FAILURE(Compare(file, model, random)) << "round " << round << " step " << step;
        }
        ASSERT_EQ(model.inner, ReadBytes(path));
    }
}
