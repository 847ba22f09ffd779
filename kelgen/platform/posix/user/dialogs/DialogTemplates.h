// DialogTemplates.h: dialog templates, read as a whole before anything is made of them.
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>
#include <kelgen/platform/posix/user/objects/TemplateReader.h>

#include <optional>
#include <string>
#include <vector>

namespace kelgen::posix::user {

/// A name in a template: a text, or a number.
struct TemplateName
{
    std::u16string text;
    WORD number = 0;

    bool IsEmpty() const { return text.empty() && number == 0; }
};

/// What a dialog and each of its controls begin with. Places are in the dialog's own units.
struct TemplateWindow
{
    DWORD style = 0;
    DWORD exStyle = 0;
    DWORD helpId = 0;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

struct TemplateControl : TemplateWindow
{
    DWORD id = 0;
    TemplateName className;
    TemplateName text;
    const BYTE* data = nullptr;  // starts with its size
};

struct DialogTemplate : TemplateWindow
{
    TemplateName menu;
    TemplateName className;
    std::u16string title;
    int points = 0;  // of the font, when the style has DS_SETFONT
    std::u16string face;
    std::vector<TemplateControl> controls;
};

/// The template of either form; nothing when it is damaged.
/// Source: the formats DLGTEMPLATE, DLGITEMTEMPLATE, DLGTEMPLATEEX and DLGITEMTEMPLATEEX.
std::optional<DialogTemplate> ReadDialogTemplate(TemplateReader reader);

}  // namespace kelgen::posix::user
