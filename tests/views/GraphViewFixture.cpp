#include <QtTest>

#include "tests/views/GraphViewTest.h"

namespace {

QPoint At(CPoint p) { return {p.x, p.y}; }

}  // namespace

CPoint OpenGraphView::StoredAt(CPoint pixel) {
    CDC dc;
    OnPrepareDC(&dc);
    dc.DPtoLP(&pixel);
    return pixel;
}

void HintView::OnUpdate(CView*, long, CObject* object) {
    if (!object || !object->IsKindOf(RUNTIME_CLASS(CViewUpdate))) return;
    const auto& hint = static_cast<const CViewUpdate&>(*object);
    CString word;
    if (hint.GetType() == CViewUpdate::ZoomXChanged)
        word.Format("%d:%.3f ", hint.GetType(), hint.GetReal());
    else
        word.Format("%d:%ld ", hint.GetType(), hint.GetInteger());
    hints_ += word.GetString();
}

std::string HintView::TakeHints() { return std::exchange(hints_, {}); }

std::unique_ptr<KPointSource> Ramp(const char* name) {
    auto series = std::make_unique<KPointSource>(name, 1000.0, 1000.0, "s", "m", 1001, 100);
    for (int i = 0; i <= 1000; ++i) series->push_back({i * 100, i * 50});
    return series;
}

GraphViewTest::GraphViewTest() : main(new CMDIFrameWnd) {
    main->LoadFrame(0);
    main->MoveWindow(0, 0, 900, 700);
    status.Create(main);
    application.m_pMainWnd = main;
    main->ActivateFrame();
    document.AddView(&hints);
    document.SetTitle("log");
    view = OpenView(document, {series.get()}, "GraphViewTest");
    hints.TakeHints();
}

GraphViewTest::~GraphViewTest() { main->DestroyWindow(); }

void GraphViewTest::Open(CXYGraphView* made, CDocument& shown, const std::vector<IPointSource*>& sources) {
    auto* frame = new CMDIChildWnd;
    CCreateContext context;
    context.m_pCurrentDoc = &shown;
    frame->LoadFrame(0, WS_CHILD | WS_OVERLAPPEDWINDOW, main, &context);
    for (IPointSource* source : sources) made->AddSource(source, true);
    made->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), frame, AFX_IDW_PANE_FIRST, &context);
    frame->MoveWindow(0, 0, 700, 500);
    frame->InitialUpdateFrame(&shown, TRUE);
    Settle();
}

OpenGraphView* GraphViewTest::OpenView(CDocument& shown, const std::vector<IPointSource*>& sources,
                                       const char* key) {
    auto* made = new OpenGraphView(key);
    Open(made, shown, sources);
    return made;
}

CString GraphViewTest::Caption() const {
    CString text;
    view->GetParentFrame()->GetWindowText(text);
    return text;
}

void GraphViewTest::Click(CPoint at, int modifiers) const {
    QTest::mouseClick(ClientOf(*view), Qt::LeftButton, static_cast<Qt::KeyboardModifiers>(modifiers), At(at));
}

void GraphViewTest::Drag(CPoint from, CPoint to, int button) const {
    QWidget* const client = ClientOf(*view);
    const auto held = static_cast<Qt::MouseButton>(button);
    QTest::mousePress(client, held, {}, At(from));
    for (const CPoint& point : {from, CPoint((from.x + to.x) / 2, (from.y + to.y) / 2), to}) {
        QMouseEvent move(QEvent::MouseMove, At(point), client->mapToGlobal(At(point)), Qt::NoButton, held,
                         {});
        QCoreApplication::sendEvent(client, &move);
    }
    QTest::mouseRelease(client, held, {}, At(to));
}
