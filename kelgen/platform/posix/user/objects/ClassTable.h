// ClassTable.h: registered classes, the program's and the system's own.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix::user {

struct WindowClass
{
    ATOM atom = 0;
    std::u16string name;
    UINT style = 0;
    const Procedure* procedure = nullptr;
    HINSTANCE module = nullptr;  // null for the system's own
    int windowExtra = 0;
    std::vector<BYTE> extra;
    HICON icon = nullptr;
    HICON smallIcon = nullptr;
    HCURSOR cursor = nullptr;
    UINT systemCursor = 0;  // loaded when it is first asked for
    HBRUSH background = nullptr;
    UINT_PTR menuNumber = 0;  // of a menu resource without a name
    std::u16string menuName;
    std::string menuNameNarrow;
    bool system = false;
    int windows = 0;

    bool IsForAllModules() const { return system || (style & CS_GLOBALCLASS) != 0; }
};

/// One of the system's own classes.
struct SystemClass
{
    const char16_t* name;
    UINT style;
    WNDPROC procedure;  // takes wide text
    int windowExtra;
    UINT cursor;      // number of a system cursor, 0: none
    UINT background;  // COLOR_ number plus one, 0: none
};

/// Adds a class to the system's own. Called from RegisterSystemClasses.
void AddSystemClass(const SystemClass& systemClass);

/// Adds all of the system's own classes. The only call upwards: SystemClasses.cpp, above all rooms, lists the controls that it adds.
void RegisterSystemClasses();

/// A class name as calls take it: text, or an atom.
struct ClassName
{
    std::u16string text;
    ATOM atom = 0;
};
ClassName NameOfClass(LPCSTR name);
ClassName NameOfClass(LPCWSTR name);

/// The cursor of a class, loaded when needed. The desktop lock is not held.
HCURSOR CursorOf(WindowClass& windowClass);

// These want the desktop lock.

/// All registered classes; the system's own are there from the first call on.
std::vector<std::shared_ptr<WindowClass>>& Classes();

/// The atom of a class name; a new name gets one.
ATOM AtomOf(const ClassName& name);

/// The text in lower case.
std::u16string WithoutCase(std::u16string_view text);

/// The class for a window of @p module; null when there is none.
std::shared_ptr<WindowClass> FindClass(const ClassName& name, HINSTANCE module);
std::shared_ptr<WindowClass> FindSystemClass(const char16_t* name);

}  // namespace kelgen::posix::user
