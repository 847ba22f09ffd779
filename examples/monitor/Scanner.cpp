// Scanner.cpp: piece by piece, file by file.
#include "Scanner.h"

#include "WatchedFile.h"

void CScanner::Begin(const std::vector<CWatchedFile*>& files)
{
    m_files = files;
    m_next = 0;
    m_isReading = false;
    ReportCompletionFirstStep();
    ReportCompletionSetStepProgress(0);
    // Of no file all are read: a count of 0 would make the progress no number.
    ReportCompletionSetStepCount(files.empty() ? 1 : static_cast<int>(files.size()));
    if (files.empty())
        ReportCompletionNextStep(1);
    ReportCompletion(0);
}

bool CScanner::Step()
{
    if (IsDone())
        return false;
    const bool isFileDone = !ReadPiece();
    if (isFileDone) {
        ++m_next;
        m_isReading = false;
        ReportCompletionNextStep(1);
    }
    ReportCompletionSetStepProgress(isFileDone ? 0 : m_reading.GetPartDone());
    ReportCompletion(0);
    return !IsDone();
}

/// False when the present file has no more pieces.
bool CScanner::ReadPiece()
{
    CWatchedFile& file = *m_files[m_next];
    if (!m_isReading && !m_reading.Begin(file.GetPath()))
        return false;
    m_isReading = true;
    if (m_reading.Step())
        return true;
    file.Take(m_reading);
    return false;
}
