// EndingProgram.cpp: an application that ends in the way that its argument names.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/ole/OleException.h>
#include <kelgen/framework/program/WinApp.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace {

bool Is(const char* way)
{
    // A shell may leave blanks at the end.
    std::string line = ::GetCommandLineA();
    line.erase(line.find_last_not_of(' ') + 1);
    const std::string end = std::string(" ") + way;
    return line.size() >= end.size() && line.compare(line.size() - end.size(), end.size(), end) == 0;
}

class CEndingApp : public CWinApp
{
public:
    CEndingApp()
    {
        if (Is("constructor"))
            throw std::logic_error("before the main function");
    }

    BOOL InitApplication() override { return !Is("application"); }

    BOOL InitInstance() override
    {
        if (Is("file"))
            AfxThrowFileException(CFileException::fileNotFound, ERROR_FILE_NOT_FOUND, "list.txt");
        if (Is("automation"))
            AfxThrowOleException(static_cast<SCODE>(0xA0001234));
        if (Is("standard"))
            throw std::runtime_error("no more of it");
        if (Is("text"))
            throw "too much";
        if (Is("number"))
            throw 7L;
        if (Is("thread"))
            AfxBeginThread([](LPVOID) -> UINT { AfxThrowMemoryException(); }, nullptr);
        if (Is("quit"))
            AfxPostQuitMessage(0);
        if (Is("dialog")) {
            ::PostThreadMessageA(::GetCurrentThreadId(), WM_APP, 0, 0);
            AfxPumpMessage();
        }
        if (Is("message"))
            ::PostThreadMessageA(::GetCurrentThreadId(), WM_APP, 0, 0);
        const bool ends = Is("instance") || Is("code") || Is("quit") || Is("dialog");
        m_isLoop = Is("message") || Is("thread");
        return !ends;
    }

    int Run() override { return m_isLoop ? CWinThread::Run() : CWinApp::Run(); }

    BOOL PreTranslateMessage(MSG* message) override
    {
        if (message->message == WM_APP && Is("message"))
            AfxThrowInvalidArgException();
        return CWinApp::PreTranslateMessage(message);
    }

    int ExitInstance() override { return Is("code") ? 5 : CWinApp::ExitInstance(); }

private:
    bool m_isLoop = false;
};

CEndingApp theApp;

}  // namespace
