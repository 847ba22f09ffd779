// AppInterface.cpp: names and paths out of the module's.
#include <kelgen/app/AppInterface.h>

#include <kelgen/app/App.h>
#include <kelgen/persistence/IniFile.h>

namespace _kelgen {

CAppInterface::~CAppInterface() = default;

bool CAppInterface::InitAppInstance()
{
    constexpr DWORD kRoom = 521;
    CString module;
    if (const CKelGenApp* const app = gen::GetApp())
        app->GetModuleFilePath(module);
    char path[kRoom] = "";
    char* filePart = nullptr;
    const DWORD length = ::GetFullPathNameA(module, kRoom, path, &filePart);
    m_strAppName = length > 0 && length < kRoom && filePart ? filePart : "";
    if (m_strAppName.GetLength() >= 4 && m_strAppName.Right(4).CompareNoCase(".exe") == 0)
        m_strAppName = m_strAppName.Left(m_strAppName.GetLength() - 4);
    return true;
}

void CAppInterface::GetAppName(CString& name)
{
    name = m_strAppName;
}

void CAppInterface::GetAppDir(CString& dir)
{
    dir.Empty();
    if (const CKelGenApp* const app = gen::GetApp())
        app->GetModuleFolder(dir);
    if (!dir.IsEmpty())
        dir = dir.Left(dir.GetLength() - 1);
}

void CAppInterface::GetIniFileTitle(CString& title)
{
    GetAppName(title);
}

void CAppInterface::GetIniFilePathName(CString& path)
{
    if (m_strIniFilePathName.IsEmpty())
        CalcIniFilePathName(m_strIniFilePathName);
    path = m_strIniFilePathName;
}

void CAppInterface::CalcIniFilePathName(CString& path)
{
    CString title;
    GetIniFileTitle(title);
    CString dir;
    GetAppDir(dir);
    CIniFile file;
    path = dir + "\\" + title + ".ini";
    if (file.LoadFile(path))
        return;
    path = title + ".ini";
    if (!file.LoadFile(path))
        path.Empty();
}

void CAppInterface::GetTempPathA(CString& path)
{
    const DWORD length = ::GetTempPathA(MAX_PATH, path.GetBuffer(MAX_PATH));
    path.ReleaseBuffer(length <= MAX_PATH ? static_cast<int>(length) : 0);
}

void CAppInterface::GetTempFilePath(CString& path, const char* prefix)
{
    CString folder;
    GetTempPathA(folder);
    const UINT number = ::GetTempFileNameA(folder, prefix, 0, path.GetBuffer(MAX_PATH));
    path.ReleaseBuffer(number != 0 ? -1 : 0);
}

}  // namespace _kelgen
