#include "tests/window/WindowTest.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

#include "platform/gdi/DrawingToolkit.h"
#include "platform/window/CDocument.h"
#include "platform/window/Icons.h"
#include "platform/window/NativeWindow.h"

namespace {

constexpr char kScreens[] = R"({"screens": [
    {"name": "one", "x": 0, "y": 0, "width": 1000, "height": 800, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
    {"name": "two", "x": 1000, "y": 0, "width": 1000, "height": 800, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 2}
]})";

std::unique_ptr<QApplication> g_application;

// Ends the toolkit before the static objects of the process go.
class WindowEnvironment : public ::testing::Environment {
    void TearDown() override { g_application.reset(); }
};
[[maybe_unused]] const auto* const g_environment = ::testing::AddGlobalTestEnvironment(new WindowEnvironment);

void StartToolkit() {
    // Tests of drawing may have started theirs; there can be only one.
    EndDrawingToolkit();
    static QTemporaryDir folder;
    const QString path = folder.filePath("screens.json");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(kScreens);
    file.close();
    static std::string name = "tavin_tests";
    static std::string option = "-platform";
    static std::string platform = "offscreen:configfile=" + path.toStdString();
    static char* arguments[] = {name.data(), option.data(), platform.data(), nullptr};
    static int count = 3;
    g_application = std::make_unique<QApplication>(count, arguments);
    KeepTitleBarIcons();
}

}  // namespace

void WindowTest::SetUpTestSuite() {
    if (!g_application) StartToolkit();
}

void WindowTest::TearDown() {
    EmptyGraveyard();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // The toolkit takes a key that came with the last event for held until the next one.
    QObject nobody;
    QKeyEvent released(QEvent::KeyRelease, Qt::Key_Control, Qt::NoModifier);
    QSpontaneKeyEvent::setSpontaneous(&released);
    qApp->notify(&nobody, &released);
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
}

void WindowTest::Settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void WindowTest::Press(QWidget* window, int key, int modifiers) {
    QTest::keyClick(window, static_cast<Qt::Key>(key), static_cast<Qt::KeyboardModifiers>(modifiers));
}

QWidget* WindowTest::ClientOf(const CWnd& window) { return NativeWindow::Of(window.GetSafeHwnd())->Client(); }

std::string RecordingView::TakeLog() {
    std::string words;
    for (const std::string& word : log) words += (words.empty() ? "" : " ") + word;
    log.clear();
    return words;
}

void RecordingView::Note(const std::string& word, UINT flagsHeld, CPoint point) {
    log.push_back(word);
    flags.push_back(flagsHeld);
    points.push_back(point);
}

void RecordingView::OnDraw(CDC*) { ++draws; }

void RecordingView::OnUpdate(CView* sender, long hint, CObject* hintObject) {
    log.push_back("update:" + std::to_string(hint));
    CView::OnUpdate(sender, hint, hintObject);
}

void RecordingView::OnActivateView(BOOL activate, CView* activated, CView* deactivated) {
    log.push_back(activate ? "active" : "inactive");
    CView::OnActivateView(activate, activated, deactivated);
}

void RecordingView::OnDestroy() {
    log.push_back("destroy");
    CView::OnDestroy();
}

void RecordingView::OnSize(UINT type, int cx, int cy) {
    CView::OnSize(type, cx, cy);
    points.push_back({cx, cy});
}

BOOL RecordingView::OnMouseWheel(UINT flagsHeld, short delta, CPoint point) {
    ScreenToClient(&point);
    Note("wheel:" + std::to_string(delta), flagsHeld, point);
    return TRUE;
}

BOOL RecordingView::OnMouseHWheel(UINT flagsHeld, short delta, CPoint point) {
    ScreenToClient(&point);
    Note("across:" + std::to_string(delta), flagsHeld, point);
    return TRUE;
}

void RecordingView::OnKeyDown(UINT key, UINT, UINT) { log.push_back("key:" + std::to_string(key)); }
void RecordingView::OnKeyUp(UINT key, UINT, UINT) { log.push_back("let:" + std::to_string(key)); }

void RecordingView::OnHScroll(UINT code, UINT position, CScrollBar*) {
    log.push_back("h" + std::to_string(code) + ":" + std::to_string(static_cast<int>(position)));
}

void RecordingView::OnVScroll(UINT code, UINT position, CScrollBar*) {
    log.push_back("v" + std::to_string(code) + ":" + std::to_string(static_cast<int>(position)));
}

void Assemble(CMDIFrameWnd* main, CMDIChildWnd* child, CView* view, CCreateContext context) {
    child->LoadFrame(0, WS_CHILD | WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE, main, &context);
    view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL, CRect(), child,
                 AFX_IDW_PANE_FIRST, &context);
    child->MoveWindow(20, 30, 400, 300);
    child->InitialUpdateFrame(context.m_pCurrentDoc, TRUE);
}

Workplace::Workplace() : main(new CMDIFrameWnd) {
    main->LoadFrame(0);
    main->MoveWindow(0, 0, 800, 600);
    main->ActivateFrame();
    view = AddChild();
    child = static_cast<CMDIChildWnd*>(view->GetParentFrame());
}

Workplace::~Workplace() {
    if (main) main->DestroyWindow();
}

RecordingView* Workplace::AddChild(CDocument* document) {
    auto* added = new RecordingView;
    CCreateContext context;
    context.m_pCurrentDoc = document;
    Assemble(main, new CMDIChildWnd, added, context);
    return added;
}
