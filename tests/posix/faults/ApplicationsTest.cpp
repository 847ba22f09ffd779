// ApplicationsTest.cpp: documents, profiles of applications, services and workers.
#include "posix/faults/Flow.h"
#include "support/Scratch.h"
#include "support/TextDocument.h"
#include "support/faults/FailingCalls.h"
#include "support/system/Services.h"

#include <kelgen/kelgen.h>

#include <atomic>
#include <thread>

using namespace kelgen::test;

KELGEN_FLOW(Documents)
{
    const std::string path = ScratchFile("document");
    const CString oldText('o', 5000);
    const CString newText('n', 6000);
    const auto save = [&](const CString& text) {
        TextDocument note(text);
        return Outcome{note.OnSaveDocument(path.c_str()) != FALSE, note.error};
    };
    const auto load = [&](CString& text) {
        TextDocument note;
        const Outcome outcome{note.OnOpenDocument(path.c_str()) != FALSE, note.error};
        text = note.text;
        return outcome;
    };
    ASSERT_TRUE(save(oldText).done);
    bool isSaved = false;
    RunFlow(
        [&] {
            isSaved = false;
            const Outcome saved = save(newText);
            if (!saved.done)
                return saved;
            isSaved = true;
            CString text;
            const Outcome loaded = load(text);
            EXPECT_TRUE(!loaded.done || text == newText);
            return loaded;
        },
        [&] {
            CString text;
            EXPECT_TRUE(load(text).done);
            EXPECT_TRUE(text == newText || (!isSaved && text == oldText)) << text.GetLength();
            // While there is no memory at all not even a file can be removed.
            for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(path).parent_path()))
                std::filesystem::remove(entry);
            EXPECT_TRUE(save(oldText).done);
        });
}

KELGEN_FLOW(ArchivesInFiles)
{
    const std::string path = ScratchFile("archive");
    RunFlow(
        [&] {
            CStringArray strings;
            for (int i = 0; i < 200; ++i)
                strings.Add("a text of some length");
            {
                CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
                CArchive archive(&file, CArchive::store, 512);
                strings.Serialize(archive);
                archive.Close();
                file.Close();
            }
            CFile file(path.c_str(), CFile::modeRead);
            CArchive archive(&file, CArchive::load, 512);
            CStringArray read;
            read.Serialize(archive);
            return Outcome{read.GetSize() == 200 && read[199] == "a text of some length"};
        },
        [&] { std::filesystem::remove(path); });
}

TEST(WithFailingCalls, WorksOfServices)
{
    const FailingKind kind(Failing::calls);
    const InstalledService service("run");
    const Flow flow = {[&] {
                           SERVICE_STATUS status = {};
                           if (!StartServiceA(service.handle, 0, nullptr))
                               return Outcome::Of(false);
                           {
                               // By contract a start ends when the service reports that it begins.
                               const Undisturbed undisturbed;
                               service.Reaches(SERVICE_RUNNING);
                           }
                           if (!ControlService(service.handle, 200, &status))
                               return Outcome::Of(false);
                           return Outcome::Of(ControlService(service.handle, SERVICE_CONTROL_STOP, &status) != FALSE);
                       },
                       [&](const Outcome&) {
                           SERVICE_STATUS status = {};
                           if (service.State() == SERVICE_START_PENDING)
                               service.Reaches(SERVICE_RUNNING);
                           if (service.State() != SERVICE_STOPPED)
                               ControlService(service.handle, SERVICE_CONTROL_STOP, &status);
                           EXPECT_TRUE(service.Reaches(SERVICE_STOPPED));
                           std::filesystem::remove(service.report);
                       },
                       {ERROR_SERVICE_REQUEST_TIMEOUT},
                       false};
    RunFlow(flow);
}

KELGEN_FLOW_WITH_WORKERS(Workers)
{
    const std::string path = ScratchFile("worker");
    OwnedHandle ended;
    struct Task
    {
        const std::string& path;
        HANDLE ended;
        std::atomic<bool> isDone = false;  // a wait for the event may lack memory
    };
    RunFlow(
        [&] {
            ended.reset(CreateEventA(nullptr, TRUE, FALSE, nullptr));
            if (!ended)
                return Outcome::Of(false);
            Task task{path, ended.get()};
            const auto work = [](LPVOID argument) -> UINT {
                Task& given = *static_cast<Task*>(argument);
                try {
                    CStdioFile file(given.path.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::typeText);
                    file.WriteString("a line");
                    file.Close();
                } catch (CException* e) {
                    e->Delete();
                }
                SetEvent(given.ended);
                given.isDone = true;
                return 0;
            };
            if (!AfxBeginThread(work, &task))
                return Outcome::Of(false);
            const bool hasEnded = WaitForSingleObject(ended.get(), kDeadline) == WAIT_OBJECT_0;
            while (!task.isDone)
                std::this_thread::yield();
            return Outcome::Of(hasEnded);
        },
        [&] {
            ended.reset();
            std::filesystem::remove(path);
        });
}
