// RegistryPropertyExchangeTest.cpp: properties of every type, written, read back and read from foreign data.
#include <kelgen/persistence/RegistryPropertyExchange.h>

#include "persistence/TestKey.h"
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
        EXPECT_TRUE(exchange.key.OpenKey(HKEY_CURRENT_USER, test.GetName().c_str()));
        exchange.propertySet = &set;
    }

    CProperty& Add(const char* name, EPropertyType type, const char* text)
    {
        CProperty property(set.GetPropertyCount(), name, type);
        property.GetValue().SetValueString(text);
        set.AddProperty(property);
        return *set[name];
    }

    TestKey test;
    CPropertySet set;
    CRegistryPropertyExchange exchange;
};

}  // namespace

struct Exchanged
{
    const char* name;
    EPropertyType type;
    const char* value;    // stored in the property before writing
    const char* written;  // null: nothing
    const char* foreign;  // text in the key before loading
    const char* loaded;   // the property's text after it
};

class RegistryPropertyExchangeType : public testing::TestWithParam<Exchanged>
{};

TEST_P(RegistryPropertyExchangeType, IsWrittenAndLoadedAsText)
{
    const Exchanged& row = GetParam();
    const TestKey test;
    CRegistryPropertyExchange exchange;
    ASSERT_TRUE(exchange.key.OpenKey(HKEY_CURRENT_USER, test.GetName().c_str()));
    CProperty property(1, "value", row.type);
    property.GetValue().SetValueString(row.value);

    exchange.Write(property);
    CString text;
    EXPECT_EQ(row.written != nullptr, exchange.key.QueryValue("value", text));
    EXPECT_STREQ(row.written != nullptr ? row.written : "", text);

    exchange.key.SetValue("value", row.foreign);
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
    Exchanged{"BooleanOfTwo", eptBool, "2", "1", "2", "1"},
    Exchanged{"BooleanOfZero", eptBool, "0", "0", "-1", "1"},
    Exchanged{"BooleanOfLetters", eptBool, "1", "1", "yes", "0"},
    Exchanged{"None", eptNone, "5", nullptr, "5", ""},
    Exchanged{"Undefined", eptUndefined, "5", nullptr, "5", ""},
    Exchanged{"Unknown", EPropertyType(8), "5", nullptr, "5", ""}), RowName);

TEST_F(RegistryPropertyExchange, LoadResetsWhatTheKeyDoesNotHoldAsText)
{
    CProperty& number = Add("number", eptInteger, "5");
    CProperty& text = Add("text", eptString, "five");
    CProperty& flag = Add("flag", eptBool, "1");
    test.Put("number", REG_DWORD, "\1\1\1\1");
    test.Put("text", REG_EXPAND_SZ, "x");
    exchange.Load();
    EXPECT_EQ(0, number.GetValue().GetValueInteger());
    EXPECT_STREQ("", text.GetValue().GetValueString());
    EXPECT_EQ(0, flag.GetValue().GetValueInteger());

    exchange.key.CloseKey();
    number.GetValue().SetValueInteger(5);
    exchange.Write();
    exchange.Load();
    EXPECT_EQ(0, number.GetValue().GetValueInteger()) << "a closed key holds nothing";
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
    EXPECT_EQ((Log{"set:b=7", "set:b=7", "set:none=", "set:a=text", "set:a=text"}), log);
}

TEST_F(RegistryPropertyExchange, SuppressedItDoesNothing)
{
    CProperty& property = Add("value", eptInteger, "5");
    exchange.suppressed = 1;
    exchange.Write();
    exchange.Write(property);
    exchange.Load();
    exchange.Load(property);
    CString text;
    EXPECT_FALSE(exchange.key.QueryValue("value", text));
    EXPECT_EQ(5, property.GetValue().GetValueInteger());

    exchange.StrWrite(property);
    EXPECT_TRUE(exchange.key.QueryValue("value", text)) << "the unconditional forms still work";
    exchange.key.DeleteValue("value");
    exchange.StrLoad(property);
    EXPECT_EQ(0, property.GetValue().GetValueInteger());
}

TEST_F(RegistryPropertyExchange, WithoutASetItDoesNothing)
{
    exchange.propertySet = nullptr;
    exchange.Write();
    exchange.Load();
}

TEST_F(RegistryPropertyExchange, PropertiesOfOneNameShareTheirValue)
{
    Add("same", eptInteger, "1");
    CProperty second(2, "SAME", eptInteger);
    second.GetValue().SetValueInteger(2);
    set.AddProperty(second);
    exchange.Write();
    exchange.Load();
    EXPECT_EQ(2, set["same"]->GetValue().GetValueInteger());
}
