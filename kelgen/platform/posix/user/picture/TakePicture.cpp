// TakePicture.cpp: TakeDesktopPicture: the tree of windows under the desktop's lock, what controls show on their own threads.
#include <kelgen/platform/support/DesktopPicture.h>

#include <kelgen/platform/posix/user/drawing/ShapeList.h>
#include <kelgen/platform/posix/user/menus/MenuPlaces.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/WindowTable.h>

#include <algorithm>
#include <map>
#include <utility>

namespace kelgen {

using namespace posix::user;

namespace {

constexpr std::size_t kMostWindows = 4000;
constexpr std::size_t kLongestText = 1000;

/// What one thread tells of itself. Both threads hold it: the one that asks may have given up before.
struct Told
{
    std::vector<HWND> asked;
    std::map<HWND, ControlPicture> controls;
    HWND active = nullptr;
    HWND focus = nullptr;
    std::vector<MenuPicture> menus;
};

void TellOfThread(Told& told)
{
    const ThreadQueue& queue = CurrentQueue();
    told.active = queue.active;
    told.focus = queue.focus;
    for (const HWND handle : told.asked) {
        const Window* const window = OwnWindow(handle);
        if (!window || !window->control)
            continue;
        ControlPicture picture;
        window->control->Show(*window, picture);
        if (const ControlColors* const colors = window->control->colors.get()) {
            picture.hasTextColor = colors->hasText;
            picture.textColor = colors->text;
            picture.hasGroundColor = colors->hasGround;
            picture.groundColor = colors->ground;
        }
        told.controls.emplace(handle, std::move(picture));
    }
    ShowOpenMenus(told.menus);
}

void ShowScrollBar(const Window& window, int bar, ScrollBarPicture& picture)
{
    static const ScrollBars kInitial;
    const ScrollBar& own = (window.scrollBars ? *window.scrollBars : kInitial).bars[bar];
    picture.place = BarPlace(window, bar);
    picture.isUpright = IsUpright(window, bar);
    const RECT& place = picture.place;
    const ScrollParts parts = own.PartsIn(picture.isUpright ? place.bottom - place.top : place.right - place.left);
    picture.isDisabled = own.disabled == ESB_DISABLE_BOTH;
    picture.arrow = parts.arrow;
    picture.thumbStart = parts.thumbStart;
    picture.thumbEnd = parts.thumbEnd;
    picture.least = own.least;
    picture.most = std::max(own.LastPosition(), own.least);
    picture.position = own.held == EScrollPart::thumb ? own.tracked : own.position;
}

class Picture
{
public:
    DesktopPicture Take(HWND window, DWORD milliseconds, const DesktopPicture* before)
    {
        m_picture.size = {kScreenWidth, kScreenHeight};
        ReadTree(window);
        AskThreads(milliseconds);
        for (std::size_t i = 0; i < m_picture.windows.size(); ++i)
            Complete(m_picture.windows[i], m_threads[i], before);
        if (!window)
            AddMenus(before);
        return std::move(m_picture);
    }

private:
    void ReadTree(HWND handle)
    {
        const DesktopGuard guard;
        if (!handle)
            return ReadChildren(DesktopRoot(), -1);
        const Window* const window = FindWindowLocked(handle);
        if (window && !window->IsDesktopOrMessageRoot() && (window->style & WS_VISIBLE))
            Read(*window, -1);
    }

    void ReadChildren(const Window& parent, int place)
    {
        // The active document frame is the one in front.
        bool isActive = parent.windowClass && parent.windowClass->name == u"MDIClient";
        for (const Window* child = parent.firstChild; child; child = child->below) {
            if (!(child->style & WS_VISIBLE) || m_picture.windows.size() >= kMostWindows)
                continue;
            const std::size_t at = m_picture.windows.size();
            Read(*child, place);
            m_picture.windows[at].isActive = std::exchange(isActive, false);
        }
    }

    void Read(const Window& window, int parent)
    {
        WindowPicture& picture = m_picture.windows.emplace_back();
        picture.handle = window.handle;
        picture.owner = window.owner;
        picture.parent = parent;
        picture.className = window.windowClass->name;
        picture.text = window.text.substr(0, kLongestText);
        picture.style = window.style;
        picture.exStyle = window.exStyle;
        picture.window = window.window;
        for (const HICON icon : {window.windowClass->icon, window.windowClass->smallIcon, window.bigIcon, window.smallIcon})
            picture.icon = icon ? icon : picture.icon;
        picture.client = window.client;
        picture.hasIcon = window.smallIcon || window.bigIcon || window.windowClass->smallIcon || window.windowClass->icon;
        for (const int bar : {SB_HORZ, SB_VERT})
            if (window.style & StyleBitOf(bar))
                ShowScrollBar(window, bar, picture.scrollBars[bar]);
        if (window.scrollBars && window.windowClass->name == u"ScrollBar")
            ShowScrollBar(window, SB_CTL, picture.scrollBars[SB_CTL]);
        if (window.drawing)
            picture.drawn = window.drawing->Snapshot();
        m_threads.push_back(window.thread);
        const auto told = m_told.find(window.thread);
        const auto& of = told != m_told.end() ? told : m_told.emplace(window.thread, std::make_shared<Told>()).first;
        of->second->asked.push_back(window.handle);
        ShowMenuBar(window, picture.bar);
        if (!(window.style & WS_MINIMIZE))
            ReadChildren(window, static_cast<int>(m_picture.windows.size()) - 1);
    }

    // All are asked before the first one is waited for.
    void AskThreads(DWORD milliseconds)
    {
        const ULONGLONG deadline = DeadlineAfter(milliseconds);
        ThreadQueue& own = CurrentQueue();
        std::vector<std::pair<std::shared_ptr<ThreadQueue>, std::shared_ptr<SentMessage>>> asked;
        for (const auto& [thread, told] : m_told) {
            if (thread == own.thread) {
                TellOfThread(*told);
                m_answered[thread] = true;
                continue;
            }
            const auto queue = FindQueue(thread);
            auto message = std::make_shared<SentMessage>();
            message->sender = own.shared_from_this();
            message->work = [shared = told] {
                TellOfThread(*shared);
                return LRESULT{1};
            };
            if (queue && queue->Deliver(message))
                asked.emplace_back(queue, message);
        }
        for (const auto& [queue, message] : asked) {
            if (!own.AwaitAnswer(*message, deadline, true)) {
                queue->Withdraw(*message);
                continue;
            }
            m_answered[queue->thread] =
                message->state.load(std::memory_order_acquire) == SentMessage::State::Answered && message->result == 1;
        }
    }

    void Complete(WindowPicture& picture, DWORD thread, const DesktopPicture* before)
    {
        if (m_answered[thread]) {
            Told& told = *m_told[thread];
            if (const auto control = told.controls.find(picture.handle); control != told.controls.end())
                picture.control = std::move(control->second);
            picture.isActive = picture.isActive || told.active == picture.handle;
            picture.hasFocus = told.focus == picture.handle;
            return;
        }
        if (!before)
            return;
        for (const WindowPicture& old : before->windows) {
            if (old.handle != picture.handle)
                continue;
            picture.control = old.control;
            picture.isActive = old.isActive;
            picture.hasFocus = old.hasFocus;
        }
    }

    void AddMenus(const DesktopPicture* before)
    {
        bool isWhole = true;
        for (const auto& [thread, told] : m_told) {
            if (m_answered[thread])
                m_picture.menus.insert(m_picture.menus.end(), told->menus.begin(), told->menus.end());
            else
                isWhole = false;
        }
        if (!isWhole && before && m_picture.menus.empty())
            m_picture.menus = before->menus;
    }

    DesktopPicture m_picture;
    std::vector<DWORD> m_threads;
    std::map<DWORD, std::shared_ptr<Told>> m_told;
    std::map<DWORD, bool> m_answered;
};

}  // namespace

DesktopPicture TakeDesktopPicture(HWND window, DWORD milliseconds, const DesktopPicture* before)
{
    return Picture().Take(window, milliseconds, before);
}

}  // namespace kelgen
