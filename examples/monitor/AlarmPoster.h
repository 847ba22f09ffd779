// AlarmPoster.h: brings the alarms of the library's watcher from its thread to the thread of a window.
#pragma once

#include <kelgen/framework/collections/StringArray.h>
#include <kelgen/system/FileChangeEvent.h>
#include <kelgen/window/MessageWindow.h>

/// Tells a message window that files have changed, by posting: a sent message would wait for the window's thread, which waits for
/// the alarm when it ends the watch.
class CAlarmPoster : public CFileChangeEvent
{
public:
    /// Comes when there is something to take.
    static constexpr UINT messageAlarm = WM_APP + 1;

    explicit CAlarmPoster(CMessageWindowListener& window) : m_window(window) {}
    ~CAlarmPoster() override { EndWatch(); }

    /// The paths of the alarms since the last call.
    void TakeAlarms(CStringArray& paths);

protected:
    void OnFileAlarm(EFileAlarm alarm, const char* path) override;

private:
    CMessageWindowListener& m_window;
    CCriticalSection m_lock;
    CStringArray m_paths;
};
