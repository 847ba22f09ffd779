// StoreTest.cpp: the registry, profiles and services, without memory.
#include "platform/registry/RegistryFixture.h"
#include "posix/faults/Flow.h"
#include "support/Scratch.h"
#include "support/system/Services.h"
#include "support/system/Watcher.h"

#include <kelgen/kelgen.h>

#include <gtest/gtest.h>

using namespace kelgen::test;

namespace {

Outcome StatusOutcome(LSTATUS status)
{
    return {status == ERROR_SUCCESS, static_cast<DWORD>(status)};
}

/// A watcher that counts its alarms.
class CountingWatcher : public CFileChangeEvent
{
public:
    ~CountingWatcher() override { EndWatch(); }

    std::atomic<int> alarms = 0;

protected:
    void OnFileAlarm(EFileAlarm, const char*) override { ++alarms; }
};

/// Its thread sees a change, or ends and says so.
void SeeAlarms(Failing failing)
{
    const FailingKind kind(failing);
    const std::string path = DrivePath(ScratchFile("watched"));
    std::unique_ptr<CountingWatcher> watcher;
    RunFlow({[&] {
                 watcher = std::make_unique<CountingWatcher>();
                 watcher->AddFile(path.c_str());
                 watcher->StartWatch();
                 return Outcome{Eventually([&] {
                                    Touch(path);
                                    return watcher->alarms > 0 || !watcher->IsWatching();
                                }),
                                WAIT_TIMEOUT};
             },
             [&](const Outcome&) { watcher.reset(); },
             {},
             true});
}

}  // namespace

KELGEN_FLOW(RegistryValues)
{
    const ScratchKey key;
    const std::string large(10000, 'x');
    for (const char* name : {"kept", "large"})
        SetText(key, name, "old");
    RunFlow(
        [&] {
            for (const auto& [name, text] : {std::pair<const char*, const char*>{"kept", "new"}, {"large", large.c_str()}})
                if (const LSTATUS status = RegSetValueExA(key, name, 0, REG_SZ, Bytes(text), static_cast<DWORD>(std::strlen(text) + 1));
                    status != ERROR_SUCCESS)
                    return StatusOutcome(status);
            char read[100];
            DWORD size = sizeof read;
            return StatusOutcome(RegQueryValueExA(key, "kept", nullptr, nullptr, reinterpret_cast<BYTE*>(read), &size));
        },
        [&] {
            char read[100] = "";
            DWORD size = sizeof read;
            EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "kept", nullptr, nullptr, reinterpret_cast<BYTE*>(read), &size));
            EXPECT_TRUE(read == std::string("old") || read == std::string("new")) << read;
            SetText(key, "kept", "old");
        });
}

KELGEN_FLOW(RegistryKeys)
{
    const ScratchKey key;
    MakeKey(key, "Always\\there", "text");
    RunFlow(
        [&] {
            HKEY made = nullptr;
            if (const LSTATUS status = RegCreateKeyExA(key, "One\\Two\\three", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &made, nullptr);
                status != ERROR_SUCCESS)
                return StatusOutcome(status);
            RegCloseKey(made);
            char name[100];
            DWORD size = sizeof name;
            if (const LSTATUS status = RegEnumKeyExA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr); status != ERROR_SUCCESS)
                return StatusOutcome(status);
            return StatusOutcome(RegDeleteTreeA(key, "One"));
        },
        [&] {
            RegDeleteTreeA(key, "One");
            DWORD subkeys = 0;
            EXPECT_EQ(ERROR_SUCCESS, RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                      nullptr, nullptr));
            EXPECT_EQ(1u, subkeys);
        });
}

KELGEN_FLOW(PropertyExchange)
{
    const ScratchKey key;
    gen::CPropertySet set;
    for (const char* name : {"first", "second"}) {
        gen::CProperty property(set.GetPropertyCount(), name, gen::eptString);
        property.GetValue().SetValueString("a text that is longer than most");
        set.AddProperty(property);
    }
    CRegistryPropertyExchange exchange;
    ASSERT_TRUE(exchange.key.OpenKey(HKEY_CURRENT_USER, key.Path().c_str()));
    exchange.propertySet = &set;
    RunFlow(
        [&] {
            exchange.Write();
            exchange.Load();
            return Outcome{true};
        },
        [&] {
            EXPECT_EQ(2, set.GetPropertyCount());
            set.PropertyAt(0).GetValue().SetValueString("a text that is longer than most");
        });
}

KELGEN_FLOW(Profiles)
{
    const std::string path = ScratchFile("settings.ini");
    RunFlow(
        [&] {
            if (!WritePrivateProfileStringA("Section", "name", "new", path.c_str()))
                return Outcome::Of(false);
            char text[100] = "untouched";
            GetPrivateProfileStringA("Section", "name", "default", text, sizeof text, path.c_str());
            EXPECT_LT(std::strlen(text), sizeof text);
            if (!WritePrivateProfileSectionA("Other", "a=1\0b=2\0", path.c_str()))
                return Outcome::Of(false);
            return Outcome::Of(WritePrivateProfileStringA("Section", "name", "other", path.c_str()) != FALSE);
        },
        [&] {
            const std::string bytes = ReadBytes(path);
            EXPECT_TRUE(bytes.find("=old") + bytes.find("=new") + bytes.find("=other") != std::string::npos * 3) << bytes;
            WriteBytes(path, "[Section]\r\nname=old\r\n");
        });
}

KELGEN_FLOW(InitializationFiles)
{
    const std::string path = ScratchFile("file.ini");
    WriteBytes(path, "[One]\nname=value\nother=of some more length\nplain\n[Two]\nname=2\n");
    RunFlow([&] {
        _kelgen::CIniFile ini;
        ini.LoadFile(path.c_str());
        return Outcome{ini.GetPropertyValue("Two", "name") == "2", GetLastError()};
    });
}

KELGEN_FLOW(ServiceRecords)
{
    RunFlow(
        [] {
            const SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
            if (!manager)
                return Outcome::Of(false);
            Outcome outcome = {true};
            const SC_HANDLE service =
                CreateServiceA(manager, "kelgen-faults", "shown", SERVICE_ALL_ACCESS, SERVICE_WIN32_OWN_PROCESS, SERVICE_DEMAND_START,
                               SERVICE_ERROR_NORMAL, "/bin/true", nullptr, nullptr, nullptr, nullptr, nullptr);
            outcome = Outcome::Of(service != nullptr);
            if (service) {
                SERVICE_STATUS status;
                outcome = Outcome::Of(QueryServiceStatus(service, &status) != FALSE);
                CloseServiceHandle(service);
            }
            CloseServiceHandle(manager);
            return outcome;
        },
        [] {
            const SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
            if (const SC_HANDLE service = OpenServiceA(manager, "kelgen-faults", SERVICE_ALL_ACCESS)) {
                DeleteService(service);
                CloseServiceHandle(service);
            }
            CloseServiceHandle(manager);
        });
}

KELGEN_FLOW(ServiceConfigurations)
{
    const InstalledService service("run");
    RunFlow(
        [&] {
            if (!ChangeServiceConfigA(service.handle, SERVICE_NO_CHANGE, SERVICE_DISABLED, SERVICE_NO_CHANGE, nullptr, nullptr, nullptr,
                                      nullptr, nullptr, nullptr, "another name"))
                return Outcome::Of(false);
            alignas(QUERY_SERVICE_CONFIGA) char bytes[4096];
            DWORD size = 0;
            auto* const configuration = reinterpret_cast<QUERY_SERVICE_CONFIGA*>(bytes);
            const BOOL isRead = QueryServiceConfigA(service.handle, configuration, sizeof bytes, &size);
            return Outcome::Of(isRead && configuration->dwStartType == SERVICE_DISABLED);
        },
        [&](const Outcome&) {
            EXPECT_TRUE(ChangeServiceConfigA(service.handle, SERVICE_NO_CHANGE, SERVICE_DEMAND_START, SERVICE_NO_CHANGE, nullptr, nullptr,
                                             nullptr, nullptr, nullptr, nullptr, "name"));
        });
}

KELGEN_FLOW(Watchers)
{
    const std::string path = DrivePath(ScratchFile("watched"));
    std::unique_ptr<RecordingWatcher> watcher;
    RunFlow({[&] {
                 watcher = std::make_unique<RecordingWatcher>();
                 watcher->AddFile(path.c_str());
                 watcher->StartWatch();
                 return Outcome{true};
             },
             [&](const Outcome&) { watcher.reset(); },
             {},
             true});
}

TEST(WithoutMemoryInWorkers, AlarmsOfWatchers)
{
    SeeAlarms(Failing::workersMemory);
}

TEST(WithFailingCallsInWorkers, AlarmsOfWatchers)
{
    SeeAlarms(Failing::workersCalls);
}
