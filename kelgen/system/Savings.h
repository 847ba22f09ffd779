// Savings.h: what an application is to save, as flags that write themselves out.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/Flags.h>

/// Base of an application object that carries its savings flags:
///
///     enum CSavings::ESaveWhat : int { saveWindows, saveHistory };
///     class CHostApp : public CWinApp, public CSavings { ... };
///     CSavings::AppGetSavings().SavingsSaveWhat().Set(CSavings::saveHistory);
class KELGEN_API CSavings
{
public:
    /// What can be saved; the host gives the enumerators.
    enum ESaveWhat : int;

    virtual ~CSavings();

    /// The application object's savings. Throws: CInvalidArgException when there is no application or it is no CSavings.
    static CSavings& AppGetSavings();

    /// What is to be saved: a flag for each enumerator, which the caller may change.
    CFlagsDB<ESaveWhat>& SavingsSaveWhat() { return m_saveWhat; }

private:
    CFlagsDB<ESaveWhat> m_saveWhat;
};
