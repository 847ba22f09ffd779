// Resource.h: copies of custom resources.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/persistence/MemoryStorage.h>
#include <kelgen/platform/Win32.h>

/// Copies the bytes of a resource of number @p id and type @p type out of a loaded module.
///
///     CMemoryStorage page(nullptr);
///     if (CResource::LoadResource(page, IDR_PAGE, "PAGE")) ...
///
/// Without a module the first one that has the resource is taken, in the framework's order. All return false, and leave the
/// target as it was, when the resource is missing. Threads: any.
class KELGEN_API CResource
{
public:
    CResource();
    CResource(const CResource& other);
    CResource& operator=(const CResource& other);
    virtual ~CResource();

    /// Throws: CMemoryException, as CMemoryStorage::Allocate. Null @p module is false.
    static bool LoadResource(CMemoryStorage& out, HINSTANCE module, unsigned id, const char* type);
    /// Does the same with the module that has such a resource: the program's own resources first.
    static bool LoadResource(CMemoryStorage& out, unsigned id, const char* type);

    /// By contract: the text ends at the resource's first zero, as texts do that tools end by one.
    static bool LoadResource(CString& out, HINSTANCE module, unsigned id, const char* type);
    /// By contract: the text is as long as the resource, and is zeros from the resource's first zero on.
    static bool LoadResource(CString& out, unsigned id, const char* type);
};
