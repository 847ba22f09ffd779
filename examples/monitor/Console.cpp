// Console.cpp: lines for people and for programs that read them.
#include "Console.h"

#include <cstdio>

namespace console {

namespace {

constexpr int kLongestText = 300;
constexpr LPCSTR kEvents[] = {"found", "added", "changed", "written", "removed"};

}  // namespace

CString Printable(CString text)
{
    if (text.GetLength() > kLongestText)
        text = text.Left(kLongestText) + "...";
    for (int i = 0; i < text.GetLength(); ++i) {
        const auto byte = static_cast<unsigned char>(text.GetAt(i));
        if (byte < ' ' || byte == 0x7F)
            text.SetAt(i, '.');
    }
    return text;
}

void Line(const CString& text)
{
    std::printf("%s\n", text.GetString());
    // Who reads from a pipe waits for the line.
    std::fflush(stdout);
}

void Complain(const CString& text)
{
    std::fprintf(stderr, "monitor: %s\n", Printable(text).GetString());
    std::fflush(stderr);
}

void Event(const CWatchedFile& file, EFileEvent event)
{
    CString line;
    line.Format("%-8s%s", kEvents[static_cast<int>(event)], Printable(file.GetName()).GetString());
    if (event != EFileEvent::removed)
        line.AppendFormat(" %s %s", file.GetText(CWatchedFile::idSize).GetString(), file.GetText(CWatchedFile::idChecksum).GetString());
    // A file that appears may have been written long before: moved, or renamed.
    const bool isWrite = event == EFileEvent::changed || event == EFileEvent::written;
    int delay = 0;
    if (isWrite && file.GetDelay(delay))
        line.AppendFormat(" after %d ms", delay);
    Line(line);
}

}  // namespace console
