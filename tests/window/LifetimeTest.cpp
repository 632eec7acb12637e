// Windows that end where it hurts: in their own handlers, in loops inside handlers, while they are drawn.
#include <QEventLoop>
#include <QPointer>
#include <QTimer>
#include <QtTest>
#include <functional>

#include "platform/core/MessageBox.h"
#include "platform/window/CDocument.h"
#include "platform/window/CommandIds.h"
#include "tests/window/WindowTest.h"

namespace {

// Runs what the test wants in each of its handlers, and looks at itself afterwards.
class Scripted : public RecordingView {
  public:
    std::function<void()> onDestroy, onInitial, onUpdate, onDraw, onPress;

    void OnInitialUpdate() override { Run(onInitial); }
    void OnUpdate(CView* sender, long hint, CObject* object) override {
        RecordingView::OnUpdate(sender, hint, object);
        Run(onUpdate);
    }
    void OnDraw(CDC* dc) override {
        RecordingView::OnDraw(dc);
        Run(onDraw);
    }

  protected:
    void OnDestroy() override {
        Run(onDestroy);
        RecordingView::OnDestroy();
    }
    void OnLButtonDown(UINT held, CPoint point) override {
        Run(onPress);
        RecordingView::OnLButtonDown(held, point);
    }

  private:
    void Run(const std::function<void()>& script) {
        if (script) script();
        log.push_back(GetSafeHwnd() ? "here" : "ended");
    }
};

class Mortal : public CDocument {
  public:
    explicit Mortal(int& alive) : m_alive(alive) {
        m_bAutoDelete = TRUE;
        ++m_alive;
    }
    ~Mortal() override { --m_alive; }

  private:
    int& m_alive;
};

class LifetimeTest : public WindowTest {
  protected:
    // The view in a child frame of its own.
    CMDIChildWnd* Show(Scripted* view, CDocument* document = nullptr) {
        auto* frame = new CMDIChildWnd;
        CCreateContext context{nullptr, document};
        Assemble(place.main, frame, view, context);
        return frame;
    }
    void EndMain() {
        place.main->DestroyWindow();
        place.main = nullptr;
    }

    Workplace place;
    int documents = 0;
};

TEST_F(LifetimeTest, AWindowThatEndsIsNotEndedAgain) {
    auto* view = new Scripted;
    CMDIChildWnd* frame = Show(view);
    int ends = 0;
    view->onDestroy = [&] {
        ++ends;
        frame->DestroyWindow();
        view->DestroyWindow();
    };
    frame->DestroyWindow();
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(place.main->GetChildren().size(), 1u);
}

TEST_F(LifetimeTest, AFrameMayEndWhileItsQuestionIsOpen) {
    auto* document = new Mortal(documents);
    auto* view = new Scripted;
    CMDIChildWnd* frame = Show(view, document);
    document->SetModifiedFlag();
    int asked = 0;
    const auto before = SetMessageBoxHandler([&](const char*, UINT) {
        ++asked;
        frame->GetSafeHwnd()->close();
        QEventLoop nested;
        QTimer::singleShot(0, &nested, [&] {
            EndMain();
            nested.quit();
        });
        nested.exec();
        EXPECT_EQ(documents, 1) << "its question is still being asked";
        return IDYES;
    });
    frame->GetSafeHwnd()->close();
    SetMessageBoxHandler(before);
    EXPECT_EQ(asked, 1) << "closing again asks no second time";
    Settle();
    EXPECT_EQ(documents, 0);
}

TEST_F(LifetimeTest, AViewMayEndItsFrameAtItsFirstUpdateAndInItsDrawing) {
    auto* early = new Scripted;
    early->onInitial = [&] { early->GetParentFrame()->DestroyWindow(); };
    const CMDIChildWnd* frame = Show(early);
    EXPECT_FALSE(frame->GetSafeHwnd());
    auto* late = new Scripted;
    const QPointer<QWidget> widget = Show(late)->GetSafeHwnd();
    Settle();
    late->onDraw = [&] { EndMain(); };
    late->Invalidate();
    Settle();
    EXPECT_EQ(place.main, nullptr);
    EXPECT_FALSE(widget) << "the graveyard is emptied";
}

TEST_F(LifetimeTest, AnUpdateMayEndTheLastViewsOfTheirDocument) {
    auto* document = new Mortal(documents);
    auto* first = new Scripted;
    auto* second = new Scripted;
    Show(first, document);
    Show(second, document);
    second->TakeLog();
    first->onUpdate = [&] {
        first->GetParentFrame()->DestroyWindow();
        second->GetParentFrame()->DestroyWindow();
        EXPECT_EQ(document->GetViews().size(), 0u);
        second->TakeLog();
    };
    document->UpdateAllViews(nullptr, 7);
    EXPECT_EQ(second->TakeLog(), "") << "it has ended";
    Settle();
    EXPECT_EQ(documents, 0);
}

TEST_F(LifetimeTest, AWidgetOutlivesTheNestedLoopInWhichItEnds) {
    auto* view = new Scripted;
    const QPointer<QWidget> widget = Show(view)->GetSafeHwnd();
    view->TakeLog();
    view->onPress = [&] {
        QEventLoop nested;
        QTimer::singleShot(0, &nested, [&] { EndMain(); });
        QTimer::singleShot(20, &nested, &QEventLoop::quit);
        nested.exec();
        EXPECT_TRUE(widget) << "its event is still being handled";
    };
    QTest::mousePress(ClientOf(*view), Qt::LeftButton, {}, {5, 5});
    Settle();
    EXPECT_FALSE(widget);
}

class Refusing : public CFrameWnd {
    BOOL OnCreateClient(CREATESTRUCT*, CCreateContext* context) override {
        const bool shown =
            withView && (new RecordingView)->Create(nullptr, nullptr, WS_CHILD, CRect(), this, 1, context);
        EXPECT_EQ(shown, withView);
        return FALSE;
    }

  public:
    bool withView = false;
};

TEST_F(LifetimeTest, AFrameThatCannotBeMadeTakesItsDocumentAlong) {
    for (const bool withView : {false, true}) {
        CCreateContext context{nullptr, new Mortal(documents)};
        auto* frame = new Refusing;
        frame->withView = withView;
        EXPECT_FALSE(frame->LoadFrame(0, WS_OVERLAPPEDWINDOW, nullptr, &context));
        Settle();
        EXPECT_EQ(documents, 0) << withView;
    }
    CDocument hosts;
    CCreateContext context{nullptr, &hosts};
    EXPECT_FALSE((new Refusing)->LoadFrame(0, WS_OVERLAPPEDWINDOW, nullptr, &context));
}

}  // namespace
