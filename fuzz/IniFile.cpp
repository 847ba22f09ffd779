// IniFile.cpp: any bytes as an INI file: every property is found again, and nothing comes from outside the file.
#include "Input.h"

#include <kelgen/persistence/IniFile.h>

#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

using fuzz::Require;

namespace {

// A file without a name, gone with the object.
class MemoryFile
{
public:
    MemoryFile(const unsigned char* data, std::size_t size) : m_descriptor(memfd_create("fuzz", 0))
    {
        Require(m_descriptor >= 0 && write(m_descriptor, data, size) == static_cast<ssize_t>(size));
    }
    ~MemoryFile() { close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string GetPath() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

private:
    int m_descriptor;
};

// The bytes of the names and values that the section holds.
std::size_t Measure(const _kelgen::CIniSection& section)
{
    int bytes = section.GetName().GetLength();
    for (int i = 0; i < section.GetPropertiesCount(); ++i) {
        const _kelgen::CIniProperty& property = *section.GetPropertyAt(i);
        bytes += property.GetName().GetLength() + property.GetValue().GetLength();
        int first = 0;
        while (section.GetPropertyAt(first)->GetName().CompareNoCase(property.GetName()) != 0)
            ++first;
        Require(section.GetPropertyValue(property.GetName()) == section.GetPropertyAt(first)->GetValue());
    }
    CStringArray values;
    section.GetPropertyValue(values);
    Require(values.GetSize() == section.GetValuesCount());
    for (int i = 0; i < values.GetSize(); ++i)
        bytes += values.GetAt(i).GetLength();
    return static_cast<std::size_t>(bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const MemoryFile file(data, size);
    _kelgen::CIniFile ini;
    Require(ini.LoadFile(file.GetPath().c_str()));
    std::size_t bytes = 0;
    for (int i = 0; i < ini.GetSize(); ++i)
        bytes += Measure(*ini.GetAt(i));
    Require(bytes <= size);
    return 0;
}
