// DrawingObjects.cpp: the calls that make pens, brushes, fonts and bitmaps, select and read them.
#include <kelgen/platform/posix/user/api/DrawingObjects.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/drawing/Context.h>

#include <algorithm>
#include <cstring>
#include <utility>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

template <class Handle, class Type, class Values>
Handle Create(const Values& values)
{
    return OrNoMemory(Handle{}, [&] {
        const DesktopGuard guard;
        return static_cast<Handle>(InsertObject(std::make_shared<Type>(values)));
    });
}

/// A font's values but for the face, which are the same for both kinds of text.
template <class To, class From>
To FontValues(const From& from)
{
    To to{};
    to.lfHeight = from.lfHeight;
    to.lfWidth = from.lfWidth;
    to.lfEscapement = from.lfEscapement;
    to.lfOrientation = from.lfOrientation;
    to.lfWeight = from.lfWeight;
    to.lfItalic = from.lfItalic;
    to.lfUnderline = from.lfUnderline;
    to.lfStrikeOut = from.lfStrikeOut;
    to.lfCharSet = from.lfCharSet;
    to.lfOutPrecision = from.lfOutPrecision;
    to.lfClipPrecision = from.lfClipPrecision;
    to.lfQuality = from.lfQuality;
    to.lfPitchAndFamily = from.lfPitchAndFamily;
    return to;
}

template <class Char>
void SetFace(Char (&face)[LF_FACESIZE], std::basic_string_view<Char> text)
{
    const std::size_t length = std::min<std::size_t>(text.size(), LF_FACESIZE - 1);
    std::copy_n(text.begin(), length, face);
    std::fill(face + length, face + LF_FACESIZE, Char());
}

template <class Char>
std::basic_string_view<Char> FaceOf(const Char (&face)[LF_FACESIZE])
{
    return {face, static_cast<std::size_t>(std::find(face, face + LF_FACESIZE, Char()) - face)};
}

LOGFONTW Wide(const LOGFONTA& font)
{
    auto wide = FontValues<LOGFONTW>(font);
    const std::u16string face = WideText(FaceOf(font.lfFaceName));
    SetFace(wide.lfFaceName, std::basic_string_view<WCHAR>(reinterpret_cast<LPCWSTR>(face.data()), face.size()));
    return wide;
}

LOGFONTA Narrow(const LOGFONTW& font)
{
    auto narrow = FontValues<LOGFONTA>(font);
    const auto face = FaceOf(font.lfFaceName);
    const std::string text = AnsiText(std::u16string_view(reinterpret_cast<const char16_t*>(face.data()), face.size()));
    SetFace(narrow.lfFaceName, std::string_view(text));
    return narrow;
}

LOGFONTW FontOf(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline, DWORD strikeOut,
                DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily)
{
    LOGFONTW font{};
    font.lfHeight = height;
    font.lfWidth = width;
    font.lfEscapement = escapement;
    font.lfOrientation = orientation;
    font.lfWeight = weight;
    font.lfItalic = static_cast<BYTE>(italic);
    font.lfUnderline = static_cast<BYTE>(underline);
    font.lfStrikeOut = static_cast<BYTE>(strikeOut);
    font.lfCharSet = static_cast<BYTE>(charSet);
    font.lfOutPrecision = static_cast<BYTE>(outPrecision);
    font.lfClipPrecision = static_cast<BYTE>(clipPrecision);
    font.lfQuality = static_cast<BYTE>(quality);
    font.lfPitchAndFamily = static_cast<BYTE>(pitchAndFamily);
    return font;
}

template <class Type>
HGDIOBJ SelectOne(Selected<Type>& place, HGDIOBJ handle, std::shared_ptr<GdiObject> object)
{
    const HGDIOBJ former = place.handle;
    place = {handle, std::static_pointer_cast<Type>(std::move(object))};
    return former;
}

HGDIOBJ SelectBitmap(Context& context, HGDIOBJ handle, const std::shared_ptr<GdiObject>& object)
{
    const auto bitmap = std::static_pointer_cast<Bitmap>(object);
    const HGDIOBJ former = context.state.bitmap.handle;
    if (context.type != OBJ_MEMDC || (bitmap->isSelected && former != handle))
        return nullptr;
    context.state.bitmap.object->isSelected = false;
    bitmap->isSelected = handle != SmallestBitmap();
    context.state.bitmap = {handle, bitmap};
    context.ClipChanges();
    return former;
}

template <class Value>
int Give(const Value& value, int size, void* buffer)
{
    constexpr int kSize = sizeof(Value);
    if (!buffer)
        return kSize;
    const int given = std::clamp(size, 0, kSize);
    std::memcpy(buffer, &value, static_cast<std::size_t>(given));
    return given;
}

int ReadObject(HANDLE handle, int size, void* buffer, bool isWide)
{
    return OrNoMemory(0, [=] {
        const DesktopGuard guard;
        const auto object = FindObject(handle);
        switch (object ? object->type : 0) {
        case OBJ_PEN:
            return Give(std::static_pointer_cast<Pen>(object)->pen, size, buffer);
        case OBJ_BRUSH:
            return Give(std::static_pointer_cast<Brush>(object)->brush, size, buffer);
        case OBJ_FONT: {
            const LOGFONTW& font = std::static_pointer_cast<Font>(object)->font;
            return isWide ? Give(font, size, buffer) : Give(Narrow(font), size, buffer);
        }
        case OBJ_BITMAP: {
            constexpr int kSize = sizeof(BITMAP);
            return buffer && size < kSize ? 0 : Give(std::static_pointer_cast<Bitmap>(object)->bitmap, size, buffer);
        }
        default:
            return Fail(ERROR_INVALID_HANDLE, 0);
        }
    });
}

}  // namespace

HPEN CreatePen(int style, int width, COLORREF color)
{
    // By contract a style that is none is PS_SOLID.
    const UINT known = style < PS_SOLID || style > PS_INSIDEFRAME ? PS_SOLID : static_cast<UINT>(style);
    const LONG amount = known == PS_NULL ? 0 : width < 0 ? static_cast<LONG>(0u - static_cast<DWORD>(width)) : width;
    return Create<HPEN, Pen>(LOGPEN{known, {amount, 0}, color});
}

HPEN CreatePenIndirect(const LOGPEN* pen)
{
    return pen ? CreatePen(static_cast<int>(pen->lopnStyle), pen->lopnWidth.x, pen->lopnColor) : nullptr;
}

HBRUSH CreateSolidBrush(COLORREF color)
{
    return Create<HBRUSH, Brush>(LOGBRUSH{BS_SOLID, color, 0});
}

HBRUSH CreateHatchBrush(int hatch, COLORREF color)
{
    if (hatch < HS_HORIZONTAL || hatch > HS_DIAGCROSS)
        return Fail(ERROR_INVALID_PARAMETER, HBRUSH{});
    return Create<HBRUSH, Brush>(LOGBRUSH{BS_HATCHED, color, static_cast<ULONG_PTR>(hatch)});
}

HBRUSH CreateBrushIndirect(const LOGBRUSH* brush)
{
    if (!brush || brush->lbStyle > BS_HATCHED)
        return Fail(ERROR_INVALID_PARAMETER, HBRUSH{});
    if (brush->lbStyle == BS_HATCHED)
        return CreateHatchBrush(static_cast<int>(brush->lbHatch), brush->lbColor);
    return Create<HBRUSH, Brush>(LOGBRUSH{brush->lbStyle, brush->lbColor, 0});
}

HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline, DWORD strikeOut,
                  DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily, LPCSTR face)
{
    const std::u16string wide = WideText(face);
    return CreateFontW(height, width, escapement, orientation, weight, italic, underline, strikeOut, charSet, outPrecision, clipPrecision,
                       quality, pitchAndFamily, reinterpret_cast<LPCWSTR>(wide.c_str()));
}

HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline, DWORD strikeOut,
                  DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily, LPCWSTR face)
{
    LOGFONTW font = FontOf(height, width, escapement, orientation, weight, italic, underline, strikeOut, charSet, outPrecision,
                           clipPrecision, quality, pitchAndFamily);
    if (face)
        SetFace(font.lfFaceName, std::basic_string_view<WCHAR>(face));
    return CreateFontIndirectW(&font);
}

HFONT CreateFontIndirectA(const LOGFONTA* font)
{
    return font ? Create<HFONT, Font>(Wide(*font)) : nullptr;
}

HFONT CreateFontIndirectW(const LOGFONTW* font)
{
    return font ? Create<HFONT, Font>(*font) : nullptr;
}

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void*)
{
    constexpr int kLargest = 0x7FFFFF;
    if (width < 0 || height < 0 || width > kLargest || height > kLargest || planes > 32 || bitsPerPixel > 32)
        return Fail(ERROR_INVALID_PARAMETER, HBITMAP());
    // By contract a bitmap without a size is no failure but one black-and-white pixel, for the caller to delete.
    if (width == 0 || height == 0) {
        width = height = 1;
        planes = bitsPerPixel = 1;
    }
    const int rowBytes = (width * static_cast<int>(bitsPerPixel) + 15) / 16 * 2;
    return Create<HBITMAP, Bitmap>(BITMAP{0, width, height, rowBytes, static_cast<WORD>(planes), static_cast<WORD>(bitsPerPixel), nullptr});
}

HBITMAP CreateCompatibleBitmap(HDC context, int width, int height)
{
    return WithContext(context, HBITMAP{}, [=](Context& found) {
        // By contract a memory context's bitmap says how many bits a pixel has.
        const UINT bits = found.type == OBJ_MEMDC ? found.state.bitmap.object->bitmap.bmBitsPixel : 32;
        return CreateBitmap(width, height, 1, bits, nullptr);
    });
}

HGDIOBJ SelectObject(HDC context, HGDIOBJ object)
{
    return WithContext(context, HGDIOBJ{}, [=](Context& found) -> HGDIOBJ {
        const auto selected = FindObject(object);
        switch (selected ? selected->type : 0) {
        case OBJ_PEN:
            return SelectOne(found.state.pen, object, selected);
        case OBJ_BRUSH:
            return SelectOne(found.state.brush, object, selected);
        case OBJ_FONT:
            return SelectOne(found.state.font, object, selected);
        case OBJ_BITMAP:
            return SelectBitmap(found, object, selected);
        case OBJ_REGION: {
            const Region& region = std::static_pointer_cast<RegionObject>(selected)->region;
            found.state.clip = region;
            found.ClipChanges();
            return reinterpret_cast<HGDIOBJ>(static_cast<ULONG_PTR>(region.Complexity()));
        }
        default:
            return Fail(ERROR_INVALID_HANDLE, HGDIOBJ{});
        }
    });
}

HGDIOBJ GetCurrentObject(HDC context, UINT type)
{
    return WithContext(context, HGDIOBJ{}, [=](Context& found) -> HGDIOBJ {
        switch (type) {
        case OBJ_PEN:
            return found.state.pen.handle;
        case OBJ_BRUSH:
            return found.state.brush.handle;
        case OBJ_FONT:
            return found.state.font.handle;
        case OBJ_BITMAP:
            return found.state.bitmap.handle;
        default:
            return Fail(ERROR_INVALID_PARAMETER, HGDIOBJ{});
        }
    });
}

DWORD GetObjectType(HGDIOBJ object)
{
    const DesktopGuard guard;
    const auto found = FindObject(object);
    return found ? found->type : Fail(ERROR_INVALID_HANDLE, DWORD{0});
}

int GetObjectA(HANDLE object, int size, LPVOID buffer)
{
    return ReadObject(object, size, buffer, false);
}

int GetObjectW(HANDLE object, int size, LPVOID buffer)
{
    return ReadObject(object, size, buffer, true);
}

BOOL DeleteObject(HGDIOBJ object)
{
    const DesktopGuard guard;
    const auto found = FindObject(object);
    if (!found)
        return FALSE;
    if (found->type == OBJ_DC || found->type == OBJ_MEMDC)
        return DeleteDC(static_cast<HDC>(object));
    RemoveObject(object);
    return TRUE;
}
