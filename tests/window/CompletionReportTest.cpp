// CompletionReportTest.cpp: progress by the counters, and the numbers of tasks.
#include <kelgen/window/CompletionReport.h>

#include <climits>
#include <cmath>

namespace {

class Task : public CCompletionReportSource
{
public:
    using CCompletionReportSource::ReportCompletionFirstStep;
    using CCompletionReportSource::ReportCompletionNextStep;
    using CCompletionReportSource::ReportCompletionSetStepCount;
    using CCompletionReportSource::ReportCompletionSetStepProgress;
};

class Recorder : public CCompletionReportListener
{
public:
    void OnCompletionReport(UINT nTaskId, double dProgress) override
    {
        task = nTaskId;
        progress = dProgress;
    }

    UINT task = 0;
    double progress = -1;
};

}  // namespace

TEST(CompletionReport, ProgressComesFromTheCounters)
{
    Task task;
    task.ReportCompletion(1);
    Recorder recorder;
    recorder.ReportCompletionScriptAttachSource(&task);
    task.ReportCompletion(0.9);
    EXPECT_EQ(0.0, recorder.progress);
    task.ReportCompletionSetStepCount(4);
    task.ReportCompletionNextStep(1);
    task.ReportCompletionSetStepProgress(0.5);
    task.ReportCompletion(0.9);
    EXPECT_EQ(0.375, recorder.progress);
    task.ReportCompletionFirstStep();
    task.ReportCompletion(0);
    EXPECT_EQ(0.125, recorder.progress);
    task.ReportCompletionSetStepCount(1);
    task.ReportCompletionSetStepProgress(0);
    task.ReportCompletionNextStep(INT_MAX);
    task.ReportCompletionNextStep(1);
    task.ReportCompletion(0);
    EXPECT_EQ(static_cast<double>(INT_MIN), recorder.progress) << "the counter wraps";
    recorder.ReportCompletionScriptAttachSource(nullptr);
    task.ReportCompletionSetStepCount(0);
    task.ReportCompletion(0);
    EXPECT_TRUE(std::isnan(recorder.progress) || std::isinf(recorder.progress));
}

TEST(CompletionReport, TasksAndListenersMayGoInAnyOrder)
{
    Recorder other;
    Task copy;
    {
        Recorder recorder;
        Task kept;
        auto gone = std::make_unique<Task>();
        recorder.ReportCompletionScriptAttachSource(gone.get());
        recorder.ReportCompletionScriptAttachSource(&copy);
        kept = *gone;
        gone.reset();
        kept.ReportCompletion(0);
        EXPECT_EQ(1u, recorder.task);
        copy = kept;
        copy.SetCompletionReportListener(&other);
        copy.SetCompletionReportListener(&recorder);
        recorder = other;
    }
    copy.ReportCompletion(0);
    EXPECT_EQ(0u, other.task);
}

TEST(CompletionReport, ScriptNumbersItsTasksAndAttachesTwiceWhenAsked)
{
    Recorder recorder;
    Task tasks[3];
    for (Task& task : tasks)
        recorder.ReportCompletionScriptAttachSource(&task);
    tasks[2].ReportCompletion(0);
    EXPECT_EQ(3u, recorder.task);
    recorder.ReportCompletionScriptAttachSource(&tasks[0]);
    tasks[0].ReportCompletion(0);
    EXPECT_EQ(4u, recorder.task);
    recorder.ReportCompletionScriptStart();
    recorder.ReportCompletionScriptAttachSource(&tasks[1]);
    tasks[1].ReportCompletion(0);
    EXPECT_EQ(1u, recorder.task);
}
