// FullDiskTest.cpp: what a disk without room does to what is on it, and that all works again when there is room.
#include "platform/registry/RegistryFixture.h"
#include "posix/registry/Processes.h"
#include "support/Scratch.h"
#include "support/TextDocument.h"

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/files/StdioFile.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>

#include <filesystem>

using namespace kelgen::test;
namespace fs = std::filesystem;

namespace {

constexpr int kCannotMount = 77;

/// Mounts a disk of 512 KB at @p folder, for this process and no other.
bool MountDisk(const fs::path& folder)
{
    const bool isApart = unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
    return isApart && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("kelgen", folder.c_str(), "tmpfs", 0, "size=512k,mode=0700") == 0;
}

/// Leaves no room on the disk of @p folder, until it goes.
class Filler
{
public:
    explicit Filler(const fs::path& folder) : m_path(folder / "filler")
    {
        const int file = open(m_path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        const std::string block(4096, 'x');
        while (write(file, block.data(), block.size()) > 0) {
        }
        close(file);
    }
    ~Filler() { fs::remove(m_path); }
    Filler(const Filler&) = delete;
    Filler& operator=(const Filler&) = delete;

private:
    fs::path m_path;
};

/// A way to write, which replaces what is old; the error, or 0.
struct Write
{
    const char* name;
    std::function<DWORD()> write;
    std::function<std::string()> read;  // what is there
    bool keepsOld;
};

std::string Large()
{
    return std::string(9000, 'n');
}

DWORD WriteLines(const std::string& path)
{
    try {
        CStdioFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::typeText);
        for (int i = 0; i < 300; ++i)
            file.WriteString("a line that goes to the end of the disk\n");
        file.Close();
        return 0;
    } catch (CFileException* e) {
        const auto error = static_cast<DWORD>(e->m_lOsError);
        e->Delete();
        return error;
    }
}

/// In a process of its own.
void WriteOnFullDisk(const fs::path& folder)
{
    setenv("KELGEN_HOME", folder.c_str(), 1);
    const ScratchKey key;
    const std::string profile = folder / "p.ini", document = folder / "d.txt", lines = folder / "lines", source = folder / "source",
                      copy = folder / "copy";
    const auto text = [&key](const char* name) { return GetText(key, name).value_or(""); };
    const std::vector<Write> writes = {
        {"value", [&] { return static_cast<DWORD>(SetText(key, "outgrown", Large())); }, [&] { return text("outgrown"); }, true},
        {"new value", [&] { return static_cast<DWORD>(SetText(key, "new", Large())); }, [&] { return text("new"); }, true},
        {"profile", [&] { return WritePrivateProfileStringA("s", "n", Large().c_str(), profile.c_str()) ? 0 : GetLastError(); },
         [&] { return ReadBytes(profile); }, true},
        {"document",
         [&] {
             TextDocument letter(CString('n', 20000));
             return letter.OnSaveDocument(document.c_str()) ? 0 : letter.error;
         },
         [&] { return ReadBytes(document); }, true},
        {"lines", [&] { return WriteLines(lines); }, [&] { return ReadBytes(lines); }, false},
        {"copy", [&] { return CopyFileA(source.c_str(), copy.c_str(), TRUE) ? 0 : GetLastError(); }, [&] { return ReadBytes(copy); }, true},
    };
    SetText(key, "outgrown", "old");
    for (const std::string& path : {profile, document})
        WriteBytes(path, "[old]\r\n");
    WriteBytes(source, Large());
    std::vector<std::string> old;
    for (const Write& write : writes)
        old.push_back(write.read());
    {
        const Filler filler(folder);
        for (std::size_t i = 0; i < writes.size(); ++i) {
            EXPECT_EQ(DWORD{ERROR_DISK_FULL}, writes[i].write()) << writes[i].name;
            EXPECT_TRUE(!writes[i].keepsOld || writes[i].read() == old[i]) << writes[i].name;
        }
    }
    for (std::size_t i = 0; i < writes.size(); ++i) {
        fs::remove(copy);
        EXPECT_EQ(0u, writes[i].write()) << writes[i].name;
        EXPECT_NE(old[i], writes[i].read()) << writes[i].name;
    }
}

}  // namespace

TEST(FullDisk, KeepsTheOldTellsItAndWorksAgain)
{
    const fs::path folder = ScratchFolder();
    ChildProcess writer([&folder] {
        if (!MountDisk(folder))
            _exit(kCannotMount);
        WriteOnFullDisk(folder);
    });
    const int code = writer.ExitCode();
    if (code == kCannotMount)
        GTEST_SKIP() << "this user may not mount a file system";
    EXPECT_EQ(0, code);
}
