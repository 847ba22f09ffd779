// WindowQuery.cpp: visits to other threads' objects. No address travels in a message: whoever sends one reaches nothing.
#include <kelgen/framework/windows/internal/WindowQuery.h>

#include <kelgen/framework/windows/PrivateMessages.h>
#include <kelgen/framework/windows/internal/CurrentThread.h>

#include <mutex>

namespace kelgen::detail {

namespace {

struct Visits
{
    std::mutex oneByOne;
    // Of the visit that is going on: guards it against its end.
    std::mutex lock;
    WPARAM number = 0;
    WPARAM last = 0;
    const std::function<void(CWnd&)>* visit = nullptr;
    bool wasMade = false;
};

// Never destroyed: windows may be asked at the very end of the process.
Visits& TheVisits()
{
    static Visits* const visits = new Visits;
    return *visits;
}

bool VisitOwn(HWND window, const std::function<void(CWnd&)>& visit)
{
    CWnd* const object = threadState ? threadState->m_maps->windows.Permanent(window) : nullptr;
    if (!object || object->m_hWnd != window)
        return false;
    visit(*object);
    return true;
}

}  // namespace

bool VisitObjectOf(HWND window, UINT milliseconds, const std::function<void(CWnd&)>& visit)
{
    const DWORD thread = ::GetWindowThreadProcessId(window, nullptr);
    if (thread == 0)
        return false;
    if (thread == ::GetCurrentThreadId())
        return VisitOwn(window, visit);
    Visits& visits = TheVisits();
    const std::lock_guard oneByOne(visits.oneByOne);
    WPARAM number = 0;
    {
        const std::lock_guard lock(visits.lock);
        number = ++visits.last;
        visits.number = number;
        visits.visit = &visit;
        visits.wasMade = false;
    }
    DWORD_PTR answer = 0;
    ::SendMessageTimeoutA(window, WM_QUERYAFXWNDPROC, number, 0, SMTO_ABORTIFHUNG, milliseconds, &answer);
    const std::lock_guard lock(visits.lock);
    visits.number = 0;
    return visits.wasMade;
}

LRESULT AnswerQuery(HWND window, WPARAM number)
{
    if (number == 0)
        return 1;
    Visits& visits = TheVisits();
    const std::lock_guard lock(visits.lock);
    if (number == visits.number)
        visits.wasMade = VisitOwn(window, *visits.visit);
    return 1;
}

}  // namespace kelgen::detail
