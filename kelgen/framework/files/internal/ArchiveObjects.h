// ArchiveObjects.h: the numbers by which an archive knows the objects and classes it has met.
#pragma once

#include <kelgen/framework/files/Archive.h>

#include <unordered_map>
#include <vector>

/// Numbers count from 1 in the order of first meeting, objects and classes alike; 0 is the null object.
struct CArchive::ObjectMaps
{
    /// A number's meaning when loading: an object, or a class with its stored schema.
    struct Loaded
    {
        CObject* object;
        CRuntimeClass* runtimeClass;
        UINT schema;
    };

    class Level;

    std::unordered_map<const void*, DWORD> stored;
    std::vector<Loaded> loaded{{nullptr, nullptr, 0}};
    DWORD count = 1;
    UINT depth = 0;  // of the objects that are being stored or loaded inside each other
};
