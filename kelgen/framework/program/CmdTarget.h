// CmdTarget.h: the base of what takes commands and messages: windows, threads, documents, the application.
#pragma once

#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/Presence.h>

class CCmdTarget;
class CCmdUI;
struct AFX_MSGMAP_ENTRY;

/// Codes of OnCmdMsg that no control sends: a command itself, and the question what state its items should show.
constexpr UINT CN_COMMAND = 0;
constexpr int CN_UPDATE_COMMAND_UI = -1;

/// A class's message map: its entries, ended by an empty one, and its base class's map. Made by the macros of MessageMap.h.
struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();  ///< Null for CCmdTarget.
    const AFX_MSGMAP_ENTRY* lpEntries;     ///< The first entry.
};

/// Who would handle a command.
struct AFX_CMDHANDLERINFO
{
    CCmdTarget* pTarget;             ///< The object.
    const AFX_MSGMAP_ENTRY* pEntry;  ///< The entry of its message map.
};

/// What OnCmdMsg takes as extra for a control's WM_NOTIFY.
struct AFX_NOTIFY
{
    LRESULT* pResult;  ///< Where the message's result goes.
    NMHDR* pNMHDR;     ///< The message's lParam.
};

/// Something that commands may be routed to.
class KELGEN_FRAMEWORK_API CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)

public:
    CCmdTarget() = default;
    ~CCmdTarget() override;

    /// Offers a command or notification to this object: nonzero when it handled it, so that routing ends. @p nCode is CN_COMMAND,
    /// a control's code, or CN_UPDATE_COMMAND_UI with the CCmdUI as @p pExtra; a code's high word may name the message (WM_NOTIFY
    /// with an AFX_NOTIFY). With @p pHandlerInfo it calls nobody and tells whether, and by whom, the command would be handled.
    ///
    /// Targets that know others override this and ask these too; the base asks the message maps from the most derived class on.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    /// Shows the hourglass. Calls nest: it stays until as many calls of EndWaitCursor.
    void BeginWaitCursor();
    /// Takes the hourglass of one BeginWaitCursor back.
    void EndWaitCursor();
    /// Shows the hourglass again after a message box or dialog changed the cursor.
    void RestoreWaitCursor();

    /// For those who call handlers, and touch the object after that.
    kelgen::detail::Presence& GetPresence() { return m_presence; }

protected:
    /// The map of this class, for the maps of derived ones to lead to.
    static const AFX_MSGMAP* GetThisMessageMap();
    /// The map of the object's own class. BEGIN_MESSAGE_MAP overrides it.
    virtual const AFX_MSGMAP* GetMessageMap() const;

private:
    kelgen::detail::Presence m_presence;
};
