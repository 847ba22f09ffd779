// BaseMapPtrToPtr.cpp: counting by walking.
#include <kelgen/containers/BaseMapPtrToPtr.h>

#include <kelgen/framework/windows/Wnd.h>

namespace {

template <class COUNTS>
int CountValues(const CMapPtrToPtr& map, COUNTS counts)
{
    int count = 0;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        void* key;
        void* value;
        map.GetNextAssoc(position, key, value);
        count += counts(value) ? 1 : 0;
    }
    return count;
}

bool IsVisibleWindow(const void* value)
{
    return value && ::IsWindowVisible(static_cast<const CWnd*>(value)->m_hWnd);
}

}  // namespace

int CBaseMapPtrToPtr::GetSize_() const
{
    return CountValues(*this, [](const void*) { return true; });
}

int CBaseMapPtrToPtr::GetWndVisibleCount() const
{
    return CountValues(*this, IsVisibleWindow);
}

int CBaseMapPtrToPtr::GetWndVisibleCountExcept(const CWnd* except) const
{
    return CountValues(*this, [except](const void* value) { return value != except && IsVisibleWindow(value); });
}
