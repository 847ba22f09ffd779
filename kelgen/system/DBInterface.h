// DBInterface.h: named settings in a section of the application's profile.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>

/// Saves and loads settings through the application object's profile functions. Precondition: there is an application object.
class KELGEN_API CDBInterface
{
public:
    virtual ~CDBInterface();

    /// The section of DBSave and DBLoad; empty at first.
    void SetRegistrySection(const char* section) { m_section = section; }

    /// True when the setting was written; so do the other saves.
    bool DBSave(const char* name, int value);
    bool DBSave(const char* name, CString value);

    /// True with the setting in @p value; false when it is missing, and @p value stays. So do the other loads.
    bool DBLoad(const char* name, int& value);
    bool DBLoad(const char* name, CString& value);

    /// DBSave in the section "Global".
    bool DBGlobalSave(const char* name, int value);
    /// DBLoad in the section "Global".
    bool DBGlobalLoad(const char* name, int& value);

private:
    CString m_section;
};
