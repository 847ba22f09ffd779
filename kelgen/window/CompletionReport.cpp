// CompletionReport.cpp: progress from counters, and scripts of tasks.
#include <kelgen/window/CompletionReport.h>

CCompletionReportSource::~CCompletionReportSource() = default;

void CCompletionReportSource::ReportCompletion(double)
{
    if (m_pListener)
        m_pListener->OnCompletionReport(m_nTaskId, ReportCompletionGetProgress());
}

void CCompletionReportSource::SetCompletionReportListener(CCompletionReportListener* pListener)
{
    m_pListener = pListener;
}

void CCompletionReportSource::SetTaskId(UINT nTaskId)
{
    m_nTaskId = nTaskId;
}

double CCompletionReportSource::ReportCompletionGetProgress()
{
    const double count = m_nStepCount;
    return m_nStep / count + m_dStepProgress / count;
}

CCompletionReportListener::~CCompletionReportListener() = default;

void CCompletionReportListener::OnCompletionReport(UINT, double) {}

void CCompletionReportListener::ReportCompletionScriptStart()
{
    m_sources.RemoveAll();
}

void CCompletionReportListener::ReportCompletionScriptAttachSource(CCompletionReportSource* p)
{
    p->SetCompletionReportListener(this);
    m_sources.Add(p);
    p->SetTaskId(static_cast<UINT>(m_sources.GetSize()));
}
