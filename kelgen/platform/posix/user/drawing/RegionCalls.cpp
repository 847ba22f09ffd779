// RegionCalls.cpp: the calls for regions, and for clipping to them.
#include <kelgen/platform/posix/user/api/Regions.h>

#include <kelgen/platform/posix/user/drawing/Context.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

HRGN Create(Region region)
{
    const DesktopGuard guard;
    return static_cast<HRGN>(InsertObject(std::make_shared<RegionObject>(std::move(region))));
}

/// @p work on the region of a handle; @p failure when it is none.
template <class Result, class Work>
Result WithRegion(HRGN handle, Result failure, Work work)
{
    return OrNoMemory(failure, [&]() -> Result {
        const DesktopGuard guard;
        const auto object = FindObjectOf<RegionObject>(handle);
        return object ? work(object->region) : Fail(ERROR_INVALID_HANDLE, failure);
    });
}

/// Changes the clip and tells what is left.
int Clip(Context& context, const Region& region, int mode)
{
    context.state.clip = context.state.clip || mode == RGN_AND
                             ? (context.state.clip ? Region::Combined(*context.state.clip, region, mode) : region)
                             : Region::Combined(context.Drawable(), region, mode);
    context.ClipChanges();
    return context.Drawable().Complexity();
}

}  // namespace

HRGN CreateRectRgn(int left, int top, int right, int bottom)
{
    return OrNoMemory(HRGN{}, [=] { return Create(Region(RECT{left, top, right, bottom})); });
}

HRGN CreateRectRgnIndirect(const RECT* area)
{
    return area ? CreateRectRgn(area->left, area->top, area->right, area->bottom) : Fail(ERROR_INVALID_PARAMETER, HRGN{});
}

HRGN CreateEllipticRgn(int left, int top, int right, int bottom)
{
    return OrNoMemory(HRGN{}, [=] { return Create(Region::Ellipse({left, top, right, bottom})); });
}

HRGN CreateEllipticRgnIndirect(const RECT* area)
{
    return area ? CreateEllipticRgn(area->left, area->top, area->right, area->bottom) : Fail(ERROR_INVALID_PARAMETER, HRGN{});
}

HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height)
{
    return OrNoMemory(HRGN{}, [=] { return Create(Region::RoundRectangle({left, top, right, bottom}, width, height)); });
}

BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom)
{
    return WithRegion(region, FALSE, [=](Region& found) -> BOOL {
        found = Region(RECT{left, top, right, bottom});
        return TRUE;
    });
}

int CombineRgn(HRGN result, HRGN left, HRGN right, int mode)
{
    return WithRegion(left, ERROR, [=](const Region& first) {
        return WithRegion(result, ERROR, [=, &first](Region& target) {
            if (mode == RGN_COPY) {
                target = Region(first);
                return target.Complexity();
            }
            if (mode < RGN_AND || mode > RGN_COPY)
                return Fail(ERROR_INVALID_PARAMETER, ERROR);
            return WithRegion(right, ERROR, [&](const Region& second) {
                target = Region::Combined(first, second, mode);
                return target.Complexity();
            });
        });
    });
}

int OffsetRgn(HRGN region, int x, int y)
{
    return WithRegion(region, ERROR, [=](Region& found) {
        found.Offset(x, y);
        return found.Complexity();
    });
}

int GetRgnBox(HRGN region, RECT* box)
{
    return WithRegion(region, ERROR, [=](const Region& found) {
        if (box)
            *box = found.Box();
        return found.Complexity();
    });
}

BOOL EqualRgn(HRGN left, HRGN right)
{
    return WithRegion(left, FALSE, [=](const Region& first) -> BOOL {
        return WithRegion(right, FALSE, [&](const Region& second) -> BOOL { return first == second; });
    });
}

BOOL PtInRegion(HRGN region, int x, int y)
{
    return WithRegion(region, FALSE, [=](const Region& found) -> BOOL { return found.Has({x, y}); });
}

BOOL RectInRegion(HRGN region, const RECT* area)
{
    return WithRegion(region, FALSE, [=](const Region& found) -> BOOL { return area && found.Touches(InOrder(*area)); });
}

int SelectClipRgn(HDC context, HRGN region)
{
    return WithContext(context, ERROR, [=](Context& found) {
        if (!region) {
            found.state.clip.reset();
            found.ClipChanges();
            return found.Drawable().Complexity();
        }
        return WithRegion(region, ERROR, [&](const Region& clip) {
            found.state.clip = clip;
            found.ClipChanges();
            return found.Drawable().Complexity();
        });
    });
}

int IntersectClipRect(HDC context, int left, int top, int right, int bottom)
{
    return WithContext(context, ERROR, [=](Context& found) {
        return Clip(found, Region(found.ToPixels(RECT{left, top, right, bottom})), RGN_AND);
    });
}

int ExcludeClipRect(HDC context, int left, int top, int right, int bottom)
{
    return WithContext(context, ERROR, [=](Context& found) {
        return Clip(found, Region(found.ToPixels(RECT{left, top, right, bottom})), RGN_DIFF);
    });
}

int GetClipBox(HDC context, RECT* box)
{
    return WithContext(context, ERROR, [=](Context& found) {
        const Region region = found.Drawable();
        if (box) {
            const RECT pixels = region.Box();
            const POINT first = found.ToLogical({pixels.left, pixels.top});
            const POINT last = found.ToLogical({pixels.right, pixels.bottom});
            *box = {first.x, first.y, last.x, last.y};
        }
        return region.Complexity();
    });
}

BOOL RectVisible(HDC context, const RECT* area)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL { return area && found.Drawable().Touches(found.ToPixels(*area)); });
}

BOOL PtVisible(HDC context, int x, int y)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL { return found.Drawable().Has(found.ToPixels(POINT{x, y})); });
}
