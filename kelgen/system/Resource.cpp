// Resource.cpp: finds, loads and copies resources.
#include <kelgen/system/Resource.h>

#include <kelgen/framework/program/ModuleState.h>

#include <cstring>

namespace {

/// The characters of @p bytes before the first zero.
int TextLength(const CMemoryStorage& bytes)
{
    return static_cast<int>(strnlen(reinterpret_cast<const char*>(bytes.GetAllocation()), bytes.GetStorageSize()));
}

/// Becomes the text at the beginning of @p bytes and zeros up to @p length.
void CopyText(CString& out, const CMemoryStorage& bytes, int length)
{
    const int textLength = bytes.GetStorageSize() == 0 ? 0 : TextLength(bytes);
    char* const text = out.GetBuffer(length);
    std::memset(text, 0, static_cast<std::size_t>(length) + 1);
    if (textLength > 0)
        std::memcpy(text, bytes.GetAllocation(), static_cast<std::size_t>(textLength));
    out.ReleaseBufferSetLength(length);
}

HINSTANCE ModuleWith(unsigned id, const char* type)
{
    return AfxFindResourceHandle(MAKEINTRESOURCEA(id), type);
}

}  // namespace

CResource::CResource() = default;
CResource::CResource(const CResource&) = default;
CResource& CResource::operator=(const CResource&) = default;
CResource::~CResource() = default;

bool CResource::LoadResource(CMemoryStorage& out, HINSTANCE module, unsigned id, const char* type)
{
    if (!module)
        return false;
    const HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(id), type);
    const HGLOBAL loaded = found ? ::LoadResource(module, found) : nullptr;
    if (!loaded)
        return false;
    const DWORD size = SizeofResource(module, found);
    const void* const bytes = LockResource(loaded);
    if (!bytes)
        return false;
    out.Allocate(size);
    if (size > 0)
        std::memcpy(out.GetAllocation(), bytes, size);
    return true;
}

bool CResource::LoadResource(CMemoryStorage& out, unsigned id, const char* type)
{
    return LoadResource(out, ModuleWith(id, type), id, type);
}

bool CResource::LoadResource(CString& out, HINSTANCE module, unsigned id, const char* type)
{
    CMemoryStorage bytes(nullptr);
    if (!LoadResource(bytes, module, id, type))
        return false;
    CopyText(out, bytes, bytes.GetStorageSize() == 0 ? 0 : TextLength(bytes));
    return true;
}

bool CResource::LoadResource(CString& out, unsigned id, const char* type)
{
    CMemoryStorage bytes(nullptr);
    if (!LoadResource(bytes, id, type))
        return false;
    CopyText(out, bytes, static_cast<int>(bytes.GetStorageSize()));
    return true;
}
