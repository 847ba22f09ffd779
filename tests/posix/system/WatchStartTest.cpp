// WatchStartTest.cpp: watchers whose thread cannot be started.
#include "support/faults/FailingMemory.h"
#include "support/system/Watcher.h"

using namespace kelgen::test;

TEST(FileChangeEvent, EndsWhenItsThreadCouldNotBeStarted)
{
    bool failed = true;
    int count = 0;
    for (; failed; ++count) {
        auto* const watcher = new RecordingWatcher;
        watcher->Add(ScratchFile("f"));
        failed = false;
        FailingMemory memory(count);
        try {
            watcher->StartWatch();
        } catch (CMemoryException* e) {
            e->Delete();
            failed = true;
        }
        memory.End();
        failed = failed || !watcher->IsWatching();
        EXPECT_EQ(!failed, watcher->IsWatching()) << count;
        const OwnedHandle end = StartThread([watcher]() -> DWORD {
            delete watcher;
            return 0;
        });
        ASSERT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(end.get(), kDeadline)) << count;
    }
    EXPECT_GT(count, 1) << "the first allocation belongs to the start";
}
