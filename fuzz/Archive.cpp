// Archive.cpp: any bytes as an archive of 16-bit strings and of lines.
#include "Input.h"

#include <kelgen/framework/files/MemFile.h>
#include <kelgen/text/WArchive.h>

#include <cstdlib>
#include <cstring>
#include <vector>

using fuzz::Require;

namespace {

/// Runs @p code until the archive is used up.
template <class CODE>
void UntilTheEnd(std::vector<unsigned char> bytes, int bufferSize, CODE code)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CWArchive archive(&file, CArchive::load, bufferSize);
    try {
        while (code(archive)) {
        }
    } catch (CArchiveException* e) {
        Require(e->m_cause == CArchiveException::endOfFile);
        e->Delete();
    }
}

void IsSound(const CWStr& text, std::size_t size)
{
    const unsigned short* const units = text;
    Require(text.GetLength() >= 0 && text.GetLength() <= text.GetAllocLength() && units[text.GetLength()] == 0);
    Require(static_cast<std::size_t>(text.GetAllocLength()) <= 3 * size + 70000);
}

void StoredAgainIsTheSame(const CWStr& text)
{
    CMemFile file;
    CWStr again(u"old"_w);
    {
        CArchive archive(&file, CArchive::store);
        archive << text;
    }
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    archive >> again;
    Require(again.GetLength() == text.GetLength());
    Require(std::memcmp(static_cast<const unsigned short*>(again), static_cast<const unsigned short*>(text),
                        static_cast<std::size_t>(text.GetLength()) * 2) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::vector<unsigned char> bytes(data, data + size);
    CWStr text;
    UntilTheEnd(bytes, 128, [&](CWArchive& archive) {
        archive >> text;
        IsSound(text, size);
        StoredAgainIsTheSame(text);
        return true;
    });
    IsSound(text, size);

    UntilTheEnd(bytes, 129, [&](CWArchive& archive) {
        const BOOL read = archive.ReadString(text);
        IsSound(text, size);
        return read != FALSE;
    });

    int room = 0;
    UntilTheEnd(bytes, 128, [&](CWArchive& archive) {
        room = room % 9 + 1;
        unsigned short line[10];
        return archive.ReadString(line, static_cast<UINT>(room % 2 ? room : -room)) != nullptr;
    });
    return 0;
}
