// TextDocument.h: a document that keeps a text, and why it could not be loaded or saved.
#pragma once

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/frames/Document.h>

namespace kelgen::test {

class TextDocument : public CDocument
{
public:
    explicit TextDocument(const CString& kept = CString()) : text(kept) {}

    void Serialize(CArchive& archive) override
    {
        if (archive.IsStoring())
            archive << text;
        else
            archive >> text;
    }
    void ReportSaveLoadException(LPCSTR, CException* e, BOOL, UINT) override
    {
        const auto file = DYNAMIC_DOWNCAST(CFileException, e);
        error = file ? static_cast<DWORD>(file->m_lOsError) : e->IsKindOf(RUNTIME_CLASS(CMemoryException)) ? ERROR_NOT_ENOUGH_MEMORY : 0;
    }

    CString text;
    DWORD error = 0;
};

}  // namespace kelgen::test
