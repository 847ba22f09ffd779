// MissingCalls.h: calls of the platform that hosts commonly make and that are not implemented here. Who makes one is told so at compile
// time; what is implemented: docs/platform-calls.md, which tools/list-platform-calls writes.
#pragma once

#include <type_traits>

namespace kelgen::posix {

/// What a missing call returns to the compiler, so that it tells of nothing else: anything.
struct AnyResult
{
    template <class Value>
    operator Value() const;
};

}  // namespace kelgen::posix

// A template whose use is the error, and which takes any arguments worse than every function does: a host may write the call itself.
#define KELGEN_MISSING_CALL(name)                                                                                                          \
    template <class Call = void>                                                                                                           \
    auto name(...)                                                                                                                         \
    {                                                                                                                                      \
        static_assert(!std::is_void_v<Call>, #name " is not implemented natively: see docs/platform-calls.md");                            \
        return kelgen::posix::AnyResult{};                                                                                                 \
    }
// A call with a narrow and a wide form.
#define KELGEN_MISSING_TEXT_CALL(name)                                                                                                     \
    KELGEN_MISSING_CALL(name)                                                                                                              \
    KELGEN_MISSING_CALL(name##A)                                                                                                           \
    KELGEN_MISSING_CALL(name##W)

// Files.
KELGEN_MISSING_CALL(CancelIo)
KELGEN_MISSING_CALL(CreateIoCompletionPort)
KELGEN_MISSING_CALL(DeviceIoControl)
KELGEN_MISSING_CALL(GetFileInformationByHandleEx)
KELGEN_MISSING_CALL(GetOverlappedResult)
KELGEN_MISSING_CALL(GetQueuedCompletionStatus)
KELGEN_MISSING_CALL(LockFileEx)
KELGEN_MISSING_CALL(PostQueuedCompletionStatus)
KELGEN_MISSING_CALL(ReadDirectoryChangesW)
KELGEN_MISSING_CALL(ReadFileEx)
KELGEN_MISSING_CALL(UnlockFileEx)
KELGEN_MISSING_CALL(WriteFileEx)
KELGEN_MISSING_TEXT_CALL(CopyFileEx)
KELGEN_MISSING_TEXT_CALL(CreateDirectoryEx)
KELGEN_MISSING_TEXT_CALL(CreateHardLink)
KELGEN_MISSING_TEXT_CALL(FindFirstFileEx)
KELGEN_MISSING_TEXT_CALL(GetCompressedFileSize)
KELGEN_MISSING_TEXT_CALL(GetDiskFreeSpace)
KELGEN_MISSING_TEXT_CALL(GetFileSecurity)
KELGEN_MISSING_TEXT_CALL(GetFinalPathNameByHandle)
KELGEN_MISSING_TEXT_CALL(GetLogicalDriveStrings)
KELGEN_MISSING_TEXT_CALL(MoveFileWithProgress)
KELGEN_MISSING_TEXT_CALL(ReplaceFile)
KELGEN_MISSING_TEXT_CALL(SetFileSecurity)

// Memory, and files as memory.
KELGEN_MISSING_CALL(FlushViewOfFile)
KELGEN_MISSING_CALL(GlobalMemoryStatus)
KELGEN_MISSING_CALL(GlobalMemoryStatusEx)
KELGEN_MISSING_CALL(HeapCreate)
KELGEN_MISSING_CALL(HeapDestroy)
KELGEN_MISSING_CALL(MapViewOfFile)
KELGEN_MISSING_CALL(UnmapViewOfFile)
KELGEN_MISSING_CALL(VirtualAlloc)
KELGEN_MISSING_CALL(VirtualFree)
KELGEN_MISSING_CALL(VirtualProtect)
KELGEN_MISSING_CALL(VirtualQuery)
KELGEN_MISSING_TEXT_CALL(CreateFileMapping)
KELGEN_MISSING_TEXT_CALL(OpenFileMapping)

// Pipes and consoles.
KELGEN_MISSING_CALL(AllocConsole)
KELGEN_MISSING_CALL(AttachConsole)
KELGEN_MISSING_CALL(ConnectNamedPipe)
KELGEN_MISSING_CALL(CreatePipe)
KELGEN_MISSING_CALL(DisconnectNamedPipe)
KELGEN_MISSING_CALL(FreeConsole)
KELGEN_MISSING_CALL(GetConsoleMode)
KELGEN_MISSING_CALL(GetConsoleScreenBufferInfo)
KELGEN_MISSING_CALL(GetConsoleWindow)
KELGEN_MISSING_CALL(PeekNamedPipe)
KELGEN_MISSING_CALL(SetConsoleCP)
KELGEN_MISSING_CALL(SetConsoleCtrlHandler)
KELGEN_MISSING_CALL(SetConsoleCursorPosition)
KELGEN_MISSING_CALL(SetConsoleMode)
KELGEN_MISSING_CALL(SetConsoleOutputCP)
KELGEN_MISSING_CALL(SetConsoleTextAttribute)
KELGEN_MISSING_TEXT_CALL(CallNamedPipe)
KELGEN_MISSING_TEXT_CALL(CreateNamedPipe)
KELGEN_MISSING_TEXT_CALL(ReadConsole)
KELGEN_MISSING_TEXT_CALL(ReadConsoleInput)
KELGEN_MISSING_TEXT_CALL(SetConsoleTitle)
KELGEN_MISSING_TEXT_CALL(WaitNamedPipe)
KELGEN_MISSING_TEXT_CALL(WriteConsole)

// Threads and waits.
KELGEN_MISSING_CALL(AcquireSRWLockExclusive)
KELGEN_MISSING_CALL(AcquireSRWLockShared)
KELGEN_MISSING_CALL(CancelWaitableTimer)
KELGEN_MISSING_CALL(CreateTimerQueue)
KELGEN_MISSING_CALL(CreateTimerQueueTimer)
KELGEN_MISSING_CALL(DeleteTimerQueueTimer)
KELGEN_MISSING_CALL(GetThreadTimes)
KELGEN_MISSING_CALL(InitializeConditionVariable)
KELGEN_MISSING_CALL(InitializeSRWLock)
KELGEN_MISSING_CALL(InitOnceExecuteOnce)
KELGEN_MISSING_CALL(OpenThread)
KELGEN_MISSING_CALL(QueueUserAPC)
KELGEN_MISSING_CALL(QueueUserWorkItem)
KELGEN_MISSING_CALL(RegisterWaitForSingleObject)
KELGEN_MISSING_CALL(ReleaseSRWLockExclusive)
KELGEN_MISSING_CALL(ReleaseSRWLockShared)
KELGEN_MISSING_CALL(SetThreadAffinityMask)
KELGEN_MISSING_CALL(SetWaitableTimer)
KELGEN_MISSING_CALL(SignalObjectAndWait)
KELGEN_MISSING_CALL(SleepConditionVariableCS)
KELGEN_MISSING_CALL(SleepConditionVariableSRW)
KELGEN_MISSING_CALL(SleepEx)
KELGEN_MISSING_CALL(TerminateThread)
KELGEN_MISSING_CALL(UnregisterWait)
KELGEN_MISSING_CALL(WaitForMultipleObjectsEx)
KELGEN_MISSING_CALL(WaitForSingleObjectEx)
KELGEN_MISSING_CALL(WakeAllConditionVariable)
KELGEN_MISSING_CALL(WakeConditionVariable)
KELGEN_MISSING_TEXT_CALL(CreateWaitableTimer)
KELGEN_MISSING_TEXT_CALL(OpenWaitableTimer)

// Processes and the machine.
KELGEN_MISSING_CALL(AdjustTokenPrivileges)
KELGEN_MISSING_CALL(AssignProcessToJobObject)
KELGEN_MISSING_CALL(CommandLineToArgvW)
KELGEN_MISSING_CALL(CreateRemoteThread)
KELGEN_MISSING_CALL(GetPriorityClass)
KELGEN_MISSING_CALL(GetProcessTimes)
KELGEN_MISSING_CALL(GetTokenInformation)
KELGEN_MISSING_CALL(OpenProcessToken)
KELGEN_MISSING_CALL(RaiseException)
KELGEN_MISSING_CALL(ReadProcessMemory)
KELGEN_MISSING_CALL(SetPriorityClass)
KELGEN_MISSING_CALL(SetUnhandledExceptionFilter)
KELGEN_MISSING_CALL(WaitForInputIdle)
KELGEN_MISSING_CALL(WinExec)
KELGEN_MISSING_CALL(WriteProcessMemory)
KELGEN_MISSING_TEXT_CALL(CreateJobObject)
KELGEN_MISSING_TEXT_CALL(CreateProcessAsUser)
KELGEN_MISSING_TEXT_CALL(LookupAccountSid)
KELGEN_MISSING_TEXT_CALL(LookupPrivilegeValue)
KELGEN_MISSING_TEXT_CALL(ShellExecute)
KELGEN_MISSING_TEXT_CALL(ShellExecuteEx)

// Locale, time and registry.
KELGEN_MISSING_CALL(GetTimeZoneInformation)
KELGEN_MISSING_CALL(RegGetKeySecurity)
KELGEN_MISSING_CALL(RegNotifyChangeKeyValue)
KELGEN_MISSING_CALL(SetLocalTime)
KELGEN_MISSING_CALL(SetSystemTime)
KELGEN_MISSING_TEXT_CALL(EnumSystemLocales)
KELGEN_MISSING_TEXT_CALL(GetCurrencyFormat)
KELGEN_MISSING_TEXT_CALL(GetDateFormat)
KELGEN_MISSING_TEXT_CALL(GetNumberFormat)
KELGEN_MISSING_TEXT_CALL(GetTimeFormat)
KELGEN_MISSING_TEXT_CALL(LCMapString)
KELGEN_MISSING_TEXT_CALL(RegConnectRegistry)
KELGEN_MISSING_TEXT_CALL(RegLoadKey)
KELGEN_MISSING_TEXT_CALL(RegSaveKey)
KELGEN_MISSING_TEXT_CALL(SetLocaleInfo)

// Windows and input.
KELGEN_MISSING_CALL(CascadeWindows)
KELGEN_MISSING_CALL(ClipCursor)
KELGEN_MISSING_CALL(CloseClipboard)
KELGEN_MISSING_CALL(CreateCaret)
KELGEN_MISSING_CALL(DestroyCaret)
KELGEN_MISSING_CALL(DragDetect)
KELGEN_MISSING_CALL(EmptyClipboard)
KELGEN_MISSING_CALL(EnumDisplayMonitors)
KELGEN_MISSING_CALL(ExitWindowsEx)
KELGEN_MISSING_CALL(GetClipboardData)
KELGEN_MISSING_CALL(HideCaret)
KELGEN_MISSING_CALL(IsClipboardFormatAvailable)
KELGEN_MISSING_CALL(LockWorkStation)
KELGEN_MISSING_CALL(MonitorFromPoint)
KELGEN_MISSING_CALL(MonitorFromRect)
KELGEN_MISSING_CALL(MonitorFromWindow)
KELGEN_MISSING_CALL(OpenClipboard)
KELGEN_MISSING_CALL(RegisterHotKey)
KELGEN_MISSING_CALL(SetCaretPos)
KELGEN_MISSING_CALL(SetClipboardData)
KELGEN_MISSING_CALL(SetLayeredWindowAttributes)
KELGEN_MISSING_CALL(SetWinEventHook)
KELGEN_MISSING_CALL(ShowCaret)
KELGEN_MISSING_CALL(SwapMouseButton)
KELGEN_MISSING_CALL(TileWindows)
KELGEN_MISSING_CALL(ToAscii)
KELGEN_MISSING_CALL(ToUnicode)
KELGEN_MISSING_CALL(TrackMouseEvent)
KELGEN_MISSING_CALL(UnregisterHotKey)
KELGEN_MISSING_TEXT_CALL(DlgDirList)
KELGEN_MISSING_TEXT_CALL(GetKeyNameText)
KELGEN_MISSING_TEXT_CALL(GetMonitorInfo)
KELGEN_MISSING_TEXT_CALL(LoadKeyboardLayout)
KELGEN_MISSING_TEXT_CALL(MapVirtualKey)
KELGEN_MISSING_TEXT_CALL(RegisterClipboardFormat)
KELGEN_MISSING_TEXT_CALL(VkKeyScan)

// Shell, common dialogs and common controls.
KELGEN_MISSING_CALL(DragAcceptFiles)
KELGEN_MISSING_CALL(DragFinish)
KELGEN_MISSING_TEXT_CALL(ChooseColor)
KELGEN_MISSING_TEXT_CALL(ChooseFont)
KELGEN_MISSING_TEXT_CALL(CreatePropertySheetPage)
KELGEN_MISSING_TEXT_CALL(CreateStatusWindow)
KELGEN_MISSING_TEXT_CALL(DragQueryFile)
KELGEN_MISSING_TEXT_CALL(GetOpenFileName)
KELGEN_MISSING_TEXT_CALL(GetSaveFileName)
KELGEN_MISSING_TEXT_CALL(PrintDlg)
KELGEN_MISSING_TEXT_CALL(PropertySheet)
KELGEN_MISSING_TEXT_CALL(SHBrowseForFolder)
KELGEN_MISSING_TEXT_CALL(Shell_NotifyIcon)
KELGEN_MISSING_TEXT_CALL(SHFileOperation)
KELGEN_MISSING_TEXT_CALL(SHGetFileInfo)
KELGEN_MISSING_TEXT_CALL(SHGetFolderPath)
KELGEN_MISSING_TEXT_CALL(SHGetPathFromIDList)
KELGEN_MISSING_TEXT_CALL(SHGetSpecialFolderPath)

#undef KELGEN_MISSING_TEXT_CALL
#undef KELGEN_MISSING_CALL
