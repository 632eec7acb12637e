// A graph view that one of its hints' receivers ends, and its series with it.
#include "tests/views/GraphViewTest.h"

namespace {

// Ends the view, its frame and its series at the first hint.
class EndingView : public CView {
  public:
    void OnDraw(CDC*) override {}
    void OnUpdate(CView* sender, long, CObject*) override {
        if (!sender || !sender->GetSafeHwnd()) return;
        sender->GetParentFrame()->DestroyWindow();
        series->reset();
        ++ended;
    }

    std::unique_ptr<KPointSource>* series = nullptr;
    int ended = 0;
};

class GraphViewEndTest : public GraphViewTest {
  protected:
    GraphViewEndTest() {
        ending.series = &series;
        document.AddView(&ending);
    }
    EndingView ending;
};

TEST_F(GraphViewEndTest, AReceiverMayEndTheViewThatZoomsPansOrScrolls) {
    const std::function<void()> gestures[] = {
        [this] { RunCommand(*view, 50003); },
        [this] { RunCommand(*view, 50001); },
        [this] { view->OnHScroll(SB_PAGERIGHT, 0, nullptr); },
        [this] {
            Drag({200, 200}, {260, 240}, 4);
        },
        [this] {
            view->mouseMode = 1;
            Drag({200, 200}, {300, 300});
        },
    };
    int done = 0;
    for (const auto& gesture : gestures) {
        if (done > 0) {
            series = Ramp();
            view = OpenView(document, {series.get()}, "GraphViewTest");
        }
        gesture();
        EXPECT_EQ(ending.ended, ++done);
        Settle();
    }
}

class Listener final : public CXYGraphView::IAxisChangeListener {
  public:
    explicit Listener(OpenGraphView& view) : m_view(view) { view.AddAxisChangeListener(this); }
    void OnAxisChanged(CXYGraphView::AxisChangeInfo*) override {
        ++told;
        m_view.RemoveAxisChangeListener(this);
    }
    int told = 0;

  private:
    OpenGraphView& m_view;
};

TEST_F(GraphViewEndTest, AListenerMayGoWhileItIsTold) {
    document.RemoveView(&ending);
    Listener once(*view);
    {
        const Listener gone(*view);
        view->RemoveAxisChangeListener(const_cast<Listener*>(&gone));
    }
    for (int i = 0; i < 2; ++i) {
        RunCommand(*view, 50001);
        Settle();
    }
    EXPECT_EQ(once.told, 1);
}

}  // namespace
