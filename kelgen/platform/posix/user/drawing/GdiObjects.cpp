// GdiObjects.cpp: the table of objects, and the system's own ones.
#include <kelgen/platform/posix/user/drawing/GdiObjects.h>

#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/objects/UserHandles.h>

#include <algorithm>
#include <array>

namespace kelgen::posix::user {

namespace {

// By contract the handles of the system's own objects are the same in every run. Their steps of 8 keep them apart from those of the table.
constexpr ULONG_PTR kFirstStock = 0x01900020;
constexpr ULONG_PTR kFirstSystemBrush = 0x01A00020;
constexpr ULONG_PTR kStep = 8;
constexpr std::size_t kSmallestBitmap = 20;
constexpr std::size_t kStockCount = 21;
constexpr std::size_t kColorCount = 31;

using Objects = UserHandleTable<HGDIOBJ, std::shared_ptr<GdiObject>, HandleKind::kDrawing>;

Objects& Table()
{
    static Objects& table = *new Objects;
    return table;
}

std::shared_ptr<GdiObject> StockBrush(UINT style, COLORREF color)
{
    return std::make_shared<Brush>(LOGBRUSH{style, color, 0});
}

std::shared_ptr<GdiObject> StockPen(UINT style, COLORREF color)
{
    return std::make_shared<Pen>(LOGPEN{style, {0, 0}, color});
}

std::shared_ptr<GdiObject> StockFont(LONG height, LONG weight, std::u16string_view face, BYTE pitch)
{
    LOGFONTW font{};
    font.lfHeight = height;
    font.lfWeight = weight;
    font.lfPitchAndFamily = pitch;
    std::ranges::copy(face, font.lfFaceName);
    return std::make_shared<Font>(font);
}

using Stock = std::array<std::shared_ptr<GdiObject>, kStockCount>;

Stock MakeStock()
{
    Stock stock;
    constexpr COLORREF kGreys[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0x000000};
    for (std::size_t i = 0; i < std::size(kGreys); ++i)
        stock[i] = StockBrush(BS_SOLID, kGreys[i]);
    stock[NULL_BRUSH] = StockBrush(BS_NULL, 0);
    stock[WHITE_PEN] = StockPen(PS_SOLID, 0xFFFFFF);
    stock[BLACK_PEN] = StockPen(PS_SOLID, 0);
    stock[NULL_PEN] = StockPen(PS_NULL, 0);
    stock[OEM_FIXED_FONT] = StockFont(12, FW_NORMAL, u"", FIXED_PITCH | FF_MODERN);
    stock[ANSI_FIXED_FONT] = StockFont(12, FW_NORMAL, u"Courier", FIXED_PITCH | FF_MODERN);
    stock[ANSI_VAR_FONT] = StockFont(12, FW_NORMAL, u"MS Sans Serif", VARIABLE_PITCH | FF_SWISS);
    stock[SYSTEM_FONT] = StockFont(16, FW_BOLD, u"System", VARIABLE_PITCH | FF_SWISS);
    stock[DEVICE_DEFAULT_FONT] = StockFont(16, FW_BOLD, u"System", VARIABLE_PITCH | FF_SWISS);
    stock[SYSTEM_FIXED_FONT] = StockFont(16, FW_NORMAL, u"Courier", FIXED_PITCH | FF_MODERN);
    stock[DEFAULT_GUI_FONT] = StockFont(-11, FW_NORMAL, u"MS Shell Dlg", VARIABLE_PITCH | FF_SWISS);
    auto brush = std::make_shared<Brush>(LOGBRUSH{BS_SOLID, 0xFFFFFF, 0});
    auto pen = std::make_shared<Pen>(LOGPEN{PS_SOLID, {0, 0}, 0});
    brush->isOfContext = pen->isOfContext = true;
    stock[kSmallestBitmap] = std::make_shared<Bitmap>(BITMAP{0, 1, 1, 2, 1, 1, nullptr});
    stock[DC_BRUSH] = brush;
    stock[DC_PEN] = pen;
    return stock;
}

const Stock& StockObjects()
{
    static const Stock& stock = *new Stock(MakeStock());
    return stock;
}

const std::shared_ptr<Brush>& SystemBrush(std::size_t index)
{
    static const auto& brushes = *new std::array<std::shared_ptr<Brush>, kColorCount>([] {
        std::array<std::shared_ptr<Brush>, kColorCount> made;
        for (std::size_t i = 0; i < kColorCount; ++i)
            made[i] = std::make_shared<Brush>(LOGBRUSH{BS_SOLID, GetSysColor(static_cast<int>(i)), 0});
        return made;
    }());
    return brushes[index];
}

HGDIOBJ StockHandle(std::size_t index)
{
    return reinterpret_cast<HGDIOBJ>(kFirstStock + kStep * index);
}

/// Which one of a row of fixed handles it is; @p count for none.
std::size_t PlaceIn(ULONG_PTR first, std::size_t count, const void* handle)
{
    const auto value = reinterpret_cast<ULONG_PTR>(handle);
    if (value < first || (value - first) % kStep != 0 || (value - first) / kStep >= count)
        return count;
    return (value - first) / kStep;
}

}  // namespace

HGDIOBJ InsertObject(std::shared_ptr<GdiObject> object)
{
    return Table().Insert(std::make_unique<std::shared_ptr<GdiObject>>(std::move(object)));
}

std::shared_ptr<GdiObject> FindObject(const void* handle)
{
    if (const auto* const found = Table().Find(handle))
        return *found;
    if (const std::size_t stock = PlaceIn(kFirstStock, kStockCount, handle); stock < kStockCount)
        return StockObjects()[stock];
    if (const std::size_t color = PlaceIn(kFirstSystemBrush, kColorCount, handle); color < kColorCount)
        return SystemBrush(color);
    return nullptr;
}

bool RemoveObject(const void* handle)
{
    return Table().Remove(handle) != nullptr;
}

std::shared_ptr<Brush> FindBrush(HBRUSH brush)
{
    const auto number = reinterpret_cast<ULONG_PTR>(brush);
    if (number > 0 && number <= kColorCount)
        return SystemBrush(number - 1);
    return FindObjectOf<Brush>(brush);
}

HGDIOBJ SmallestBitmap()
{
    return StockHandle(kSmallestBitmap);
}

bool IsSystemBrush(HBRUSH brush)
{
    return reinterpret_cast<ULONG_PTR>(brush) <= kColorCount || PlaceIn(kFirstSystemBrush, kColorCount, brush) < kColorCount;
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix::user;

HBRUSH GetSysColorBrush(int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= kColorCount)
        return nullptr;
    return reinterpret_cast<HBRUSH>(kFirstSystemBrush + kStep * static_cast<ULONG_PTR>(index));
}

HGDIOBJ GetStockObject(int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= kSmallestBitmap || !StockObjects()[static_cast<std::size_t>(index)])
        return nullptr;
    return StockHandle(static_cast<std::size_t>(index));
}
