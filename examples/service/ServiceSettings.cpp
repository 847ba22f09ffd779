// ServiceSettings.cpp: to and from the registry.
#include "ServiceSettings.h"

#include <kelgen/persistence/RegistryPropertyExchange.h>

namespace {

CString KeyOf(const CString& service)
{
    return "SYSTEM\\CurrentControlSet\\Services\\" + service + "\\Parameters";
}

}  // namespace

CServiceSettings::CServiceSettings()
{
    AddProperty(gen::CProperty(idFolder, "Folder", gen::eptString));
    AddProperty(gen::CProperty(idRequests, "Requests", gen::eptString));
    AddProperty(gen::CProperty(idRecheck, "RecheckSeconds", gen::eptInteger));
}

void CServiceSettings::SetAll(const CString& folder, const CString& requests, int recheckSeconds)
{
    Set("Folder", folder.GetString());
    Set("Requests", requests.GetString());
    Set("RecheckSeconds", recheckSeconds);
}

bool CServiceSettings::Load(const CString& service)
{
    CRegistryPropertyExchange exchange;
    exchange.propertySet = this;
    return exchange.key.OpenKey(HKEY_LOCAL_MACHINE, KeyOf(service)) && exchange.TryLoad();
}

bool CServiceSettings::Save(const CString& service)
{
    CRegistryPropertyExchange exchange;
    exchange.propertySet = this;
    if (!exchange.key.CreateKey(HKEY_LOCAL_MACHINE, KeyOf(service)))
        return false;
    exchange.Write();
    CString written;
    return exchange.key.QueryValue("Folder", written) && written == GetFolder();
}

void CServiceSettings::Remove(const CString& service)
{
    ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, KeyOf(service));
}
