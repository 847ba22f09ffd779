// Scanner.h: reads many files one piece at a time, so that windows live meanwhile, and reports how far it is.
#pragma once

#include "FileReading.h"

#include <kelgen/window/CompletionReport.h>

#include <vector>

class CWatchedFile;

/// The scan, a task in steps: a file is a step, and the part of a large file that is read counts too.
///
///     scanner.SetCompletionReportListener(&listener);
///     scanner.Begin(files);
///     while (scanner.Step()) {}
class CScanner : public CCompletionReportSource
{
public:
    /// Starts over with these files, which live until the end of the scan.
    void Begin(const std::vector<CWatchedFile*>& files);
    /// Reads a piece of a file; false when no file is left.
    bool Step();
    bool IsDone() const { return m_next == m_files.size(); }
    void Stop() { m_next = m_files.size(); }

private:
    bool ReadPiece();

    std::vector<CWatchedFile*> m_files;
    std::size_t m_next = 0;
    CFileReading m_reading;
    bool m_isReading = false;
};
