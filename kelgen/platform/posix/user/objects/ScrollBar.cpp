// ScrollBar.cpp: the arithmetic of scroll bars.
#include <kelgen/platform/posix/user/objects/ScrollBar.h>

#include <kelgen/platform/posix/user/api/Controls.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

constexpr int kThumb = 17;         // without a page
constexpr int kSmallestThumb = 8;  // with one

/// @p number * @p numerator / @p denominator, rounded.
long long Scaled(long long number, long long numerator, long long denominator)
{
    return denominator <= 0 ? 0 : (number * numerator + denominator / 2) / denominator;
}

}  // namespace

int ScrollBar::LastPosition() const
{
    return static_cast<int>(most - static_cast<long long>(std::max(page - 1, 0)));
}

void ScrollBar::Limit()
{
    const long long room = static_cast<long long>(most) - least + 1;
    page = static_cast<int>(std::clamp<long long>(page, 0, room));
    position = std::clamp(position, least, std::max(LastPosition(), least));
}

ScrollParts ScrollBar::PartsIn(int length) const
{
    ScrollParts parts;
    parts.arrow = std::min(kScrollBarSize, length / 2);
    const int room = length - 2 * parts.arrow;
    const long long numbers = static_cast<long long>(most) - least + 1;
    const int thumb = page > 0 ? std::max(static_cast<int>(Scaled(room, page, numbers)), kSmallestThumb) : kThumb;
    if (room < thumb || disabled == ESB_DISABLE_BOTH)
        return parts;
    const long long span = static_cast<long long>(LastPosition()) - least;
    const long long at = held == EScrollPart::thumb ? tracked : position;
    parts.thumbStart = parts.arrow + static_cast<int>(Scaled(room - thumb, at - least, span));
    parts.thumbEnd = parts.thumbStart + thumb;
    return parts;
}

int ScrollBar::PositionAt(int start, int length) const
{
    const ScrollParts parts = PartsIn(length);
    const int room = length - 2 * parts.arrow - (parts.thumbEnd - parts.thumbStart);
    const int place = std::clamp(start - parts.arrow, 0, std::max(room, 0));
    const long long span = static_cast<long long>(LastPosition()) - least;
    return static_cast<int>(least + Scaled(place, span, room));
}

EScrollPart ScrollBar::PartAt(int place, int length) const
{
    const ScrollParts parts = PartsIn(length);
    if (place < 0 || place >= length)
        return EScrollPart::none;
    if (place < parts.arrow)
        return EScrollPart::lineUp;
    if (place >= length - parts.arrow)
        return EScrollPart::lineDown;
    if (place < parts.thumbStart || parts.thumbEnd == 0)
        return EScrollPart::pageUp;
    return place < parts.thumbEnd ? EScrollPart::thumb : EScrollPart::pageDown;
}

LONG StyleBitOf(int bar)
{
    return bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL;
}

bool IsUpright(const Window& window, int bar)
{
    return bar == SB_CTL ? (window.style & SBS_VERT) != 0 : bar == SB_VERT;
}

RECT BarPlace(const Window& window, int bar)
{
    const RECT& client = window.client;
    if (bar == SB_CTL)
        return client;
    if (!(window.style & StyleBitOf(bar)) || (window.style & WS_MINIMIZE))
        return {};
    if (bar == SB_HORZ) {
        const RECT place{client.left, client.bottom, client.right, client.bottom + kScrollBarSize};
        return place.bottom <= window.window.bottom ? place : RECT{};
    }
    const bool isLeft = (window.exStyle & WS_EX_LEFTSCROLLBAR) != 0;
    const LONG left = isLeft ? client.left - kScrollBarSize : client.right;
    const RECT place{left, client.top, left + kScrollBarSize, client.bottom};
    return place.left >= window.window.left && place.right <= window.window.right ? place : RECT{};
}

}  // namespace kelgen::posix::user
