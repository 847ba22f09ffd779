// FileOperations.h: memory and disk files in pieces of 64 bytes, and 10 000 strings through an archive.
#pragma once

#include "Bench.h"

#include <fstream>

namespace bench {

constexpr int memorySize = 1 << 20, fileSize = 8 << 20, chunk = 64;
inline char block[chunk];

template <class Write>
void writeAll(int size, Write write)
{
    for (int i = 0; i < size; i += chunk) {
        block[0] = char(i >> 6);
        write();
    }
}

template <class Read>
void readAll(int size, Read read)
{
    char b[chunk];
    unsigned sum = 0;
    for (int i = 0; i < size; i += chunk) {
        require(read(b), "read");
        sum += b[0] == char(i >> 6);
    }
    require(sum == unsigned(size / chunk), "contents");
}

struct StdFile
{
    static void write(const std::string& path)
    {
        std::ofstream f(path, std::ios::binary);
        writeAll(fileSize, [&] { f.write(block, chunk); });
    }
    static void read(const std::string& path)
    {
        std::ifstream f(path, std::ios::binary);
        readAll(fileSize, [&](char* b) { return bool(f.read(b, chunk)); });
    }
};

template <class F>
void FileWrite(State& st)
{
    const std::string path = scratch("file.bin");
    for (auto _ : st)
        F::write(path);
    StdFile::read(path);
}

template <class F>
void FileRead(State& st)
{
    const std::string path = scratch("file.bin");
    StdFile::write(path);
    for (auto _ : st)
        F::read(path);
}

inline const std::vector<std::u16string>& archiveTexts()
{
    static const std::vector<std::u16string> all = words(10000, 1, 40);
    return all;
}

}  // namespace bench
