// FilesTest.cpp: files, folders, programs and modules, without memory.
#include "posix/faults/Flow.h"
#include "support/Scratch.h"
#include "support/Threads.h"
#include "support/VersionImages.h"

#include <kelgen/kelgen.h>

#include <gtest/gtest.h>

using namespace kelgen::test;

KELGEN_FLOW(FilesOfThePlatform)
{
    const std::string path = ScratchFile("file");
    const std::string copy = path + ".copy";
    RunFlow(
        [&] {
            DWORD count = 0;
            {
                const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
                if (file == INVALID_HANDLE_VALUE)
                    return Outcome::Of(false);
                const Outcome written = Outcome::Of(WriteFile(file, "text", 4, &count, nullptr) != FALSE);
                CloseHandle(file);
                if (!written.done)
                    return written;
            }
            const Outcome copied = Outcome::Of(CopyFileA(path.c_str(), copy.c_str(), FALSE) != FALSE);
            return copied.done ? Outcome::Of(GetFileAttributesA(copy.c_str()) != INVALID_FILE_ATTRIBUTES) : copied;
        },
        [&](const Outcome& outcome) {
            WriteBytes(path, "text");
            const std::string copied = ReadBytes(copy);
            EXPECT_TRUE(copied == "text" || (!outcome.done && copied.empty())) << copied;
            WriteBytes(copy, "");
        });
}

KELGEN_FLOW(FilesOfTheFramework)
{
    const std::string path = ScratchFile("lines");
    RunFlow(
        [&] {
            {
                CStdioFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::typeText);
                for (int i = 0; i < 20; ++i)
                    file.WriteString("a line of some length\n");
                file.Close();
            }
            CStdioFile file(path.c_str(), CFile::modeRead | CFile::typeText);
            CString line;
            int lines = 0;
            while (file.ReadString(line))
                ++lines;
            return Outcome{lines == 20};
        },
        [&] { WriteBytes(path, ""); });
}

KELGEN_FLOW(BufferedAndMemoryFiles)
{
    const std::string path = ScratchFile("buffered");
    WriteBytes(path, std::string(3000, 'x'));
    RunFlow([&] {
        CMemoryFile memory;
        memory.Write("some text", 9);
        CBufferedFile file(path.c_str(), CFile::modeRead, 512, 512);
        char bytes[700];
        return Outcome{file.Read(bytes, sizeof bytes) == sizeof bytes};
    });
}

KELGEN_FLOW(Searches)
{
    const std::filesystem::path folder = ScratchFolder();
    for (const char* name : {"a", "b", "c"})
        WriteBytes((folder / name).string(), "");
    const std::string pattern = (folder / "*").string();
    RunFlow([&] {
        WIN32_FIND_DATAA data;
        const HANDLE find = FindFirstFileA(pattern.c_str(), &data);
        if (find == INVALID_HANDLE_VALUE)
            return Outcome::Of(false);
        int count = 1;
        while (FindNextFileA(find, &data))
            ++count;
        const Outcome outcome = {count == 5, GetLastError()};
        FindClose(find);
        return outcome;
    });
}

KELGEN_FLOW(PathsAndEnvironment)
{
    RunFlow([] {
        char text[1000];
        if (!GetFullPathNameA("some\\..\\name", sizeof text, text, nullptr) || !GetTempPathA(sizeof text, text) ||
            !GetCurrentDirectoryA(sizeof text, text) || !GetModuleFileNameA(nullptr, text, sizeof text) ||
            !SetEnvironmentVariableA("KELGEN_FAULT", "value") || !GetEnvironmentVariableA("KELGEN_FAULT", text, sizeof text))
            return Outcome::Of(false);
        return Outcome::Of(SetEnvironmentVariableA("KELGEN_FAULT", nullptr) != FALSE);
    });
}

KELGEN_FLOW(ShellFunctions)
{
    const std::filesystem::path folder = ScratchFolder();
    WriteBytes((folder / "file.txt").string(), "");
    const std::string pattern = (folder / "*.txt").string();
    RunFlow([&] {
        CStringArray paths;
        CStringArray names;
        CStringArray titles;
        shell::file_find(pattern.c_str(), &paths, &names, &titles);
        return Outcome{true};
    });
}

KELGEN_FLOW(VersionResources)
{
    const std::string path = ScratchFile("image.dll");
    WriteBytes(path, Image{true,
                           {{16, 1, 0x409,
                             VersionResource(FixedInfo(1, 2, 3, 4), {{u"040904e4", {TextNode(u"Comments", u"text")}}},
                                             Number(0x409, 2) + Number(1252, 2))}}}
                         .Bytes());
    RunFlow([&] {
        CVersionInfo version;
        version.Load(path.c_str());
        version.GetComments();
        return Outcome{true};
    });
}

KELGEN_FLOW_WITH_WORKERS(StartedPrograms)
{
    OwnedHandle process;
    RunFlow(
        [&] {
            char command[] = "/bin/true";
            STARTUPINFOA startup = {};
            startup.cb = sizeof startup;
            PROCESS_INFORMATION information = {};
            if (!CreateProcessA(nullptr, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &information))
                return Outcome::Of(false);
            CloseHandle(information.hThread);
            process.reset(information.hProcess);
            return Outcome{true};
        },
        [&] {
            if (process) {
                EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(process.get(), kDeadline));
            }
            process.reset();
        });
}

KELGEN_FLOW(ThreadsAndEvents)
{
    OwnedHandle event;
    OwnedHandle thread;
    RunFlow(
        [&] {
            event.reset(CreateEventA(nullptr, TRUE, FALSE, nullptr));
            if (!event)
                return Outcome::Of(false);
            thread.reset(CreateThread(
                nullptr, 0, [](LPVOID signal) -> DWORD { return SetEvent(signal) ? 0u : 1u; }, event.get(), 0, nullptr));
            return Outcome::Of(thread && WaitForSingleObject(event.get(), kDeadline) == WAIT_OBJECT_0);
        },
        [&] {
            if (thread) {
                EXPECT_EQ(0u, ExitCodeOf(thread));
            }
            thread.reset();
            event.reset();
        });
}
