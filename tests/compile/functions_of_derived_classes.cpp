// functions_of_derived_classes.cpp: a member of a derived class as the function of a thread message.
// compiles
#include <kelgen/app/App.h>

class CWorker : public CTrackable
{
public:
    void OnStep(UINT step, LPARAM) { m_step = step; }
    UINT m_step = 0;
};

void Check(CKelGenApp& app, CWorker& worker)
{
    app.AddFunction(WM_APP, &worker, &CWorker::OnStep);
    app.AddFunction(WM_APP, nullptr, nullptr);
}
