// ResourceLookup.cpp: the order in which modules are asked for a resource, and texts in string tables.
#include <kelgen/framework/program/ModuleState.h>

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/program/internal/StringTable.h>

#include <algorithm>
#include <cstring>

using namespace kelgen::detail;

namespace {

/// The first listed library of that kind which @p has says has it, or null.
template <class Has>
HINSTANCE FindInLibraries(const AFX_MODULE_STATE* state, BOOL system, Has has)
{
    HINSTANCE found = nullptr;
    AfxLockGlobals(CRIT_DYNLINKLIST);
    for (const CDynLinkLibrary* library = state->m_libraryList; library && !found; library = library->m_pNextDLL) {
        if (!library->m_bSystem == !system && library->m_hResource && has(library->m_hResource))
            found = library->m_hResource;
    }
    AfxUnlockGlobals(CRIT_DYNLINKLIST);
    return found;
}

template <class Has>
HINSTANCE FindModule(Has has)
{
    const AFX_MODULE_STATE* const state = AfxGetModuleState();
    const HINSTANCE own = state->m_hCurrentResourceHandle;
    if (!state->m_bSystem && has(own))
        return own;
    if (const HINSTANCE found = FindInLibraries(state, FALSE, has))
        return found;
    if (state->m_appLangDLL && has(state->m_appLangDLL))
        return state->m_appLangDLL;
    if (state->m_bSystem && has(own))
        return own;
    return FindInLibraries(state, TRUE, has);
}

LPSTR BlockOf(UINT id)
{
    return MAKEINTRESOURCEA((id >> 4) + 1);
}

/// Walks a block of 16 counted texts; the block ends with its resource, damaged or not.
ResourceText TextInBlock(HINSTANCE module, HRSRC block, UINT id)
{
    if (!block)
        return {};
    const auto units = static_cast<const WCHAR*>(LockResource(LoadResource(module, block)));
    const std::size_t size = SizeofResource(module, block) / sizeof(WCHAR);
    if (!units)
        return {};
    std::size_t at = 0;
    for (UINT skipped = 0; skipped < (id & 15) && at < size; ++skipped)
        at += 1u + units[at];
    if (at >= size || units[at] == 0 || units[at] > size - at - 1)
        return {};
    return {units + at + 1, units[at]};
}

}  // namespace

ResourceText kelgen::detail::FindResourceText(HINSTANCE module, UINT id)
{
    return TextInBlock(module, FindResourceA(module, BlockOf(id), RT_STRING), id);
}

ResourceText kelgen::detail::FindResourceText(HINSTANCE module, UINT id, WORD language)
{
    return TextInBlock(module, FindResourceExA(module, RT_STRING, BlockOf(id), language), id);
}

HINSTANCE AfxFindResourceHandle(LPCSTR name, LPCSTR type)
{
    const HINSTANCE found = FindModule([=](HINSTANCE module) { return FindResourceA(module, name, type) != nullptr; });
    return found ? found : AfxGetResourceHandle();
}

HINSTANCE AfxFindStringResourceHandle(UINT id)
{
    return FindModule([=](HINSTANCE module) { return static_cast<bool>(FindResourceText(module, id)); });
}

int AfxLoadString(UINT id, LPSTR buffer, UINT capacity)
{
    if (!buffer || capacity == 0)
        return 0;
    CString text;
    text.LoadString(id);
    const int length = static_cast<int>(std::min<UINT>(static_cast<UINT>(text.GetLength()), capacity - 1));
    std::memcpy(buffer, text.GetString(), static_cast<std::size_t>(length));
    buffer[length] = 0;
    return length;
}
