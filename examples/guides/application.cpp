// application.cpp: an application object with a main frame, a menu, and a dialog that exchanges data.
#include "application.h"

#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <iostream>

namespace {

/// The dialog: its members are what the controls show, and DoDataExchange says which is which.
class OrderDialog : public CDialog
{
public:
    explicit OrderDialog(CWnd* owner) : CDialog(IDD_ORDER, owner) {}

    CString customer = "Okafor";
    int amount = 1;
    int isExpress = BST_UNCHECKED;

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        CDialog::DoDataExchange(exchange);
        DDX_Text(exchange, IDC_CUSTOMER, customer);
        DDX_Text(exchange, IDC_AMOUNT, amount);
        DDV_MinMaxInt(exchange, amount, 1, 100);
        DDX_Check(exchange, IDC_EXPRESS, isExpress);
    }

    /// Here a person would type. The guide does it itself, by messages that wait for the dialog's loop.
    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        SetDlgItemText(IDC_AMOUNT, "12");
        CheckDlgButton(IDC_EXPRESS, BST_CHECKED);
        PostMessage(WM_COMMAND, IDOK);
        return TRUE;
    }
};

class MainFrame : public CKelGenFrameWnd
{
protected:
    void OnOrderNew()
    {
        OrderDialog dialog(this);
        if (dialog.DoModal() != IDOK)
            return;
        std::cout << dialog.customer << " takes " << dialog.amount << (dialog.isExpress ? ", express\n" : "\n");
        ++m_orders;
    }
    void OnOrderClear()
    {
        std::cout << m_orders << " cleared\n";
        m_orders = 0;
    }
    /// Asked before the menu shows, and for every command: an item that makes no sense now is grey, and its command does nothing.
    void OnUpdateOrderClear(CCmdUI* item) { item->Enable(m_orders > 0); }
    /// The application owns the frame.
    void PostNcDestroy() override {}

    DECLARE_MESSAGE_MAP()

private:
    int m_orders = 0;
};

BEGIN_MESSAGE_MAP(MainFrame, CKelGenFrameWnd)
ON_COMMAND(ID_ORDER_NEW, &MainFrame::OnOrderNew)
ON_COMMAND(ID_ORDER_CLEAR, &MainFrame::OnOrderClear)
ON_UPDATE_COMMAND_UI(ID_ORDER_CLEAR, &MainFrame::OnUpdateOrderClear)
END_MESSAGE_MAP()

/// kelgen::main makes a program of the one application object that there is.
class Application : public CKelGenApp
{
public:
    Application() : CKelGenApp("Orders") {}

    BOOL InitInstance() override
    {
        if (!CKelGenApp::InitInstance() || !m_frame.LoadFrame(IDR_MAIN))
            return FALSE;
        m_pMainWnd = &m_frame;
        m_frame.ShowWindow(m_nCmdShow);
        CString title;
        m_frame.GetWindowText(title);
        std::cout << "'" << title << "' is open\n";
        // What a person would do in the menu, one after the other. At first there is nothing to clear: that command does not come.
        for (const UINT command : {ID_ORDER_CLEAR, ID_ORDER_NEW, ID_ORDER_CLEAR})
            m_frame.SendMessage(WM_COMMAND, command);
        m_frame.PostMessage(WM_COMMAND, ID_APP_EXIT);
        return TRUE;
    }
    int ExitInstance() override
    {
        std::cout << "closed\n";
        return CKelGenApp::ExitInstance();
    }

private:
    MainFrame m_frame;
};

Application application;

}  // namespace
