// Paths.cpp: finds the entry of the file system that a name means.
#include <kelgen/platform/posix/files/Paths.h>

#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FolderReader.h>
#include <kelgen/platform/posix/files/ShortNames.h>
#include <kelgen/platform/posix/nls/NameCase.h>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <functional>

namespace kelgen::posix {

namespace {

// A full path's place in the file system, its parts, which lie in that path's text, not yet looked up.
struct Place
{
    std::string root;  // without a final slash
    std::vector<std::string_view> parts;
    bool endsInSlash = false;
    bool isDevice = false;
    DWORD error = 0;
};

Place PlaceOfDevice(std::string_view device)
{
    Place place;
    place.isDevice = true;
    const std::size_t slash = device.find('\\');
    if (device.empty())
        place.error = ERROR_INVALID_NAME;
    else if (slash != std::string_view::npos && !EqualNames(device.substr(0, slash), "pipe"))
        place.error = ERROR_PATH_NOT_FOUND;
    else if (EqualNames(device, "nul"))
        place.root = "/dev/null";
    else if (EqualNames(device, "con"))
        place.root = "/dev/tty";
    else
        place.error = ERROR_FILE_NOT_FOUND;
    return place;
}

// After "\\?\" and "\??\" a name is taken as it stands: dots and blanks at its end count, and slashes are no separators.
bool IsVerbatim(std::string_view name)
{
    return name.starts_with("\\\\?\\") || name.starts_with("\\??\\");
}

// full is the name without such a prefix, else its full path.
Place PlaceOf(std::string_view full, bool verbatim)
{
    Place place;
    if (verbatim && full.find('/') != std::string_view::npos) {
        place.error = ERROR_FILE_NOT_FOUND;
        return place;
    }
    const bool marked = full.starts_with("\\\\.\\") || full.starts_with("\\\\?\\");
    if (marked && full.size() > 6 && full[5] == ':' && full[6] == '\\')
        full.remove_prefix(4);
    else if (full.starts_with("\\\\.\\"))
        return PlaceOfDevice(full.substr(4));
    if (full.size() < 3 || full[1] != ':') {
        const bool isName = verbatim && full.find('\\') == std::string_view::npos;
        place.error = !isName ? DWORD{ERROR_PATH_NOT_FOUND} : full.empty() ? DWORD{ERROR_INVALID_NAME} : DWORD{ERROR_FILE_NOT_FOUND};
        return place;
    }

    place.parts = SplitAtBackslashes(full.substr(2));
    place.endsInSlash = full.size() > 3 && full.back() == '\\';
    // Such a part comes from behind a prefix or from "...\", and leads nowhere.
    if (std::ranges::any_of(place.parts, [](std::string_view part) { return part == "." || part == ".."; })) {
        place.error = ERROR_INVALID_NAME;
        return place;
    }
    switch (full[0]) {
    case 'C':
    case 'c':
        place.root = DriveCFolder();
        break;
    case 'Z':
    case 'z':
        break;
    default:
        place.error = place.parts.size() == 1 ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
    }
    return place;
}

// Why a part that does not exist cannot be made; 0 when it can.
DWORD FaultOfName(std::string_view part)
{
    for (const char letter : part)
        if (static_cast<unsigned char>(letter) < 0x20 || std::string_view("\"<>|*?").find(letter) != std::string_view::npos)
            return ERROR_INVALID_NAME;
    return 0;
}

// False with errno. A link that leads nowhere exists itself.
bool Exists(const std::string& native, struct stat& status)
{
    if (stat(native.c_str(), &status) == 0)
        return true;
    return (errno == ENOENT || errno == ELOOP || errno == EACCES) && lstat(native.c_str(), &status) == 0;
}

// What a look for an entry of another spelling came to.
struct Spelling
{
    std::string name;  // empty when there is none
    int error = 0;     // an errno value when the folder cannot be read: there may be one
};

// The entry of folder that is not UTF-8 and reads like part in the ANSI code page, or empty.
Spelling ForeignSpellingIn(FolderReader& folder, std::string_view part)
{
    Spelling found;
    if (IsSameInAnsi(part) || AnsiName(part) == part)
        return found;
    folder.Rewind();
    found.error = folder.ForEach([&](std::string_view entry) {
        if (!IsUtf8(entry) && NarrowName(AnsiName(entry).c_str()) == part && (found.name.empty() || entry < found.name))
            found.name = entry;
    });
    return found;
}

// The entry of folder that part means, or empty: of those equal but for case the first by its bytes.
Spelling SpellingIn(FolderReader& folder, const std::string& native, std::string_view part)
{
    Spelling found;
    found.error = folder.ForEach([&](std::string_view entry) {
        if (found.name != part && EqualNames(entry, part) && (found.name.empty() || entry == part || entry < found.name))
            found.name = entry;
    });
    if (!found.name.empty() || found.error != 0)
        return found;
    if (part.find('~') != std::string_view::npos && IsShortName(part)) {
        auto entries = ListFolder(native);
        if (!entries)
            return {{}, errno};
        const ShortNames names(std::move(*entries));
        for (std::size_t i = 0; i < names.Entries().size(); ++i)
            if (EqualNames(names.At(i), part))
                return {names.Entries()[i]};
    }
    return ForeignSpellingIn(folder, part);
}

// As SpellingIn; none in what is no folder, or one that the user may not list.
Spelling OtherSpelling(const std::string& native, std::string_view part)
{
    if (FolderReader folder(native); folder)
        return SpellingIn(folder, native, part);
    const bool isHidden = errno == EACCES || errno == ENOTDIR || errno == ENOENT;
    return {{}, isHidden ? 0 : errno};
}

void NoteKind(const struct stat& status, ResolvedPath& result)
{
    result.mode = status.st_mode;
    result.isFolder = S_ISDIR(status.st_mode);
}

// Looks the last part up when the folder before it exists as it is spelt; false when it does not. The whole path, spelt so, does not
// exist. Exact names go before other spellings, so such a folder needs no look-up of its own.
bool WalkLast(const Place& place, ResolvedPath& result, Descriptor* opened)
{
    if (place.parts.empty())
        return false;
    const std::size_t slash = result.native.rfind('/');
    const std::string path = result.native.substr(0, slash);
    const std::string native = path.empty() ? "/" : path;
    FolderReader folder(native);
    if (!folder)
        return false;

    const std::string_view part = place.parts.back();
    const Spelling spelling = SpellingIn(folder, native, part);
    struct stat status;
    if (!spelling.name.empty() && Exists(path + '/' + spelling.name, status)) {
        result.native = path + '/' + spelling.name;
        result.exists = true;
        NoteKind(status, result);
        return true;
    }
    const int error = spelling.error != 0 ? spelling.error : spelling.name.empty() ? ENOENT : errno;
    const DWORD fault = FaultOfName(part);
    result.error = fault ? fault : ErrorFromErrno(error);
    if (opened)
        *opened = folder.Release();
    return true;
}

// Why a part, the last one or one before, is not there.
DWORD ErrorOfMissing(int error, bool last)
{
    if (error != 0 && error != ENOENT)
        return ErrorFromErrno(error);
    return last ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

// Looks the parts up one by one.
void Walk(const Place& place, ResolvedPath& result)
{
    std::string path = place.root;
    for (std::size_t i = 0; i < place.parts.size(); ++i) {
        const std::string_view part = place.parts[i];
        const bool last = i + 1 == place.parts.size();
        struct stat status;
        std::string next = path;
        next.append(1, '/').append(part);
        if (!Exists(next, status)) {
            const int cause = errno;
            const Spelling spelling = cause == ENOENT ? OtherSpelling(path.empty() ? "/" : path, part) : Spelling{{}, cause};
            if (spelling.name.empty()) {
                result.native = next;
                const DWORD fault = FaultOfName(part);
                result.error = fault ? fault : ErrorOfMissing(spelling.error, last);
                return;
            }
            next = path + '/' + spelling.name;
            if (!Exists(next, status)) {
                result.native = next;
                result.error = ErrorOfMissing(errno, last);
                return;
            }
        }
        path = std::move(next);
        if (last)
            NoteKind(status, result);
    }
    result.native = path;
    result.exists = true;
}

// The names in byte order. Names in a folder often begin alike: behind what all have in common, eight bytes as a number tell most apart.
std::vector<std::string> SortedNames(std::vector<std::string> names)
{
    if (names.size() < 2)
        return names;
    std::size_t common = names[0].size();
    for (const std::string& name : names) {
        std::size_t same = 0;
        while (same < std::min(common, name.size()) && name[same] == names[0][same])
            ++same;
        common = same;
    }
    struct Key
    {
        std::uint64_t head;
        std::uint32_t index;
    };
    std::vector<Key> keys(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::uint64_t head = 0;
        for (std::size_t at = common; at < common + sizeof head; ++at)
            head = (head << 8) | (at < names[i].size() ? static_cast<unsigned char>(names[i][at]) : 0u);
        keys[i] = {head, static_cast<std::uint32_t>(i)};
    }
    std::ranges::sort(keys, [&names](const Key& left, const Key& right) {
        return left.head != right.head ? left.head < right.head : names[left.index] < names[right.index];
    });
    std::vector<std::string> sorted;
    sorted.reserve(names.size());
    for (const Key& key : keys)
        sorted.push_back(std::move(names[key.index]));
    return sorted;
}

// The folder that this thread made last. What is made next often is the first thing in it, so that looking for its exact name first would
// be in vain. Right or wrong, it only says what is looked at first.
thread_local std::size_t lastMade = 0;

std::size_t HashOfPath(std::string_view native)
{
    return std::hash<std::string_view>()(native);
}

// With opened, for what is to be made: that receives the folder in which the name is missing when it was opened.
ResolvedPath ResolveAt(std::string_view name, Descriptor* opened)
{
    const bool verbatim = IsVerbatim(name);
    const std::string full = verbatim ? std::string(name.substr(4)) : FullPath(name);
    const Place place = PlaceOf(full, verbatim);
    ResolvedPath result;
    result.namesFolder = place.endsInSlash;
    result.isDevice = place.isDevice;
    result.error = place.error;
    if (place.error)
        return result;

    result.native.reserve(place.root.size() + full.size());
    result.native = place.root;
    for (const std::string_view part : place.parts)
        result.native.append(1, '/').append(part);
    if (result.native.empty())
        result.native = "/";

    const std::size_t last = result.native.rfind('/');
    const bool isLikelyMissing = opened && !place.parts.empty() && HashOfPath(std::string_view(result.native).substr(0, last)) == lastMade;
    struct stat status;
    if (!isLikelyMissing && stat(result.native.c_str(), &status) == 0) {
        result.exists = true;
        NoteKind(status, result);
    } else if ((!isLikelyMissing && errno != ENOENT) || !WalkLast(place, result, opened)) {
        Walk(place, result);
    }
    return result;
}

template <class Unit>
DWORD Store(std::basic_string_view<Unit> text, Unit* buffer, DWORD size)
{
    if (text.size() >= size || !buffer)
        return static_cast<DWORD>(text.size() + 1);
    *std::ranges::copy(text, buffer).out = 0;
    return static_cast<DWORD>(text.size());
}

}  // namespace

std::vector<std::string_view> SplitAtBackslashes(std::string_view text)
{
    std::vector<std::string_view> parts;
    parts.reserve(kUsualDepth);
    while (!text.empty()) {
        const std::size_t slash = text.find('\\');
        if (slash != 0)
            parts.emplace_back(text.substr(0, slash));
        text.remove_prefix(slash == std::string_view::npos ? text.size() : slash + 1);
    }
    return parts;
}

ResolvedPath Resolve(std::string_view name)
{
    return ResolveAt(name, nullptr);
}

ResolvedPath ResolveToMake(std::string_view name, Descriptor& folder)
{
    return ResolveAt(name, &folder);
}

void NoteMadeFolder(std::string_view native)
{
    lastMade = HashOfPath(native);
}

std::optional<ResolvedPath> ResolveExisting(std::string_view name)
{
    ResolvedPath path = Resolve(name);
    if (path.exists && path.namesFolder && !path.isFolder)
        path.error = ERROR_PATH_NOT_FOUND;
    if (path.error)
        return Fail(path.error, std::nullopt);
    return path;
}

std::optional<std::string> ToNative(std::string_view name)
{
    auto path = ResolveExisting(name);
    return path ? std::optional(std::move(path->native)) : std::nullopt;
}

std::optional<std::string> ToNativeFolder(std::string_view name)
{
    ResolvedPath path = Resolve(name);
    if (path.exists && !path.isFolder)
        path.error = ERROR_DIRECTORY;
    if (path.error)
        return Fail(path.error, std::nullopt);
    return std::move(path.native);
}

std::optional<std::vector<std::string>> ListFolder(const std::string& native, Descriptor* opened)
{
    FolderReader folder(native);
    if (!folder)
        return std::nullopt;
    std::vector<std::string> entries;
    if (const int error = folder.ForEach([&entries](std::string_view name) { entries.emplace_back(name); })) {
        errno = error;
        return std::nullopt;
    }
    if (opened)
        *opened = folder.Release();
    return SortedNames(std::move(entries));
}

std::vector<std::string> FolderEntries(const std::string& native)
{
    return ListFolder(native).value_or(std::vector<std::string>());
}

bool EqualNames(std::string_view left, std::string_view right)
{
    for (std::size_t i = 0;; ++i) {
        if (i == left.size() || i == right.size())
            return left.size() == right.size();
        if ((left[i] | right[i]) & 0x80)
            return CompareNames(WideName(left), WideName(right)) == 0;
        if (UpperUnit(static_cast<char16_t>(left[i])) != UpperUnit(static_cast<char16_t>(right[i])))
            return false;
    }
}

int OrderOfNames(std::string_view left, std::string_view right)
{
    // Most names differ in ASCII letters, which need no conversion and sort before all others.
    const std::size_t shorter = std::min(left.size(), right.size());
    std::size_t same = 0;
    for (; same < shorter && ((left[same] | right[same]) & 0x80) == 0; ++same) {
        if (left[same] == right[same])
            continue;
        if (const int order = UpperUnit(static_cast<char16_t>(left[same])) - UpperUnit(static_cast<char16_t>(right[same])))
            return order;
    }

    const auto upper = [](std::string_view name) {
        std::u16string text = WideName(name);
        std::transform(text.begin(), text.end(), text.begin(), UpperUnit);
        return text;
    };
    const int order = upper(left.substr(same)).compare(upper(right.substr(same)));
    return order != 0 ? order : left.compare(right);
}

DWORD StoreName(std::string_view narrow, LPSTR buffer, DWORD size)
{
    return IsSameInAnsi(narrow) ? Store(narrow, buffer, size) : Store<CHAR>(AnsiName(narrow), buffer, size);
}

DWORD StoreName(std::string_view narrow, LPWSTR buffer, DWORD size)
{
    return Store<WCHAR>(NameIn<WCHAR>(narrow), buffer, size);
}

}  // namespace kelgen::posix
