// Picture.cpp: pictures as documents, and their comparison with files.
#include <kelgen/view/Picture.h>

#include <kelgen/platform/support/DesktopPicture.h>
#include <kelgen/view/internal/SvgDesktop.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <ostream>

namespace kelgen::view {

namespace {

constexpr DWORD kPatience = 200;  // milliseconds

std::string Draw(HWND window)
{
    return detail::SvgDocument(TakeDesktopPicture(window, kPatience), window != nullptr);
}

bool Write(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    return static_cast<bool>(file.flush());
}

}  // namespace

void WriteSvg(std::ostream& out, HWND window)
{
    out << Draw(window);
}

std::string CompareSvg(const std::string& source, const std::string& name, HWND window)
{
    const std::string path = source.substr(0, source.rfind('/') + 1) + name + ".svg";
    const std::string fresh = path.substr(0, path.size() - 4) + ".new.svg";
    const std::string picture = Draw(window);
    const char* const renew = std::getenv("KELGEN_RENEW_SVG");
    // One of an earlier run would be taken for this one's.
    std::remove(fresh.c_str());
    if (renew && *renew)
        return Write(path, picture) ? "" : "cannot write " + path;
    std::ifstream file(path, std::ios::binary);
    const std::string expected{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (expected == picture)
        return {};
    Write(fresh, picture);
    return (expected.empty() ? "there is no " : "the window looks different from ") + path + "; it looks like " + fresh +
           "; if that is right, run the test again with KELGEN_RENEW_SVG=1";
}

}  // namespace kelgen::view
