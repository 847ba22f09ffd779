// VersionBlock.cpp: VerQueryValueA, VerQueryValueW, and the blocks that they look into.
#include <kelgen/platform/posix/resources/VersionBlock.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/resources/api/VersionInformation.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace kelgen::posix {

namespace {

constexpr std::size_t kHeaderSize = 6;
constexpr std::size_t kTypeOffset = 4;
constexpr WORD kText = 1;
// In the root's type: narrow texts have room behind the resource.
constexpr WORD kHasRoom = 0x8000;
constexpr std::size_t kBytesForUnit = 3;
// Right behind the resource, before that room; a text that counts too much at the end of a resource reads it.
constexpr std::string_view kMark = "FE2X";

constexpr std::size_t Aligned(std::size_t offset)
{
    return (offset + 3) / 4 * 4;
}

WORD WordAt(const BYTE* bytes)
{
    return MAKEWORD(bytes[0], bytes[1]);
}

void PutWord(BYTE* bytes, WORD word)
{
    bytes[0] = LOBYTE(word);
    bytes[1] = HIBYTE(word);
}

/// The bytes of @p block that may be read: the resource and its room.
std::size_t Readable(const BYTE* block)
{
    const std::size_t length = WordAt(block);
    const bool hasRoom = length >= kHeaderSize && (WordAt(block + kTypeOffset) & kHasRoom);
    return hasRoom ? Aligned(length) + kBytesForUnit * (length / 2 + 1) : length;
}

/// One node: its lengths and type, its key, its value, its children. All offsets are the block's.
/// Source: the VS_VERSIONINFO format: length, value's length (in units for texts), type, key, value, children; value and children
/// start at multiples of 4.
struct Node
{
    bool isText;
    WORD length;
    WORD valueLength;
    std::u16string key;
    std::size_t value;
    std::size_t children;
    std::size_t end;

    std::size_t ValueBytes() const { return isText ? std::size_t{valueLength} * 2 : valueLength; }
};

/// The node at @p offset, or nothing when its head and key do not lie before the resource's end @p limit. By contract: they may go
/// beyond its own length, which only says where the next node begins; every type but 0 is text.
std::optional<Node> ReadNode(const BYTE* block, std::size_t offset, std::size_t limit)
{
    if (offset > limit || limit - offset < kHeaderSize)
        return std::nullopt;
    const BYTE* const bytes = block + offset;
    Node node;
    node.length = WordAt(bytes);
    node.end = std::min(offset + node.length, limit);
    node.valueLength = WordAt(bytes + 2);
    const WORD type = WordAt(bytes + kTypeOffset);
    node.isText = (offset == 0 ? type & ~kHasRoom : type) != 0;
    const std::size_t key = offset + kHeaderSize;
    std::size_t at = key;
    while (at + 2 <= limit && WordAt(block + at) != 0)
        at += 2;
    if (at + 2 > limit)
        return std::nullopt;
    node.key.resize((at - key) / 2);
    std::memcpy(node.key.data(), block + key, at - key);
    node.value = Aligned(at + 2);
    node.children = Aligned(node.value + node.ValueBytes());
    return node;
}

std::optional<Node> FindChild(const BYTE* block, const Node& parent, std::u16string_view key)
{
    std::size_t at = parent.children;
    while (at < parent.end) {
        auto child = ReadNode(block, at, WordAt(block));
        if (!child || CompareNames(child->key, key) == 0)
            return child;
        if (child->length == 0)
            break;
        at += Aligned(child->length);
    }
    return std::nullopt;
}

std::optional<Node> FindNode(const BYTE* block, std::u16string_view path)
{
    auto node = ReadNode(block, 0, WordAt(block));
    while (node && !path.empty()) {
        const std::u16string_view part = path.substr(0, path.find(u'\\'));
        path.remove_prefix(std::min(part.size() + 1, path.size()));
        if (!part.empty())
            node = FindChild(block, *node, part);
    }
    return node;
}

/// The node at @p path and, in @p length, 0. Nothing with the last error when there is none.
std::optional<Node> Query(LPCVOID block, std::u16string_view path, UINT* length)
{
    if (length)
        *length = 0;
    if (!block)
        return std::nullopt;
    auto node = FindNode(static_cast<const BYTE*>(block), path);
    if (node && !node->isText && node->value + node->ValueBytes() > Readable(static_cast<const BYTE*>(block)))
        node.reset();
    return node ? node : Fail(ERROR_RESOURCE_TYPE_NOT_FOUND, node);
}

BOOL Give(BYTE* at, std::size_t count, LPVOID* value, UINT* length)
{
    if (value)
        *value = at;
    if (length)
        *length = static_cast<UINT>(count);
    return TRUE;
}

/// Why the text of @p node reads as empty, or 0.
DWORD ErrorOfText(const BYTE* block, const Node& node)
{
    if (node.valueLength == 0)
        return ERROR_INVALID_PARAMETER;
    // By contract: counted in bytes, since many writers do.
    return node.value + node.valueLength > WordAt(block) ? ERROR_INSUFFICIENT_BUFFER : 0;
}

}  // namespace

std::size_t VersionBlockSize(std::span<const BYTE> resource)
{
    return Aligned(resource.size()) + std::max(kMark.size(), kBytesForUnit * (resource.size() / 2 + 1));
}

void FillVersionBlock(std::span<const BYTE> resource, std::span<BYTE> block)
{
    const std::size_t size = std::min(resource.size(), block.size());
    const std::size_t whole = VersionBlockSize(resource);
    std::ranges::copy(resource.first(size), block.begin());
    const auto rest = block.subspan(size);
    std::ranges::fill(rest.first(std::min(rest.size(), whole - size)), BYTE{0});

    if (block.size() >= sizeof(WORD)) {
        // A resource that claims more than there is has no root; up to a unit more counts as its padding.
        const std::size_t claimed = WordAt(block.data());
        PutWord(block.data(), claimed > resource.size() + 2 ? WORD{0} : static_cast<WORD>(std::min(claimed, size)));
    }
    if (block.size() < kHeaderSize)
        return;
    const WORD type = WordAt(block.data() + kTypeOffset);
    const WORD plain = type == kHasRoom ? kText : static_cast<WORD>(type & ~kHasRoom);
    PutWord(block.data() + kTypeOffset, static_cast<WORD>(plain | (block.size() >= whole ? kHasRoom : 0)));
    const std::size_t length = WordAt(block.data());
    if (block.size() >= whole && length >= kHeaderSize)
        std::ranges::copy(kMark, block.begin() + static_cast<std::ptrdiff_t>(length));
}

}  // namespace kelgen::posix

using namespace kelgen::posix;

BOOL VerQueryValueA(LPCVOID block, LPCSTR path, LPVOID* value, UINT* length)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto node = Query(block, WideText(path), length);
        if (!node)
            return FALSE;
        // Callers fill the block themselves: it is never constant.
        BYTE* const bytes = const_cast<BYTE*>(static_cast<const BYTE*>(block));
        if (!node->isText)
            return Give(bytes + node->value, node->valueLength, value, length);
        if (!(WordAt(bytes + kTypeOffset) & kHasRoom))
            return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);

        const std::size_t size = WordAt(bytes);
        BYTE* const room = bytes + Aligned(size) + kBytesForUnit * (std::min(node->value, size) / 2);
        if (const DWORD error = ErrorOfText(bytes, *node)) {
            *room = 0;
            return Fail(error, Give(room, 0, value, length));
        }
        std::u16string text(node->valueLength, 0);
        std::memcpy(text.data(), bytes + node->value, node->ValueBytes());
        std::string narrow = AnsiText(text);
        narrow.resize(std::min(narrow.size(), static_cast<std::size_t>(bytes + Readable(bytes) - room) - 1));
        std::memcpy(room, narrow.c_str(), narrow.size() + 1);
        return Give(room, narrow.size(), value, length);
    });
}

BOOL VerQueryValueW(LPCVOID block, LPCWSTR path, LPVOID* value, UINT* length)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto node = Query(block, WideText(path), length);
        if (!node)
            return FALSE;
        BYTE* const bytes = const_cast<BYTE*>(static_cast<const BYTE*>(block));
        const std::size_t size = WordAt(bytes);
        const std::size_t start = std::min(node->value, size);
        const std::size_t unit = node->isText ? 2 : 1;
        return Give(bytes + start, std::min<std::size_t>(node->valueLength, (size - start) / unit), value, length);
    });
}
