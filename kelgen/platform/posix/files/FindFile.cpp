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

// A name that is to be listed, in the names of its folder.
struct Listed
{
    std::string_view name;
    std::string_view shortName;  // the name itself when it is short
};

// What is still to be listed.
class FindObject : public HandleObject
{
public:
    // opened is the folder, empty where that cannot be opened.
    FindObject(const std::string& folder, ShortNames names, Descriptor opened)
        : m_path(folder + '/'), m_folderLength(m_path.size()), m_names(std::move(names)), m_folder(std::move(opened))
    {}

    struct Found
    {
        FileEntry entry;
        Listed names;
    };

    bool ClosesByCloseHandle() const override { return false; }

    const ShortNames& Names() const { return m_names; }

    // The names may be those of Names().
    void List(std::vector<Listed> listed) { m_listed = std::move(listed); }

    // One name, which a concurrent change may have taken from the names of the folder.
    void ListOnly(std::string name)
    {
        m_only = std::move(name);
        m_onlyShort = m_names.Of(m_only);
        m_listed = {{m_only, m_onlyShort}};
    }

    // The next entry that still exists; nothing with the last error.
    std::optional<Found> Next()
    {
        while (m_next < m_listed.size()) {
            const Listed& names = m_listed[m_next];
            m_path.replace(m_folderLength, std::string::npos, names.name);
            const auto entry = m_folder ? EntryIn(m_folder.Get(), m_path.c_str() + m_folderLength, m_path) : EntryAt(m_path);
            if (!entry && errno != ENOENT)
                return Fail(ErrorFromErrno(errno), std::nullopt);
            ++m_next;
            if (entry)
                return Found{*entry, names};
        }
        return Fail(ERROR_NO_MORE_FILES, std::nullopt);
    }

private:
    std::string m_path;
    const std::size_t m_folderLength;
    const ShortNames m_names;
    const Descriptor m_folder;
    std::string m_only;
    std::string m_onlyShort;
    std::vector<Listed> m_listed;
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

bool IsAscii(std::string_view name)
{
    return std::ranges::all_of(name, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// Sorts by OrderOfNames, which for names in ASCII is the order of their upper-case forms: these are made once.
void SortByName(std::vector<Listed>& names)
{
    const auto before = [](const Listed& left, const Listed& right) { return OrderOfNames(left.name, right.name) < 0; };
    // Bytes in order are mostly names in order.
    if (std::ranges::is_sorted(names, before))
        return;
    if (!std::ranges::all_of(names, [](const Listed& listed) { return IsAscii(listed.name); })) {
        std::ranges::sort(names, before);
        return;
    }
    std::vector<std::pair<std::string, Listed>> keys;
    keys.reserve(names.size());
    for (const Listed& listed : names) {
        std::string upper(listed.name);
        std::ranges::transform(upper, upper.begin(), [](char byte) { return static_cast<char>(UpperUnit(static_cast<char16_t>(byte))); });
        keys.emplace_back(std::move(upper), listed);
    }
    std::ranges::sort(keys, [](const auto& left, const auto& right) {
        const int order = left.first.compare(right.first);
        return order != 0 ? order < 0 : left.second.name < right.second.name;
    });
    std::ranges::transform(keys, names.begin(), [](const auto& key) { return key.second; });
}

std::vector<Listed> MatchingNames(const std::string& folder, const ShortNames& entries, std::string_view pattern)
{
    const bool all = pattern == "*" || pattern == "*.*";
    const std::u16string upper = UpperName(pattern);
    std::vector<Listed> names;
    names.reserve(entries.Entries().size() + 2);
    for (std::size_t i = 0; i < entries.Entries().size(); ++i) {
        const Listed listed{entries.Entries()[i], entries.At(i)};
        if (all || Matches(upper, UpperName(listed.name)) || Matches(upper, UpperName(listed.shortName)))
            names.push_back(listed);
    }
    SortByName(names);

    // The root of a drive has no entries for itself and its parent.
    if (DriveForm(folder).size() > 3) {
        auto place = names.begin();
        for (const std::string_view dot : {".", ".."})
            if (all || Matches(upper, UpperName(dot)))
                place = names.insert(place, {dot, dot}) + 1;
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
        Descriptor opened;
        auto entries = ListFolder(folder + '/', &opened);
        // The entry is there, even where the user may not list the others.
        if (!entries && errno != EACCES)
            return Fail(ErrorFromErrno(errno), nullptr);
        auto find =
            std::make_shared<FindObject>(folder, ShortNames(std::move(entries).value_or(std::vector<std::string>())), std::move(opened));
        find->ListOnly(native->substr(end + 1));
        return find;
    }

    const ResolvedPath folder = Resolve(full.substr(0, slash + 1));
    if (const DWORD error = FolderError(folder))
        return Fail(error, nullptr);
    Descriptor opened;
    auto entries = ListFolder(folder.native, &opened);
    if (!entries)
        return Fail(ErrorFromErrno(errno), nullptr);
    auto find = std::make_shared<FindObject>(folder.native, ShortNames(std::move(*entries)), std::move(opened));
    find->List(MatchingNames(folder.native, find->Names(), last));
    return find;
}

template <class Data>
void StoreNames(const Listed& names, Data& data)
{
    StoreName(names.name, data.cFileName, MAX_PATH);
    if (names.shortName != names.name)
        StoreName(names.shortName, data.cAlternateFileName, std::size(data.cAlternateFileName));
}

template <class Data>
bool FillNext(FindObject& find, Data* data)
{
    const auto found = find.Next();
    if (!found)
        return false;
    *data = {};
    found->entry.FillTimesAndSize(*data);
    StoreNames(found->names, *data);
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
