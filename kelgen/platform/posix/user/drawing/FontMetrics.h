// FontMetrics.h: how large characters are: the same numbers on every machine.
#pragma once

#include <kelgen/platform/posix/user/api/Drawing.h>

#include <string_view>

namespace kelgen::posix::user {

/// A font's size and weight, which are all that its numbers depend on.
struct FontMetrics
{
    /// Of a font as it was asked for.
    explicit FontMetrics(const LOGFONTW& font);

    int WidthOf(char16_t unit) const;
    int WidthOf(std::u16string_view text) const;
    int Ascent() const { return Scaled(1901); }
    int Descent() const { return Scaled(483); }
    int Height() const { return Ascent() + Descent(); }
    int AverageWidth() const { return Scaled(isBold ? 1173 : 1038); }
    int LargestWidth() const { return Scaled(isBold ? 6235 : 5763); }
    int InnerLeading() const { return Scaled(336); }

    int em;  // in pixels
    bool isBold;

private:
    /// A 2048th of an em each.
    int Scaled(int units) const { return (units * em + 1024) / 2048; }
};

}  // namespace kelgen::posix::user
