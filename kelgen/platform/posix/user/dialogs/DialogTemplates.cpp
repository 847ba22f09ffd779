// DialogTemplates.cpp: both forms of dialog templates.
#include <kelgen/platform/posix/user/dialogs/DialogTemplates.h>

#include <kelgen/platform/posix/user/api/Dialogs.h>

namespace kelgen::posix::user {

namespace {

TemplateName ReadName(TemplateReader& reader)
{
    constexpr WORD kIsNumber = 0xFFFF;
    TemplateName name;
    if (reader.PeekWord() == kIsNumber) {
        reader.Word();
        name.number = reader.Word();
    } else {
        name.text = reader.Text();
    }
    return name;
}

void ReadStyles(TemplateReader& reader, TemplateWindow& window, bool isExtended)
{
    if (isExtended) {
        window.helpId = reader.Dword();
        window.exStyle = reader.Dword();
        window.style = reader.Dword();
    } else {
        window.style = reader.Dword();
        window.exStyle = reader.Dword();
    }
}

void ReadPlace(TemplateReader& reader, TemplateWindow& window)
{
    window.x = reader.Short();
    window.y = reader.Short();
    window.width = reader.Short();
    window.height = reader.Short();
}

TemplateControl ReadControl(TemplateReader& reader, bool isExtended)
{
    TemplateControl control;
    reader.AlignToDword();
    ReadStyles(reader, control, isExtended);
    ReadPlace(reader, control);
    control.id = isExtended ? reader.Dword() : reader.Word();
    control.className = ReadName(reader);
    control.text = ReadName(reader);
    const BYTE* data = reader.Here();
    if (const WORD size = reader.Word()) {
        control.data = data;
        reader.Skip(size);
    }
    return control;
}

}  // namespace

std::optional<DialogTemplate> ReadDialogTemplate(TemplateReader reader)
{
    DialogTemplate dialog;
    TemplateReader start = reader;
    const bool isExtended = start.Word() == 1 && start.Word() == 0xFFFF;
    if (isExtended)
        reader = start;
    ReadStyles(reader, dialog, isExtended);
    const int count = reader.Word();
    ReadPlace(reader, dialog);
    dialog.menu = ReadName(reader);
    dialog.className = ReadName(reader);
    dialog.title = reader.Text();
    if (dialog.style & DS_SETFONT) {
        constexpr WORD kDefaultFont = 0x7FFF;
        constexpr int kDefaultPoints = 8;
        const WORD points = reader.Word();
        dialog.points = points == kDefaultFont ? kDefaultPoints : points;
        if (points != kDefaultFont) {
            if (isExtended)
                reader.Skip(4);  // weight, slant, character set
            dialog.face = reader.Text();
        }
    }
    for (int i = 0; i < count && reader.IsSound(); ++i)
        dialog.controls.push_back(ReadControl(reader, isExtended));
    return reader.IsSound() ? std::optional(std::move(dialog)) : std::nullopt;
}

}  // namespace kelgen::posix::user
