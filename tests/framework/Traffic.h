// Traffic.h: what happens to windows, in order, as text.
#pragma once

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/windows/ThreadState.h>
#include <kelgen/framework/windows/Wnd.h>

#include <map>
#include <sstream>
#include <string>
#include <utility>

namespace kelgen::test {

/// The steps recorded since the last call, separated by blanks.
class Traffic
{
public:
    static void Add(const std::string& step) { Text() += (Text().empty() ? "" : " ") + step; }
    static std::string Take() { return std::exchange(Text(), {}); }

private:
    static std::string& Text()
    {
        static std::string text;
        return text;
    }
};

/// The name of a message that belongs to every window's life; empty for others.
inline std::string LifeName(UINT message)
{
    static const std::map<UINT, const char*> names = {
        {WM_NCCREATE, "nccreate"}, {WM_CREATE, "create"},       {WM_CLOSE, "close"},
        {WM_DESTROY, "destroy"},   {WM_NCDESTROY, "ncdestroy"}, {WM_NULL, "null"},
    };
    const auto found = names.find(message);
    if (found != names.end())
        return found->second;
    return message >= WM_APP && message < WM_APP + 0x100 ? "app+" + std::to_string(message - WM_APP) : "";
}

/// A window that records the messages of its life, and hidden ways to protected members.
class RecordedWnd : public CWnd
{
public:
    explicit RecordedWnd(std::string name = {}) : m_name(std::move(name)) {}

    /// A hidden top-level window, or a child.
    bool CreateHidden(CWnd* parent = nullptr, UINT id = 0)
    {
        return CreateEx(0, AfxRegisterWndClass(0), "recorded", parent ? WS_CHILD : 0, CRect(0, 0, 50, 40), parent, id) != FALSE;
    }

    using CWnd::Default;
    using CWnd::OnWndMsg;
    std::string m_name;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const std::string name = LifeName(message);
        if (!name.empty())
            Traffic::Add(m_name + name);
        return CWnd::WindowProc(message, wParam, lParam);
    }
    BOOL PreCreateWindow(CREATESTRUCTA& cs) override
    {
        Traffic::Add(m_name + "[pre-create]");
        return CWnd::PreCreateWindow(cs);
    }
    void PreSubclassWindow() override { Traffic::Add(m_name + (FromHandlePermanent(m_hWnd) == this ? "[subclass]" : "[lost]")); }
    void PostNcDestroy() override { Traffic::Add(m_name + (m_hWnd ? "[still attached]" : "[gone]")); }
};

/// An application that answers message boxes with their text as a step.
class QuietApp : public CWinApp
{
public:
    QuietApp() : CWinApp("Quiet") {}
    int DoMessageBox(LPCSTR prompt, UINT, UINT) override
    {
        Traffic::Add("box(" + std::string(prompt) + ")");
        return IDOK;
    }
};

}  // namespace kelgen::test
