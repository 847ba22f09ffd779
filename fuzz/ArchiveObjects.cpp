// ArchiveObjects.cpp: any bytes as an archive of objects that hold others; what was loaded is stored and loaded again.
#include "Input.h"

#include <kelgen/framework/collections/ArrayTypes.h>
#include <kelgen/framework/collections/ListTypes.h>
#include <kelgen/framework/collections/MapTypes.h>
#include <kelgen/framework/collections/StringArray.h>
#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/files/MemFile.h>

#include <set>
#include <vector>

using namespace fuzz;

// The collections do not own what they hold, and one whose loading fails is gone: every object is known here until it is deleted.
struct FuzzTracked
{
    FuzzTracked() { All().insert(this); }
    virtual ~FuzzTracked() { All().erase(this); }
    FuzzTracked(const FuzzTracked&) = delete;
    FuzzTracked& operator=(const FuzzTracked&) = delete;

    static std::set<FuzzTracked*>& All()
    {
        static std::set<FuzzTracked*> all;
        return all;
    }
};

// Short names, which the fuzzer finds.
#define FUZZ_CLASS(name, base)                                                                                                             \
    class name : public base, public FuzzTracked                                                                                           \
    {                                                                                                                                      \
        DECLARE_SERIAL(name)                                                                                                               \
    };                                                                                                                                     \
    IMPLEMENT_SERIAL(name, base, 1)

FUZZ_CLASS(FS, CStringArray)
FUZZ_CLASS(FB, CByteArray)
FUZZ_CLASS(FD, CDWordArray)
FUZZ_CLASS(FO, CObArray)
FUZZ_CLASS(FL, CObList)
FUZZ_CLASS(FT, CStringList)
FUZZ_CLASS(FM, CMapStringToOb)
FUZZ_CLASS(FW, CMapWordToOb)
FUZZ_CLASS(FP, CMapStringToString)

namespace {

void DeleteAll()
{
    while (!FuzzTracked::All().empty())
        delete *FuzzTracked::All().begin();
}

std::string Stored(const std::vector<CObject*>& objects)
{
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store, 128);
        for (const CObject* object : objects)
            archive << object;
        archive.Close();
    }
    std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

/// The objects up to the first one that is none.
std::vector<CObject*> Loaded(std::string bytes)
{
    CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load, 128);
    std::vector<CObject*> objects;
    try {
        for (;;) {
            CObject* object = nullptr;
            archive >> object;
            objects.push_back(object);
        }
    } catch (CArchiveException* e) {
        e->Delete();
    }
    return objects;
}

bool NamesOthers(const std::string& bytes)
{
    for (const char* name : {"CByteArray", "CWordArray", "CDWordArray", "CObArray", "CStringArray", "CStringList", "CObList", "CMap"})
        if (bytes.find(name) != std::string::npos)
            return true;
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    if (NamesOthers(bytes))
        return 0;
    const std::vector<CObject*> objects = Loaded(bytes);
    try {
        const std::string stored = Stored(objects);
        const std::vector<CObject*> again = Loaded(stored);
        // A map may come back in another order.
        Require(again.size() == objects.size() && Stored(again).size() == stored.size());
    } catch (CArchiveException* e) {
        // Objects that hold each other in a chain longer than an archive takes.
        Require(e->m_cause == CArchiveException::badIndex);
        e->Delete();
    }
    DeleteAll();
    return 0;
}
