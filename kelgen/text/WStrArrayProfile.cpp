// WStrArrayProfile.cpp: the entries as values of the application's profile.
#include <kelgen/text/WStrArray.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/text/International.h>

namespace {

CString ValueName(const CString& entry, int index)
{
    CString name(entry);
    name.AppendFormat(".%d", index);
    return name;
}

}  // namespace

void CWStrArray::WriteToRegistry(const char* section, const char* entry)
{
    CWinApp* const application = AfxGetApp();
    if (application == nullptr)
        return;
    for (int i = 0; i < m_nUsedCount; ++i) {
        CString text;
        CInternational::UnicodeToOEM(text, GetAt(i));
        application->WriteProfileString(section, ValueName(entry, i), text);
    }
}

int CWStrArray::AddFromRegistry(CString section, CString entry)
{
    CWinApp* const application = AfxGetApp();
    if (application == nullptr)
        return 0;
    for (int count = 0;; ++count) {
        const CString text = application->GetProfileString(section, ValueName(entry, count), "");
        if (text.IsEmpty())
            return count;
        CWStr added;
        added.SetOEM(text);
        Add(added);
    }
}
