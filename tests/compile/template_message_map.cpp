// template_message_map.cpp: a class template with a message map.
// compiles
#include <kelgen/framework/windows/MessageMapWindows.h>
#include <kelgen/framework/windows/Wnd.h>

template <class KIND>
class CCounter : public CWnd
{
public:
    KIND m_sum{};

protected:
    LRESULT OnAdd(WPARAM step, LPARAM)
    {
        m_sum += static_cast<KIND>(step);
        return 1;
    }
    void OnDestroy() { CWnd::OnDestroy(); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_TEMPLATE_MESSAGE_MAP(CCounter, KIND, CWnd)
ON_WM_DESTROY()
ON_MESSAGE(WM_APP, &ThisClass::OnAdd)
END_MESSAGE_MAP()

CCounter<int> numbers;
CCounter<double> amounts;
