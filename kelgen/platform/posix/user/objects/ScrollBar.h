// ScrollBar.h: a scroll bar's numbers, and where its parts lie.
#pragma once

#include <kelgen/platform/posix/user/api/ScrollBars.h>

namespace kelgen::posix::user {

struct Window;

constexpr int kScrollBarSize = 17;

/// Where a scroll bar's parts begin and end, in pixels from its start.
struct ScrollParts
{
    int arrow = 0;  // the length of each
    int thumbStart = 0;
    int thumbEnd = 0;  // both 0 when there is no thumb
};

/// What a point of a bar hits.
enum class EScrollPart
{
    none,
    lineUp,
    pageUp,
    thumb,
    pageDown,
    lineDown,
};

/// The numbers of one bar.
struct ScrollBar
{
    int least = 0;
    int most = 0;
    int page = 0;
    int position = 0;
    int tracked = 0;                       // the position under a thumb that the mouse holds
    UINT disabled = 0;                     // ESB_DISABLE_ flags
    EScrollPart held = EScrollPart::none;  // by the mouse

    /// The last position: a page lies behind it.
    int LastPosition() const;
    bool HasNothingToScroll() const { return LastPosition() <= least; }
    /// Keeps page and position within the range.
    void Limit();
    ScrollParts PartsIn(int length) const;
    /// The position of a thumb that starts at @p start.
    int PositionAt(int start, int length) const;
    EScrollPart PartAt(int place, int length) const;

    bool operator==(const ScrollBar&) const = default;
};

/// A window's bars: the two of its frame, and the one that it is itself.
struct ScrollBars
{
    ScrollBars() { bars[SB_HORZ].most = bars[SB_VERT].most = 100; }
    ScrollBar bars[3];
};

/// WS_VSCROLL or WS_HSCROLL.
LONG StyleBitOf(int bar);

/// Whether the bar runs from top to bottom: SB_VERT, and SB_CTL of a control with SBS_VERT.
bool IsUpright(const Window& window, int bar);

/// Where the bar lies on the screen; empty when it is not there.
RECT BarPlace(const Window& window, int bar);

}  // namespace kelgen::posix::user
