// Erase.cpp: the background of windows.
#include <kelgen/platform/posix/user/drawing/Erase.h>

#include <kelgen/platform/posix/user/api/Regions.h>
#include <kelgen/platform/posix/user/api/Shapes.h>
#include <kelgen/platform/posix/user/drawing/GdiObjects.h>

namespace kelgen::posix::user {

void Erase(const Window& window, HDC context, HBRUSH brush)
{
    RECT area;
    if ((window.drawing || !IsSystemBrush(brush)) && GetClipBox(context, &area) > NULLREGION)
        FillRect(context, &area, brush);
}

}  // namespace kelgen::posix::user
