#include <QMdiSubWindow>
#include <QPointer>
#include <QtTest>
#include <set>

#include "platform/core/MessageBox.h"
#include "platform/window/CDocument.h"
#include "platform/window/CStatusBar.h"
#include "platform/window/CommandIds.h"
#include "tests/window/WindowTest.h"

namespace {

class FrameTest : public WindowTest {
  protected:
    Workplace place;
};

CRect NormalOf(const CWnd& window) {
    WINDOWPLACEMENT placement;
    EXPECT_TRUE(window.GetWindowPlacement(&placement));
    return placement.rcNormalPosition;
}

bool Place(CWnd& window, int how, const CRect& normal) {
    WINDOWPLACEMENT placement;
    placement.showCmd = static_cast<UINT>(how);
    placement.rcNormalPosition = normal;
    return window.SetWindowPlacement(&placement);
}

TEST_F(FrameTest, ThePlacementKeepsTheNormalRectangleHoweverTheFrameIsShown) {
    CMDIChildWnd& child = *place.child;
    EXPECT_EQ(NormalOf(child), CRect(20, 30, 420, 330));
    child.ShowWindow(SW_SHOWMAXIMIZED);
    Settle();
    EXPECT_TRUE(child.IsZoomed());
    EXPECT_EQ(NormalOf(child), CRect(20, 30, 420, 330));
    child.ShowWindow(SW_SHOWMINIMIZED);
    Settle();
    EXPECT_TRUE(child.IsIconic());
    EXPECT_EQ(NormalOf(child), CRect(20, 30, 420, 330));
    const CRect wanted(60, 70, 460, 390);
    for (const int how : {SW_SHOWMAXIMIZED, SW_SHOWMINIMIZED, SW_SHOWNORMAL}) {
        EXPECT_TRUE(Place(child, how, wanted));
        Settle();
        WINDOWPLACEMENT read;
        child.GetWindowPlacement(&read);
        EXPECT_EQ(static_cast<int>(read.showCmd), how);
        EXPECT_EQ(CRect(read.rcNormalPosition), wanted) << how;
        child.ShowWindow(SW_RESTORE);
        Settle();
        EXPECT_EQ(child.GetSafeHwnd()->geometry(), QRect(60, 70, 400, 320)) << how;
    }
    Place(child, SW_HIDE, wanted);
    EXPECT_FALSE(child.IsWindowVisible());
}

TEST_F(FrameTest, AFrameOutOfSightIsBroughtBack) {
    // Two screens of 1000 x 800 side by side.
    const struct {
        CRect asked;
        CRect stands;
    } cases[] = {{{9000, 9000, 9400, 9300}, {600, 500, 1000, 800}},
                 {{300, -200, 700, 100}, {300, 0, 700, 300}},
                 {{-350, 100, 50, 400}, {0, 100, 400, 400}},
                 {{-300, 100, 100, 400}, {-300, 100, 100, 400}},
                 {{0, 0, 5000, 300}, {0, 0, 1000, 300}}};
    for (const auto& one : cases) {
        Place(*place.main, SW_SHOWNORMAL, one.asked);
        EXPECT_EQ(NormalOf(*place.main), one.stands) << one.asked.left << ", " << one.asked.top;
    }
    Place(*place.main, SW_SHOWNORMAL, {0, 0, 800, 600});
    Settle();
    Place(*place.child, SW_SHOWNORMAL, {2000, 1000, 2400, 1300});
    const QRect area = place.child->GetSafeHwnd()->parentWidget()->rect();
    EXPECT_TRUE(area.contains(place.child->GetSafeHwnd()->geometry()));
    const std::int32_t far = std::numeric_limits<std::int32_t>::max();
    EXPECT_TRUE(Place(*place.child, SW_SHOWNORMAL, {-far, -far, far, far}));
}

TEST_F(FrameTest, TheTitleBarGoesAndComesWithItsStyleAndTheFrameStaysWhereItIs) {
    for (const int how : {SW_SHOWNORMAL, SW_SHOWMAXIMIZED}) {
        place.child->ShowWindow(how);
        Settle();
        const QRect before = place.child->GetSafeHwnd()->geometry();
        EXPECT_TRUE(place.child->ModifyStyle(WS_CAPTION | WS_SYSMENU, 0));
        EXPECT_FALSE(place.child->ModifyStyle(WS_CAPTION | WS_SYSMENU, 0));
        Settle();
        EXPECT_TRUE(place.child->IsWindowVisible());
        EXPECT_EQ(place.child->GetSafeHwnd()->geometry(), before) << how;
        EXPECT_TRUE(place.child->GetSafeHwnd()->windowFlags() & Qt::FramelessWindowHint);
        EXPECT_TRUE(place.child->ModifyStyle(0, WS_CAPTION | WS_SYSMENU));
        Settle();
        EXPECT_EQ(place.child->GetSafeHwnd()->geometry(), before) << how;
        EXPECT_EQ(place.child->IsZoomed(), how == SW_SHOWMAXIMIZED);
        EXPECT_EQ(NormalOf(*place.child), CRect(20, 30, 420, 330));
    }
}

TEST_F(FrameTest, TheUserGoesFromChildToChild) {
    RecordingView& first = *place.view;
    RecordingView& second = *place.AddChild();
    Settle();
    first.TakeLog();
    second.TakeLog();
    EXPECT_EQ(place.main->GetActiveFrame(), second.GetParentFrame());
    place.child->MDIActivate();
    Settle();
    EXPECT_EQ(first.TakeLog(), "active");
    EXPECT_EQ(second.TakeLog(), "inactive");
    EXPECT_EQ(place.main->MDIGetActive(), place.child);
    RunCommand(*place.main, ID_NEXT_PANE);
    EXPECT_EQ(place.main->MDIGetActive(), second.GetParentFrame());
    const CFrameWnd* const third = place.AddChild()->GetParentFrame();
    place.child->MDIActivate();
    RunCommand(*place.main, ID_PREV_PANE);
    EXPECT_EQ(place.main->MDIGetActive(), third) << "the one used before";
    third->GetSafeHwnd()->close();
    static_cast<CMDIChildWnd*>(second.GetParentFrame())->MDIActivate();
    place.main->MDITile(MdiTile::Horizontal);
    EXPECT_EQ(place.child->GetSafeHwnd()->width(), second.GetParentFrame()->GetSafeHwnd()->width());
    place.child->MDIActivate();
    place.main->MDITile(MdiTile::Vertical);
    const QRect left = place.child->GetSafeHwnd()->geometry();
    const QRect right = second.GetParentFrame()->GetSafeHwnd()->geometry();
    EXPECT_EQ(left.height(), right.height());
    EXPECT_EQ(left.right() + 1, right.left());
}

TEST_F(FrameTest, ManyFramesTileOnAGridAndCascadeInTwoThirdsOfTheArea) {
    std::vector<CWnd*> frames{place.child};
    while (frames.size() < 20) frames.push_back(place.AddChild()->GetParentFrame());
    Settle();
    const QRect area = place.child->GetSafeHwnd()->parentWidget()->rect();
    place.main->MDITile(MdiTile::Horizontal);
    std::set<int> lefts, tops;
    std::int64_t covered = 0;
    for (const CWnd* frame : frames) {
        const QRect rect = frame->GetSafeHwnd()->geometry();
        EXPECT_TRUE(area.contains(rect));
        lefts.insert(rect.left());
        tops.insert(rect.top());
        covered += std::int64_t{rect.width()} * rect.height();
    }
    EXPECT_EQ(lefts.size(), 4u);
    EXPECT_EQ(tops.size(), 5u);
    EXPECT_EQ(covered, std::int64_t{area.width()} * area.height()) << "without gaps";
    const CMDIChildWnd* const active = place.main->MDIGetActive();
    place.main->MDICascade();
    EXPECT_EQ(place.main->MDIGetActive(), active);
    for (const CWnd* frame : frames) {
        const QRect rect = frame->GetSafeHwnd()->geometry();
        EXPECT_EQ(rect.size(), area.size() * 2 / 3);
        EXPECT_TRUE(area.contains(rect));
    }
}

TEST_F(FrameTest, AChildFramesMessageShowsInTheMainFramesStatusBar) {
    CStatusBar bar;
    ASSERT_TRUE(bar.Create(place.main));
    const char* const names[] = {"Position of the mouse", "Zoom"};
    bar.SetIndicators(names);
    place.child->SetMessageText("(1.000 s, 2.000 mV)");
    EXPECT_EQ(bar.GetPaneText(0), "(1.000 s, 2.000 mV)");
    EXPECT_FALSE(bar.SetPaneText(3, "no pane"));
}

TEST_F(FrameTest, TitlesNameTheDocumentAndKeepTheirBrackets) {
    CDocument document;
    RecordingView* view = place.AddChild(&document);
    document.SetPathName("/data/run[*].csv");
    EXPECT_EQ(document.GetTitle(), "run[*].csv");
    CString text;
    view->GetParentFrame()->GetWindowText(text);
    EXPECT_EQ(text, "run[*].csv - ");
    view->GetParentFrame()->SetWindowText("Empty");
    EXPECT_EQ(view->GetParentFrame()->GetSafeHwnd()->windowTitle(), "Empty");
    place.main->DestroyWindow();
    place.main = nullptr;
    EXPECT_TRUE(document.GetViews().empty());
}

class SelfClosingView : public RecordingView {
    void OnLButtonDown(UINT, CPoint) override { GetParentFrame()->GetParentFrame()->DestroyWindow(); }
};

TEST_F(FrameTest, AHandlerMayEndTheFrameItRunsIn) {
    auto* view = new SelfClosingView;
    auto* frame = new CMDIChildWnd;
    Assemble(place.main, frame, view);
    const QPointer<QWidget> widget = frame->GetSafeHwnd();
    QTest::mousePress(ClientOf(*view), Qt::LeftButton, {}, {5, 5});
    place.main = nullptr;
    Settle();
    EXPECT_FALSE(widget);
}

TEST_F(FrameTest, TheUserAnswersForAChangedDocumentBeforeItsLastFrameCloses) {
    CDocument document;
    RecordingView* first = place.AddChild(&document);
    const RecordingView* second = place.AddChild(&document);
    document.SetModifiedFlag();
    int answer = IDCANCEL;
    int asked = 0;
    const auto previous = SetMessageBoxHandler([&](const char*, UINT) {
        ++asked;
        return answer;
    });
    second->GetParentFrame()->GetSafeHwnd()->close();
    EXPECT_EQ(asked, 0) << "another frame still shows it";
    ASSERT_EQ(document.GetViews().size(), 1u);
    first->GetParentFrame()->GetSafeHwnd()->close();
    EXPECT_EQ(document.GetViews().size(), 1u) << "the user thought better of it";
    place.main->GetSafeHwnd()->close();
    EXPECT_EQ(document.GetViews().size(), 1u);
    answer = IDNO;
    EXPECT_TRUE(RunCommand(*place.main, ID_FILE_CLOSE));
    EXPECT_TRUE(document.GetViews().empty());
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(place.main->MDIGetActive(), place.child);
    EXPECT_TRUE(RunCommand(*place.main, ID_FILE_CLOSE));
    EXPECT_FALSE(RunCommand(*place.main, ID_FILE_CLOSE)) << "no child frame is left to close";
    SetMessageBoxHandler(previous);
}

class CloseOther : public CView {
  public:
    CloseOther(CWnd*& other) : m_other(other) {}
    void OnDraw(CDC*) override {}
    void OnUpdate(CView*, long, CObject*) override { delete std::exchange(m_other, nullptr); }

  private:
    CWnd*& m_other;
};

TEST_F(FrameTest, UpdatesReachEveryViewButTheSenderAndNoneThatIsGone) {
    CDocument document;
    RecordingView a, b, c;
    for (RecordingView* view : {&a, &b, &c}) document.AddView(view);
    document.UpdateAllViews(&b, 7);
    EXPECT_EQ(a.TakeLog() + "|" + b.TakeLog() + "|" + c.TakeLog(), "update:7||update:7");
    document.UpdateAllViews(nullptr);
    EXPECT_EQ(b.TakeLog(), "update:0");
    CWnd* doomed = nullptr;
    CloseOther closer(doomed);
    document.AddView(&closer);
    auto* last = new RecordingView;
    document.AddView(last);
    doomed = last;
    document.UpdateAllViews(nullptr);
    EXPECT_EQ(document.GetViews().size(), 4u);
    CDocument other;
    other.AddView(&a);
    EXPECT_EQ(a.GetDocument(), &other);
    EXPECT_EQ(document.GetViews().size(), 3u);
}

}  // namespace
