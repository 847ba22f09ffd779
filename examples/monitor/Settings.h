// Settings.h: what the user can set, as a property set that the registry keeps.
#pragma once

#include <kelgen/persistence/IniFile.h>
#include <kelgen/persistence/Registry.h>
#include <kelgen/property/PropertySet.h>
#include <kelgen/text/StrArray.h>

/// The settings. Listeners of the set hear of every assignment; Change() assigns only what differs.
class CSettings : public gen::CPropertySet
{
public:
    enum EId
    {
        idFolder,
        idSubfolders,
        idMostFiles,
        idLanguage,
        idLeft,
        idTop,
        idWidth,
        idHeight,
    };

    static constexpr char registryKey[] = "Software\\kelgen\\monitor";
    static constexpr char iniSection[] = "Monitor";

    /// What holds without INI file and registry.
    CSettings();

    CString GetText(EId id);
    int GetInteger(EId id);
    bool IsSet(EId id) { return GetInteger(id) != 0; }
    void Change(EId id, const gen::CPropertyValue& value);

    /// Takes what the section [Monitor] has; @p complaints gains a line for each setting that is unknown or makes no sense. A relative
    /// folder is taken from @p iniFolder.
    void ReadIni(const _kelgen::CIniFile& ini, const CString& iniFolder, CStrArray& complaints);
    /// Takes what the registry has. False when it has nothing, as at the first run.
    bool Load(CStrArray& complaints);
    /// False when the registry cannot be written.
    bool Save();

private:
    bool Take(gen::CProperty& setting, CString text);
    bool LoadOne(const CRegistry::CKey& key, gen::CProperty& setting, CStrArray& complaints);
};
