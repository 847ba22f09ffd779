// ClassTable.cpp: finding classes by name and module, and the system's own.
#include <kelgen/platform/posix/user/objects/ClassTable.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/api/LetterCase.h>
#include <kelgen/platform/posix/user/api/Icons.h>
#include <kelgen/platform/posix/user/objects/ProcedureTable.h>

#include <algorithm>
#include <map>

namespace kelgen::posix::user {

namespace {

// "#32770" is another spelling of the atom 32770.
ATOM AtomOfDigits(std::u16string_view text)
{
    if (text.size() < 2 || text.size() > 6 || text[0] != u'#')
        return 0;
    unsigned value = 0;
    for (const char16_t digit : text.substr(1)) {
        if (digit < u'0' || digit > u'9')
            return 0;
        value = value * 10 + (digit - u'0');
    }
    return value > 0 && value < 0x10000 ? static_cast<ATOM>(value) : ATOM{0};
}

std::map<std::u16string, ATOM>& Atoms()
{
    static auto& atoms = *new std::map<std::u16string, ATOM>;
    return atoms;
}

}  // namespace

ClassName NameOfClass(LPCWSTR name)
{
    if (IS_INTRESOURCE(name))
        return {{}, static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(name))};
    const std::u16string_view text = WideText(name);
    return {std::u16string(text), AtomOfDigits(text)};
}

ClassName NameOfClass(LPCSTR name)
{
    if (IS_INTRESOURCE(name))
        return {{}, static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(name))};
    const std::u16string text = WideText(name);
    return {text, AtomOfDigits(text)};
}

std::u16string WithoutCase(std::u16string_view text)
{
    std::u16string result(text);
    if (!result.empty())
        CharLowerBuffW(reinterpret_cast<LPWSTR>(result.data()), static_cast<DWORD>(result.size()));
    return result;
}

ATOM AtomOf(const ClassName& name)
{
    if (name.atom)
        return name.atom;
    auto& atoms = Atoms();
    const auto [place, isNew] = atoms.try_emplace(WithoutCase(name.text), ATOM{0});
    if (isNew)
        place->second = static_cast<ATOM>(0xC000 + atoms.size());
    return place->second;
}

std::vector<std::shared_ptr<WindowClass>>& Classes()
{
    static auto& classes = *new std::vector<std::shared_ptr<WindowClass>>;
    static bool registered = false;
    if (!registered) {
        registered = true;
        RegisterSystemClasses();
    }
    return classes;
}

void AddSystemClass(const SystemClass& systemClass)
{
    auto added = std::make_shared<WindowClass>();
    const ClassName name = NameOfClass(reinterpret_cast<LPCWSTR>(systemClass.name));
    added->atom = AtomOf(name);
    added->name = name.text;
    added->style = systemClass.style;
    added->procedure = ProcedureOf(systemClass.procedure, true);
    added->windowExtra = systemClass.windowExtra;
    added->systemCursor = systemClass.cursor;
    added->background = reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(systemClass.background));
    added->system = true;
    Classes().push_back(added);
}

HCURSOR CursorOf(WindowClass& windowClass)
{
    UINT number = 0;
    {
        DesktopGuard guard;
        if (windowClass.cursor || windowClass.systemCursor == 0)
            return windowClass.cursor;
        number = windowClass.systemCursor;
    }
    const HCURSOR loaded = LoadCursorW(nullptr, MAKEINTRESOURCEW(number));
    DesktopGuard guard;
    windowClass.systemCursor = 0;
    return windowClass.cursor = loaded;
}

std::shared_ptr<WindowClass> FindClass(const ClassName& name, HINSTANCE module)
{
    if (name.text.empty() && name.atom == 0)
        return nullptr;
    const ATOM atom = AtomOf(name);
    std::shared_ptr<WindowClass> result;
    for (const auto& candidate : Classes()) {
        if (candidate->atom != atom)
            continue;
        if (!candidate->system && candidate->module == module)
            return candidate;
        // A global class of some module hides the system's.
        if (candidate->IsForAllModules() && (!result || result->system))
            result = candidate;
    }
    return result;
}

std::shared_ptr<WindowClass> FindSystemClass(const char16_t* name)
{
    const ATOM atom = AtomOf(NameOfClass(reinterpret_cast<LPCWSTR>(name)));
    for (const auto& candidate : Classes())
        if (candidate->system && candidate->atom == atom)
            return candidate;
    return nullptr;
}

}  // namespace kelgen::posix::user
