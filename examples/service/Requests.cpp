// Requests.cpp: NAME.ask becomes NAME.answer. Each is written under another name first, so that nobody reads half of it.
#include "Requests.h"

#include "../monitor/FolderEntries.h"

#include <kelgen/framework/files/File.h>

namespace requests {

namespace {

constexpr char kAsk[] = ".ask";
constexpr char kAnswer[] = ".answer";
// More is no request of ours.
constexpr ULONGLONG kLongestQuestion = 1000;

bool ReadText(const CString& path, CString& text)
{
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone))
        return false;
    try {
        const int length = static_cast<int>(file.GetLength());
        const UINT count = file.Read(text.GetBuffer(length), static_cast<UINT>(length));
        text.ReleaseBufferSetLength(static_cast<int>(count));
    } catch (CFileException* error) {
        error->Delete();
        return false;
    }
    return true;
}

bool WriteText(const CString& path, const CString& text)
{
    const CString part = path + ".part";
    CFile file;
    if (!file.Open(part, CFile::modeCreate | CFile::modeWrite))
        return false;
    try {
        file.Write(text.GetString(), static_cast<UINT>(text.GetLength()));
        file.Close();
    } catch (CFileException* error) {
        error->Delete();
        file.Abort();
        ::DeleteFileA(part);
        return false;
    }
    return ::MoveFileExA(part, path, MOVEFILE_REPLACE_EXISTING) != FALSE;
}

// Two clients, or two questions of one, have files of their own.
CString OwnName(const CString& folder)
{
    static LONG number = 0;
    CString name;
    name.Format("\\%u-%u", static_cast<unsigned>(::GetCurrentProcessId()), static_cast<unsigned>(::InterlockedIncrement(&number)));
    return folder + name;
}

}  // namespace

void Answer(const CString& folder, const std::function<CString(const CString&)>& answerOf)
{
    std::vector<FolderEntry> entries;
    ListFolder(folder, entries);
    for (const FolderEntry& entry : entries) {
        const int stem = entry.path.GetLength() - static_cast<int>(sizeof kAsk - 1);
        CString question;
        if (entry.isFolder || entry.path.Mid(stem) != kAsk || entry.size > kLongestQuestion || !ReadText(entry.path, question))
            continue;
        WriteText(entry.path.Left(stem) + kAnswer, answerOf(question));
        ::DeleteFileA(entry.path);
    }
}

bool Ask(SC_HANDLE service, const CString& folder, const CString& question, CString& answer)
{
    const CString name = OwnName(folder);
    SERVICE_STATUS status{};
    const bool isAnswered =
        WriteText(name + kAsk, question) && ::ControlService(service, kAnswerControl, &status) && ReadText(name + kAnswer, answer);
    const DWORD error = ::GetLastError();
    ::DeleteFileA(name + kAsk);
    ::DeleteFileA(name + kAnswer);
    ::SetLastError(error);
    return isAnswered;
}

}  // namespace requests
