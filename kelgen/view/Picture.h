// Picture.h: pictures of windows and of the whole desktop. Native only.
#pragma once

#include <kelgen/platform/Win32.h>
#include <kelgen/view/Export.h>

#include <iosfwd>
#include <string>

namespace kelgen::view {

/// Writes @p window with all that lies in it, or the whole desktop with its open menus, as one SVG document that needs nothing else: light
/// or dark as the reader wishes, with ARIA roles and names. The same windows in the same state give the same bytes, on every machine: no
/// handle is in it. A window that is none, or not visible, gives an empty picture.
///
///     std::ofstream file("settings.svg");
///     kelgen::view::WriteSvg(file, dialog);
///
/// The environment variable KELGEN_SNAPSHOT=FILE.svg has the library loaded into any host that waits for messages, and writes the desktop
/// to that file at each SIGUSR1, and at the end of AfxWinMain unless nothing is on it any more.
/// Threads: any. Another thread is asked for what its controls show, for at most a fifth of a second.
KELGEN_VIEW_API void WriteSvg(std::ostream& out, HWND window = nullptr);

/// Compares the picture of @p window with the file @p name.svg in the folder of @p source: empty when they are equal, else what is to be
/// done about it, with the new picture beside the file as @p name.new.svg, which is removed when there is none. With the environment
/// variable KELGEN_RENEW_SVG set the file is written instead.
KELGEN_VIEW_API std::string CompareSvg(const std::string& source, const std::string& name, HWND window);

}  // namespace kelgen::view

/// Where the files of KELGEN_EXPECT_SVG lie: beside this file. A build whose compiler shortens __FILE__ defines a path of its own.
#ifndef KELGEN_SVG_SOURCE
#define KELGEN_SVG_SOURCE __FILE__
#endif

/// In a GoogleTest test: the window looks as the file @p name.svg beside the test's source says.
///
///     KELGEN_EXPECT_SVG("settings", dialog);
#define KELGEN_EXPECT_SVG(name, window) EXPECT_EQ("", ::kelgen::view::CompareSvg(KELGEN_SVG_SOURCE, name, window))
