// Scratch.h: folders that tests may fill, removed when the test program ends.
#pragma once

#include <filesystem>
#include <string>

namespace kelgen::test {

/// Makes a fresh folder, points KELGEN_HOME at it, and removes it with everything in it on destruction.
class ScratchHome
{
public:
    ScratchHome();
    ~ScratchHome();
    ScratchHome(const ScratchHome&) = delete;
    ScratchHome& operator=(const ScratchHome&) = delete;

private:
    std::filesystem::path m_folder;
};

/// A new empty folder below this process's scratch folder, as the C++ standard library spells it.
std::filesystem::path ScratchFolder();

/// The path of @p name in a new empty folder, as the platform's narrow calls take it.
std::string ScratchFile(const std::string& name);

/// Writes @p bytes to @p path, replacing what was there.
void WriteBytes(const std::string& path, const std::string& bytes);

/// The bytes of the file @p path; empty when it cannot be read.
std::string ReadBytes(const std::string& path);

}  // namespace kelgen::test
