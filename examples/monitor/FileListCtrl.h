// FileListCtrl.h: the list of files: a row for each, in the order in which they were found.
#pragma once

#include "WatchedFile.h"

#include <kelgen/framework/dialogs/ListCtrl.h>

#include <unordered_map>

class CFileListCtrl : public CListCtrl
{
public:
    BOOL CreateIn(CWnd* frame, UINT id);
    /// Shows the file and what happened to it last; one that is not in the list yet gets a row.
    void Show(const CWatchedFile& file);
    void Clear();

protected:
    /// The texts are in another language from now on.
    LRESULT OnAppLanguage(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    void InsertColumns();

    // Rows neither move nor go.
    std::unordered_map<const CWatchedFile*, int> m_rows;
};
