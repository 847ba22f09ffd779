// CommandLine.cpp: arguments, one by one, and what they mean.
#include <kelgen/framework/program/CommandLine.h>

#include <cstring>

CCommandLineInfo::~CCommandLineInfo() = default;

void CCommandLineInfo::ParseParam(LPCSTR param, BOOL isFlag, BOOL isLast)
{
    if (isFlag)
        ParseParamFlag(param);
    else
        ParseParamNotFlag(param);
    ParseLast(isLast);
}

void CCommandLineInfo::ParseParamFlag(LPCSTR param)
{
    const CString flag(param);
    const auto is = [&flag](LPCSTR name) { return flag.CompareNoCase(name) == 0; };
    if (flag == "pt")
        m_nShellCommand = FilePrintTo;
    else if (flag == "p")
        m_nShellCommand = FilePrint;
    else if (flag == "dde")
        m_nShellCommand = FileDDE;
    else if (is("Register") || is("RegServer"))
        m_nShellCommand = AppRegister;
    else if (is("Unregister") || is("UnregServer"))
        m_nShellCommand = AppUnregister;
    else if (is("Embedding"))
        m_bRunEmbedded = TRUE;
    else if (is("Automation"))
        m_bRunAutomated = TRUE;
    else
        return;
    m_bShowSplash = FALSE;
}

void CCommandLineInfo::ParseParamNotFlag(LPCSTR param)
{
    if (m_strFileName.IsEmpty())
        m_strFileName = param;
    else if (m_nShellCommand == FilePrintTo && m_strPrinterName.IsEmpty())
        m_strPrinterName = param;
    else if (m_nShellCommand == FilePrintTo && m_strDriverName.IsEmpty())
        m_strDriverName = param;
    else if (m_nShellCommand == FilePrintTo && m_strPortName.IsEmpty())
        m_strPortName = param;
}

void CCommandLineInfo::ParseLast(BOOL isLast)
{
    if (!isLast)
        return;
    if (m_nShellCommand == FileNew && !m_strFileName.IsEmpty())
        m_nShellCommand = FileOpen;
    m_bShowSplash = !m_bRunEmbedded && !m_bRunAutomated && m_bShowSplash;
}

bool kelgen::detail::CommandLineSplitter::AtEnd()
{
    m_rest += std::strspn(m_rest, " \t");
    return *m_rest == 0;
}

bool kelgen::detail::CommandLineSplitter::Next(CString& argument)
{
    if (AtEnd())
        return false;
    argument.Empty();
    bool quoted = false;
    while (*m_rest && (quoted || !std::strchr(" \t", *m_rest))) {
        const auto backslashes = static_cast<int>(std::strspn(m_rest, "\\"));
        m_rest += backslashes;
        if (*m_rest != '"') {
            argument += CString('\\', backslashes);
            if (backslashes == 0)
                argument += *m_rest++;
            continue;
        }
        // Before a quotation mark two backslashes stand for one, and an odd one makes the mark a plain character.
        argument += CString('\\', backslashes / 2);
        if (backslashes % 2)
            argument += '"';
        else
            quoted = !quoted;
        ++m_rest;
    }
    return true;
}
