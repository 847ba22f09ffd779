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

    /// Stores a number. True on success; the other saves do the same.
    bool DBSave(const char* name, int value);
    /// Stores a text.
    bool DBSave(const char* name, CString value);

    /// Loads a number into @p value. True on success; false, and @p value as it was, if the setting is missing. The other loads do the
    /// same.
    bool DBLoad(const char* name, int& value);
    /// Loads a text.
    bool DBLoad(const char* name, CString& value);

    /// DBSave in the section "Global".
    bool DBGlobalSave(const char* name, int value);
    /// DBLoad in the section "Global".
    bool DBGlobalLoad(const char* name, int& value);

private:
    CString m_section;
};
