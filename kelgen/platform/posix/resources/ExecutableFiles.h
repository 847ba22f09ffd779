// ExecutableFiles.h: the version resource in a program's or library's file.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/resources/ByteSource.h>

#include <vector>

namespace kelgen::posix {

/// The version resource number 1 of a PE file (32 or 64 bit) or of an ELF file that kelgen_add_resources gave one, in the language
/// that look-up without a language prefers, at most 64 KB of it. Nothing for any other file; any bytes are harmless.
/// Source: the published PE and ELF formats; RESOURCEHEADER for the ELF section .kelgen.res.
KELGEN_PLATFORM_TESTED_API std::optional<std::vector<BYTE>> FindVersionResource(const ByteSource& file);

}  // namespace kelgen::posix
