// Context.h: a device context: where drawing goes, and the state that it goes by.
#pragma once

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/user/drawing/GdiObjects.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>

#include <optional>
#include <vector>

namespace kelgen::posix::user {

/// An object that a context draws with: it lives on here when its handle is deleted.
template <class Type>
struct Selected
{
    HGDIOBJ handle = nullptr;
    std::shared_ptr<Type> object;
};

struct ContextState
{
    Selected<Pen> pen;
    Selected<Brush> brush;
    Selected<Font> font;
    Selected<Bitmap> bitmap;
    COLORREF textColor = 0;
    COLORREF backColor = 0xFFFFFF;
    COLORREF penColor = 0;           // of DC_PEN
    COLORREF brushColor = 0xFFFFFF;  // of DC_BRUSH
    int backMode = OPAQUE;
    UINT align = 0;
    int rop = R2_COPYPEN;
    int fillMode = ALTERNATE;
    int stretchMode = BLACKONWHITE;
    POINT viewport{};
    POINT windowOrigin{};
    POINT current{};
    std::optional<Region> clip;  // in pixels of the context
};

/// Threads: the caller holds the desktop lock.
struct Context final : GdiObject
{
    Context(HWND contextWindow, bool isMemory);
    ~Context() override;

    POINT ToPixels(POINT point) const;
    POINT ToLogical(POINT point) const;
    /// In order, whatever the corners' order was.
    RECT ToPixels(const RECT& area) const;
    /// What can be drawn on, in pixels: the window's visible area or the bitmap's, and of that the clip.
    Region Drawable() const;
    RECT Surface() const;
    /// The list that shapes go to, made when missing; null where nothing is drawn.
    ShapeList* Target();
    /// The colour of what nothing was drawn on: bitmaps are black; windows have their class's, else white.
    COLORREF Ground() const;
    /// What there is to be copied; null for nothing.
    const ShapeList* Source() const;
    /// Forgets what was found out about the clip, which changes.
    void ClipChanges() { m_drawn.reset(); }

    /// Adds a shape whose place is in pixels of the context: clips it, and leaves out what is not in view.
    void Draw(DrawnShape shape);
    /// Pen and brush of the context for a shape.
    void SetPen(DrawnShape& shape) const;
    void SetBrush(DrawnShape& shape, const Brush* brush) const;
    /// The raster operation; false when nothing is drawn at all.
    bool SetOperation(DrawnShape& shape) const;

    HWND window = nullptr;        // null for the screen and for bitmaps
    POINT origin{};               // of the context's pixels in the window's client area
    std::optional<RECT> painted;  // of BeginPaint: what was to be painted
    ContextState state;
    std::vector<ContextState> saved;

private:
    /// Drawable, as shapes have it.
    struct Drawn
    {
        RECT box;
        DrawnClip clip;     // null for a rectangle
        DrawnClip boxClip;  // the rectangle, once a shape has needed it
    };
    Drawn& Visible();

    std::optional<Drawn> m_drawn;
};

/// A handle for a new context of @p window.
HDC GiveContext(HWND window, POINT origin, const RECT* painted);
/// Ends a handle of GiveContext.
bool TakeContext(HDC context);

inline std::shared_ptr<Context> FindContext(HDC context)
{
    auto object = FindObject(context);
    if (!object || (object->type != OBJ_DC && object->type != OBJ_MEMDC))
        return nullptr;
    return std::static_pointer_cast<Context>(std::move(object));
}

/// @p work on the context under the desktop lock; @p failure with ERROR_INVALID_HANDLE when it is none.
template <class Result, class Work>
Result WithContext(HDC handle, Result failure, Work work)
{
    return OrNoMemory(failure, [&]() -> Result {
        const DesktopGuard guard;
        const std::shared_ptr<Context> context = FindContext(handle);
        if (!context)
            return Fail(ERROR_INVALID_HANDLE, failure);
        return work(*context);
    });
}

/// A rectangle by its size, which may reach beyond all numbers.
inline RECT AreaOf(int x, int y, int width, int height)
{
    const auto sum = [](int a, int b) {
        const long long both = static_cast<long long>(a) + b;
        return static_cast<LONG>(both > 0x7FFFFFFF ? 0x7FFFFFFF : both < -0x7FFFFFFF ? -0x7FFFFFFF : both);
    };
    return {x, y, sum(x, width), sum(y, height)};
}

/// A rectangle's shape in a colour.
DrawnShape Fill(const RECT& area, COLORREF color);

}  // namespace kelgen::posix::user
