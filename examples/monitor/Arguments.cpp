// Arguments.cpp: switches, a folder or an INI file.
#include "Arguments.h"

#include "FolderEntries.h"

void CMonitorArguments::ParseParam(LPCSTR param, BOOL isFlag, BOOL)
{
    const CString text(param);
    if (!isFlag)
        TakePath(text);
    else if (text == "-once")
        m_isOnce = true;
    else if (text.Find('/') > 0 || ::GetFileAttributesA("/" + text) != INVALID_FILE_ATTRIBUTES)
        // To the framework "/tmp" is a switch, too.
        TakePath("/" + text);
    else
        m_error = "unknown switch or path: " + text;
}

void CMonitorArguments::TakePath(const CString& path)
{
    if (!m_folder.IsEmpty() || !m_iniPath.IsEmpty())
        m_error = "one folder or INI file is enough";
    else if (path.Right(4).CompareNoCase(".ini") == 0 && FolderTime(path) == 0)
        m_iniPath = path;
    else
        m_folder = path;
}
