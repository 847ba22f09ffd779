// AppIniFile.cpp: loading the application's own INI file.
#include <kelgen/app/AppIniFile.h>

#include <kelgen/app/AppInterface.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>

namespace _kelgen {

CAppIniFile::CAppIniFile()
{
    auto* const application = dynamic_cast<CAppInterface*>(AfxGetApp());
    if (!application)
        return;
    CString path;
    application->GetIniFilePathName(path);
    LoadFile(path);
}

}  // namespace _kelgen
