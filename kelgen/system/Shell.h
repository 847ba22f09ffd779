// Shell.h: processes by name, tests and searches in the file system, comparison of paths, the root of file associations.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/collections/StringArray.h>
#include <kelgen/persistence/Registry.h>
#include <kelgen/platform/Win32.h>

/// Tests and searches in the file system. Patterns have the platform's wild cards; null and empty paths name nothing.
/// Threads: any.
class KELGEN_API shell
{
public:
    /// By contract: true only for a file whose attributes have FILE_ATTRIBUTE_NORMAL (0x80); one that is marked, as archive for
    /// instance, counts as absent, and so does a folder.
    static bool file_exists(const char* path);
    /// Whether @p path is an existing folder.
    static bool is_dir(const char* path);

    /// Adds the full path, the name and the title (the name without extension) of every entry that matches @p pattern to the
    /// arrays that are given, and returns the number of these entries. "." and ".." only when @p withDots.
    static int fs_find(const char* pattern, bool withDots, CStringArray* paths, CStringArray* names, CStringArray* titles);
    /// fs_find for folders only.
    static int dir_find(const char* pattern, bool withDots, CStringArray* paths, CStringArray* names, CStringArray* titles);
    /// fs_find for all that is no folder.
    static int file_find(const char* pattern, CStringArray* paths, CStringArray* names, CStringArray* titles);

    /// Creates every missing folder along @p path, whose separators are slashes of both kinds; true when all are there. False at the
    /// first one that is a file or cannot be created, with CreateDirectoryA's last error; those before it stay. True for the empty
    /// path.
    static bool mkdirp(const char* path);
};

namespace File {

/// A base for hosts' own helpers over files; it holds nothing.
class KELGEN_API CUtil
{
public:
    virtual ~CUtil();
};

/// Whether two paths, OEM text, are spelt alike or have equal short forms. By contract: case counts, since the texts are compared as they
/// are; paths that differ in case are equal only when they exist and the file system's short forms are.
KELGEN_API bool IsEqualFilePath(const char* a, const char* b);

}  // namespace File

namespace _kelgen {

/// The id of a running process whose program's file name is @p exeName, in any case; 0 when there is none. @p count receives the
/// number of such processes. By contract, so a caller that needs one certain process looks further:
/// - of several the last one listed is returned;
/// - at most 250 processes are looked at;
/// - a process that may not be opened or looked into is called "Unknown";
/// - only the handle of the last process that was opened is closed.
/// On platform 1 all processes are searched for a module, of any kind, whose name is @p exeName in upper case exactly.
/// Cost: a look into every process.
KELGEN_API DWORD GetProcessIDbyName(const char* exeName, DWORD& count);

/// The root of the file associations.
class KELGEN_API CFileAssociation : public CRegistry
{
public:
    /// By contract: the handle stays open, for others that hold it.
    ~CFileAssociation() override;

    /// Opens HKEY_CLASSES_ROOT; true on success.
    virtual bool Initialize();

    /// The key that Initialize opened, null before.
    HKEY GetHKEYClassesRoot() const { return m_classesRoot; }

private:
    HKEY m_classesRoot = nullptr;
};

}  // namespace _kelgen
