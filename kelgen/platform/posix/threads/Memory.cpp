// Memory.cpp: blocks by handle, and the heap.
#include <kelgen/platform/posix/threads/api/Memory.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>

using namespace kelgen::posix;

namespace {

struct Block
{
    void* data;  // null while discarded
    SIZE_T size;
    bool isFixed;
    UINT locks;
};

// All blocks: a handle is checked before anything is touched.
class BlockTable
{
public:
    static BlockTable& Get()
    {
        static BlockTable& table = *new BlockTable;
        return table;
    }

    std::mutex mutex;

    HGLOBAL Insert(const Block& block)
    {
        // A handle of its own is the address of a byte that nothing else has.
        const HGLOBAL handle = block.isFixed ? block.data : std::malloc(1);
        if (!handle)
            return nullptr;
        try {
            m_blocks.emplace(handle, block);
            SetData(handle, block.data);
        } catch (const std::bad_alloc&) {
            m_blocks.erase(handle);
            if (!block.isFixed)
                std::free(handle);
            return nullptr;
        }
        return handle;
    }

    Block* Find(const void* handle)
    {
        const auto found = m_blocks.find(handle);
        return found == m_blocks.end() ? nullptr : &found->second;
    }

    // The handle itself, or the handle of the block at that address; null when there is none.
    HGLOBAL HandleOf(const void* handleOrAddress)
    {
        if (Find(handleOrAddress))
            return const_cast<void*>(handleOrAddress);
        const auto found = m_handles.find(handleOrAddress);
        return found == m_handles.end() ? nullptr : found->second;
    }

    void SetData(HGLOBAL handle, void* data)
    {
        Block& block = *Find(handle);
        m_handles.erase(block.data);
        block.data = data;
        if (data)
            m_handles[data] = handle;
    }

    void Erase(HGLOBAL handle)
    {
        const Block block = *Find(handle);
        m_handles.erase(block.data);
        m_blocks.erase(handle);
        std::free(block.data);
        if (!block.isFixed)
            std::free(handle);
    }

    // Another address for a fixed block is another handle.
    HGLOBAL Rename(HGLOBAL handle, void* data)
    {
        Block block = *Find(handle);
        m_handles.erase(block.data);
        m_blocks.erase(handle);
        block.data = data;
        return Insert(block);
    }

private:
    std::unordered_map<const void*, Block> m_blocks;
    std::unordered_map<const void*, HGLOBAL> m_handles;
};

void* NewData(SIZE_T size, UINT flags)
{
    return flags & GMEM_ZEROINIT ? std::calloc(1, size) : std::malloc(size);
}

HGLOBAL Discard(HGLOBAL memory, Block& block, UINT flags)
{
    if (block.isFixed || block.locks > 0 || (flags & GMEM_MOVEABLE) == 0)
        return Fail(ERROR_INVALID_PARAMETER, HGLOBAL{});
    std::free(block.data);
    BlockTable::Get().SetData(memory, nullptr);
    block.size = 0;
    return memory;
}

HGLOBAL Resize(HGLOBAL memory, Block& block, SIZE_T size, UINT flags)
{
    const bool mayMove = (flags & GMEM_MOVEABLE) != 0 || (!block.isFixed && block.locks == 0);
    const SIZE_T kept = std::min(block.size, size);
    if (!mayMove) {
        if (size > block.size)
            return Fail(ERROR_NOT_ENOUGH_MEMORY, HGLOBAL{});
        block.size = size;
        return memory;
    }

    void* const data = std::realloc(block.data, size);
    if (!data)
        return Fail(ERROR_NOT_ENOUGH_MEMORY, HGLOBAL{});
    if (flags & GMEM_ZEROINIT)
        std::memset(static_cast<BYTE*>(data) + kept, 0, size - kept);
    block.size = size;
    if (block.isFixed)
        return data == memory ? memory : BlockTable::Get().Rename(memory, data);
    BlockTable::Get().SetData(memory, data);
    return memory;
}

// A heap block's size lies before it.
constexpr SIZE_T kHeader = alignof(std::max_align_t);

SIZE_T& SizeOfBlock(const void* block)
{
    return *reinterpret_cast<SIZE_T*>(static_cast<BYTE*>(const_cast<void*>(block)) - kHeader);
}

}  // namespace

HGLOBAL GlobalAlloc(UINT flags, SIZE_T size)
{
    const bool isFixed = (flags & GMEM_MOVEABLE) == 0;
    if (isFixed)
        size = std::max<SIZE_T>(size, 1);
    void* const data = size ? NewData(size, flags) : nullptr;
    if (size && !data)
        return Fail(ERROR_NOT_ENOUGH_MEMORY, HGLOBAL{});

    BlockTable& table = BlockTable::Get();
    const std::lock_guard lock(table.mutex);
    const MemoryMode own(true);
    const HGLOBAL handle = table.Insert({data, size, isFixed, 0});
    if (!handle)
        std::free(data);
    return handle ? handle : Fail(ERROR_NOT_ENOUGH_MEMORY, HGLOBAL{});
}

HGLOBAL GlobalReAlloc(HGLOBAL memory, SIZE_T size, UINT flags)
{
    BlockTable& table = BlockTable::Get();
    const std::lock_guard lock(table.mutex);
    Block* const block = table.Find(memory);
    if (!block)
        return Fail(ERROR_INVALID_HANDLE, HGLOBAL{});
    if (flags & GMEM_MODIFY)
        return memory;
    return size == 0 ? Discard(memory, *block, flags) : Resize(memory, *block, size, flags);
}

HGLOBAL GlobalFree(HGLOBAL memory)
{
    if (!memory)
        return nullptr;
    BlockTable& table = BlockTable::Get();
    const std::lock_guard lock(table.mutex);
    if (!table.Find(memory))
        return Fail(ERROR_INVALID_HANDLE, memory);
    table.Erase(memory);
    return nullptr;
}

LPVOID GlobalLock(HGLOBAL memory)
{
    if (!memory)
        return nullptr;
    BlockTable& table = BlockTable::Get();
    const std::lock_guard lock(table.mutex);
    Block* const block = table.Find(memory);
    if (!block)
        return Fail(ERROR_INVALID_HANDLE, nullptr);
    if (!block->data)
        return Fail(ERROR_DISCARDED, nullptr);
    if (!block->isFixed && block->locks < GMEM_LOCKCOUNT)
        ++block->locks;
    return block->data;
}

BOOL GlobalUnlock(HGLOBAL memory)
{
    BlockTable& table = BlockTable::Get();
    const std::lock_guard lock(table.mutex);
    Block* const block = table.Find(memory);
    if (!block)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (block->isFixed)
        return TRUE;
    if (block->locks == 0)
        return Fail(ERROR_NOT_LOCKED, FALSE);
    return --block->locks > 0 ? TRUE : Fail(ERROR_SUCCESS, FALSE);
}

SIZE_T GlobalSize(HGLOBAL memory)
{
    BlockTable& table = BlockTable::Get();
    const std::lock_guard lock(table.mutex);
    const Block* const block = table.Find(table.HandleOf(memory));
    return block ? block->size : Fail(ERROR_INVALID_HANDLE, SIZE_T{0});
}

HGLOBAL GlobalHandle(LPCVOID address)
{
    BlockTable& table = BlockTable::Get();
    const std::lock_guard lock(table.mutex);
    const HGLOBAL handle = table.HandleOf(address);
    return handle ? handle : Fail(ERROR_INVALID_HANDLE, handle);
}

UINT GlobalFlags(HGLOBAL memory)
{
    BlockTable& table = BlockTable::Get();
    const std::lock_guard lock(table.mutex);
    const Block* const block = table.Find(memory);
    if (!block)
        return Fail(ERROR_INVALID_HANDLE, UINT{GMEM_INVALID_HANDLE});
    return block->locks | (block->data ? 0 : GMEM_DISCARDED);
}

HLOCAL LocalAlloc(UINT flags, SIZE_T size)
{
    return GlobalAlloc(flags, size);
}

HLOCAL LocalReAlloc(HLOCAL memory, SIZE_T size, UINT flags)
{
    return GlobalReAlloc(memory, size, flags);
}

HLOCAL LocalFree(HLOCAL memory)
{
    return GlobalFree(memory);
}

LPVOID LocalLock(HLOCAL memory)
{
    return GlobalLock(memory);
}

BOOL LocalUnlock(HLOCAL memory)
{
    return GlobalUnlock(memory);
}

SIZE_T LocalSize(HLOCAL memory)
{
    return GlobalSize(memory);
}

HLOCAL LocalHandle(LPCVOID address)
{
    return GlobalHandle(address);
}

HANDLE GetProcessHeap()
{
    static char heap;
    return &heap;
}

LPVOID HeapAlloc(HANDLE, DWORD flags, SIZE_T size)
{
    if (size > PTRDIFF_MAX - kHeader)
        return nullptr;
    void* const whole = flags & HEAP_ZERO_MEMORY ? std::calloc(1, size + kHeader) : std::malloc(size + kHeader);
    if (!whole)
        return nullptr;
    void* const block = static_cast<BYTE*>(whole) + kHeader;
    SizeOfBlock(block) = size;
    return block;
}

LPVOID HeapReAlloc(HANDLE, DWORD flags, LPVOID block, SIZE_T size)
{
    if (!block || size > PTRDIFF_MAX - kHeader)
        return nullptr;
    const SIZE_T before = SizeOfBlock(block);
    if (flags & HEAP_REALLOC_IN_PLACE_ONLY) {
        if (size > before)
            return nullptr;
        SizeOfBlock(block) = size;
        return block;
    }

    void* const whole = std::realloc(static_cast<BYTE*>(block) - kHeader, size + kHeader);
    if (!whole)
        return nullptr;
    BYTE* const moved = static_cast<BYTE*>(whole) + kHeader;
    if ((flags & HEAP_ZERO_MEMORY) && size > before)
        std::memset(moved + before, 0, size - before);
    SizeOfBlock(moved) = size;
    return moved;
}

BOOL HeapFree(HANDLE, DWORD, LPVOID block)
{
    if (block)
        std::free(static_cast<BYTE*>(block) - kHeader);
    return TRUE;
}

SIZE_T HeapSize(HANDLE, DWORD, LPCVOID block)
{
    return SizeOfBlock(block);
}
