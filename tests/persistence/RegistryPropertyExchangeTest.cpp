// RegistryPropertyExchangeTest.cpp: properties of every type, written, read back and read from foreign data.
#include <kelgen/persistence/RegistryPropertyExchange.h>

#include "platform/registry/RegistryFixture.h"
#include "property/Recorder.h"
#include "support/Rows.h"

using namespace gen;
using namespace kelgen::test;

namespace {

class RegistryPropertyExchange : public testing::Test
{
protected:
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

struct Exchanged
{
    const char* name;
    EPropertyType type;
    const char* value;  // stored in the property before writing
    std::optional<std::string> written;
    const char* foreign;  // text in the key before loading
    const char* loaded;   // the property's text after it
};

class RegistryPropertyExchangeType : public RegistryPropertyExchange, public testing::WithParamInterface<Exchanged>
{};

}  // namespace

TEST_P(RegistryPropertyExchangeType, IsWrittenAndLoadedAsText)
{
    const Exchanged& row = GetParam();
    CProperty& property = Add("value", row.type, row.value);
    exchange.Write(property);
    EXPECT_EQ(row.written, GetText(scratch, "value"));
    SetText(scratch, "value", row.foreign);
    exchange.Load(property);
    EXPECT_STREQ(row.loaded, property.GetValue().GetValueString());
    EXPECT_EQ(row.type, property.GetValue().GetType());
}

INSTANTIATE_TEST_SUITE_P(, RegistryPropertyExchangeType, testing::Values(
    Exchanged{"Integer", eptInteger, "-5", "-5", " 42x", "42"},
    Exchanged{"UnsignedInteger", eptUnsignedInteger, "-1", "4294967295", "4294967295", "4294967295"},
    Exchanged{"Short", eptShort, "-5", "-5", "40000", "-25536"},
    Exchanged{"UnsignedShort", eptUnsignedShort, "65535", "65535", "70000", "4464"},
    Exchanged{"Text", eptString, " a=b ", " a=b ", "", ""},
    Exchanged{"Boolean", eptBool, "2", "1", "2", "1"},
    Exchanged{"BooleanOfLetters", eptBool, "0", "0", "yes", "0"},
    Exchanged{"None", eptNone, "5", std::nullopt, "5", ""},
    Exchanged{"Undefined", eptUndefined, "5", std::nullopt, "5", ""},
    Exchanged{"Unknown", EPropertyType(8), "5", std::nullopt, "5", ""}), RowName);

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
    EXPECT_EQ((Log{"set:b=7", "set:b=7", "set:none=", "set:a=text", "set:a=text",
                   "set:b=0", "set:b=0", "set:none=", "set:a=", "set:a="}), log) << "what the key does not hold as text is reset";
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
