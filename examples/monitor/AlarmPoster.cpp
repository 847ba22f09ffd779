// AlarmPoster.cpp: a list of paths that two threads share, and the message that tells of it.
#include "AlarmPoster.h"

void CAlarmPoster::TakeAlarms(CStringArray& paths)
{
    CSingleLock lock(&m_lock, TRUE);
    paths.Copy(m_paths);
    m_paths.RemoveAll();
}

/// On the watcher's thread. What kind of alarm it is does not count: whoever takes it looks at the file.
void CAlarmPoster::OnFileAlarm(EFileAlarm, const char* path)
{
    CSingleLock lock(&m_lock, TRUE);
    m_paths.Add(path);
    // One message is on its way until the list is taken.
    const bool isFirst = m_paths.GetSize() == 1;
    lock.Unlock();
    if (isFirst)
        m_window.PostMessageA(messageAlarm, 0, 0);
}
