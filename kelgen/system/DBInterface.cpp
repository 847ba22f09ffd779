// DBInterface.cpp: a setting is missing when it reads as each of two defaults; other answers that differ are a writer's at the same time.
#include <kelgen/system/DBInterface.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>

namespace {

constexpr const char* kGlobalSection = "Global";

bool Save(const char* section, const char* name, int value)
{
    return AfxGetApp()->WriteProfileInt(section, name, value) != FALSE;
}

bool Load(const char* section, const char* name, int& value)
{
    const int first = static_cast<int>(AfxGetApp()->GetProfileInt(section, name, 0));
    const int second = static_cast<int>(AfxGetApp()->GetProfileInt(section, name, -1));
    if (first == 0 && second == -1)
        return false;
    value = second;
    return true;
}

}  // namespace

CDBInterface::~CDBInterface() = default;

bool CDBInterface::DBSave(const char* name, int value)
{
    return Save(m_section, name, value);
}

bool CDBInterface::DBSave(const char* name, CString value)
{
    return AfxGetApp()->WriteProfileString(m_section, name, value) != FALSE;
}

bool CDBInterface::DBLoad(const char* name, int& value)
{
    return Load(m_section, name, value);
}

bool CDBInterface::DBLoad(const char* name, CString& value)
{
    const CString first = AfxGetApp()->GetProfileString(m_section, name, "1");
    const CString second = AfxGetApp()->GetProfileString(m_section, name, "2");
    if (first == "1" && second == "2")
        return false;
    value = second;
    return true;
}

bool CDBInterface::DBGlobalSave(const char* name, int value)
{
    return Save(kGlobalSection, name, value);
}

bool CDBInterface::DBGlobalLoad(const char* name, int& value)
{
    return Load(kGlobalSection, name, value);
}
