// ConcurrentProcessesTest.cpp: writers that are killed, that write at once, and that cannot write.
#include "platform/registry/RegistryFixture.h"
#include "posix/registry/Processes.h"
#include "support/Failures.h"
#include "support/Random.h"
#include "support/Scratch.h"
#include "support/TextDocument.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <atomic>
#include <filesystem>
#include <iterator>

using namespace kelgen::test;

namespace {

constexpr int kRounds = 25;

/// Kills @p body, which writes for ever, at random moments; @p check looks at what it left.
void KillAtRandom(const std::function<void(std::atomic<int>&)>& body, const std::function<void()>& check)
{
    Random random;
    auto* const writes =
        static_cast<std::atomic<int>*>(mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    for (int round = 0; round < kRounds && !testing::Test::HasFailure(); ++round) {
        *writes = 0;
        ChildProcess writer([&] { body(*writes); });
        while (*writes < 2)
            usleep(50);
        usleep(static_cast<useconds_t>(random.Between(0, 2000)));
        writer.Kill();
        check();
    }
    munmap(writes, sizeof *writes);
}

/// Texts of one letter: a part of one, or a mixture of two, is none of them.
std::string TextOfOneLetter(int number)
{
    return std::string(3000, static_cast<char>('a' + number % 26));
}

void ExpectWhole(const std::optional<std::string>& text)
{
    ASSERT_TRUE(text);
    ASSERT_EQ(3000u, text->size());
    EXPECT_EQ(std::string::npos, text->find_first_not_of(text->front())) << *text;
}

std::string ReadProfileText(const char* section, const char* key, const std::string& file)
{
    std::string text(4000, '\0');
    text.resize(GetPrivateProfileStringA(section, key, "", text.data(), 4000, file.c_str()));
    return text;
}

}  // namespace

TEST(KilledWriter, LeavesTheOldOrTheNewRegistryValue)
{
    const ScratchKey key;
    ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", TextOfOneLetter(0)));
    KillAtRandom(
        [&](std::atomic<int>& writes) {
            for (;; ++writes)
                SetText(key, "v", TextOfOneLetter(writes));
        },
        [&] {
            ExpectWhole(GetText(key, "v"));
            EXPECT_EQ(std::vector<std::string>{"v"}, ValuesOf(key));
        });
}

TEST(KilledWriter, LeavesWholeKeysOrNone)
{
    const ScratchKey key;
    KillAtRandom(
        [&](std::atomic<int>& writes) {
            for (;; ++writes) {
                MakeKey(key, "Mixed\\Case", "x");
                RegDeleteTreeA(key, "Mixed");
            }
        },
        [&] {
            const auto names = SubkeysOf(key);
            EXPECT_TRUE(names.empty() || names == std::vector<std::string>{"Mixed"}) << names[0];
            // Nothing of it keeps the next writer from working.
            MakeKey(key, "Mixed");
            EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeA(key, "Mixed"));
            EXPECT_EQ(std::vector<std::string>{}, SubkeysOf(key));
        });
}

TEST(KilledWriter, LeavesTheOldOrTheNewProfile)
{
    const std::string file = ScratchFile("test.ini");
    WriteBytes(file, "[keep]\r\nk=v\r\n");
    ASSERT_TRUE(WritePrivateProfileStringA("s", "v", TextOfOneLetter(0).c_str(), file.c_str()));
    KillAtRandom(
        [&](std::atomic<int>& writes) {
            for (;; ++writes)
                WritePrivateProfileStringA("s", "v", TextOfOneLetter(writes).c_str(), file.c_str());
        },
        [&] {
            ExpectWhole(ReadProfileText("s", "v", file));
            EXPECT_EQ("v", ReadProfileText("keep", "k", file));
        });
    ASSERT_TRUE(WritePrivateProfileStringA("s", "v", "last", file.c_str()));
    const auto folder = std::filesystem::path(file).parent_path();
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder), {})) << "the next write clears what was left behind";
}

TEST(KilledWriter, LeavesTheOldOrTheNewDocument)
{
    const std::string path = ScratchFile("document");
    const auto save = [&](int number) { return TextDocument(TextOfOneLetter(number).c_str()).OnSaveDocument(path.c_str()); };
    ASSERT_TRUE(save(0));
    KillAtRandom(
        [&](std::atomic<int>& writes) {
            for (;; ++writes)
                save(writes);
        },
        [&] {
            TextDocument letter;
            EXPECT_TRUE(letter.OnOpenDocument(path.c_str()));
            ExpectWhole(std::string(letter.text));
            EXPECT_TRUE(save(1)) << "what was left behind is in nobody's way";
            const auto folder = std::filesystem::path(path).parent_path();
            EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder), {})) << "and the next has taken it";
        });
}

TEST(SavedDocument, KeepsItsModeAndTakesNobodysFile)
{
    const std::string path = ScratchFile("document");
    const auto scratch = std::filesystem::path(path).parent_path() / "doc0-document.tmp";
    const auto save = [&] { return TextDocument("new").OnSaveDocument(path.c_str()); };
    WriteBytes(path, "old");
    for (const mode_t mode : {0640u, 0600u}) {
        chmod(path.c_str(), mode);
        EXPECT_TRUE(save());
        struct stat state;
        EXPECT_EQ(0, stat(path.c_str(), &state));
        EXPECT_EQ(mode, state.st_mode & 07777);
    }
    const std::string other = ScratchFile("other");
    WriteBytes(other, "kept");
    std::filesystem::create_hard_link(other, scratch);
    EXPECT_TRUE(save());
    std::filesystem::remove(scratch);
    std::filesystem::create_symlink(other, scratch);
    EXPECT_TRUE(save());
    EXPECT_EQ("kept", ReadBytes(other)) << "a link to it stood where the scratch file would be";
}

TEST(TwoWriters, LoseNoCompletedWrite)
{
    constexpr int kCount = 100;
    const ScratchKey key;
    const std::string file = ScratchFile("test.ini");
    const auto write = [&](const std::string& prefix) {
        for (int i = 0; i < kCount; ++i) {
            const std::string name = prefix + std::to_string(i);
            EXPECT_EQ(ERROR_SUCCESS, SetText(key, name.c_str(), name));
            EXPECT_EQ(ERROR_SUCCESS, SetText(key, "both", TextOfOneLetter(i)));
            EXPECT_TRUE(WritePrivateProfileStringA("s", name.c_str(), name.c_str(), file.c_str()));
        }
    };
    ChildProcess first([&] { write("a"); });
    ChildProcess second([&] { write("b"); });
    while (GetText(key, "a99") != "a99" || GetText(key, "b99") != "b99") {
        if (const auto both = GetText(key, "both"))
            ExpectWhole(both);
        ASSERT_FALSE(HasFailure());
    }
    EXPECT_TRUE(first.Wait());
    EXPECT_TRUE(second.Wait());

    EXPECT_EQ(2u * kCount + 1, ValuesOf(key).size());
    for (const std::string prefix : {"a", "b"})
        for (int i = 0; i < kCount; ++i)
            EXPECT_EQ(prefix + std::to_string(i), ReadProfileText("s", (prefix + std::to_string(i)).c_str(), file));
}

TEST(TwoWriters, ACreatedKeyIsUsableWhileAnotherProcessRemovesItsParent)
{
    const ScratchKey key;
    ChildProcess remover([&] {
        for (;;)
            if (RegDeleteKeyA(key, "Parent\\Sub") == ERROR_SUCCESS)
                RegDeleteKeyA(key, "Parent");
    });
    for (int i = 0; i < 150; ++i) {
        HKEY made = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyA(key, "Parent\\Sub", &made));
        const LSTATUS status = SetText(made, "v", "x");
        ASSERT_TRUE(status == ERROR_SUCCESS || status == ERROR_KEY_DELETED) << status;
        ASSERT_EQ(ERROR_SUCCESS, RegCloseKey(made));
    }
}

TEST(FailingWriter, KeepsTheOldValue)
{
    const ScratchKey key;
    const std::string file = ScratchFile("test.ini");
    ASSERT_EQ(ERROR_SUCCESS, SetText(key, "v", "old"));
    ASSERT_TRUE(WritePrivateProfileStringA("s", "v", "old", file.c_str()));
    ChildProcess writer([&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {1000, 1000};
        EXPECT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
        EXPECT_EQ(ERROR_DISK_FULL, SetText(key, "v", TextOfOneLetter(0)));
        EXPECT_TRUE(FailedWith(ERROR_DISK_FULL, !WritePrivateProfileStringA("s", "v", TextOfOneLetter(0).c_str(), file.c_str())));
    });
    EXPECT_TRUE(writer.Wait());
    EXPECT_EQ("old", GetText(key, "v"));
    EXPECT_EQ(std::vector<std::string>{"v"}, ValuesOf(key));
    EXPECT_EQ("old", ReadProfileText("s", "v", file));
}
