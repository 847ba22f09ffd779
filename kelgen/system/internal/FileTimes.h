// FileTimes.h: a file's times as the file watcher compares them. Internal to the library.
#pragma once

#include <kelgen/framework/ole/OleDateTime.h>

namespace kelgen::detail {

/// The times of a file.
struct FileTimes
{
    enum Outcome
    {
        nullHandle,
        missing,
        opened,
    };

    /// Opens the file without any access and reads its times; they stay 0 (the first of January 1601) when it cannot be opened.
    Outcome Read(const char* path)
    {
        const HANDLE file = CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (!file)
            return nullHandle;
        if (file == INVALID_HANDLE_VALUE)
            return missing;
        GetFileTime(file, &creation, nullptr, &lastWrite);
        CloseHandle(file);
        return opened;
    }

    FILETIME creation{};
    FILETIME lastWrite{};
};

/// The date of @p time in UTC; 0.0 and invalid when there is none.
inline COleDateTime DateOf(const FILETIME& time)
{
    SYSTEMTIME fields{};
    COleDateTime date;
    if (FileTimeToSystemTime(&time, &fields))
        return COleDateTime(fields);
    date.SetStatus(COleDateTime::invalid);
    return date;
}

}  // namespace kelgen::detail
