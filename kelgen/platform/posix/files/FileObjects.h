// FileObjects.h: what a file's handle stands for.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/Handles.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelgen::posix {

/// A range of bytes that LockFile locked.
struct LockedRange
{
    ULONGLONG offset;
    ULONGLONG size;
    bool operator==(const LockedRange&) const = default;
};

/// An open file; all duplicates of a handle share it.
struct OpenFile
{
    OpenFile(Descriptor opened, bool folder) : descriptor(std::move(opened)), isFolder(folder) {}
    ~OpenFile();

    Descriptor descriptor;
    bool isFolder;
    bool isStandard = false;  // one of the process's standard files, which stay open
    std::string deleteAtEnd;  // the path to delete when this ends, or empty
    std::mutex locksMutex;
    std::vector<LockedRange> locks;
};

/// A handle's view of an open file: the file and what may be done with it.
class FileObject : public HandleObject
{
public:
    FileObject(std::shared_ptr<OpenFile> file, DWORD access) : m_file(std::move(file)), m_access(access) {}

    OpenFile& File() const { return *m_file; }
    const std::shared_ptr<OpenFile>& Shared() const { return m_file; }
    int Number() const { return m_file->descriptor.Get(); }
    DWORD Access() const { return m_access; }
    bool MayRead() const;
    bool MayWrite() const;

private:
    std::shared_ptr<OpenFile> m_file;
    DWORD m_access;
};

/// The specific rights that @p access asks for, generic ones resolved.
DWORD SpecificAccess(DWORD access);

/// Opens a file as CreateFileA does; null with the last error set. Success sets the last error too. A file that was made goes again when
/// memory runs out; its path is given to @p madePath.
std::shared_ptr<FileObject> OpenFileObject(std::string_view name, DWORD access, DWORD share, DWORD disposition, DWORD attributes,
                                           std::string* madePath = nullptr);

}  // namespace kelgen::posix
