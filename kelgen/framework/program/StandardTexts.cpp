// StandardTexts.cpp: the built-in texts.
#include <kelgen/framework/program/internal/StandardTexts.h>

namespace {

LPCSTR BuiltIn(UINT id)
{
    switch (id) {
    case AFX_IDS_IDLEMESSAGE:
        return "Ready";
    case AFX_IDS_UNTITLED:
        return "Untitled";
    case AFX_IDP_INVALID_FILENAME:
        return "This file name is not valid.";
    case AFX_IDP_FAILED_TO_OPEN_DOC:
        return "The document cannot be opened.";
    case AFX_IDP_FAILED_TO_SAVE_DOC:
        return "The document cannot be saved.";
    case AFX_IDP_ASK_TO_SAVE:
        return "Save changes to %1?";
    case AFX_IDP_FAILED_TO_CREATE_DOC:
        return "A new document cannot be made.";
    case AFX_IDP_COMMAND_FAILURE:
        return "The command cannot be carried out.";
    default:
        return "";
    }
}

}  // namespace

CString kelgen::detail::StandardText(UINT id)
{
    CString text;
    return text.LoadString(id) ? text : CString(BuiltIn(id));
}

CString kelgen::detail::StandardText(UINT id, LPCSTR value)
{
    CString text = StandardText(id);
    text.Replace("%1", value);
    return text;
}
