// FrameDelete.cpp: the end of a frame's memory. In checked builds what is left of a frame tells of another end.
#include <kelgen/framework/frames/FrameWnd.h>

#include <array>
#include <mutex>
#include <new>
#include <utility>

void* CFrameWnd::operator new(std::size_t size)
{
    return ::operator new(size);
}

void* CFrameWnd::operator new(std::size_t size, const std::nothrow_t& noThrow) noexcept
{
    return ::operator new(size, noThrow);
}

// The address sanitizer tells of it by itself, and where the first end was.
#if defined(KELGEN_CHECKED) && !defined(KELGEN_ADDRESS_SANITIZER)

namespace {

/// Lies where a frame was: to delete that once more ends this object.
class DeletedFrame : public CObject
{
public:
    ~DeletedFrame() override { kelgen::detail::ReportMisuse("a frame is deleted that has been deleted before, by itself or its maker"); }
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    // For yet another one.
    static void operator delete(void* block) noexcept { ::new (block) DeletedFrame; }
};

struct LastFrames
{
    std::mutex lock;
    std::array<void*, 64> blocks{};
    std::size_t next = 0;
};

// Never destroyed: static objects may hold frames.
LastFrames& TheLastFrames()
{
    static LastFrames* const frames = new LastFrames;
    return *frames;
}

}  // namespace

void CFrameWnd::operator delete(void* block) noexcept
{
    if (!block)
        return;
    ::new (block) DeletedFrame;
    LastFrames& frames = TheLastFrames();
    const std::lock_guard lock(frames.lock);
    void*& place = frames.blocks[frames.next++ % frames.blocks.size()];
    ::operator delete(std::exchange(place, block));
}

#else

void CFrameWnd::operator delete(void* block) noexcept
{
    ::operator delete(block);
}

#endif
