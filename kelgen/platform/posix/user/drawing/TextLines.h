// TextLines.h: drawing one line of text.
#pragma once

#include <kelgen/platform/posix/user/drawing/Context.h>
#include <kelgen/platform/posix/user/drawing/FontMetrics.h>

#include <string_view>

namespace kelgen::posix::user {

inline FontMetrics MetricsOf(const Context& context)
{
    return FontMetrics(context.state.font.object->font);
}

/// ExtTextOut.
void PutText(Context& context, POINT place, UINT options, const RECT* area, std::u16string_view text, const int* widths);

/// DrawText.
int LayOutText(Context& context, std::u16string_view text, RECT& area, UINT format);

}  // namespace kelgen::posix::user
