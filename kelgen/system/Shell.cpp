// Shell.cpp: tests and searches in the file system, comparison of paths, the root of file associations.
#include <kelgen/system/Shell.h>

#include <kelgen/framework/files/FileFind.h>
#include <kelgen/text/StrArray.h>
#include <kelgen/text/WStr.h>

namespace {

/// The attributes at @p path, 0 when there is nothing.
DWORD AttributesOf(const char* path)
{
    const DWORD attributes = path ? GetFileAttributesA(path) : INVALID_FILE_ATTRIBUTES;
    return attributes == INVALID_FILE_ATTRIBUTES ? 0 : attributes;
}

void AddTo(CStringArray* array, const CString& text)
{
    if (array)
        array->Add(text);
}

template <class Takes>
int Find(const char* pattern, Takes takes, CStringArray* paths, CStringArray* names, CStringArray* titles)
{
    CFileFind find;
    int count = 0;
    // The finder takes null for all files.
    for (BOOL more = find.FindFile(pattern ? pattern : ""); more;) {
        more = find.FindNextFile();
        if (!takes(find))
            continue;
        ++count;
        AddTo(paths, find.GetFilePath());
        AddTo(names, find.GetFileName());
        AddTo(titles, find.GetFileTitle());
    }
    return count;
}

CWStr FromOem(const char* path)
{
    CWStr wide;
    wide.SetOEM(path);
    return wide;
}

}  // namespace

bool shell::file_exists(const char* path)
{
    return (AttributesOf(path) & (FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_DIRECTORY)) == FILE_ATTRIBUTE_NORMAL;
}

bool shell::is_dir(const char* path)
{
    return (AttributesOf(path) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int shell::fs_find(const char* pattern, bool withDots, CStringArray* paths, CStringArray* names, CStringArray* titles)
{
    return Find(
        pattern, [=](const CFileFind& find) { return withDots || !find.IsDots(); }, paths, names, titles);
}

int shell::dir_find(const char* pattern, bool withDots, CStringArray* paths, CStringArray* names, CStringArray* titles)
{
    return Find(
        pattern, [=](const CFileFind& find) { return find.IsDirectory() && (withDots || !find.IsDots()); }, paths, names, titles);
}

int shell::file_find(const char* pattern, CStringArray* paths, CStringArray* names, CStringArray* titles)
{
    return Find(
        pattern, [](const CFileFind& find) { return !find.IsDirectory(); }, paths, names, titles);
}

bool shell::mkdirp(const char* path)
{
    CStringArray separators;
    separators.Add("/");
    separators.Add("\\");
    // A leading separator is an empty first token: the root stays the root.
    constexpr int kKeepEmpty = 1;
    CStrArray tokens;
    tokens.AddTokens(path, separators, kKeepEmpty);

    CString prefix;
    bool isNew = false;  // nothing can be in a folder that was just made, unless others are quick
    for (int i = 0; i < tokens.GetSize(); ++i) {
        prefix += tokens[i];
        const DWORD attributes = isNew ? 0 : AttributesOf(prefix);
        prefix += '\\';
        if (attributes & FILE_ATTRIBUTE_DIRECTORY)
            continue;
        if (attributes & FILE_ATTRIBUTE_NORMAL)
            return false;
        // Asking afterwards saves a look-up for each folder that is made. A drive or a root exists though its prefix alone may not.
        isNew = CreateDirectoryA(prefix, nullptr) != FALSE;
        const DWORD error = GetLastError();
        if (!isNew && !is_dir(prefix)) {
            SetLastError(error);
            return false;
        }
    }
    return true;
}

File::CUtil::~CUtil() = default;

bool File::IsEqualFilePath(const char* a, const char* b)
{
    if (FromOem(a) == FromOem(b))
        return true;
    CWStr shortA;
    CWStr shortB;
    return shortA._GetShortPathName(a) != 0 && shortB._GetShortPathName(b) != 0 && shortA == shortB;
}

_kelgen::CFileAssociation::~CFileAssociation() = default;

bool _kelgen::CFileAssociation::Initialize()
{
    return RegOpenKeyA(HKEY_CLASSES_ROOT, nullptr, &m_classesRoot) == ERROR_SUCCESS;
}
