// CompletionReport.cpp: progress from counters, and scripts of tasks.
#include <kelgen/window/CompletionReport.h>

CCompletionReportSource::CCompletionReportSource(const CCompletionReportSource& other)
{
    *this = other;
}

CCompletionReportSource& CCompletionReportSource::operator=(const CCompletionReportSource& other)
{
    m_nTaskId = other.m_nTaskId;
    CCompletionReportSource::SetCompletionReportListener(other.m_pListener);
    m_dStepProgress = other.m_dStepProgress;
    m_nStepCount = other.m_nStepCount;
    m_nStep = other.m_nStep;
    return *this;
}

CCompletionReportSource::~CCompletionReportSource()
{
    Register(nullptr);
}

void CCompletionReportSource::ReportCompletion(double)
{
    if (m_pListener)
        m_pListener->OnCompletionReport(m_nTaskId, ReportCompletionGetProgress());
}

void CCompletionReportSource::SetCompletionReportListener(CCompletionReportListener* pListener)
{
    m_pListener = pListener;
    Register(pListener);
}

void CCompletionReportSource::Register(CCompletionReportListener* pListener)
{
    if (m_pRegistered)
        std::erase(m_pRegistered->m_reporting, this);
    m_pRegistered = pListener;
    if (pListener)
        pListener->m_reporting.push_back(this);
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

CCompletionReportListener& CCompletionReportListener::operator=(const CCompletionReportListener& other)
{
    m_sources = other.m_sources;
    return *this;
}

CCompletionReportListener::~CCompletionReportListener()
{
    for (CCompletionReportSource* const source : m_reporting) {
        source->m_pRegistered = nullptr;
        if (source->m_pListener == this)
            source->m_pListener = nullptr;
    }
}

void CCompletionReportListener::OnCompletionReport(UINT, double) {}

void CCompletionReportListener::ReportCompletionScriptStart()
{
    m_sources.RemoveAll();
}

void CCompletionReportListener::ReportCompletionScriptAttachSource(CCompletionReportSource* p)
{
    if (!p)
        return;
    p->SetCompletionReportListener(this);
    m_sources.Add(p);
    p->SetTaskId(static_cast<UINT>(m_sources.GetSize()));
}
