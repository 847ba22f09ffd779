// FileListCtrl.cpp: columns and rows.
#include "FileListCtrl.h"

#include "Resource.h"
#include "Texts.h"

#include <kelgen/app/App.h>

#include <vector>

namespace {

enum EColumn
{
    columnName,
    columnSize,
    columnTime,
    columnChecksum,
    columnEvent,
    columnCount,
};

struct Column
{
    int width;
    int format;
};

constexpr Column kColumns[columnCount] = {
    {220, LVCFMT_LEFT}, {90, LVCFMT_RIGHT}, {140, LVCFMT_LEFT}, {80, LVCFMT_LEFT}, {180, LVCFMT_LEFT},
};

}  // namespace

BEGIN_MESSAGE_MAP(CFileListCtrl, CListCtrl)
ON_MESSAGE(CKelGenApp::APPM_LANGUAGE, &CFileListCtrl::OnAppLanguage)
END_MESSAGE_MAP()

BOOL CFileListCtrl::CreateIn(CWnd* frame, UINT id)
{
    if (!Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SINGLESEL, CRect(0, 0, 0, 0), frame, id))
        return FALSE;
    InsertColumns();
    return TRUE;
}

void CFileListCtrl::Show(const CWatchedFile& file)
{
    auto found = m_rows.find(&file);
    if (found == m_rows.end()) {
        const int row = InsertItem(GetItemCount(), file.GetName());
        SetItemData(row, reinterpret_cast<DWORD_PTR>(&file));
        found = m_rows.emplace(&file, row).first;
    }
    const int row = found->second;
    SetItemText(row, columnSize, file.GetText(CWatchedFile::idSize));
    SetItemText(row, columnTime, file.GetText(CWatchedFile::idTime));
    SetItemText(row, columnChecksum, file.GetText(CWatchedFile::idChecksum));
    SetItemText(row, columnEvent, texts::Text(IDS_EVENT_FIRST + static_cast<UINT>(file.GetLastEvent())));
    if (file.GetLastEvent() != EFileEvent::found)
        EnsureVisible(row, FALSE);
}

void CFileListCtrl::Clear()
{
    DeleteAllItems();
    m_rows.clear();
}

LRESULT CFileListCtrl::OnAppLanguage(WPARAM, LPARAM)
{
    std::vector<const CWatchedFile*> files;
    files.reserve(static_cast<std::size_t>(GetItemCount()));
    for (int row = 0; row < GetItemCount(); ++row)
        files.push_back(reinterpret_cast<const CWatchedFile*>(GetItemData(row)));
    Clear();
    while (DeleteColumn(0)) {
    }
    InsertColumns();
    for (const CWatchedFile* file : files)
        Show(*file);
    return 0;
}

void CFileListCtrl::InsertColumns()
{
    for (int i = 0; i < columnCount; ++i)
        InsertColumn(i, texts::Text(IDS_COLUMN_FIRST + static_cast<UINT>(i)), kColumns[i].format, kColumns[i].width);
}
