// WStrArrayProfileTest.cpp: lists of 16-bit strings in the application's profile.
#include <kelgen/text/WStrArray.h>

#include <kelgen/framework/program/WinApp.h>

#include "support/Scratch.h"
#include "text/Units.h"

#include <cstring>

using namespace kelgen::test;

namespace {

/// An application whose profile lies in the registry or in a file, and is gone at the end.
struct ProfileApp : CWinApp
{
    explicit ProfileApp(bool inRegistry) : CWinApp("Lists")
    {
        if (inRegistry)
            SetRegistryKey("Kelgen Text Test");
        else
            m_pszProfileName = _strdup(ScratchFile("lists.ini").c_str());
    }

    ~ProfileApp() override { DelRegTree(HKEY_CURRENT_USER, "Software\\Kelgen Text Test"); }
};

CWStr Joined(const CWStrArray& array)
{
    CWStr text;
    array.GetFormatString(text, u"|"_w);
    return text;
}

class WStrArrayProfile : public testing::TestWithParam<bool>
{};

}  // namespace

TEST_P(WStrArrayProfile, StaleValuesStayAndTheFirstMissingOneEndsTheList)
{
    ProfileApp app(GetParam());
    CWStrArray array;
    EXPECT_EQ(0, array.AddFromRegistry("Section", "Files"));

    array.AddTokens(u"one|two\xE9|three"_w, u"|"_w, false);
    array.WriteToRegistry("Section", "Files");
    EXPECT_EQ("one", app.GetProfileString("Section", "Files.0"));
    EXPECT_EQ("two\x82", app.GetProfileString("Section", "Files.1")) << "in the OEM page";

    array.RemoveAll();
    array.Add(u"1"_w);
    array.Add(u"2"_w);
    array.WriteToRegistry("Section", "Files");
    EXPECT_EQ(3, array.AddFromRegistry("Section", "Files"));
    EXPECT_EQ(u"1|2|1|2|three", Units(Joined(array))) << "the third value is the longer list's";

    array.RemoveAll();
    array.AddTokens(u"x||y"_w, u"|"_w, true);
    array.WriteToRegistry("Section", "100%s");
    EXPECT_EQ("y", app.GetProfileString("Section", "100%s.2"));
    array.RemoveAll();
    EXPECT_EQ(1, array.AddFromRegistry("Section", "100%s")) << "an empty value ends the list";
    EXPECT_EQ(0, array.AddFromRegistry("Other", "Files"));
    EXPECT_EQ(u"x", Units(Joined(array)));
}

INSTANTIATE_TEST_SUITE_P(, WStrArrayProfile, testing::Bool(),
                         [](const auto& place) { return std::string(place.param ? "InRegistry" : "InFile"); });

TEST(WStrArrayWithoutApplication, KeepsNothing)
{
    CWStrArray array;
    array.Add(u"text"_w);
    array.WriteToRegistry("Section", "Files");
    EXPECT_EQ(0, array.AddFromRegistry("Section", "Files"));
    EXPECT_EQ(1, array.GetSize());
}
