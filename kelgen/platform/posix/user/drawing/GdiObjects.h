// GdiObjects.h: what lies behind the handles of pens, brushes, fonts, bitmaps, regions and contexts.
#pragma once

#include <kelgen/platform/posix/user/api/DrawingObjects.h>
#include <kelgen/platform/posix/user/drawing/Region.h>
#include <kelgen/platform/posix/user/drawing/ShapeList.h>

#include <memory>

namespace kelgen::posix::user {

struct GdiObject
{
    explicit GdiObject(DWORD objectType) : type(objectType) {}
    virtual ~GdiObject() = default;
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;

    const DWORD type;  // OBJ_ number
};

struct Pen final : GdiObject
{
    static constexpr DWORD kType = OBJ_PEN;
    explicit Pen(const LOGPEN& values) : GdiObject(kType), pen(values) {}
    LOGPEN pen;
    bool isOfContext = false;  // DC_PEN, whose colour is the context's
};

struct Brush final : GdiObject
{
    static constexpr DWORD kType = OBJ_BRUSH;
    explicit Brush(const LOGBRUSH& values) : GdiObject(kType), brush(values) {}
    LOGBRUSH brush;
    bool isOfContext = false;
};

struct Font final : GdiObject
{
    static constexpr DWORD kType = OBJ_FONT;
    explicit Font(const LOGFONTW& values) : GdiObject(kType), font(values) {}
    LOGFONTW font;
};

struct Bitmap final : GdiObject
{
    static constexpr DWORD kType = OBJ_BITMAP;
    explicit Bitmap(const BITMAP& values) : GdiObject(kType), bitmap(values) {}
    BITMAP bitmap;
    ShapeList drawing;
    bool isSelected = false;  // in a context; in one at a time
};

struct RegionObject final : GdiObject
{
    static constexpr DWORD kType = OBJ_REGION;
    explicit RegionObject(Region values) : GdiObject(kType), region(std::move(values)) {}
    Region region;
};

// These want the desktop lock.

/// The handle of @p object from now on. Null when there are 8000.
HGDIOBJ InsertObject(std::shared_ptr<GdiObject> object);

/// The object of a handle, also of the system's own ones; null for none.
std::shared_ptr<GdiObject> FindObject(const void* handle);

/// Ends the handle of an object; false when there is none, or it is the system's own.
bool RemoveObject(const void* handle);

/// The object when it is of that kind, else null.
template <class Type>
std::shared_ptr<Type> FindObjectOf(const void* handle)
{
    auto object = FindObject(handle);
    return object && object->type == Type::kType ? std::static_pointer_cast<Type>(std::move(object)) : nullptr;
}

/// The brush of a handle or of a COLOR_ number plus one; null for none.
std::shared_ptr<Brush> FindBrush(HBRUSH brush);

/// The bitmap of one black-and-white pixel that new memory contexts have. Nothing is drawn on it.
HGDIOBJ SmallestBitmap();

/// Whether it is one of the colours of the desktop, by handle or number: the host has chosen no colour of its own.
bool IsSystemBrush(HBRUSH brush);

}  // namespace kelgen::posix::user
