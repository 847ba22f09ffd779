// HeaderExamples.cpp: the examples of the view's headers.
#include <kelgen/view/Picture.h>
#include <kelgen/view/View.h>

#include "Windows.h"
#include "support/Scratch.h"

#include <filesystem>
#include <fstream>

using namespace kelgen::test;

TEST(HeaderExamples, OfPictures)
{
    const Frame dialog(u"Settings");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(ScratchFolder());
    {
        // quote kelgen/view/Picture.h
        std::ofstream file("settings.svg");
        kelgen::view::WriteSvg(file, dialog);
        // end
    }
    EXPECT_NE(std::string::npos, ReadBytes("settings.svg").find("Settings"));
    std::filesystem::current_path(before);
    // quote kelgen/view/Picture.h#2
    KELGEN_EXPECT_SVG("settings", dialog);
    // end
}

TEST(HeaderExamples, OfTheView)
{
    // quote kelgen/view/View.h
    kelgen::view::Start({.port = 8080});
    // end
    EXPECT_NE("", kelgen::view::Start()) << "the port is another one when that is taken";
}
