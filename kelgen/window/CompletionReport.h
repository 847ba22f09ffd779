// CompletionReport.h: how long-running tasks tell one observer of their progress.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseArray.h>
#include <kelgen/platform/Win32.h>

#include <vector>

class CCompletionReportListener;

/// A task in steps. It counts its steps and reports; the listener hears its identifier and the part done.
///
///     ReportCompletionSetStepCount(files.size());
///     for (...) { ...; ReportCompletionNextStep(1); ReportCompletion(0); }
class KELGEN_API CCompletionReportSource
{
public:
    CCompletionReportSource() = default;
    CCompletionReportSource(const CCompletionReportSource& other);
    CCompletionReportSource& operator=(const CCompletionReportSource& other);
    virtual ~CCompletionReportSource();

    /// Tells the listener, if any, of the progress so far. By contract: the counters say how much is done, whatever the argument, so a
    /// task sets them first.
    virtual void ReportCompletion(double);
    /// The listener, owned by the host, or null. One that is destroyed is taken away.
    virtual void SetCompletionReportListener(CCompletionReportListener* pListener);
    /// The number by which the listener knows the task.
    virtual void SetTaskId(UINT nTaskId);

protected:
    /// Starts at step 0. By contract: the progress within the step stays, so a task sets that too.
    void ReportCompletionFirstStep() { m_nStep = 0; }
    /// Completes @p n steps. A number of steps that no int holds wraps.
    void ReportCompletionNextStep(int n) { m_nStep = static_cast<int>(static_cast<UINT>(m_nStep) + static_cast<UINT>(n)); }
    /// The number of steps, which the progress is divided by; nothing is reported yet.
    void ReportCompletionSetStepCount(int n) { m_nStepCount = n; }
    /// The part of the present step that is done.
    void ReportCompletionSetStepProgress(double d) { m_dStepProgress = d; }
    /// The part of all steps that is done. By contract: infinite or no number with a count of 0, which is not tested, so a task sets the
    /// count first.
    double ReportCompletionGetProgress();

    UINT m_nTaskId = 0;
    CCompletionReportListener* m_pListener = nullptr;
    double m_dStepProgress = 0;
    int m_nStepCount = 1;
    int m_nStep = 0;

private:
    friend class CCompletionReportListener;

    void Register(CCompletionReportListener* pListener);

    CCompletionReportListener* m_pRegistered = nullptr;  ///< The listener that knows of this, which a derived class may have changed.
};

/// Hears of a script of tasks, numbered from 1 in the order in which they were attached.
class KELGEN_API CCompletionReportListener
{
public:
    CCompletionReportListener() = default;
    /// The script; its tasks keep the listener that they have.
    CCompletionReportListener(const CCompletionReportListener& other) : m_sources(other.m_sources) {}
    CCompletionReportListener& operator=(const CCompletionReportListener& other);
    virtual ~CCompletionReportListener();

    /// Called at each report, on the task's thread. Does nothing by itself.
    virtual void OnCompletionReport(UINT nTaskId, double dProgress);

    /// Starts a script without tasks; those of the last one keep this listener.
    void ReportCompletionScriptStart();

    /// Becomes the listener of @p p and gives it the next number; null is ignored. By contract: a task that is attached already is
    /// appended again and has the new number from then on, so a host attaches each once.
    void ReportCompletionScriptAttachSource(CCompletionReportSource* p);

private:
    friend class CCompletionReportSource;

    CBaseArray<CCompletionReportSource*, CCompletionReportSource*> m_sources;
    std::vector<CCompletionReportSource*> m_reporting;  ///< All tasks whose listener this is.
};
