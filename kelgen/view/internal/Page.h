// Page.h: the files of kelgen/view/page, which the build makes part of the library.
#pragma once

#include <string_view>

namespace kelgen::view::page {

extern const std::string_view kStyle;   ///< picture.css: how the elements of pictures look.
extern const std::string_view kLayout;  ///< page.css: the page around them.
extern const std::string_view kPage;    ///< page.html
extern const std::string_view kScript;  ///< page.js

}  // namespace kelgen::view::page
