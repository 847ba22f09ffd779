// WindowTable.h: handles of windows, and the list of top-level and child windows as a tree.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <vector>

namespace kelgen::posix::user {

/// Gives @p window a handle; false when there are 32 000 windows. Takes the desktop lock.
bool InsertWindow(Window& window);

/// Ends the handle; the window is freed when its last use ends. Takes the desktop lock.
void RemoveWindow(Window& window);

// These want the desktop lock.

/// Gives @p window another owner, or none, and returns the former one.
HWND SetOwner(Window& window, HWND owner);

/// What GetParent answers: a pop-up window's owner, a child's parent. The desktop lock is held.
HWND ParentAsTold(const Window& window);

/// Where among its siblings a window goes.
enum class Place
{
    Top,
    Bottom
};

/// Makes @p window a child of @p parent; among top-level windows those with WS_EX_TOPMOST stay above the others.
void LinkWindow(Window& window, Window& parent, Place place);

/// Puts a linked window right below @p after, its sibling.
void LinkBelow(Window& window, Window& parent, Window& after);

void UnlinkWindow(Window& window);

/// The top-level window, or child of the message root, that @p window lies in.
Window& TopLevelOf(Window& window);

/// Whether @p window is @p ancestor or below it.
bool IsWithin(const Window* window, const Window& ancestor);

/// The handles of the children, topmost first.
std::vector<HWND> ChildrenOf(const Window& window);

/// The handles of all that is below, parents before their children.
std::vector<HWND> DescendantsOf(const Window& window);

/// The top-level windows of @p thread, topmost first; of all threads for 0.
std::vector<HWND> TopLevelWindows(DWORD thread);

/// Moves the window's rectangles and those of all below it.
void OffsetWithChildren(Window& window, int x, int y);

/// Whether the window and everything around it has WS_VISIBLE, up to the desktop.
bool IsShown(const Window& window);

}  // namespace kelgen::posix::user
