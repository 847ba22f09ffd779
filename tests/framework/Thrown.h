// Thrown.h: which framework exception a piece of code throws.
#pragma once

#include <kelgen/framework/base/Exceptions.h>

#include <string>

namespace kelgen::test {

/// The class of the framework exception that @p code throws, with the cause of file and archive exceptions ("CFileException 2"); empty
/// when it throws none.
template <class CODE>
std::string Thrown(CODE&& code)
{
    try {
        code();
    } catch (CException* e) {
        std::string name = e->GetRuntimeClass()->m_lpszClassName;
        if (const auto* file = dynamic_cast<CFileException*>(e))
            name += " " + std::to_string(file->m_cause);
        if (const auto* archive = dynamic_cast<CArchiveException*>(e))
            name += " " + std::to_string(archive->m_cause);
        e->Delete();
        return name;
    }
    return {};
}

}  // namespace kelgen::test
