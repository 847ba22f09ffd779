// FindFile.cpp: FindFirstFileA, FindNextFileA and their wide forms, FindClose.
#include <kelgen/platform/posix/files/api/FindFile.h>

#include <kelgen/platform/posix/base/Handles.h>
#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileEntries.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/files/ShortNames.h>
#include <kelgen/platform/posix/nls/NameCase.h>

#include <algorithm>
#include <cerrno>

using namespace kelgen::posix;

namespace {

// What is still to be listed.
class FindObject : public HandleObject
{
public:
    FindObject(std::string folder, std::vector<std::string> names, ShortNames shortNames)
        : m_folder(std::move(folder)), m_names(std::move(names)), m_shortNames(std::move(shortNames))
    {}

    struct Found
    {
        FileEntry entry;
        std::string name;
        std::string shortName;  // empty when the name is short itself
    };

    bool ClosesByCloseHandle() const override { return false; }

    // The next entry that still exists; nothing with the last error.
    std::optional<Found> Next()
    {
        while (m_next < m_names.size()) {
            const std::string& name = m_names[m_next];
            const auto entry = EntryAt(m_folder + '/' + name);
            if (!entry && errno != ENOENT)
                return Fail(ErrorFromErrno(errno), std::nullopt);
            ++m_next;
            if (!entry)
                continue;
            std::string shortName = m_shortNames.Of(name);
            return Found{*entry, name, shortName == name ? std::string() : std::move(shortName)};
        }
        return Fail(ERROR_NO_MORE_FILES, std::nullopt);
    }

private:
    std::string m_folder;
    std::vector<std::string> m_names;
    ShortNames m_shortNames;
    std::size_t m_next = 0;
};

// True when the rest of a pattern matches the end of a name: stars do, and so does each dot before a star, because "*.*" and
// "name.*" mean names without an extension too.
bool MatchesEnd(std::u16string_view rest)
{
    for (std::size_t i = 0; i < rest.size(); ++i)
        if (rest[i] != u'*' && (rest[i] != u'.' || !rest.substr(i + 1).starts_with(u'*')))
            return false;
    return true;
}

// True when name matches pattern; both upper-cased.
bool Matches(std::u16string_view pattern, std::u16string_view name)
{
    // After a mismatch the last star takes one unit more.
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = std::u16string_view::npos;
    std::size_t taken = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != std::u16string_view::npos) {
            p = star + 1;
            n = ++taken;
        } else {
            return false;
        }
    }
    return MatchesEnd(pattern.substr(p));
}

std::u16string UpperName(std::string_view name)
{
    std::u16string upper = WideName(name);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperUnit);
    return upper;
}

std::vector<std::string> MatchingNames(const std::string& folder, const std::vector<std::string>& entries, const ShortNames& shortNames,
                                       std::string_view pattern)
{
    const bool all = pattern == "*" || pattern == "*.*";
    const std::u16string upper = UpperName(pattern);
    std::vector<std::string> names;
    for (const std::string& entry : entries)
        if (all || Matches(upper, UpperName(entry)) || Matches(upper, UpperName(shortNames.Of(entry))))
            names.push_back(entry);
    std::sort(names.begin(), names.end(), [](const std::string& left, const std::string& right) { return OrderOfNames(left, right) < 0; });

    // The root of a drive has no entries for itself and its parent.
    if (DriveForm(folder).size() > 3) {
        std::vector<std::string> dots;
        for (const char* dot : {".", ".."})
            if (all || Matches(upper, UpperName(dot)))
                dots.emplace_back(dot);
        names.insert(names.begin(), dots.begin(), dots.end());
    }
    return names;
}

DWORD FolderError(const ResolvedPath& folder)
{
    if (folder.exists)
        return folder.isFolder ? 0 : ERROR_INVALID_NAME;
    return folder.error == ERROR_FILE_NOT_FOUND ? ERROR_PATH_NOT_FOUND : folder.error;
}

std::shared_ptr<FindObject> StartFind(std::string_view pattern)
{
    // Resolve takes what stands after this prefix as it is.
    const std::string full = pattern.starts_with("\\??\\") ? std::string(pattern) : FullPath(pattern);
    if (full.empty())
        return Fail(ERROR_PATH_NOT_FOUND, nullptr);
    const std::size_t slash = full.rfind('\\');
    const std::string last = full.substr(slash + 1);
    if (slash == std::string::npos || last.empty())
        return Fail(ERROR_FILE_NOT_FOUND, nullptr);

    // A name without wild cards is looked up as everywhere, so that every spelling finds it.
    if (last.find_first_of("*?") == std::string::npos) {
        const auto native = ToNative(full);
        if (!native)
            return nullptr;
        const std::size_t end = native->rfind('/');
        const std::string folder = native->substr(0, end);
        const auto entries = ListFolder(folder + '/');
        // The entry is there, even where the user may not list the others.
        if (!entries && errno != EACCES)
            return Fail(ErrorFromErrno(errno), nullptr);
        return std::make_shared<FindObject>(folder, std::vector{native->substr(end + 1)},
                                            ShortNames(entries.value_or(std::vector<std::string>())));
    }

    const ResolvedPath folder = Resolve(full.substr(0, slash + 1));
    if (const DWORD error = FolderError(folder))
        return Fail(error, nullptr);
    const auto entries = ListFolder(folder.native);
    if (!entries)
        return Fail(ErrorFromErrno(errno), nullptr);
    ShortNames shortNames(*entries);
    std::vector<std::string> names = MatchingNames(folder.native, *entries, shortNames, last);
    return std::make_shared<FindObject>(folder.native, std::move(names), std::move(shortNames));
}

void StoreFound(const FindObject::Found& found, WIN32_FIND_DATAA& data)
{
    StoreName(found.name, data.cFileName, MAX_PATH);
    StoreName(found.shortName, data.cAlternateFileName, std::size(data.cAlternateFileName));
}

void StoreFound(const FindObject::Found& found, WIN32_FIND_DATAW& data)
{
    StoreName(found.name, data.cFileName, MAX_PATH);
    StoreName(found.shortName, data.cAlternateFileName, std::size(data.cAlternateFileName));
}

template <class Data>
bool FillNext(FindObject& find, Data* data)
{
    const auto found = find.Next();
    if (!found)
        return false;
    *data = {};
    found->entry.FillTimesAndSize(*data);
    StoreFound(*found, *data);
    return true;
}

template <class Data>
HANDLE FindFirst(std::string_view pattern, Data* data)
{
    auto find = StartFind(pattern);
    if (!find)
        return INVALID_HANDLE_VALUE;
    if (!FillNext(*find, data))
        return Fail(GetLastError() == ERROR_NO_MORE_FILES ? DWORD{ERROR_FILE_NOT_FOUND} : GetLastError(), INVALID_HANDLE_VALUE);
    return Handles().Insert(std::move(find), INVALID_HANDLE_VALUE);
}

template <class Data>
BOOL FindNext(HANDLE handle, Data* data)
{
    const auto find = Handles().Find<FindObject>(handle);
    if (!find)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    return FillNext(*find, data);
}

}  // namespace

HANDLE FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA data)
{
    return OrNoMemory<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE { return FindFirst(NarrowName(pattern), data); });
}

HANDLE FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data)
{
    return OrNoMemory<HANDLE>(INVALID_HANDLE_VALUE, [&]() -> HANDLE { return FindFirst(NarrowName(pattern), data); });
}

BOOL FindNextFileA(HANDLE find, LPWIN32_FIND_DATAA data)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return FindNext(find, data); });
}

BOOL FindNextFileW(HANDLE find, LPWIN32_FIND_DATAW data)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return FindNext(find, data); });
}

BOOL FindClose(HANDLE find)
{
    if (!Handles().Find<FindObject>(find) || !Handles().Remove(find))
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    return TRUE;
}
