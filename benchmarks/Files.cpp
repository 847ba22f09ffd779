// Files.cpp: CMemoryFile, CBufferedFile and the archive of strings, beside the standard library's streams.
#include "FileOperations.h"

#include <kelgen/framework/files/MemFile.h>
#include <kelgen/persistence/BufferedFile.h>
#include <kelgen/persistence/MemoryFile.h>
#include <kelgen/text/WArchive.h>

#include <sstream>

using namespace bench;

namespace {

void MemoryKelgen(State& st)
{
    for (auto _ : st) {
        CMemoryFile f;
        writeAll(memorySize, [&] { f.Write(block, chunk); });
        f.SeekToBegin();
        readAll(memorySize, [&](char* b) { return f.Read(b, chunk) == chunk; });
    }
}

void MemoryStringstream(State& st)
{
    for (auto _ : st) {
        std::stringstream f;
        writeAll(memorySize, [&] { f.write(block, chunk); });
        readAll(memorySize, [&](char* b) { return bool(f.read(b, chunk)); });
    }
}

// A size that a host picks; the C library's and the stream's own are 4096 and 8191.
constexpr DWORD bufferSize = 32768;

struct Kelgen
{
    static void write(const std::string& path)
    {
        CBufferedFile f(path.c_str(), CFile::modeCreate | CFile::modeWrite, bufferSize, bufferSize);
        writeAll(fileSize, [&] { f.Write(block, chunk); });
        f.Close();
    }
    static void read(const std::string& path)
    {
        CBufferedFile f(path.c_str(), CFile::modeRead, bufferSize, bufferSize);
        readAll(fileSize, [&](char* b) { return f.Read(b, chunk) == chunk; });
    }
};

struct StdioFile
{
    static void write(const std::string& path)
    {
        FILE* f = std::fopen(path.c_str(), "wb");
        writeAll(fileSize, [&] { std::fwrite(block, 1, chunk, f); });
        std::fclose(f);
    }
    static void read(const std::string& path)
    {
        FILE* f = std::fopen(path.c_str(), "rb");
        readAll(fileSize, [&](char* b) { return std::fread(b, 1, chunk, f) == std::size_t(chunk); });
        std::fclose(f);
    }
};

void ArchiveWrite(State& st)
{
    std::vector<CWStr> texts;
    for (const std::u16string& each : archiveTexts())
        texts.push_back(text<CWStr>(each));
    for (auto _ : st) {
        CMemFile file(1 << 20);
        CArchive archive(&file, CArchive::store);
        for (const CWStr& each : texts)
            archive << each;
        archive.Close();
    }
}

void ArchiveRead(State& st)
{
    CMemFile file(1 << 20);
    {
        CArchive archive(&file, CArchive::store);
        for (const std::u16string& each : archiveTexts())
            archive << text<CWStr>(each);
    }
    for (auto _ : st) {
        file.SeekToBegin();
        CArchive archive(&file, CArchive::load);
        std::vector<CWStr> texts(archiveTexts().size());
        for (CWStr& each : texts)
            archive >> each;
        require(texts.back() == text<CWStr>(archiveTexts().back()), "archive");
    }
}

COUNTED(MemoryKelgen)->Name("File/Memory1M/kelgen");
COUNTED(MemoryStringstream)->Name("File/Memory1M/stringstream");
COUNTED(FileWrite<Kelgen>)->Name("File/Write8M/kelgen")->UseRealTime();
COUNTED(FileWrite<StdFile>)->Name("File/Write8M/fstream")->UseRealTime();
COUNTED(FileWrite<StdioFile>)->Name("File/Write8M/FILE")->UseRealTime();
COUNTED(FileRead<Kelgen>)->Name("File/Read8M/kelgen")->UseRealTime();
COUNTED(FileRead<StdFile>)->Name("File/Read8M/fstream")->UseRealTime();
COUNTED(FileRead<StdioFile>)->Name("File/Read8M/FILE")->UseRealTime();
COUNTED(ArchiveWrite)->Name("Archive/Write10000/kelgen");
COUNTED(ArchiveRead)->Name("Archive/Read10000/kelgen");

}  // namespace
