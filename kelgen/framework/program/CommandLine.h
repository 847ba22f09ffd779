// CommandLine.h: what a program's arguments ask of the application.
#pragma once

#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>

/// The meaning of a program's arguments; CWinApp::ParseCommandLine fills it.
///
/// | argument | meaning |
/// |---|---|
/// | none | FileNew |
/// | name | FileOpen, with the name |
/// | /p name | FilePrint |
/// | /pt name printer driver port | FilePrintTo |
/// | /dde | FileDDE |
/// | /Embedding, /Automation | started for a client: nothing is shown |
/// | /Register, /RegServer; /Unregister, /UnregServer | AppRegister; AppUnregister |
///
/// Switches begin with '/' or '-'. Case counts for p, pt and dde only.
class KELGEN_FRAMEWORK_API CCommandLineInfo : public CObject
{
public:
    enum Command
    {
        FileNew,
        FileOpen,
        FilePrint,
        FilePrintTo,
        FileDDE,
        AppRegister,
        AppUnregister,
        FileNothing = -1,
    };

    CCommandLineInfo() = default;
    ~CCommandLineInfo() override;

    /// Called for each argument; a switch comes without its first character.
    virtual void ParseParam(LPCSTR param, BOOL isFlag, BOOL isLast);

    BOOL m_bShowSplash = TRUE;     ///< Whether a splash window is wanted: FALSE once a switch that is known was given.
    BOOL m_bRunEmbedded = FALSE;   ///< Whether "Embedding" was given.
    BOOL m_bRunAutomated = FALSE;  ///< Whether "Automation" was given.
    /// What the program was asked to do.
    Command m_nShellCommand = FileNew;
    /// The file to open or print; empty for none. The next three say on which printer, with /pt.
    CString m_strFileName;
    CString m_strPrinterName;  ///< The printer.
    CString m_strDriverName;   ///< Its driver.
    CString m_strPortName;     ///< Its port.

protected:
    /// Each is a part of ParseParam: a switch, another argument, and what comes after the last one.
    void ParseParamFlag(LPCSTR param);
    void ParseParamNotFlag(LPCSTR param);
    void ParseLast(BOOL isLast);
};

namespace kelgen::detail {

/// Splits a command line at blanks and tabs; quotation marks keep them, backslashes before a quotation mark escape.
class KELGEN_FRAMEWORK_API CommandLineSplitter
{
public:
    /// Null is the empty line.
    explicit CommandLineSplitter(LPCSTR line) : m_rest(line ? line : "") {}
    /// False at the end.
    bool Next(CString& argument);
    bool AtEnd();

private:
    LPCSTR m_rest;
};

}  // namespace kelgen::detail
