// Folders.h: the registry's folders in the file system.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>

#include <functional>
#include <string>
#include <string_view>

namespace kelgen::posix {

/// Opens the folder @p name in @p parent; empty, with errno, when there is none or it is no folder.
Descriptor OpenFolder(int parent, const std::string& name);

/// Calls @p visit with the name of every entry of @p folder but "." and "..", and whether it is a folder. False when the folder
/// cannot be read.
bool ForEachEntry(int folder, const std::function<void(const std::string& name, bool isFolder)>& visit);

/// Whether @p folder holds the folder of a subkey.
bool HoldsSubkeys(int folder);

/// Removes the folder @p name in @p parent with everything in it, even what others add meanwhile.
void RemoveTree(int parent, const std::string& name);

/// Removes everything in @p folder except its name file and the files that others are writing.
void EmptyFolder(int folder);

/// Writes the name file of a key's folder. 0, or an errno value.
int WriteNameFile(int folder, std::u16string_view name);

/// The name of the key whose folder is @p fileName in @p parent, with its case; empty when it is not a key's.
std::u16string ReadKeyName(int parent, const std::string& fileName);

}  // namespace kelgen::posix
