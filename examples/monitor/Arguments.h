// Arguments.h: the program's arguments: [--once] [FOLDER | FILE.ini].
#pragma once

#include <kelgen/framework/program/CommandLine.h>

/// What CWinApp::ParseCommandLine finds.
class CMonitorArguments : public CCommandLineInfo
{
public:
    void ParseParam(LPCSTR param, BOOL isFlag, BOOL isLast) override;

    bool m_isOnce = false;
    CString m_folder;
    CString m_iniPath;
    /// What is wrong with the arguments; empty when nothing is.
    CString m_error;

private:
    void TakePath(const CString& path);
};
