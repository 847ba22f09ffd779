// MessageMap.h: message maps and the entries of commands, notifications and messages by number. The entries of windows' own
// messages (ON_WM_...) are in MessageMapWindows.h.
#pragma once

#include <kelgen/framework/program/CmdTarget.h>

#include <type_traits>
#include <utility>

/// A message map ties messages to member functions:
///
///     class CCounter : public CWnd
///     {
///     protected:
///         void OnPaint();
///         void OnReset();
///         LRESULT OnCount(WPARAM step, LPARAM);
///         DECLARE_MESSAGE_MAP()
///     };
///
///     BEGIN_MESSAGE_MAP(CCounter, CWnd)
///         ON_WM_PAINT()
///         ON_COMMAND(ID_RESET, &CCounter::OnReset)
///         ON_MESSAGE(WM_APP, &CCounter::OnCount)
///     END_MESSAGE_MAP()
///
/// A map is asked before its base class's, and in it the first entry that fits decides. Handlers are checked by the compiler: each
/// entry makes a small function that turns wParam and lParam into the handler's own parameters.

/// What precedes a handler's declaration; nothing.
#define afx_msg

/// The message number under which a parent offers a control's notifications to the control itself, added to the message's own.
constexpr UINT WM_REFLECT_BASE = 0xBC00;

namespace kelgen::detail {

/// A window or thread message on its way into a handler.
struct MappedMessage
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    LRESULT result;
};

/// A command or notification on its way into a handler.
struct MappedCommand
{
    UINT id;
    int code;
    void* extra;
};

/// Both return whether the message was handled.
using MessageThunk = bool (*)(CCmdTarget& target, MappedMessage& message);
using CommandThunk = bool (*)(CCmdTarget& target, MappedCommand& command);

/// What an entry's number means.
enum class EntryKind : BYTE
{
    End,
    Message,            ///< A window's message.
    RegisteredMessage,  ///< A window's message whose number is a variable.
    ThreadMessage,
    RegisteredThreadMessage,
    Command,  ///< WM_COMMAND or WM_NOTIFY with code and id, or one of them reflected.
};

}  // namespace kelgen::detail

/// One entry of a message map.
struct AFX_MSGMAP_ENTRY
{
    kelgen::detail::EntryKind kind;        ///< What the number below means.
    UINT nMessage;                         ///< The message.
    UINT nCode;                            ///< The notification's or the command's code.
    UINT nID;                              ///< The first command or control.
    UINT nLastID;                          ///< The last one.
    const UINT* pnRegistered;              ///< The variable of a registered message's number.
    kelgen::detail::MessageThunk message;  ///< Calls a message's handler.
    kelgen::detail::CommandThunk command;  ///< Calls a command's handler.
};

namespace kelgen::detail {

/// The parameters and result of a handler.
template <class Handler>
struct HandlerTraits;
template <class Result, class Class, class... Parameters>
struct HandlerTraits<Result (Class::*)(Parameters...)>
{
    using ResultType = Result;
    template <class Target, auto Handler, class... Arguments>
    static Result Call(CCmdTarget& target, Arguments... arguments)
    {
        static_assert(sizeof...(Arguments) == sizeof...(Parameters), "the handler takes another number of parameters");
        return (static_cast<Target&>(target).*Handler)(Converted<Parameters>(arguments)...);
    }

private:
    /// Numbers take the width of the handler's parameter: hosts name the 32-bit types where messages carry wider ones.
    template <class Parameter, class Argument>
    static Parameter Converted(Argument argument)
    {
        return static_cast<Parameter>(argument);
    }
};
template <class Result, class Class, class... Parameters>
struct HandlerTraits<Result (Class::*)(Parameters...) const> : HandlerTraits<Result (Class::*)(Parameters...)>
{};

template <class Target, auto Handler, class... Arguments>
auto CallHandler(CCmdTarget& target, Arguments... arguments)
{
    return HandlerTraits<decltype(Handler)>::template Call<Target, Handler>(target, arguments...);
}

template <auto Handler>
using ResultOf = typename HandlerTraits<decltype(Handler)>::ResultType;

// The kinds of commands, by what the handler takes.

template <class Target, auto Handler>
bool OnPlainCommand(CCmdTarget& target, MappedCommand&)
{
    static_assert(std::is_void_v<ResultOf<Handler>>, "the handler of a command or notification is void()");
    CallHandler<Target, Handler>(target);
    return true;
}

template <class Target, auto Handler>
bool OnCommandWithId(CCmdTarget& target, MappedCommand& command)
{
    static_assert(std::is_void_v<ResultOf<Handler>>, "the handler of a range is void(UINT id)");
    CallHandler<Target, Handler>(target, command.id);
    return true;
}

template <class Target, auto Handler>
bool OnCommandThatMayPass(CCmdTarget& target, MappedCommand& command)
{
    return CallHandler<Target, Handler>(target, command.id) != FALSE;
}

template <class Target, auto Handler>
bool OnReflectedThatMayPass(CCmdTarget& target, MappedCommand&)
{
    return CallHandler<Target, Handler>(target) != FALSE;
}

/// The update handler said to ask the next target too.
KELGEN_FRAMEWORK_API bool TakeContinueRouting(CCmdUI& item);

template <class Target, auto Handler>
bool OnUpdate(CCmdTarget& target, MappedCommand& command)
{
    const auto item = static_cast<CCmdUI*>(command.extra);
    CallHandler<Target, Handler>(target, item);
    return !TakeContinueRouting(*item);
}

template <class Target, auto Handler>
bool OnNotification(CCmdTarget& target, MappedCommand& command)
{
    const auto notify = static_cast<AFX_NOTIFY*>(command.extra);
    CallHandler<Target, Handler>(target, notify->pNMHDR, notify->pResult);
    return true;
}

template <class Target, auto Handler>
bool OnNotificationWithId(CCmdTarget& target, MappedCommand& command)
{
    const auto notify = static_cast<AFX_NOTIFY*>(command.extra);
    if constexpr (std::is_void_v<ResultOf<Handler>>) {
        CallHandler<Target, Handler>(target, command.id, notify->pNMHDR, notify->pResult);
        return true;
    } else {
        return CallHandler<Target, Handler>(target, command.id, notify->pNMHDR, notify->pResult) != FALSE;
    }
}

template <class Target, auto Handler>
bool OnReflectedNotificationThatMayPass(CCmdTarget& target, MappedCommand& command)
{
    const auto notify = static_cast<AFX_NOTIFY*>(command.extra);
    return CallHandler<Target, Handler>(target, notify->pNMHDR, notify->pResult) != FALSE;
}

template <class Target, auto Handler>
bool OnNumberedMessage(CCmdTarget& target, MappedMessage& message)
{
    message.result = CallHandler<Target, Handler>(target, message.wParam, message.lParam);
    return true;
}

template <class Target, auto Handler>
bool OnThreadMessage(CCmdTarget& target, MappedMessage& message)
{
    CallHandler<Target, Handler>(target, message.wParam, message.lParam);
    return true;
}

constexpr AFX_MSGMAP_ENTRY MessageEntry(UINT message, MessageThunk thunk)
{
    return {EntryKind::Message, message, 0, 0, 0, nullptr, thunk, nullptr};
}

constexpr AFX_MSGMAP_ENTRY RegisteredEntry(EntryKind kind, const UINT& variable, MessageThunk thunk)
{
    return {kind, 0xC000, 0, 0, 0, &variable, thunk, nullptr};
}

constexpr AFX_MSGMAP_ENTRY ThreadEntry(UINT message, MessageThunk thunk)
{
    return {EntryKind::ThreadMessage, message, 0, 0, 0, nullptr, thunk, nullptr};
}

constexpr AFX_MSGMAP_ENTRY CommandEntry(UINT message, UINT code, UINT id, UINT lastId, CommandThunk thunk)
{
    return {EntryKind::Command, message, code, id, lastId, nullptr, nullptr, thunk};
}

/// Codes of notifications are 16 bits wide in commands.
constexpr UINT NotifyCode(long long code)
{
    return static_cast<WORD>(code);
}

/// The first entry for a window's message, or null.
KELGEN_FRAMEWORK_API const AFX_MSGMAP_ENTRY* FindMessageEntry(const AFX_MSGMAP* map, UINT message);
/// The same for a message to a thread.
KELGEN_FRAMEWORK_API const AFX_MSGMAP_ENTRY* FindThreadEntry(const AFX_MSGMAP* map, UINT message);

}  // namespace kelgen::detail

/// In the class, at its end.
#define DECLARE_MESSAGE_MAP()                                                                                                              \
protected:                                                                                                                                 \
    static const AFX_MSGMAP* GetThisMessageMap();                                                                                          \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                                             \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                                                                      \
    {                                                                                                                                      \
        return theClass::GetThisMessageMap();                                                                                              \
    }                                                                                                                                      \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                                                                        \
    {                                                                                                                                      \
        using ThisClass [[maybe_unused]] = theClass;                                                                                       \
        using TheBaseClass = baseClass;                                                                                                    \
        static const AFX_MSGMAP_ENTRY entries[] = {

/// The map of a class template with one parameter, which is named as in the template: KIND for `template <class KIND> class CRow`.
/// Members of the base that depend on KIND are named with this->, as everywhere in a template.
///
///     BEGIN_TEMPLATE_MESSAGE_MAP(CRow, KIND, CWnd)
///         ON_MESSAGE(WM_APP, &ThisClass::OnCount)
///     END_MESSAGE_MAP()
#define BEGIN_TEMPLATE_MESSAGE_MAP(theClass, typeName, baseClass)                                                                          \
    template <class typeName>                                                                                                              \
    const AFX_MSGMAP* theClass<typeName>::GetMessageMap() const                                                                            \
    {                                                                                                                                      \
        return theClass<typeName>::GetThisMessageMap();                                                                                    \
    }                                                                                                                                      \
    template <class typeName>                                                                                                              \
    const AFX_MSGMAP* theClass<typeName>::GetThisMessageMap()                                                                              \
    {                                                                                                                                      \
        using ThisClass [[maybe_unused]] = theClass<typeName>;                                                                             \
        using TheBaseClass = baseClass;                                                                                                    \
        static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                                                                                  \
    AFX_MSGMAP_ENTRY {}                                                                                                                    \
    }                                                                                                                                      \
    ;                                                                                                                                      \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                                                             \
    return &map;                                                                                                                           \
    }

#define KELGEN_COMMAND_ENTRY(message, code, id, lastId, thunk, ...)                                                                        \
    ::kelgen::detail::CommandEntry(message, code, static_cast<UINT>(id), static_cast<UINT>(lastId),                                        \
                                   &::kelgen::detail::thunk<ThisClass, __VA_ARGS__>),

/// void OnX(): a menu item's, accelerator's or button's command.
#define ON_COMMAND(id, memberFxn) KELGEN_COMMAND_ENTRY(WM_COMMAND, CN_COMMAND, id, id, OnPlainCommand, memberFxn)
/// void OnX(UINT id).
#define ON_COMMAND_RANGE(id, idLast, memberFxn) KELGEN_COMMAND_ENTRY(WM_COMMAND, CN_COMMAND, id, idLast, OnCommandWithId, memberFxn)
/// BOOL OnX(UINT id): FALSE lets the next target have the command too.
#define ON_COMMAND_EX(id, memberFxn) KELGEN_COMMAND_ENTRY(WM_COMMAND, CN_COMMAND, id, id, OnCommandThatMayPass, memberFxn)
#define ON_COMMAND_EX_RANGE(id, idLast, memberFxn) KELGEN_COMMAND_ENTRY(WM_COMMAND, CN_COMMAND, id, idLast, OnCommandThatMayPass, memberFxn)
/// void OnUpdateX(CCmdUI* pCmdUI).
#define ON_UPDATE_COMMAND_UI(id, memberFxn) ON_UPDATE_COMMAND_UI_RANGE(id, id, memberFxn)
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, memberFxn)                                                                                  \
    KELGEN_COMMAND_ENTRY(WM_COMMAND, static_cast<UINT>(CN_UPDATE_COMMAND_UI), id, idLast, OnUpdate, memberFxn)
/// void OnX(): a control's notification by WM_COMMAND.
#define ON_CONTROL(wNotifyCode, id, memberFxn)                                                                                             \
    KELGEN_COMMAND_ENTRY(WM_COMMAND, ::kelgen::detail::NotifyCode(wNotifyCode), id, id, OnPlainCommand, memberFxn)
/// void OnX(UINT id).
#define ON_CONTROL_RANGE(wNotifyCode, id, idLast, memberFxn)                                                                               \
    KELGEN_COMMAND_ENTRY(WM_COMMAND, ::kelgen::detail::NotifyCode(wNotifyCode), id, idLast, OnCommandWithId, memberFxn)
/// void OnX(): in the control's own class.
#define ON_CONTROL_REFLECT(wNotifyCode, memberFxn)                                                                                         \
    KELGEN_COMMAND_ENTRY(WM_COMMAND + WM_REFLECT_BASE, ::kelgen::detail::NotifyCode(wNotifyCode), 0, 0, OnPlainCommand, memberFxn)
/// BOOL OnX(): FALSE lets the parent have the notification too.
#define ON_CONTROL_REFLECT_EX(wNotifyCode, memberFxn)                                                                                      \
    KELGEN_COMMAND_ENTRY(WM_COMMAND + WM_REFLECT_BASE, ::kelgen::detail::NotifyCode(wNotifyCode), 0, 0, OnReflectedThatMayPass, memberFxn)
/// void OnUpdate(CCmdUI*): the control updates itself.
#define ON_UPDATE_COMMAND_UI_REFLECT(memberFxn) KELGEN_COMMAND_ENTRY(WM_COMMAND + WM_REFLECT_BASE, 0xFFFF, 0, 0, OnUpdate, memberFxn)
/// void OnX(NMHDR* pNMHDR, LRESULT* pResult): a control's notification by WM_NOTIFY.
#define ON_NOTIFY(wNotifyCode, id, memberFxn)                                                                                              \
    KELGEN_COMMAND_ENTRY(WM_NOTIFY, ::kelgen::detail::NotifyCode(wNotifyCode), id, id, OnNotification, memberFxn)
/// void OnX(UINT id, NMHDR* pNMHDR, LRESULT* pResult).
#define ON_NOTIFY_RANGE(wNotifyCode, id, idLast, memberFxn)                                                                                \
    KELGEN_COMMAND_ENTRY(WM_NOTIFY, ::kelgen::detail::NotifyCode(wNotifyCode), id, idLast, OnNotificationWithId, memberFxn)
/// BOOL OnX(UINT id, NMHDR* pNMHDR, LRESULT* pResult): FALSE lets the next target have it too.
#define ON_NOTIFY_EX(wNotifyCode, id, memberFxn) ON_NOTIFY_RANGE(wNotifyCode, id, id, memberFxn)
#define ON_NOTIFY_EX_RANGE(wNotifyCode, id, idLast, memberFxn) ON_NOTIFY_RANGE(wNotifyCode, id, idLast, memberFxn)
/// void OnX(NMHDR*, LRESULT*): in the control's own class.
#define ON_NOTIFY_REFLECT(wNotifyCode, memberFxn)                                                                                          \
    KELGEN_COMMAND_ENTRY(WM_NOTIFY + WM_REFLECT_BASE, ::kelgen::detail::NotifyCode(wNotifyCode), 0, 0, OnNotification, memberFxn)
/// BOOL OnX(NMHDR*, LRESULT*).
#define ON_NOTIFY_REFLECT_EX(wNotifyCode, memberFxn)                                                                                       \
    KELGEN_COMMAND_ENTRY(WM_NOTIFY + WM_REFLECT_BASE, ::kelgen::detail::NotifyCode(wNotifyCode), 0, 0, OnReflectedNotificationThatMayPass, \
                         memberFxn)

/// LRESULT OnX(WPARAM wParam, LPARAM lParam): any message by its number.
#define ON_MESSAGE(message, memberFxn) ::kelgen::detail::MessageEntry(message, &::kelgen::detail::OnNumberedMessage<ThisClass, memberFxn>),
/// The same; the number stands in a UINT variable filled by RegisterWindowMessage.
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn)                                                                                 \
    ::kelgen::detail::RegisteredEntry(::kelgen::detail::EntryKind::RegisteredMessage, nMessageVariable,                                    \
                                      &::kelgen::detail::OnNumberedMessage<ThisClass, memberFxn>),
/// void OnX(WPARAM wParam, LPARAM lParam): in a thread's class, a message posted to the thread and no window.
#define ON_THREAD_MESSAGE(message, memberFxn)                                                                                              \
    ::kelgen::detail::ThreadEntry(message, &::kelgen::detail::OnThreadMessage<ThisClass, memberFxn>),
#define ON_REGISTERED_THREAD_MESSAGE(nMessageVariable, memberFxn)                                                                          \
    ::kelgen::detail::RegisteredEntry(::kelgen::detail::EntryKind::RegisteredThreadMessage, nMessageVariable,                              \
                                      &::kelgen::detail::OnThreadMessage<ThisClass, memberFxn>),

#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_BN_SETFOCUS(id, memberFxn) ON_CONTROL(BN_SETFOCUS, id, memberFxn)
#define ON_BN_KILLFOCUS(id, memberFxn) ON_CONTROL(BN_KILLFOCUS, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)
#define ON_STN_DBLCLK(id, memberFxn) ON_CONTROL(STN_DBLCLK, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_EN_ERRSPACE(id, memberFxn) ON_CONTROL(EN_ERRSPACE, id, memberFxn)
#define ON_EN_MAXTEXT(id, memberFxn) ON_CONTROL(EN_MAXTEXT, id, memberFxn)
#define ON_LBN_ERRSPACE(id, memberFxn) ON_CONTROL(LBN_ERRSPACE, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn) ON_CONTROL(LBN_DBLCLK, id, memberFxn)
#define ON_LBN_SELCANCEL(id, memberFxn) ON_CONTROL(LBN_SELCANCEL, id, memberFxn)
#define ON_LBN_SETFOCUS(id, memberFxn) ON_CONTROL(LBN_SETFOCUS, id, memberFxn)
#define ON_LBN_KILLFOCUS(id, memberFxn) ON_CONTROL(LBN_KILLFOCUS, id, memberFxn)
#define ON_CBN_ERRSPACE(id, memberFxn) ON_CONTROL(CBN_ERRSPACE, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_DBLCLK(id, memberFxn) ON_CONTROL(CBN_DBLCLK, id, memberFxn)
#define ON_CBN_SETFOCUS(id, memberFxn) ON_CONTROL(CBN_SETFOCUS, id, memberFxn)
#define ON_CBN_KILLFOCUS(id, memberFxn) ON_CONTROL(CBN_KILLFOCUS, id, memberFxn)
#define ON_CBN_EDITCHANGE(id, memberFxn) ON_CONTROL(CBN_EDITCHANGE, id, memberFxn)
#define ON_CBN_EDITUPDATE(id, memberFxn) ON_CONTROL(CBN_EDITUPDATE, id, memberFxn)
#define ON_CBN_DROPDOWN(id, memberFxn) ON_CONTROL(CBN_DROPDOWN, id, memberFxn)
#define ON_CBN_CLOSEUP(id, memberFxn) ON_CONTROL(CBN_CLOSEUP, id, memberFxn)
#define ON_CBN_SELENDOK(id, memberFxn) ON_CONTROL(CBN_SELENDOK, id, memberFxn)
#define ON_CBN_SELENDCANCEL(id, memberFxn) ON_CONTROL(CBN_SELENDCANCEL, id, memberFxn)
