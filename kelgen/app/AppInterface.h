// AppInterface.h: an application's names and paths.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>

namespace _kelgen {

/// What an application knows of itself without windows. The application object is one.
class KELGEN_API CAppInterface
{
public:
    CAppInterface() = default;
    CAppInterface(const CAppInterface&) = delete;
    CAppInterface& operator=(const CAppInterface&) = delete;
    virtual ~CAppInterface();

    /// The program's file name without ".exe" (in any case); any other name is whole.
    virtual void GetAppName(CString& name);
    /// The program's folder without a backslash at its end.
    virtual void GetAppDir(CString& dir);
    /// The first that can be loaded of folder\title.ini in the program's folder and title.ini in the current one; else empty.
    virtual void CalcIniFilePathName(CString& path);
    /// CalcIniFilePathName's result, which is kept once it is not empty.
    virtual void GetIniFilePathName(CString& path);
    /// The INI file's name without ".ini": the application's.
    virtual void GetIniFileTitle(CString& title);

    /// Takes the name from the application's module path. Returns true.
    bool InitAppInstance();
    /// The system's folder for temporary files, with a backslash at its end.
    void GetTempPathA(CString& path);
    /// A new, empty file there, whose name starts with the first three letters of @p prefix; empty when it cannot be made.
    void GetTempFilePath(CString& path, const char* prefix);

protected:
    CString m_strIniFilePathName;
    CString m_strAppName;
};

}  // namespace _kelgen
