// view.cpp: a host that links the view: a picture of a window with a text in it.
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/view/Picture.h>

#include <cstdio>
#include <sstream>

int main()
{
    CWnd window;
    if (!window.CreateEx(0, "STATIC", "shown by the view", WS_POPUP | WS_VISIBLE, CRect(0, 0, 200, 40), nullptr, 0))
        return 1;
    std::ostringstream picture;
    kelgen::view::WriteSvg(picture, window);
    const bool isRight = picture.str().find("<svg") != std::string::npos && picture.str().find("shown by the view") != std::string::npos;
    std::printf("a picture of %s\n", isRight ? "the window" : "something else");
    window.DestroyWindow();
    return isRight ? 0 : 1;
}
