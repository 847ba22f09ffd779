// Desktop.h: what all windows of the process share: their lock, the two roots of the tree, and the size of the screen.
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

#include <mutex>

namespace kelgen::posix::user {

struct Window;

/// The lock over the tree of windows, the classes, lists of hooks, and what other threads read of a window. Never held while a
/// window procedure, a hook or any other code of a host runs, nor while waiting. It comes before a queue's lock, which comes before
/// the dispatcher lock.
std::recursive_mutex& DesktopLock();

/// The lock while it lives.
struct DesktopGuard
{
    std::lock_guard<std::recursive_mutex> guard{DesktopLock()};
};

/// The parent of all top-level windows: as large as the screen, of no thread.
Window& DesktopRoot();

/// The parent of message-only windows, of no thread.
Window& MessageRoot();

/// The screen's and the work area's size in pixels.
constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 800;

}  // namespace kelgen::posix::user
