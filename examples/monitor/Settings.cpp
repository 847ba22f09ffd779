// Settings.cpp: defaults, INI file and registry.
#include "Settings.h"

#include "FolderMonitor.h"
#include "Texts.h"

#include <kelgen/persistence/RegistryPropertyExchange.h>

namespace {

// A position that no screen has: the system chooses.
constexpr int kNoPosition = -32768;
constexpr int kMostComplaints = 5;

struct Definition
{
    CSettings::EId id;
    const char* name;
    gen::EPropertyType type;
    const char* text;
    int least;
    int most;
};

constexpr Definition kDefinitions[] = {
    {CSettings::idFolder, "Folder", gen::eptString, ".", 0, 0},
    {CSettings::idSubfolders, "Subfolders", gen::eptBool, "0", 0, 1},
    {CSettings::idMostFiles, "MostFiles", gen::eptInteger, "2000", 1, CFolderMonitor::mostFiles},
    {CSettings::idLanguage, "Language", gen::eptInteger, "0", texts::languageEnglish, texts::languageGerman},
    {CSettings::idLeft, "Left", gen::eptInteger, "-32768", kNoPosition, 32767},
    {CSettings::idTop, "Top", gen::eptInteger, "-32768", kNoPosition, 32767},
    {CSettings::idWidth, "Width", gen::eptInteger, "760", 200, 32767},
    {CSettings::idHeight, "Height", gen::eptInteger, "360", 120, 32767},
};

const Definition& DefinitionOf(const gen::CProperty& setting)
{
    return kDefinitions[setting.GetId()];
}

bool IsNumber(const CString& text)
{
    const gen::CPropertyValue number(gen::CPropertyValue(text).GetValueInteger());
    return number.GetValueString() == text;
}

/// "yes" and "no" as 1 and 0, a language's name as its number.
CString NumberText(const gen::CProperty& setting, const CString& text)
{
    int number = 0;
    if (setting.GetId() == CSettings::idLanguage && texts::Languages().MapAt(text, number))
        return gen::CPropertyValue(number).GetValueString();
    if (setting.GetValue().GetType() != gen::eptBool)
        return text;
    if (text.CompareNoCase("yes") == 0)
        return "1";
    return text.CompareNoCase("no") == 0 ? CString("0") : text;
}

void Complain(CStrArray& complaints, const CString& text)
{
    if (complaints.GetSize() < kMostComplaints)
        complaints.Add(text);
}

}  // namespace

CSettings::CSettings()
{
    for (const Definition& definition : kDefinitions) {
        gen::CProperty setting(definition.id, definition.name, definition.type);
        setting.GetValue().SetValueString(definition.text);
        AddProperty(setting);  // a copy
    }
}

CString CSettings::GetText(EId id)
{
    return (*this)[id]->GetValue().GetValueString();
}

int CSettings::GetInteger(EId id)
{
    return (*this)[id]->GetValue().GetValueInteger();
}

void CSettings::Change(EId id, const gen::CPropertyValue& value)
{
    gen::CPropertyValue& present = (*this)[id]->GetValue();
    if (!(present == value))
        present.SetValueString(value.GetValueString());
}

/// Stores the text if the setting can have it.
bool CSettings::Take(gen::CProperty& setting, CString text)
{
    const Definition& definition = DefinitionOf(setting);
    if (definition.type != gen::eptString) {
        text = NumberText(setting, text);
        const int number = gen::CPropertyValue(text).GetValueInteger();
        if (!IsNumber(text) || number < definition.least || number > definition.most)
            return false;
    } else if (text.IsEmpty()) {
        return false;
    }
    setting.GetValue().SetValueString(text);
    return true;
}

void CSettings::ReadIni(const _kelgen::CIniFile& ini, const CString& iniFolder, CStrArray& complaints)
{
    const _kelgen::CIniSection* const section = ini.FindSection(iniSection);
    if (!section) {
        Complain(complaints, CString("the INI file has no section [") + iniSection + "]");
        return;
    }
    for (int i = 0; i < section->GetPropertiesCount(); ++i) {
        // Blanks belong to names and values, and ";" begins no comment: that is the host's matter.
        const CString name = section->GetPropertyAt(i)->GetName().Trim();
        CString text = section->GetPropertyAt(i)->GetValue().Trim();
        gen::CProperty* const setting = (*this)[name];
        if (name.Left(1) == ";")
            continue;
        if (setting && setting->GetId() == idFolder && !text.IsEmpty() && text[0] != '/' && text[0] != '\\' && text.Find(':') < 0)
            text = FullPath(iniFolder + "\\" + text);
        if (!setting)
            Complain(complaints, "the INI file has an unknown setting " + name);
        else if (!Take(*setting, text))
            Complain(complaints, "the INI file's " + name + " cannot be \"" + text + "\"");
    }
}

bool CSettings::Load(CStrArray& complaints)
{
    const CRegistry::CKey key(HKEY_CURRENT_USER, registryKey);
    if (!key.GetHandle())
        return false;
    bool isAny = false;
    for (int i = 0; i < GetPropertyCount(); ++i)
        isAny |= LoadOne(key, PropertyAt(i), complaints);
    return isAny;
}

/// An exchange's Load would reset what the registry does not have, or not as a text.
bool CSettings::LoadOne(const CRegistry::CKey& key, gen::CProperty& setting, CStrArray& complaints)
{
    const CString name = setting.GetName();
    CString text;
    if (!key.QueryValue(name, text)) {
        DWORD type = 0;
        if (::RegQueryValueExA(key.GetHandle(), name, nullptr, &type, nullptr, nullptr) == ERROR_SUCCESS)
            Complain(complaints, "the registry's " + name + " is no text");
        return false;
    }
    if (Take(setting, text))
        return true;
    Complain(complaints, "the registry's " + name + " cannot be \"" + text + "\"");
    return false;
}

bool CSettings::Save()
{
    CRegistryPropertyExchange exchange;
    exchange.propertySet = this;
    if (!exchange.key.CreateKey(HKEY_CURRENT_USER, registryKey))
        return false;
    exchange.Write();
    CString written;
    return exchange.key.QueryValue("Folder", written) && written == GetText(idFolder);
}
