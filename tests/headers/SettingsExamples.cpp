// SettingsExamples.cpp: the examples of the headers of properties, persistence, the system, and the framework's files.
#include <kelgen/kelgen.h>

#include "Headers.h"
#include "support/Scratch.h"

using namespace kelgen::test;

namespace {

void Write(const char* path, const char* text)
{
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    file.Write(text, static_cast<UINT>(std::strlen(text)));
}

std::string lastAlarm;

/// A key of the test's own, where the examples have one.
class ExampleKey
{
public:
    ExampleKey()
    {
        m_key.CreateKey(HKEY_CURRENT_USER, "Software\\Example");
        m_key.SetValue("Title", "kept");
    }
    ~ExampleKey() { m_key.DeleteKey(); }

private:
    CRegistry::CKey m_key;
};

}  // namespace

TEST(HeaderExamples, OfProperties)
{
    struct : gen::CPropertySetListener
    {
        int calls = 0;
        void OnPropertyValueChange(gen::CPropertySet*, gen::CProperty*) override { ++calls; }
    } view;
    // quote kelgen/property/PropertySet.h
    gen::CPropertySet settings;
    gen::CProperty width(1, "width", gen::eptInteger);
    settings.AddProperty(width);  // the set holds a copy
    settings.AddListener(&view);
    settings.Set("width", 640);           // view is told once
    settings["width"]->GetValue() = 800;  // told twice: see CPropertyValue
    // end
    EXPECT_EQ(3, view.calls);
    settings.RemoveListener(&view);
}

TEST(HeaderExamples, OfValues)
{
    // quote kelgen/property/PropertyValue.h
    gen::CPropertyValue width("640");               // type 6
    width.GetValueInteger();                        // 640
    width.SetValueInteger(800);                     // still type 6: the text "800"
    bool same = width == gen::CPropertyValue(800);  // true
    // end
    EXPECT_EQ(6, width.GetType());
    EXPECT_STREQ("800", width.GetValueString());
    EXPECT_TRUE(same);
    EXPECT_EQ(640, gen::CPropertyValue("640").GetValueInteger());
}

TEST(HeaderExamples, OfTriggers)
{
    constexpr int kConnected = 1;
    gen::CPropertySet settings;
    settings.AddProperty(gen::CProperty(kConnected, "connected", gen::eptBool));
    settings.Set(kConnected, true);
    struct : gen::CPropertyValueTriggerCallback
    {
        int matches = 0;
        void OnPropertyValueTrigger(const CBaseId&, bool match) override { matches += match ? 1 : 0; }
    } statusBar;
    // quote kelgen/property/PropertyValueTrigger.h
    gen::CPropertyValueTrigger offline;
    offline.AddCallback(&statusBar);
    offline.SetSimpleCondition(&settings, kConnected, false);
    settings.Set(kConnected, false);  // statusBar.OnPropertyValueTrigger(offline.GetId(), true)
    // end
    EXPECT_EQ(1, statusBar.matches);
    offline.RemoveCallback(&statusBar);
}

TEST(HeaderExamples, OfAnObjectsIntegers)
{
    gen::CAppIntegerMap map;
    struct Owner : CBaseComparable
    {
        int Compare(const CBaseComparable&) const override { return 0; }
        int WidthOf(gen::CAppIntegerMap& map)
        {
            // quote kelgen/property/AppIntegerMap.h
            map.Set(this, 1, 42);
            int width = 0;
            map.Get(this, 1, width);  // true; 42
            // end
            return width;
        }
    } owner;
    EXPECT_EQ(42, owner.WidthOf(map));
}

TEST(HeaderExamples, OfTheRegistry)
{
    const ExampleKey kept;
    std::string found;
    // quote kelgen/persistence/Registry.h
    CRegistry::CKey key(HKEY_CURRENT_USER, "Software\\Example");
    CString title;
    if (key.QueryValue("Title", title))
        found = title.GetString();
    // end
    EXPECT_EQ("kept", found);
}

TEST(HeaderExamples, OfSetsInTheRegistry)
{
    const ExampleKey kept;
    gen::CPropertySet settings;
    settings.AddProperty(gen::CProperty(1, "Title", gen::eptString));
    // quote kelgen/persistence/RegistryPropertyExchange.h
    CRegistryPropertyExchange exchange;
    exchange.propertySet = &settings;
    if (!exchange.key.OpenKey(HKEY_CURRENT_USER, "Software\\Example") || !exchange.TryLoad())
        FAIL();  // nothing was loaded
    // end
    EXPECT_STREQ("kept", settings["Title"]->GetValue().GetValueString());
}

TEST(HeaderExamples, OfFilesInThePersistence)
{
    char record[8] = "1234567";
    // quote kelgen/persistence/BufferedFile.h
    CBufferedFile file("C:\\data.bin", CFile::modeCreate | CFile::modeWrite, 4096, 65536);
    file.Write(record, sizeof record);
    file.Close();
    // end
    EXPECT_TRUE(::DeleteFileA("C:\\data.bin"));
}

TEST(HeaderExamples, OfChecksums)
{
    unsigned char data[] = "123456789";
    const int size = 9;
    // quote kelgen/persistence/CRC.h
    CCRCFast crc(0x04C11DB7);
    crc.PutBytes(data, size);
    DWORD sum = crc.Done();  // 0x89A1897F for the nine bytes "123456789"
    // end
    EXPECT_EQ(0x89A1897Fu, sum);
}

TEST(HeaderExamples, OfIniFiles)
{
    const std::string before = std::filesystem::current_path().string();
    std::filesystem::current_path(ScratchFolder());
    Write("settings.ini", "[Main]\nTitle=x\n");
    CString title;
    // quote kelgen/persistence/IniFile.h
    _kelgen::CIniFile ini;
    if (ini.LoadFile("settings.ini"))
        title = ini.GetPropertyValue("Main", "Title");
    // end
    EXPECT_STREQ("x", title);
    std::filesystem::current_path(before);
}

TEST(HeaderExamples, OfFilesInMemory)
{
    const char data[] = "12345";
    const UINT size = 5;
    // quote kelgen/persistence/MemoryFile.h
    CMemoryFile file;
    file.Write(data, size);
    file.SeekToBegin();
    // end
    EXPECT_EQ(5u, file.GetLength());
    EXPECT_EQ(0u, file.GetPosition());
}

TEST(HeaderExamples, OfTheFrameworksFilesInMemory)
{
    // quote kelgen/framework/files/MemFile.h
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    // end
    archive << 7;
    archive.Close();
    EXPECT_EQ(4u, file.GetLength());
}

TEST(HeaderExamples, OfArchives)
{
    const int number = 7;
    const CString name = "seven";
    // quote kelgen/framework/files/Archive.h
    CFile file("C:\\state.bin", CFile::modeCreate | CFile::modeWrite);
    CArchive archive(&file, CArchive::store);
    archive << number << name;
    archive.Close();
    // end
    EXPECT_EQ(10u, file.GetLength());
    file.Close();
    ::DeleteFileA("C:\\state.bin");
}

TEST(HeaderExamples, OfFiles)
{
    Write("C:\\data.bin", "0123456789ABCDEF");
    std::string parsed;
    const auto Parse = [&parsed](const BYTE* header) { parsed.assign(reinterpret_cast<const char*>(header), 16); };
    {
        // quote kelgen/framework/files/File.h
        CFile file("C:\\data.bin", CFile::modeRead | CFile::shareDenyWrite);
        BYTE header[16];
        if (file.Read(header, sizeof header) == sizeof header)
            Parse(header);
        // end
    }
    EXPECT_EQ("0123456789ABCDEF", parsed);
    ::DeleteFileA("C:\\data.bin");
}

TEST(HeaderExamples, OfSearches)
{
    ::CreateDirectoryA("C:\\logs", nullptr);
    Write("C:\\logs\\a.txt", "a");
    CStringArray names;
    // quote kelgen/framework/files/FileFind.h
    CFileFind find;
    for (BOOL more = find.FindFile("C:\\logs\\*.txt"); more;) {
        more = find.FindNextFile();
        names.Add(find.GetFileName());
    }
    // end
    ASSERT_EQ(1, names.GetSize());
    EXPECT_STREQ("a.txt", names[0]);
    find.Close();
    ::DeleteFileA("C:\\logs\\a.txt");
    ::RemoveDirectoryA("C:\\logs");
}

TEST(HeaderExamples, OfLines)
{
    Write("C:\\names.txt", "one\r\ntwo\r\n");
    CStringArray names;
    {
        // quote kelgen/framework/files/StdioFile.h
        CStdioFile file("C:\\names.txt", CFile::modeRead | CFile::shareDenyNone);
        CString line;
        while (file.ReadString(line))
            names.Add(line);
        // end
    }
    ASSERT_EQ(2, names.GetSize());
    EXPECT_STREQ("two", names[1]);
    ::DeleteFileA("C:\\names.txt");
}

TEST(HeaderExamples, OfWatchers)
{
    // quote kelgen/system/FileChangeEvent.h
    class CReload : public CFileChangeEvent
    {
    public:
        ~CReload() override { EndWatch(); }

    protected:
        void OnFileAlarm(EFileAlarm alarm, const char* path) override { lastAlarm = path + std::to_string(alarm); }
    };
    CReload reload;
    reload.AddFile("C:\\Data\\rates.txt");
    reload.StartWatch();
    // end
    EXPECT_TRUE(reload.IsWatching());
}

TEST(HeaderExamples, OfResources)
{
    std::string loaded;
    // quote kelgen/system/Resource.h
    CMemoryStorage page(nullptr);
    if (CResource::LoadResource(page, IDR_PAGE, "PAGE"))
        loaded.assign(reinterpret_cast<const char*>(page.GetAllocation()), page.GetStorageSize());
    // end
    EXPECT_EQ("page", loaded);
}

TEST(HeaderExamples, OfServices)
{
    // quote kelgen/system/ServiceController.h
    CServiceController spooler;
    if (spooler.OpenServiceA("Spooler") && spooler.GetServiceStatus() == CServiceController::serviceStopped)
        spooler.StartServiceA(5000);
    // end
    EXPECT_NE(CServiceController::serviceOpened, spooler.GetServiceStatus());
}

TEST(HeaderExamples, OfTheLoadedVersion)
{
    std::string warning;
    const auto Warn = [&warning](const char* text) { warning = text; };
    // quote kelgen/Version.h
    if (kelgen::Version() < 102)
        Warn("kelgen 0.1.2 mends a fault that matters here");
    // end
    EXPECT_EQ(KELGEN_VERSION < 102, !warning.empty());
}

TEST(HeaderExamples, OfVersions)
{
    std::string shown;
    const auto Show = [&shown](const CString& name, const CString& version) { shown = (name + version).GetString(); };
    // quote kelgen/system/VersionInfo.h
    CVersionInfo version;
    if (version.Load("C:\\Program Files\\Example\\example.exe"))
        Show(version.GetProductName(), version.GetFileVersionAsString());
    // end
    EXPECT_EQ("", shown) << "there is no such program";
    // quote kelgen/system/VersionInfo.h#2
    if (COSVersionInfo::Get().IsWinXPOrGreater())
        shown = "XP";
    // end
    EXPECT_EQ("XP", shown);
}
