// Stored.h: what an archive makes of what is stored in it.
#pragma once

#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/files/MemFile.h>

#include <string>

namespace kelgen::test {

/// The bytes that @p code stores.
template <class CODE>
std::string Stored(CODE&& code, int bufferSize = 4096)
{
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store, bufferSize);
        code(archive);
        archive.Close();
    }
    file.SeekToBegin();
    std::string bytes(static_cast<std::size_t>(file.GetLength()), 0);
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

}  // namespace kelgen::test
