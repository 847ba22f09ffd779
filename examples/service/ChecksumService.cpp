// ChecksumService.cpp: what the service does on its own thread, and on that of the controls.
#include "ChecksumService.h"

#include "Requests.h"

DWORD CChecksumService::OnStart(const CString& name)
{
    if (!m_settings.Load(name))
        return ERROR_FILE_NOT_FOUND;
    m_checksums = std::make_unique<CFolderChecksums>(m_settings.GetFolder());
    return NO_ERROR;
}

void CChecksumService::OnRun()
{
    const DWORD milliseconds = m_settings.GetRecheckSeconds() * 1000;
    do {
        if (!IsPaused())
            m_checksums->Look(GetStopEvent());
    } while (m_checksums->Wait(GetStopEvent(), milliseconds));
}

void CChecksumService::OnControl(DWORD control)
{
    if (control == SERVICE_CONTROL_CONTINUE)
        m_checksums->Wake();
    else if (control == requests::kAnswerControl)
        requests::Answer(m_settings.GetRequests(), [this](const CString& name) { return m_checksums->Describe(name); });
}
