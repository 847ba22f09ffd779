// ChecksumService.h: the service itself.
#pragma once

#include "FolderChecksums.h"
#include "ServiceProcess.h"
#include "ServiceSettings.h"

/// Keeps the checksums of the folder that its settings name, and answers requests.
class CChecksumService : public CServiceProcess
{
protected:
    DWORD OnStart(const CString& name) override;
    void OnRun() override;
    void OnControl(DWORD control) override;

private:
    CServiceSettings m_settings;
    std::unique_ptr<CFolderChecksums> m_checksums;
};
