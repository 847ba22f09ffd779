// PageProgram.cpp: tells what a process on its own ANSI code page makes of its command line, of files, of the registry and of profiles.
#include <kelgen/platform/Win32.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr LPCSTR kKey = "Software\\Page";

int Print(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    return 0;
}

// The rest of the command line behind the program's name and the command.
std::string Argument()
{
    const char* const line = GetCommandLineA();
    const char* const command = std::strchr(line, ' ');
    const char* const argument = command ? std::strchr(command + 1, ' ') : nullptr;
    return argument ? argument + 1 : "";
}

std::string Contents(const std::string& name)
{
    const HANDLE file = CreateFileA(name.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    char bytes[64];
    DWORD size = 0;
    ReadFile(file, bytes, sizeof bytes, &size, nullptr);
    CloseHandle(file);
    return {bytes, size};
}

std::string RegistryValue()
{
    char text[64] = "";
    DWORD size = sizeof text;
    HKEY key = nullptr;
    RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key);
    RegQueryValueExA(key, "text", nullptr, nullptr, reinterpret_cast<LPBYTE>(text), &size);
    RegCloseKey(key);
    return text;
}

int StoreRegistryValue(const std::string& text)
{
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
    const LSTATUS status = RegSetValueExA(key, "text", 0, REG_SZ, bytes, static_cast<DWORD>(text.size() + 1));
    RegCloseKey(key);
    return status == ERROR_SUCCESS ? 0 : 1;
}

std::string ProfileValue(const std::string& file)
{
    char text[64];
    return {text, GetPrivateProfileStringA("section", "key", "", text, sizeof text, file.c_str())};
}

}  // namespace

int main(int count, char** words)
{
    const std::string command = count > 1 ? words[1] : "";
    if (command == "page")
        return Print(std::to_string(GetACP()));
    if (command == "argument")
        return Print(Argument());
    if (command == "contents")
        return Print(Contents(Argument()));
    if (command == "value")
        return Print(RegistryValue());
    if (command == "store")
        return StoreRegistryValue(Argument());
    if (command == "profile")
        return Print(ProfileValue(Argument()));
    return 2;
}
