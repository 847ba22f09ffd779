// Scratch.cpp: one scratch folder for each process, named after it.
#include "support/Scratch.h"

#include <atomic>
#include <fstream>
#include <random>
#include <sstream>

namespace kelgen::test {

namespace {

std::filesystem::path processFolder;
std::atomic<int> folderCount = 0;

}  // namespace

void SetEnvironment(const std::string& name, const std::string& value);

ScratchHome::ScratchHome()
{
    std::random_device random;
    do {
        m_folder = std::filesystem::temp_directory_path() / ("kelgen-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(m_folder));
    processFolder = m_folder;
    SetEnvironment("KELGEN_HOME", (m_folder / "home").string());
}

ScratchHome::~ScratchHome()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

std::filesystem::path ScratchFolder()
{
    const auto folder = processFolder / std::to_string(++folderCount);
    std::filesystem::create_directories(folder);
    return folder;
}

std::string ScratchFile(const std::string& name)
{
    return (ScratchFolder() / name).string();
}

void WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string ReadBytes(const std::string& path)
{
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

}  // namespace kelgen::test
