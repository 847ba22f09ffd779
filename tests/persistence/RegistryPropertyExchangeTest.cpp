// RegistryPropertyExchangeTest.cpp: properties of every type, written, read back and read from foreign data.
#include <kelgen/persistence/RegistryPropertyExchange.h>

#include "platform/registry/RegistryFixture.h"
#include "property/Recorder.h"
#include "support/Rows.h"

#include <optional>

using namespace gen;
using namespace kelgen::test;

namespace {

struct RegistryPropertyExchange : testing::Test
{
    RegistryPropertyExchange()
    {
        EXPECT_TRUE(exchange.key.OpenKey(HKEY_CURRENT_USER, scratch.Path().c_str()));
        exchange.propertySet = &set;
    }

    CProperty& Add(const char* name, EPropertyType type, const char* text)
    {
        CProperty property(set.GetPropertyCount(), name, type);
        property.GetValue().SetValueString(text);
        set.AddProperty(property);
        return set.PropertyAt(set.GetPropertyCount() - 1);
    }

    ScratchKey scratch;
    CPropertySet set;
    CRegistryPropertyExchange exchange;
};

}  // namespace

TEST_F(RegistryPropertyExchange, EveryTypeIsWrittenAndLoadedAsText)
{
    struct Case
    {
        EPropertyType type;
        const char* value;
        std::optional<std::string> written;
        const char* foreign;
        const char* loaded;
    };
    for (const Case& row : std::vector<Case>{
             {eptInteger, "-5", "-5", " 42x", "42"},
             {eptUnsignedInteger, "-1", "4294967295", "4294967295", "4294967295"},
             {eptShort, "-5", "-5", "40000", "-25536"},
             {eptUnsignedShort, "65535", "65535", "70000", "4464"},
             {eptString, " a=b ", " a=b ", "", ""},
             {eptBool, "2", "1", "2", "1"},
             {eptBool, "0", "0", "yes", "0"},
             {eptNone, "5", std::nullopt, "5", ""},
             {eptUndefined, "5", std::nullopt, "5", ""},
             {EPropertyType(8), "5", std::nullopt, "5", ""},
         }) {
        const std::string name = "type " + std::to_string(row.type) + " " + row.value;
        SCOPED_TRACE(name);
        CProperty& property = Add(name.c_str(), row.type, row.value);
        exchange.Write(property);
        EXPECT_EQ(row.written, GetText(scratch, name.c_str()));
        SetText(scratch, name.c_str(), row.foreign);
        exchange.Load(property);
        EXPECT_STREQ(row.loaded, property.GetValue().GetValueString());
        EXPECT_EQ(row.type, property.GetValue().GetType());
    }
}

TEST_F(RegistryPropertyExchange, WholeSetsComeBackInOrderAndReportTwiceEach)
{
    Add("b", eptInteger, "7");
    Add("none", eptNone, "");
    Add("a", eptString, "text");
    exchange.Write();
    CPropertySet loaded(set);
    loaded.Set("b", 0);
    loaded.Set("a", "");
    Log log;
    Recorder recorder("set", log);
    loaded.AddListener(&recorder);
    CRegistryPropertyExchange copy(exchange);
    copy.propertySet = &loaded;
    copy.Load();
    EXPECT_TRUE(loaded == set);

    RegSetValueExA(scratch, "b", 0, REG_DWORD, Bytes("1111"), 4);
    RegDeleteValueA(scratch, "a");
    copy.Load();
    EXPECT_EQ((Log{"set:b=7", "set:b=7", "set:none=", "set:a=text", "set:a=text", "set:b=0", "set:b=0", "set:none=", "set:a=", "set:a="}),
              log)
        << "what the key does not hold as text is reset";
}

TEST_F(RegistryPropertyExchange, TryLoadLeavesTheSetAloneWithoutAKey)
{
    Add("number", eptInteger, "7");
    Add("missing", eptString, "text");
    SetText(scratch, "number", "9");
    CRegistryPropertyExchange closed(exchange);
    closed.key = CRegistry::CKey();
    EXPECT_FALSE(closed.TryLoad());
    CRegistry::CKey other;
    ASSERT_TRUE(other.OpenKey(HKEY_CURRENT_USER, scratch.Path().c_str()));
    closed.key = other;
    other.CloseKey();
    EXPECT_FALSE(closed.TryLoad()) << "closed behind its back";
    EXPECT_EQ(7, set["number"]->GetValue().GetValueInteger());
    EXPECT_STREQ("text", set["missing"]->GetValue().GetValueString());

    EXPECT_TRUE(exchange.TryLoad());
    EXPECT_EQ(9, set["number"]->GetValue().GetValueInteger());
    EXPECT_STREQ("", set["missing"]->GetValue().GetValueString()) << "a missing value is reset";
    closed.Load();
    EXPECT_EQ(0, set["number"]->GetValue().GetValueInteger()) << "Load resets all";
}

TEST_F(RegistryPropertyExchange, ListenersMayReplaceWhatIsLoaded)
{
    CPropertySet other;
    for (const char* name : {"a", "b", "c"}) {
        CProperty property(1, name, eptInteger);
        other.AddProperty(property);
        SetText(scratch, name, "5");
    }
    std::optional<CPropertySet> loaded;
    struct Row
    {
        const char* name;
        std::function<void()> act;
        Log expected;
    };
    const Row rows[] = {
        {"the properties", [&] { *loaded = other; }, {"x:a=5", "x:b=5", "x:b=5", "x:c=5", "x:c=5"}},
        {"by fewer", [&] { *loaded = CPropertySet(); }, {"x:a=5"}},
        {"the set", [&] { exchange.propertySet = nullptr; }, {"x:a=5", "x:a=5"}},
        {"the set's life", [&] { loaded.reset(); }, {"x:a=5"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Log log;
        Recorder recorder("x", log);
        loaded.emplace(other);
        loaded->AddListener(&recorder);
        exchange.propertySet = &*loaded;
        recorder.react = [&](CPropertySet&, CProperty&) {
            recorder.react = nullptr;
            row.act();
        };
        exchange.Load();
        EXPECT_EQ(row.expected, log);
    }
}

TEST_F(RegistryPropertyExchange, SuppressedOrWithoutASetItDoesNothing)
{
    CProperty& property = Add("value", eptInteger, "5");
    exchange.suppressed = 1;
    exchange.Write();
    exchange.Write(property);
    exchange.Load();
    exchange.Load(property);
    EXPECT_EQ(std::nullopt, GetText(scratch, "value"));
    EXPECT_EQ(5, property.GetValue().GetValueInteger());

    exchange.StrWrite(property);
    EXPECT_EQ("5", GetText(scratch, "value")) << "the unconditional forms still work";
    RegDeleteValueA(scratch, "value");
    exchange.StrLoad(property);
    EXPECT_EQ(0, property.GetValue().GetValueInteger());

    exchange.suppressed = 0;
    exchange.propertySet = nullptr;
    exchange.Write();
    exchange.Load();
    EXPECT_EQ(std::nullopt, GetText(scratch, "value"));
}
