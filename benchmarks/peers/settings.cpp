// settings.cpp: the peers' INI files and settings stores.
#include "../SettingsOperations.h"

#include <INIReader.h>
#include <gio/gio.h>
#include <ini.h>
#include <wx/fileconf.h>
#include <wx/wfstream.h>

#include <QSettings>

using namespace bench;

namespace {

void ParseInih(State& st)  // parses only: the handler counts and keeps nothing
{
    for (auto _ : st) {
        int n = 0;
        ini_parse(
            iniFile().c_str(), [](void* p, const char*, const char*, const char*) { return ++*static_cast<int*>(p); }, &n);
        require(n == 10000, "inih");
    }
}

void ParseIniReader(State& st)
{
    for (auto _ : st) {
        INIReader r(iniFile());
        require(r.ParseError() == 0, "INIReader");
    }
}

void ParseQSettings(State& st)  // sections are parsed when first touched, so touch them all
{
    for (auto _ : st) {
        QSettings s(QString::fromStdString(iniFile()), QSettings::IniFormat);
        require(s.allKeys().size() == 10000, "QSettings");
    }
}

GKeyFile* loadKeyFile(const std::string& path)
{
    GKeyFile* k = g_key_file_new();
    require(g_key_file_load_from_file(k, path.c_str(), G_KEY_FILE_NONE, nullptr), "GKeyFile");
    return k;
}

void ParseGKeyFile(State& st)
{
    for (auto _ : st)
        g_key_file_free(loadKeyFile(iniFile()));
}

void ParseWx(State& st)
{
    for (auto _ : st) {
        wxFileInputStream in(iniFile());
        wxFileConfig c(in);
        require(c.GetNumberOfGroups() == 1000, "wxFileConfig");
    }
}

void LookupIniReader(State& st)
{
    INIReader r(iniFile());
    std::vector<std::pair<std::string, std::string>> ks;
    for (auto [s, k] : thousand())
        ks.emplace_back(section(s), key(k));
    for (auto _ : st)
        for (const auto& [s, k] : ks)
            require(!r.Get(s, k, "").empty(), "INIReader");
}

void LookupQSettings(State& st)
{
    QSettings settings(QString::fromStdString(iniFile()), QSettings::IniFormat);
    QStringList ks;
    for (auto [s, k] : thousand())
        ks << QString::fromStdString(section(s) + "/" + key(k));
    for (auto _ : st)
        for (const QString& k : ks)
            require(!settings.value(k).toString().isEmpty(), "QSettings");
}

void LookupGKeyFile(State& st)
{
    GKeyFile* f = loadKeyFile(iniFile());
    std::vector<std::pair<std::string, std::string>> ks;
    for (auto [s, k] : thousand())
        ks.emplace_back(section(s), key(k));
    for (auto _ : st)
        for (const auto& [s, k] : ks) {
            char* v = g_key_file_get_string(f, s.c_str(), k.c_str(), nullptr);
            require(v && *v, "GKeyFile");
            g_free(v);
        }
    g_key_file_free(f);
}

void LookupWx(State& st)
{
    wxFileInputStream in(iniFile());
    wxFileConfig c(in);
    std::vector<wxString> ks;
    for (auto [s, k] : thousand())
        ks.push_back("/" + section(s) + "/" + key(k));
    for (auto _ : st)
        for (const wxString& k : ks)
            require(!c.Read(k, wxString()).empty(), "wxFileConfig");
}

// ---- settings: 100 changed values, then to disk (50 numbers, 50 texts)

void WriteQSettings(State& st)
{
    QSettings s(QSettings::NativeFormat, QSettings::UserScope, "peers", "bench");
    QStringList ks;
    for (int i = 0; i < 100; ++i)
        ks << QString::fromStdString("Group" + std::to_string(i / 10) + "/" + key(i));
    int n = 0;
    for (auto _ : st) {
        for (int i = 0; i < 100; ++i)
            if (++n & 1)
                s.setValue(ks[i], n);
            else
                s.setValue(ks[i], QString::number(n));
        s.sync();
    }
    require(s.status() == QSettings::NoError, "QSettings");
}

void WriteGKeyFile(State& st)
{
    GKeyFile* f = g_key_file_new();
    const std::string path = scratch("keyfile.ini");
    std::vector<std::pair<std::string, std::string>> ks;
    for (int i = 0; i < 100; ++i)
        ks.emplace_back("Group" + std::to_string(i / 10), key(i));
    int n = 0;
    for (auto _ : st) {
        for (const auto& [s, k] : ks)
            if (++n & 1)
                g_key_file_set_integer(f, s.c_str(), k.c_str(), n);
            else
                g_key_file_set_string(f, s.c_str(), k.c_str(), std::to_string(n).c_str());
        require(g_key_file_save_to_file(f, path.c_str(), nullptr), "GKeyFile");
    }
    g_key_file_free(f);
}

void WriteWx(State& st)
{
    wxFileConfig c("bench", "peers", scratch("wx.ini"), wxString(), wxCONFIG_USE_LOCAL_FILE);
    std::vector<wxString> ks;
    for (int i = 0; i < 100; ++i)
        ks.push_back("/Group" + std::to_string(i / 10) + "/" + key(i));
    int n = 0;
    for (auto _ : st) {
        for (const wxString& k : ks)
            if (++n & 1)
                c.Write(k, n);
            else
                c.Write(k, wxString(std::to_string(n)));
        require(c.Flush(), "wxFileConfig");
    }
}

BENCHMARK(ParseInih)->Name("Settings/ParseIni10000/inih_no_store");
BENCHMARK(ParseIniReader)->Name("Settings/ParseIni10000/INIReader");
BENCHMARK(ParseQSettings)->Name("Settings/ParseIni10000/QSettings");
BENCHMARK(ParseGKeyFile)->Name("Settings/ParseIni10000/GKeyFile");
BENCHMARK(ParseWx)->Name("Settings/ParseIni10000/wxFileConfig");
BENCHMARK(LookupIniReader)->Name("Settings/Lookup1000/INIReader");
BENCHMARK(LookupQSettings)->Name("Settings/Lookup1000/QSettings");
BENCHMARK(LookupGKeyFile)->Name("Settings/Lookup1000/GKeyFile");
BENCHMARK(LookupWx)->Name("Settings/Lookup1000/wxFileConfig");
BENCHMARK(WriteQSettings)->Name("Settings/Write100Sync/QSettings")->UseRealTime();
BENCHMARK(WriteGKeyFile)->Name("Settings/Write100Sync/GKeyFile")->UseRealTime();
BENCHMARK(WriteWx)->Name("Settings/Write100Sync/wxFileConfig")->UseRealTime();

}  // namespace
