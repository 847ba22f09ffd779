// ModuleStateTest.cpp: whose state a thread works in, and in which order modules are asked for resources.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/framework/program/ModuleState.h>

#include "support/framework/ResourceLibrary.h"

#include <thread>

namespace {

HINSTANCE Extension()
{
    return ExtensionState()->m_hCurrentInstanceHandle;
}

HINSTANCE Language()
{
    return LanguageState()->m_hCurrentInstanceHandle;
}

CString Loaded(UINT id)
{
    CString text("unchanged");
    text.LoadString(id);
    return text;
}

}  // namespace

TEST(ModuleState, ProgramAndLibrariesEachHaveTheirOwn)
{
    AFX_MODULE_STATE* const program = AfxGetAppModuleState();
    EXPECT_EQ(program, AfxGetModuleState());
    EXPECT_EQ(program, AfxGetStaticModuleState());
    EXPECT_EQ(GetModuleHandleA(nullptr), AfxGetInstanceHandle());
    EXPECT_NE(program, ExtensionState());
    EXPECT_NE(LanguageState(), ExtensionState());
    EXPECT_NE(Language(), Extension());
    EXPECT_TRUE(ExtensionState()->m_bDLL);

    {
        AFX_MANAGE_STATE(ExtensionState());
        EXPECT_EQ(Extension(), AfxGetInstanceHandle());
        {
            AFX_MANAGE_STATE(LanguageState());
            EXPECT_EQ(Language(), AfxGetResourceHandle());
            std::thread([&] { EXPECT_EQ(program, AfxGetModuleState()); }).join();
        }
        EXPECT_EQ(ExtensionState(), AfxGetModuleState());
    }
    EXPECT_EQ(program, AfxGetModuleState());
}

TEST(ModuleState, ResourcesAreFoundInTheOrderOfTheModules)
{
    const struct
    {
        const char* name;
        bool systemState, systemExtension;
        UINT id;
        const char* expected;
    } rows[] = {
        {"program first", false, false, 101, "shared, program"},
        {"program only", false, false, 100, "program"},
        {"extension", false, false, 200, "extension"},
        {"extension before language", false, false, 201, "extension or language"},
        {"language before system extension", false, true, 201, "extension or language, language"},
        {"system extension last", false, true, 200, "extension"},
        {"language", false, true, 300, "language"},
        {"extension before system state", true, false, 101, "shared, extension"},
        {"language before system state", true, true, 101, "shared, language"},
        {"system state", true, true, 100, "program"},
        {"no block", false, false, 4711, "unchanged"},
        {"no text in block", false, false, 105, "unchanged"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        AFX_MODULE_STATE state(FALSE, GetModuleHandleA(nullptr), row.systemState);
        AFX_MANAGE_STATE(&state);
        state.m_appLangDLL = Language();
        const CDynLinkLibrary withoutResources(Extension(), nullptr);
        AFX_EXTENSION_MODULE module = {};
        AfxInitExtensionModule(module, Extension());
        const CDynLinkLibrary library(module, row.systemExtension);
        EXPECT_STREQ(row.expected, Loaded(row.id));
        char text[9] = "x";
        const std::string cut = std::string(row.expected).substr(0, 8);
        if (cut != "unchange") {
            EXPECT_EQ(static_cast<int>(cut.size()), AfxLoadString(row.id, text, sizeof text));
            EXPECT_EQ(cut, text);
        }
    }

    AFX_MODULE_STATE state(FALSE, GetModuleHandleA(nullptr));
    AFX_MANAGE_STATE(&state);
    EXPECT_EQ(GetModuleHandleA(nullptr), AfxFindResourceHandle(MAKEINTRESOURCEA(7), RT_RCDATA)) << "nobody has it";
    const CDynLinkLibrary library(Extension(), Extension());
    EXPECT_EQ(Extension(), AfxFindResourceHandle(MAKEINTRESOURCEA(7), RT_RCDATA));
    AfxSetResourceHandle(Language());
    EXPECT_EQ("language", Loaded(300));
}

TEST(ModuleState, LibrariesAreListedLatestFirstAndLeaveTogether)
{
    AFX_MODULE_STATE state(FALSE, GetModuleHandleA(nullptr));
    AFX_MANAGE_STATE(&state);
    AFX_EXTENSION_MODULE module = {};
    EXPECT_TRUE(AfxInitExtensionModule(module, Extension()));
    EXPECT_TRUE(AfxInitExtensionModule(module, Language())) << "only the first call counts";
    EXPECT_EQ(Extension(), module.hModule);

    CDynLinkLibrary other(Language(), Language());
    const auto first = new CDynLinkLibrary(module);
    const auto second = new CDynLinkLibrary(module, TRUE);
    EXPECT_EQ(second, state.m_libraryList.GetHead());
    EXPECT_EQ(first, second->m_pNextDLL);
    EXPECT_EQ(&other, first->m_pNextDLL);
    EXPECT_EQ(nullptr, other.m_pNextDLL);
    AfxTermExtensionModule(module);
    EXPECT_EQ(&other, state.m_libraryList.GetHead());
    EXPECT_EQ(nullptr, other.m_pNextDLL);
}

TEST(ModuleState, GlobalLocksAreReenteredAndKeepOthersOut)
{
    AfxLockGlobals(CRIT_DYNLINKLIST);
    AfxLockGlobals(CRIT_DYNLINKLIST);
    AfxUnlockGlobals(CRIT_DYNLINKLIST);
    bool entered = false;
    std::thread other([&] {
        AfxLockGlobals(CRIT_REGCLASSLIST);
        AfxUnlockGlobals(CRIT_REGCLASSLIST);
        AfxLockGlobals(CRIT_DYNLINKLIST);
        entered = true;
        AfxUnlockGlobals(CRIT_DYNLINKLIST);
    });
    EXPECT_FALSE(entered);
    AfxUnlockGlobals(CRIT_DYNLINKLIST);
    other.join();
    EXPECT_TRUE(entered);
    EXPECT_THROW(AfxLockGlobals(CRIT_MAX), CInvalidArgException*);
}

TEST(StringResource, NumberPointersLoadAndFormatsMayBeResources)
{
    EXPECT_EQ("program", CString(MAKEINTRESOURCEA(100)));
    EXPECT_EQ("", CString(MAKEINTRESOURCEA(4711)));
    EXPECT_EQ("caf\xe9", CString(MAKEINTRESOURCEA(103))) << "in the ANSI code page";
    CString text;
    text.Format(102u, 3, "five");
    text.AppendFormat(102u, 4, "six");
    EXPECT_EQ("3 of five4 of six", text);
    EXPECT_THROW(text.Format(4711u), CInvalidArgException*);
    EXPECT_EQ("3 of five4 of six", text);
}

TEST(StringResource, LanguageIsTakenExactly)
{
    CString text;
    EXPECT_TRUE(text.LoadString(GetModuleHandleA(nullptr), 100, 0x0407));
    EXPECT_EQ("Programm", text);
    EXPECT_FALSE(text.LoadString(GetModuleHandleA(nullptr), 100, 0x0411));
    EXPECT_FALSE(text.LoadString(GetModuleHandleA(nullptr), 101, 0x0407));
    EXPECT_EQ("Programm", text);
}

TEST(StringResource, TextIsConvertedBetweenThePages)
{
    CString text(u"caf\u00e9"_w);
    EXPECT_EQ("caf\xe9", text);
    text.AnsiToOem();
    EXPECT_EQ("caf\x82", text);
    text.OemToAnsi();
    EXPECT_EQ("caf\xe9", text);
    text = u"ab"_w;
    EXPECT_EQ("ab", text);
    EXPECT_EQ(CString(u"a\0b"_w, 3).GetLength(), 3);
    EXPECT_EQ("ab", CString(u"abc"_w, 2));
    EXPECT_EQ("", CString(static_cast<const unsigned short*>(nullptr)));
    EXPECT_THROW(CString(u"abc"_w, -2), CInvalidArgException*);
}

TEST(StringResource, EnvironmentVariablesOfAnyLength)
{
    const std::string longValue(5000, 'v');
    ASSERT_TRUE(SetEnvironmentVariableA("KELGEN_TEST_VARIABLE", longValue.c_str()));
    CString text;
    EXPECT_TRUE(text.GetEnvironmentVariable("KELGEN_TEST_VARIABLE"));
    EXPECT_EQ(longValue.c_str(), text);
    SetEnvironmentVariableA("KELGEN_TEST_VARIABLE", nullptr);
    EXPECT_FALSE(text.GetEnvironmentVariable("KELGEN_TEST_VARIABLE"));
    EXPECT_EQ("", text);
}
