// ServiceSettings.h: what the installation tells the service, as a property set that the registry keeps.
#pragma once

#include <kelgen/property/PropertySet.h>

/// The settings of one service, which lie in the key Parameters below its own, as services keep theirs.
class CServiceSettings : public gen::CPropertySet
{
public:
    CServiceSettings();

    /// The folder whose checksums are kept.
    CString GetFolder() { return GetText(idFolder); }
    /// The folder that clients lay their requests in.
    CString GetRequests() { return GetText(idRequests); }
    /// How often all files are looked at.
    DWORD GetRecheckSeconds() { return (*this)[idRecheck]->GetValue().GetValueUnsignedInteger(); }
    void SetAll(const CString& folder, const CString& requests, int recheckSeconds);

    /// Each is false when the registry refuses. Load changes nothing then.
    bool Load(const CString& service);
    bool Save(const CString& service);
    /// Forgets what was saved.
    static void Remove(const CString& service);

private:
    enum EId
    {
        idFolder,
        idRequests,
        idRecheck,
    };

    CString GetText(EId id) { return (*this)[id]->GetValue().GetValueString(); }
};
