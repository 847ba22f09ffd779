// std.h: the standard library's types beside ours: ranges, views, UTF-8, hashes, paths, chrono, functions as listeners.
//
// Include it after, or instead of, single headers. It adds nothing to the library's classes and changes no result of theirs.
//
//     #include <kelgen/std.h>
//
//     for (const auto& [key, value] : map)
//         std::cout << kelgen::ToUtf8(value) << '\n';
#pragma once

#include <kelgen/std/Callbacks.h>
#include <kelgen/std/Paths.h>
#include <kelgen/std/Ranges.h>
#include <kelgen/std/Text.h>
#include <kelgen/std/Time.h>
#include <kelgen/text/CodePageText.h>
