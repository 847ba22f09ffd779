// CmdTarget.cpp: commands through message maps, and the hourglass.
#include <kelgen/framework/program/CmdTarget.h>

#include <kelgen/framework/program/MessageMap.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>

using namespace kelgen::detail;

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

namespace {

/// The first entry that @p fits, in the maps from the most derived class on.
template <class Fits>
const AFX_MSGMAP_ENTRY* FindEntry(const AFX_MSGMAP* map, Fits fits)
{
    while (map) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->kind != EntryKind::End; ++entry) {
            if (fits(*entry)) [[unlikely]]
                return entry;
        }
        map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr;
    }
    return nullptr;
}

const AFX_MSGMAP_ENTRY* FindNumberedEntry(const AFX_MSGMAP* map, UINT message, EntryKind plain, EntryKind registered)
{
    return FindEntry(map, [=](const AFX_MSGMAP_ENTRY& entry) {
        return entry.kind == plain ? entry.nMessage == message : entry.kind == registered && *entry.pnRegistered == message;
    });
}

void WaitCursor(int code)
{
    if (CWinApp* const app = AfxGetApp())
        app->DoWaitCursor(code);
}

}  // namespace

CCmdTarget::~CCmdTarget() = default;

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {AFX_MSGMAP_ENTRY{}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    UINT message = WM_COMMAND;
    UINT code = static_cast<UINT>(nCode);
    if (nCode != CN_UPDATE_COMMAND_UI) {
        if (HIWORD(code) != 0)
            message = HIWORD(code);
        code = LOWORD(code);
    }
    const AFX_MSGMAP_ENTRY* const entry = FindEntry(GetMessageMap(), [=](const AFX_MSGMAP_ENTRY& candidate) {
        // Most entries are of messages.
        if (candidate.kind != EntryKind::Command) [[likely]]
            return false;
        return candidate.nMessage == message && candidate.nCode == code && nID >= candidate.nID && nID <= candidate.nLastID;
    });
    if (!entry)
        return FALSE;
    if (pHandlerInfo) {
        *pHandlerInfo = {this, entry};
        return TRUE;
    }
    MappedCommand command{nID, nCode, pExtra};
    return entry->command(*this, command);
}

void CCmdTarget::BeginWaitCursor()
{
    WaitCursor(1);
}

void CCmdTarget::EndWaitCursor()
{
    WaitCursor(-1);
}

void CCmdTarget::RestoreWaitCursor()
{
    WaitCursor(0);
}

const AFX_MSGMAP_ENTRY* kelgen::detail::FindMessageEntry(const AFX_MSGMAP* map, UINT message)
{
    return FindNumberedEntry(map, message, EntryKind::Message, EntryKind::RegisteredMessage);
}

const AFX_MSGMAP_ENTRY* kelgen::detail::FindThreadEntry(const AFX_MSGMAP* map, UINT message)
{
    return FindNumberedEntry(map, message, EntryKind::ThreadMessage, EntryKind::RegisteredThreadMessage);
}
