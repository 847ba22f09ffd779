// WStrResource.cpp: string resources.
#include <kelgen/text/WStr.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/text/internal/ScanUnits.h>
#include <kelgen/text/internal/WStrBlocks.h>

using namespace kelgen::detail;

namespace {

/// A text where it lies in its module, without a terminator; empty when no module has it.
struct ResourceText
{
    const unsigned short* units = nullptr;
    int length = 0;

    explicit ResourceText(UINT id)
    {
        // The loader takes capacity 0 as the question for the address.
        if (const HINSTANCE module = AfxFindStringResourceHandle(id))
            length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&units), 0);
    }
};

}  // namespace

bool CWStr::LoadStringA(UINT id)
{
    // Longer texts get a buffer of whole steps, which leaves more units free than the margin.
    constexpr int kStep = 256;
    constexpr int kMargin = 2;

    const ResourceText text(id);
    if (kStep - text.length > kMargin) {
        AssignCopy(kelgen::detail::LengthToZero(text.units, text.length), text.units);
        return text.length > 0;
    }

    int size = 2 * kStep;
    while (size - text.length <= kMargin)
        size += kStep;
    unsigned short* const buffer = GetBuffer(size - 1);
    CopyUnits(buffer, text.units, text.length);
    buffer[text.length] = 0;
    ReleaseBuffer();
    return text.length > 0;
}
