// Console.h: the lines of standard output and standard error.
#pragma once

#include "WatchedFile.h"

namespace console {

/// A line of standard output, written at once.
void Line(const CString& text);

/// A line of standard error: what the user has to know or to correct.
void Complain(const CString& text);

/// "changed NAME SIZE CHECKSUM", with the milliseconds since the file was written when they are known.
void Event(const CWatchedFile& file, EFileEvent event);

/// The text without control characters, which would move the cursor, and of bearable length.
CString Printable(CString text);

}  // namespace console
