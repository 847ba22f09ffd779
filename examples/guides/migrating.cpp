// migrating.cpp: lines of an older Windows program as they are written for both targets. What they were stands beside them.
#include <kelgen/kelgen.h>  // was: <windows.h>, and a header for each part of the framework
#include <kelgen/std.h>

#include <iostream>

namespace {

constexpr UINT kChanged = WM_APP + 1;  // was: WM_USER + 1, which controls have for themselves

class Receiver : public CTrackable
{
public:
    // A handler has the parameters that its table says, or does not compile. was: any function, by a cast.
    void OnChanged(UINT count, LPARAM) { std::cout << "changed: " << count << '\n'; }
};

class Host : public CKelGenApp
{};

}  // namespace

int main()
{
    // A wide literal has 32 bits a unit on Linux. was: CWStr title(L"Konto");
    const CWStr title(u"Konto");

    // Objects are no arguments of formats. was: line.Format(L"%s: %d", title, 3);
    CWStr line;
    line.Format(u"%s: %d", static_cast<const unsigned short*>(title), 3);

    // A text is no condition: empty, or not there? was: if (line)
    if (!line.IsEmpty())
        std::cout << line << '\n';

    // Wide calls of the system take WCHAR, the library's members 16-bit text. was: lstrlenW(title)
    std::cout << ::lstrlenW(kelgen::AsWide(title)) << " units\n";

    // Narrow text is in the program's page, which on Linux is UTF-8. was: CWStr city; city.Copy("Z\xFCrich", -1);
    const CWStr city = kelgen::FromCodePage("Z\xFCrich", 1252);
    std::cout << city << '\n';

    // Paths stay what they are: drives and backslashes work on both targets, and so do the system's own.
    CFile("C:\\guide.txt", CFile::modeCreate | CFile::modeWrite).Close();
    std::cout << "found: " << (::GetFileAttributesA("c:/guide.txt") != INVALID_FILE_ATTRIBUTES) << '\n';
    ::DeleteFileA("C:\\guide.txt");

    // Members as functions of messages need no cast. was: (CKelGenApp::Function)&Receiver::OnChanged
    Host host;
    Receiver receiver;
    host.AddFunction(kChanged, &receiver, &Receiver::OnChanged);
    MSG message = {nullptr, kChanged, 7, 0, 0, {}};
    host.PreTranslateMessage(&message);
}
