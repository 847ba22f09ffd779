// WndInterface.cpp: the stages of a message, and what hooks may do to them.
#include <kelgen/window/WndInterface.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/internal/LinkTable.h>
#include <kelgen/window/internal/OwnThread.h>

using kelgen::detail::PresenceWatch;

namespace {

using Table = kelgen::detail::LinkTable<C000WndProcInterface, C000WndInterface>;

#ifdef KELGEN_CHECKED
struct ClassName
{
    explicit ClassName(const std::type_info& type) { kelgen::detail::WriteClassName(type, text, sizeof text); }
    char text[200];
};
#endif

}  // namespace

const UINT C000WndInterface::MESSAGE_WNDPOSCREATE;

bool C000WndProcInterface::_000OnPosCreate()
{
    return false;
}

C000WndProcInterface::~C000WndProcInterface()
{
    while (C000WndInterface* const window = Table::Only().Take(this))
        window->Forget(this);
}

bool C000WndProcInterface::_000BeforeWndProc(UINT message, WPARAM, LPARAM, LRESULT&)
{
    return message == C000WndInterface::MESSAGE_WNDPOSCREATE && _000OnPosCreate();
}

bool C000WndProcInterface::_000WndProc(UINT, WPARAM, LPARAM, LRESULT&)
{
    return false;
}

bool C000WndProcInterface::_000AfterWndProc(UINT, WPARAM, LPARAM, LRESULT&)
{
    return false;
}

C000WndInterface::C000WndInterface(const C000WndInterface& other)
    : m_flags(other.m_flags), m_before(other.m_before), m_body(other.m_body), m_after(other.m_after)
{
    EnterTable();
}

C000WndInterface& C000WndInterface::operator=(const C000WndInterface& other)
{
    m_flags = other.m_flags;
    m_before = other.m_before;
    m_body = other.m_body;
    m_after = other.m_after;
    EnterTable();
    return *this;
}

C000WndInterface::~C000WndInterface()
{
    if (m_isInTable)
        Table::Only().Remove(this);
}

void C000WndInterface::Hook(Hooks& hooks, const C000WndProcInterface::CHook& hook)
{
    if (!hook.m_pfn || !hook.m_pObject)
        return;
    // What is left of an object that has ended is its base.
    KELGEN_CHECK(typeid(*hook.m_pObject) != typeid(C000WndProcInterface), "hook of %s: its object has been destroyed",
                 ClassName(typeid(*this)).text);
    KELGEN_CHECK(kelgen::detail::IsOwnWindow(_000GetWnd()), "hook %s of %s: added on a thread that the window is not of",
                 ClassName(typeid(*hook.m_pObject)).text, ClassName(typeid(*this)).text);
    Table::Only().Add(hook.m_pObject, this);
    m_isInTable = true;
    hooks.AddUnique(hook);
}

void C000WndInterface::EnterTable()
{
    for (const Hooks* hooks : {&m_before, &m_body, &m_after}) {
        for (int i = 0; i < hooks->GetSize(); ++i) {
            Table::Only().Add(hooks->GetAt(i).m_pObject, this);
            m_isInTable = true;
        }
    }
}

/// @p object has ended; a later one may lie at its place.
void C000WndInterface::Forget(const C000WndProcInterface* object)
{
    KELGEN_CHECK(kelgen::detail::IsOwnWindow(_000GetWnd()), "hook of %s: destroyed on a thread that the window is not of",
                 ClassName(typeid(*this)).text);
    for (Hooks* hooks : {&m_before, &m_body, &m_after}) {
        for (int i = hooks->GetUpperBound(); i >= 0; --i) {
            if (hooks->GetAt(i).m_pObject == object)
                m_walks.Remove(*hooks, i);
        }
    }
    m_walks.Forget([&](const C000WndProcInterface::CHook& hook) { return hook.m_pObject == object; });
}

bool C000WndInterface::Run(const Hooks& hooks, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    kelgen::detail::ListWalk<Hooks> walk(m_walks, hooks);
    const bool handled =
        walk.Until([&](const C000WndProcInterface::CHook& hook) { return (hook.m_pObject->*hook.m_pfn)(message, wParam, lParam, result); });
    // Nothing is left to do for an object that is not there any more.
    return handled || walk.OwnerIsGone();
}

void C000WndInterface::Unhook(Hooks& hooks, C000WndProcInterface::CHook hook)
{
    KELGEN_CHECK(kelgen::detail::IsOwnWindow(_000GetWnd()), "hook of %s: removed on a thread that the window is not of",
                 ClassName(typeid(*this)).text);
    for (int index = hooks.FindFirst(hook); index >= 0; index = hooks.FindFirst(hook))
        m_walks.Remove(hooks, index);
}

bool C000WndInterface::_000BeforeWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (!m_before.IsEmpty() && Run(m_before, message, wParam, lParam, result))
        return true;
    return message == MESSAGE_WNDPOSCREATE && _000OnPosCreate();
}

bool C000WndInterface::_000BodyWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    return (!m_body.IsEmpty() && Run(m_body, message, wParam, lParam, result)) || message == WM_NCDESTROY;
}

bool C000WndInterface::_000AfterWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (!m_after.IsEmpty() && Run(m_after, message, wParam, lParam, result))
        return true;
    if (message == WM_CREATE) {
        m_flags |= E000FLAG_WNDCREATED;
        if (const CWnd* const window = _000GetWnd())
            ::PostMessageA(window->m_hWnd, MESSAGE_WNDPOSCREATE, 0, 0);
    }
    return false;
}

LRESULT C000WndInterface::_000WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const PresenceWatch watch(m_presence);
    LRESULT result = 0;
    if (_000BeforeWindowProc(message, wParam, lParam, result) || watch.IsGone())
        return result;
    if (_000BodyWindowProc(message, wParam, lParam, result) || watch.IsGone())
        return result;
    result = _000DefaultWindowProc(message, wParam, lParam);
    if (message != WM_NCDESTROY && !watch.IsGone())
        _000AfterWindowProc(message, wParam, lParam, result);
    return result;
}

bool C000WndInterface::_000OnPosCreate()
{
    return false;
}

CWnd* C000WndInterface::_000GetWnd()
{
    return dynamic_cast<CWnd*>(this);
}

C000WndInterface::E000Flag& operator|=(C000WndInterface::E000Flag& flags, const C000WndInterface::E000Flag& added)
{
    return flags = static_cast<C000WndInterface::E000Flag>(DWORD{flags} | DWORD{added});
}
