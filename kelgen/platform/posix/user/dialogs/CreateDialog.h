// CreateDialog.h: making a dialog from a template, for modeless and modal ones.
#pragma once

#include <kelgen/platform/posix/user/api/Dialogs.h>
#include <kelgen/platform/posix/user/objects/TemplateReader.h>

#include <optional>

namespace kelgen::posix::user {

struct DialogCreation
{
    HINSTANCE module;
    HWND owner;
    DLGPROC procedure;
    LPARAM parameter;
    bool wide;
};

/// The dialog, shown if its style has WS_VISIBLE; null and the last error.
HWND CreateDialogWindow(TemplateReader reader, const DialogCreation& creation);

/// The bytes of a dialog resource; nothing for null.
std::optional<TemplateReader> DialogResource(HINSTANCE module, HRSRC resource);

/// A template in memory, which has no known end; nothing for null.
std::optional<TemplateReader> DialogMemory(const DLGTEMPLATE* dialogTemplate);

}  // namespace kelgen::posix::user
