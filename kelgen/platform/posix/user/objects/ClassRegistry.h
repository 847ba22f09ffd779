// ClassRegistry.h: the list of classes and the atoms of their names. All wants the desktop lock.
#pragma once

#include <kelgen/platform/posix/user/objects/ClassTable.h>

#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix::user {

/// All registered classes; the system's own are there from the first call on.
std::vector<std::shared_ptr<WindowClass>>& Classes();

/// The atom of a class name; a new name gets one.
ATOM AtomOf(const ClassName& name);

/// The text in lower case.
std::u16string WithoutCase(std::u16string_view text);

}  // namespace kelgen::posix::user
