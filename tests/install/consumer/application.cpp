// application.cpp: a host that is an application object: a hidden window answers a posted message and closes, which ends the program.
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/windows/Wnd.h>

#include <cstdio>
#include <string>

namespace {

std::string steps;

class CHiddenWindow : public CWnd
{
protected:
    LRESULT OnWork(WPARAM step, LPARAM)
    {
        steps += step == 2 ? " work" : " ?";
        PostMessage(WM_CLOSE);
        return 0;
    }
    void PostNcDestroy() override
    {
        steps += " gone";
        delete this;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CHiddenWindow, CWnd)
ON_MESSAGE(WM_APP, &CHiddenWindow::OnWork)
END_MESSAGE_MAP()

class CHost : public CWinApp
{
public:
    BOOL InitInstance() override
    {
        CCommandLineInfo arguments;
        ParseCommandLine(arguments);
        steps += "start(" + std::string(arguments.m_strFileName) + ")";
        const auto window = new CHiddenWindow;
        m_pMainWnd = window;
        return window->CreateEx(0, nullptr, "host", 0, CRect(), nullptr, 0) && window->PostMessage(WM_APP, 2);
    }

    int ExitInstance() override
    {
        const bool right = CWinApp::ExitInstance() == 0 && steps == "start(two words) work gone";
        std::printf("%s\n", steps.c_str());
        return right ? 0 : 1;
    }
};

CHost host;

}  // namespace
