// CmdTarget.h: the base of what takes commands and messages: windows, threads, documents, the application.
#pragma once

#include <kelgen/framework/Object.h>
#include <kelgen/framework/Presence.h>

class CCmdTarget;
class CCmdUI;
struct AFX_MSGMAP_ENTRY;

/// The notification codes of OnCmdMsg that are no control's.
constexpr UINT CN_COMMAND = 0;
constexpr int CN_UPDATE_COMMAND_UI = -1;

/// A class's message map: its entries, ended by an empty one, and its base class's map. Made by the macros of MessageMap.h.
struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();  ///< Null for CCmdTarget.
    const AFX_MSGMAP_ENTRY* lpEntries;
};

/// Who would handle a command.
struct AFX_CMDHANDLERINFO
{
    CCmdTarget* pTarget;
    const AFX_MSGMAP_ENTRY* pEntry;
};

/// What OnCmdMsg takes as extra for a control's WM_NOTIFY.
struct AFX_NOTIFY
{
    LRESULT* pResult;
    NMHDR* pNMHDR;
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

    /// Hourglass on, off, and on again after something else changed the cursor. Calls nest.
    void BeginWaitCursor();
    void EndWaitCursor();
    void RestoreWaitCursor();

    /// For those who call handlers, and touch the object after that.
    kelgen::detail::Presence& GetPresence() { return m_presence; }

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;

private:
    kelgen::detail::Presence m_presence;
};
