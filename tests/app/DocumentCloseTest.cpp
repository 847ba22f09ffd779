// DocumentCloseTest.cpp: frames with documents: who is asked, what is closed, and what becomes of the application.
#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/frames/Document.h>
#include <kelgen/framework/frames/View.h>
#include <kelgen/framework/program/ModuleState.h>

#include "app/TestApp.h"
#include "framework/Traffic.h"

#include <functional>

using namespace kelgen::test;

namespace {

class Paper : public CDocument
{
    DECLARE_DYNCREATE(Paper)

public:
    ~Paper() override { Traffic::Add("~doc"); }
    BOOL CanCloseFrame(CFrameWnd*) override
    {
        Traffic::Add("can?");
        if (m_onQuestion)
            m_onQuestion();
        return s_agrees;
    }
    BOOL SaveModified() override { return TRUE; }
    void PreCloseFrame(CFrameWnd*) override { Traffic::Add("pre"); }
    void OnCloseDocument() override
    {
        Traffic::Add("close");
        if (m_onClose)
            m_onClose();
        CDocument::OnCloseDocument();
    }

    static inline BOOL s_agrees = TRUE;
    std::function<void()> m_onQuestion;
    std::function<void()> m_onClose;
};
IMPLEMENT_DYNCREATE(Paper, CDocument)

class PaperView : public CView
{
    DECLARE_DYNCREATE(PaperView)

protected:
    void OnDraw(CDC*) override {}
};
IMPLEMENT_DYNCREATE(PaperView, CView)

class DocumentClose : public testing::Test
{
protected:
    void SetUp() override
    {
        m_app.m_nThreadID = ::GetCurrentThreadId();
        auto* const papers = new CSingleDocTemplate(300, RUNTIME_CLASS(Paper), RUNTIME_CLASS(CKelGenFrameWnd), RUNTIME_CLASS(PaperView));
        m_app.AddDocTemplate(papers);
        m_document = new Paper;
        papers->AddDocument(m_document);
        ASSERT_TRUE(Show(m_frame));
        DrainForQuit();
        Traffic::Take();
    }
    void TearDown() override
    {
        Paper::s_agrees = TRUE;
        m_app.m_pMainWnd = nullptr;
        DrainForQuit();
    }

    /// A frame with a view of the document.
    bool Show(TestFrame& frame)
    {
        CCreateContext context;
        context.m_pNewViewClass = RUNTIME_CLASS(PaperView);
        context.m_pCurrentDoc = m_document;
        if (!frame.LoadFrame(300, WS_POPUP, nullptr, &context))
            return false;
        frame.InitialUpdateFrame(m_document, FALSE);
        frame.ShowWindow(SW_SHOWNA);
        return frame.GetActiveDocument() == m_document;
    }
    std::string Close(TestFrame& frame)
    {
        frame.SendMessage(WM_CLOSE);
        const bool isOpen = ::IsWindow(frame.m_hWnd);
        const bool quits = DrainForQuit();
        return Traffic::Take() + (isOpen ? " open" : " gone") + (quits ? " quit" : "") + (m_app.TakeEvents().empty() ? "" : " save");
    }

    TestApp m_app;
    TestFrame m_frame;
    Paper* m_document = nullptr;
};

}  // namespace

TEST_F(DocumentClose, DocumentIsAskedTwiceAndClosesWithItsLastFrame)
{
    Paper::s_agrees = FALSE;
    EXPECT_EQ("can? can? open", Close(m_frame));
    m_frame.m_lpfnCloseProc = [](CFrameWnd*) { return FALSE; };
    EXPECT_EQ("can? open", Close(m_frame)) << "the callback keeps the first question back";
    Paper::s_agrees = TRUE;

    m_frame.m_lpfnCloseProc = nullptr;
    TestFrame second;
    ASSERT_TRUE(Show(second));
    EXPECT_EQ("can? can? pre gone", Close(second)) << "another frame shows it";
    EXPECT_EQ("can? can? close pre ~doc gone", Close(m_frame));
    EXPECT_TRUE(m_app.GetWndArray().IsEmpty());
}

TEST_F(DocumentClose, DocumentThatDoesNotDeleteItselfStays)
{
    m_document->m_bAutoDelete = FALSE;
    EXPECT_EQ("can? can? gone", Close(m_frame));
    delete m_document;
    EXPECT_EQ("~doc", Traffic::Take());
}

TEST_F(DocumentClose, HostMayCloseTheDocumentWhileItIsAsked)
{
    int asked = 0;
    m_document->m_onQuestion = [&] {
        if (++asked == 2)
            m_document->OnCloseDocument();
    };
    EXPECT_EQ("can? can? close pre ~doc gone", Close(m_frame));
}

TEST_F(DocumentClose, MainWindowWithADocumentEndsTheApplicationWithoutSavingAll)
{
    m_app.m_pMainWnd = &m_frame;
    EXPECT_EQ("can? can? close pre ~doc gone quit", Close(m_frame));
}

TEST_F(DocumentClose, FrameThatAppearsMeanwhileKeepsTheApplication)
{
    TestFrame late;
    ASSERT_TRUE(late.CreateShown());
    late.ShowWindow(SW_HIDE);
    m_app.m_pMainWnd = &m_frame;
    m_document->m_onClose = [&] { late.ShowWindow(SW_SHOWNA); };
    EXPECT_EQ("can? can? close pre ~doc gone", Close(m_frame));
    EXPECT_EQ(&late, m_app.m_pMainWnd);

    // The frame itself is still there: it goes like any other.
    m_app.m_agreesToSave = TRUE;
    AfxGetModuleState()->m_bDLL = TRUE;
    EXPECT_EQ(" gone save", Close(late)) << "a library module does not end the thread";
    AfxGetModuleState()->m_bDLL = FALSE;
}

TEST_F(DocumentClose, HookAfterCloseMayDeleteTheFrame)
{
    struct Deletes : C000WndProcInterface
    {
        bool _000AfterWndProc(UINT message, WPARAM, LPARAM, LRESULT&) override
        {
            if (message == WM_CLOSE)
                delete std::exchange(m_frame, nullptr);
            return false;
        }
        TestFrame* m_frame = new TestFrame;
    } hook;
    TestFrame* const frame = hook.m_frame;
    frame->_000HookAfterWndProc({&C000WndProcInterface::_000AfterWndProc, &hook});
    ASSERT_TRUE(Show(*frame));
    const HWND window = frame->m_hWnd;
    Traffic::Take();
    ::SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_EQ("can?", Traffic::Take());
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(1, m_app.GetWndArray().GetSize());
    EXPECT_EQ("can? can? close pre ~doc gone", Close(m_frame));
}
