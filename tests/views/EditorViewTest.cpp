// The editor view in a real window, moved by mouse events and commands.
#include "views/CEditorView.h"

#include <QTabWidget>
#include <QtTest>
#include <functional>

#include "platform/dialog/CPropertySheet.h"
#include "platform/undo/KUndoManager.h"
#include "platform/window/CommandIds.h"
#include "platform/window/NativeWindow.h"
#include "tests/dialog/DialogFixture.h"
#include "tests/editing/EditingFixture.h"
#include "tests/gdi/DrawingTest.h"
#include "tests/views/GraphViewTest.h"

namespace {

class OpenEditorView : public CEditorView {
  public:
    OpenEditorView() : CEditorView("EditorViewTest", true, 55, RGB(255, 255, 255), nullptr) {}

    using CEditorView::medianProperties;
    using CEditorView::mouseMode;
    using CEditorView::outline;
    using CEditorView::scaleProperties;
    using CEditorView::smoothProperties;
    using CEditorView::spikeProperties;
    using CEditorView::translateProperties;
    using CXYGraphView::gesture;
    using CXYGraphView::isoAspectAllowed;
    using CXYGraphView::tileClip;
    using KViewEx::colors;
    using KViewEx::picture;
    using KViewEx::Redraw;

    CPoint StoredAt(CPoint pixel) {
        CDC dc;
        OnPrepareDC(&dc);
        dc.DPtoLP(&pixel);
        return pixel;
    }
    CPoint PixelOf(CPoint stored) {
        CDC dc;
        OnPrepareDC(&dc);
        dc.LPtoDP(&stored);
        return stored;
    }
};

// Takes no snapshot when its memory is said to be used up.
class PoorSource : public FullSource {
  public:
    using FullSource::FullSource;
    std::ostream& SaveForUndo(bool clearRedo) override {
        static std::ostream none(nullptr);
        return hasMemory ? FullSource::SaveForUndo(clearRedo) : none;
    }
    bool hasMemory = true;
};

class EditorViewTest : public GraphViewTest, public DialogDriver {
  protected:
    using GraphViewTest::Click;

    EditorViewTest()
        : previousManager(kelvo::SetUndoManager(&manager)),
          previousHandler(SetMessageBoxHandler([this](const char* text, UINT) {
              message = text;
              return IDOK;
          })) {
        edited.UpdateStats();
        Open(editor, editedDocument, {&edited});
        editedDocument.AddView(&hints);
        hints.TakeHints();
    }
    ~EditorViewTest() override {
        SetMessageBoxHandler(previousHandler);
        kelvo::SetUndoManager(previousManager);
    }

    void Mouse(QEvent::Type type, CPoint at, Qt::KeyboardModifiers keys = {}) {
        QWidget* const client = ClientOf(*editor);
        const QPoint place(at.x, at.y);
        const bool held = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, place, client->mapToGlobal(place),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          held ? Qt::LeftButton : Qt::NoButton, keys);
        QCoreApplication::sendEvent(client, &event);
    }
    void Press(CPoint at, Qt::KeyboardModifiers keys = {}) { Mouse(QEvent::MouseButtonPress, at, keys); }
    void Move(CPoint at, Qt::KeyboardModifiers keys = {}) { Mouse(QEvent::MouseMove, at, keys); }
    void Release(CPoint at, Qt::KeyboardModifiers keys = {}) { Mouse(QEvent::MouseButtonRelease, at, keys); }
    void DragEdit(CPoint from, CPoint to, Qt::KeyboardModifiers keys = {}) {
        Press(from, keys);
        Move({(from.x + to.x) / 2, from.y}, keys);
        Move(to, keys);
        Release(to, keys);
        Settle();
    }
    CPoint Pixel(int x, int y) { return editor->PixelOf({x, y}); }
    CPoint PixelOfPoint(int i) { return editor->PixelOf(edited.GetData()[i]); }
    // A rectangle around the points first to last, of any height.
    void SelectAround(int first, int last) {
        const CPoint from = Pixel(first * 1000 - 500, 9500);
        DragEdit(from, Pixel(last * 1000 + 500, -9500), Qt::ShiftModifier);
    }
    std::vector<long> Selected() {
        CXYEditData& data = *editor->GetDataHandler();
        return {data.GetSelected(), data.GetSelected() + data.GetSelectedCount()};
    }
    bool Run(UINT command) {
        const bool ran = RunCommand(*editor, command);
        Settle();
        return ran;
    }
    // What is on the window is what a fresh drawing gives.
    void ExpectNoGhosts() {
        Settle();
        CBitmapEx& shown = *NativeWindow::Of(editor->GetSafeHwnd())->Picture();
        const std::vector<std::uint32_t> before(Pixels(shown),
                                                Pixels(shown) + shown.GetWidth() * shown.GetHeight());
        editor->Redraw();
        Settle();
        CBitmapEx& fresh = *NativeWindow::Of(editor->GetSafeHwnd())->Picture();
        EXPECT_TRUE(std::equal(before.begin(), before.end(), Pixels(fresh)));
    }
    struct Bytes {
        std::vector<CPoint> points;
        std::vector<unsigned short> words;
        std::vector<int> codes;
        std::vector<CPoint> outline;
        friend bool operator==(const Bytes&, const Bytes&) = default;
    };
    Bytes State() {
        const RegionOutline& outline = editor->outline;
        return {{edited.GetData(), edited.GetData() + edited.GetCount()},
                edited.Words(),
                edited.codes,
                {outline.Vertices(), outline.Vertices() + outline.VertexCount()}};
    }
    long Actions() const { return manager.GetDoneCount(&edited); }
    int SnapshotCount() {
        int count = 0;
        while (edited.CanUndo()) edited.UndoEdit(), ++count;
        for (int i = 0; i < count; ++i) edited.RedoEdit();
        return count;
    }

    kelvo::KUndoManager manager;
    const char* message = nullptr;
    PoorSource edited{{{0, 0},
                       {1000, 4000},
                       {2000, -3000},
                       {3000, 2000},
                       {4000, 9000},
                       {5000, 1000},
                       {6000, -9000},
                       {7000, 0}},
                      10.0,
                      100.0};
    CDocument editedDocument;
    OpenEditorView* editor = new OpenEditorView;

  private:
    kelvo::KUndoManager* previousManager;
    MessageBoxHandler previousHandler;
};

TEST_F(EditorViewTest, APressChoosesAPointAndTheNextOneDragsItVertically) {
    const CPoint at = PixelOfPoint(3);
    const Bytes before = State();
    DragEdit(at, {at.x, at.y + 30});
    EXPECT_EQ(editor->GetDataHandler()->GetSelectedIndex(), 3);
    EXPECT_EQ(State(), before);
    EXPECT_FALSE(edited.CanUndo());
    EXPECT_EQ(hints.TakeHints(), "0:3000 ");
    CString caption;
    editor->GetParentFrame()->GetWindowText(caption);
    EXPECT_STREQ(caption, "full (full) (300.00 s, 20.00) ");

    const CPoint to(at.x + 40, at.y - 60);
    const int y = editor->StoredAt(to).y;
    Press(at);
    Move({at.x, at.y - 10});
    EXPECT_EQ(editor->mouseMode, CEditorView::PointDragging);
    Move(to);
    CString told;
    told.Format("Translating point: %.3lf m to: %.3lf m", (y - 2000) / 100.0, y / 100.0);
    EXPECT_STREQ(StatusText(), told);
    editor->Invalidate(FALSE);
    Settle();
    Release(to);
    EXPECT_EQ(edited.GetData()[3], CPoint(3000, y));
    EXPECT_EQ(edited.GetStatus()[3], PS_MOVED | PS_EDITED);
    EXPECT_EQ(edited.codes[3], REJECT_MOVED);
    EXPECT_TRUE(edited.IsModified() && editedDocument.IsModified());
    EXPECT_EQ(Actions(), 1);
    ExpectNoGhosts();

    Press({at.x, editor->PixelOf({0, -6000}).y}), Release({at.x, editor->PixelOf({0, -6000}).y});
    EXPECT_EQ(editor->GetDataHandler()->GetSelectedIndex(), -1) << "nothing was hit";
    EXPECT_TRUE(Run(ID_EDIT_UNDO));
    EXPECT_EQ(State(), before);
    EXPECT_EQ(Actions(), 0);
}

TEST_F(EditorViewTest, AnOutlineSelectsWhatIsInside) {
    DragEdit(Pixel(500, 6000), Pixel(4500, -5000), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), (std::vector<long>{1, 2, 3})) << "4 lies above";
    EXPECT_EQ(editor->outline.VertexCount(), 4);
    EXPECT_EQ(editor->mouseMode, 0);
    CBitmapEx& shown = *NativeWindow::Of(editor->GetSafeHwnd())->Picture();
    EXPECT_GT(
        std::count(Pixels(shown), Pixels(shown) + shown.GetWidth() * shown.GetHeight(),
                   0xff000000u | GetBValue(editor->colors.region) | (GetGValue(editor->colors.region) << 8) |
                       (GetRValue(editor->colors.region) << 16)),
        500)
        << "border and hatching";
    ExpectNoGhosts();
    EXPECT_TRUE(Run(CmdRemoveRegion));
    EXPECT_FALSE(RunCommand(*editor, CmdRemoveRegion)) << "there is none left";
    EXPECT_EQ(Selected().size(), 3u) << "the selection stays";
    ExpectNoGhosts();

    // Clicks around points 1 to 3, on the way out above and back below; the double click is the last one.
    const CPoint corners[] = {Pixel(500, 6000),   Pixel(1500, 6000),  Pixel(2500, 6000), Pixel(3500, 6000),
                              Pixel(3500, -5000), Pixel(2000, -5000), Pixel(500, -5000)};
    for (const int last : {4, 6}) {
        EXPECT_TRUE(Run(CmdCreateRegion));
        EXPECT_TRUE(QueryCommand(*editor, CmdCreateRegion).IsChecked());
        for (int i = 0; i <= last; ++i) {
            Move(corners[i]);
            Press(corners[i]), Release(corners[i]);
            Settle();
        }
        EXPECT_EQ(editor->mouseMode, CEditorView::OutlineDrawing);
        Mouse(QEvent::MouseButtonDblClick, corners[last]), Release(corners[last]);
        EXPECT_EQ(editor->mouseMode, 0);
        EXPECT_EQ(editor->outline.VertexCount(), last + 1) << "the last one not twice";
        EXPECT_EQ(Selected(), last == 6 ? (std::vector<long>{1, 2, 3}) : (std::vector<long>{3}));
        ExpectNoGhosts();
    }

    // Shift held from the press on, but not to the end: one vertex, nothing inside.
    Run(CmdRemoveRegion);
    Press(corners[0], Qt::ShiftModifier);
    Move(corners[4], Qt::ShiftModifier);
    Release(corners[4]);
    EXPECT_EQ(editor->outline.VertexCount(), 1);
    EXPECT_TRUE(Selected().empty());
    // Escape gives an outline up.
    Press(corners[0], Qt::ShiftModifier), Release(corners[0], Qt::ShiftModifier);
    Press(corners[3]), Release(corners[3]);
    EXPECT_EQ(editor->outline.VertexCount(), 2);
    EXPECT_TRUE(Run(CmdModeEscape));
    EXPECT_TRUE(editor->outline.IsEmpty());
    EXPECT_EQ(editor->mouseMode, 0);
    ExpectNoGhosts();
}

TEST_F(EditorViewTest, DraggingTheRegionMovesItsPointsOrTheOutlineAlone) {
    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::ShiftModifier;
    SelectAround(1, 2);
    const Bytes selected = State();
    const CPoint from = Pixel(1500, 500);
    const CPoint to(from.x + 35, from.y + 25);
    const CPoint moved = editor->StoredAt(to) - editor->StoredAt(from);
    const auto ys = edited.Ys();

    Press(from);
    Move(to);
    EXPECT_EQ(editor->mouseMode, CEditorView::RegionDragging);
    CString told;
    told.Format("Translating region: %.3lf m to: %.3lf m", moved.y / 100.0, editor->StoredAt(to).y / 100.0);
    EXPECT_STREQ(StatusText(), told);
    Release(to);
    for (int i = 0; i < 8; ++i) {
        const bool inside = i == 1 || i == 2;
        EXPECT_EQ(edited.GetData()[i], CPoint(i * 1000, ys[i] + (inside ? moved.y : 0))) << i;
        EXPECT_EQ(edited.GetStatus()[i], inside ? PS_MOVED | PS_EDITED : 0) << i;
    }
    EXPECT_EQ(editor->outline.Vertices()[0], selected.outline[0] + CPoint(0, moved.y));
    const Bytes after = State();
    ExpectNoGhosts();
    EXPECT_TRUE(Run(ID_EDIT_UNDO));
    EXPECT_EQ(State(), selected) << "points and outline";
    EXPECT_EQ(Selected(), (std::vector<long>{1, 2}));
    EXPECT_TRUE(Run(ID_EDIT_REDO));
    EXPECT_EQ(State(), after);
    EXPECT_TRUE(Run(ID_EDIT_UNDO));
    EXPECT_TRUE(Run(ID_EDIT_REDO));
    EXPECT_EQ(State(), after) << "and there and back again";
    EXPECT_EQ(Actions(), 1);

    // The outline alone, in both directions: far enough to the right for points 2 and 3.
    const CPoint inRegion = Pixel(1500, after.outline[0].y - 1000);
    const CPoint right(Pixel(2500, 0).x, inRegion.y + 3);
    const CPoint shift = editor->StoredAt(right) - editor->StoredAt(inRegion);
    DragEdit(inRegion, right, both);
    EXPECT_EQ(State().points, after.points);
    EXPECT_EQ(editor->outline.Vertices()[2], after.outline[2] + shift);
    EXPECT_EQ(Selected(), (std::vector<long>{2, 3}));
    EXPECT_EQ(Actions(), 1);
    EXPECT_EQ(SnapshotCount(), 1);
    ExpectNoGhosts();
}

// What ends a drag in the middle leaves the series as it is.
TEST_F(EditorViewTest, ADragIsGivenUpWhenSomethingElseComes) {
    const CPoint at = PixelOfPoint(3);
    const CPoint inside = Pixel(1500, 500);
    const struct {
        const char* name;
        std::function<void()> act;
    } ends[] = {
        {"escape", [this] { Run(CmdModeEscape); }},
        {"command", [this] { Run(CmdDeleteSpikes); }},
        {"series gone",
         [this] {
             CViewUpdate gone(0, CViewUpdate::RemoveSource, &edited);
             editedDocument.UpdateAllViews(nullptr, 0, &gone);
             CViewUpdate back(0, CViewUpdate::ShowSource, series.get());
             editedDocument.UpdateAllViews(nullptr, 0, &back);
         }},
        {"series hidden",
         [this, inside] {
             CViewUpdate other(0, CViewUpdate::ShowSource, series.get());
             editedDocument.UpdateAllViews(nullptr, 0, &other);
             Press(inside), Move({inside.x, inside.y + 5});
             CViewUpdate hidden(0, CViewUpdate::HideSource, &edited);
             editedDocument.UpdateAllViews(nullptr, 0, &hidden);
         }},
    };
    for (const auto& [name, act] : ends) {
        for (const bool region : {false, true}) {
            SCOPED_TRACE(name);
            CViewUpdate only(0, CViewUpdate::RemoveSource, series.get());
            editedDocument.UpdateAllViews(nullptr, 0, &only);
            CViewUpdate shown(0, CViewUpdate::ShowSource, &edited);
            editedDocument.UpdateAllViews(nullptr, 0, &shown);
            Run(CmdZoomAll);
            if (region)
                SelectAround(1, 2);
            else
                editor->GetDataHandler()->SelectPoint(3);
            const Bytes before = State();
            const auto ramp = std::vector<CPoint>(series->GetData(), series->GetData() + 1001);
            Press(region ? inside : at);
            Move({at.x, at.y + 20});
            EXPECT_NE(editor->mouseMode, 0);
            act();
            Release({at.x, at.y + 20});
            EXPECT_EQ(editor->mouseMode, 0);
            EXPECT_EQ(State().points, before.points);
            EXPECT_TRUE(std::equal(ramp.begin(), ramp.end(), series->GetData()));
            ExpectNoGhosts();
        }
    }
}

// Every row of the tables of commands, with everything there that it might act on: two spikes (1 and 6), a
// region (2 to 4) and a current point (7), in the order in which they are preferred.
TEST_F(EditorViewTest, CommandsActOnWhatTheyName) {
    enum There { Point = 1, Region = 2, Spiky = 4, All = 7 };
    constexpr int kDeleted = PS_DELETED | PS_EDITED;
    constexpr int kRejected = PS_REJECTED | PS_EDITED;
    const auto points = [](std::initializer_list<int> list, int flags, int others = 0) {
        std::vector<int> words(8, others);
        for (const int i : list) words[static_cast<std::size_t>(i)] = flags;
        return words;
    };
    const struct Row {
        UINT command;
        int there;
        std::vector<int> words;  // without the marks of spikes
        bool regionGoes = false;
        bool marksGo = false;
        bool byHost = false;
    } rows[] = {
        {CmdDelete, All, points({1, 6}, kDeleted)},
        {CmdDelete, Point | Region, points({2, 3, 4}, kDeleted), true},
        {CmdDelete, Point, points({7}, kDeleted)},
        {CmdDelete, 0, points({}, 0)},
        {CmdDeleteSpikes, All, points({1, 6}, kDeleted)},
        {CmdDeleteSpikes, Point | Region, points({}, 0)},
        {CmdDeleteInside, All, points({2, 3, 4}, kDeleted), true},
        {CmdDeleteOutside, All, points({2, 3, 4}, 0, kDeleted)},
        {CmdReject, All, points({1, 6}, kRejected), false, true},
        {CmdReject, Point | Region, points({2, 3, 4}, kRejected), true},
        {CmdReject, Point, points({7}, kRejected)},
        {CmdRejectInside, All, points({2, 3, 4}, kRejected), true},
        {CmdRejectOutside, All, points({2, 3, 4}, 0, kRejected)},
        {CmdRejectSpikes, All, points({1, 6}, kRejected), false, true},
        {CmdRejectSecond, Point, points({7}, kRejected), false, false, true},
        {CmdRejectSecondInside, All, points({2, 3, 4}, kRejected), true, false, true},
        {CmdRejectSecondOutside, All, points({2, 3, 4}, 0, kRejected), false, false, true},
        {CmdRejectThird, Point | Region, points({2, 3, 4}, kRejected), true},
        {CmdRejectThirdInside, All, points({2, 3, 4}, kRejected), true},
        {CmdRejectThirdOutside, All, points({2, 3, 4}, 0, kRejected)},
        {CmdInterpolate, All, points({2, 3, 4}, PS_INTERPOLATED | PS_EDITED)},
        {CmdInterpolate, Point, points({7}, PS_INTERPOLATED | PS_EDITED)},
    };
    CXYEditData& data = *editor->GetDataHandler();
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "command " << row.command << " on " << row.there);
        std::fill_n(edited.GetStatus(), 8, static_cast<unsigned short>(0));
        std::fill(edited.codes.begin(), edited.codes.end(), 0);
        edited.ClearUndoBuffer();
        editedDocument.SetModifiedFlag(FALSE);
        manager.Clear(&edited);
        data.ClearSelection(), data.DeSelectPoint(), data.SetSpikesFound(false);
        if (!editor->outline.IsEmpty()) editor->RemoveRegion();
        if (row.there & Region) SelectAround(2, 4);
        if (row.there & Point) data.SelectPoint(7);
        if (row.there & Spiky) {
            edited.GetStatus()[1] = edited.GetStatus()[6] = PS_SPIKE;
            data.SetSpikesFound(true);
        }
        const Bytes before = State();
        if (row.byHost) {
            EXPECT_FALSE(RunCommand(*editor, row.command)) << "left to hosts";
            editor->OnEditReject(row.command, 0x4000);
        } else {
            EXPECT_TRUE(Run(row.command));
        }
        std::vector<int> words;
        for (const unsigned short word : edited.Words()) words.push_back(word & ~PS_SPIKE);
        EXPECT_EQ(words, row.words);
        const bool changed = words != std::vector<int>(8, 0);
        EXPECT_EQ(std::count(edited.codes.begin(), edited.codes.end(), 0x4000) > 0, row.byHost);
        const bool hasMarks = edited.Words()[6] & PS_SPIKE;
        EXPECT_EQ(hasMarks, (row.there & Spiky) && !row.marksGo);
        EXPECT_EQ(editor->outline.IsEmpty(), !(row.there & Region) || row.regionGoes);
        EXPECT_EQ(Actions(), changed);
        EXPECT_EQ(edited.IsModified() && editedDocument.IsModified(), changed);
        EXPECT_TRUE(Run(ID_EDIT_UNDO));
        EXPECT_FALSE(edited.CanUndo()) << "one snapshot";
        EXPECT_EQ(State(), before);
        EXPECT_EQ(Actions(), 0);
    }
}

// Points as set up in the fixture: stored = real * 100 in y; the region holds 2 to 4, the current point is 7.
TEST_F(EditorViewTest, ProcessingActsOnWhatItNames) {
    enum There { Nothing, Point, Region };
    const std::vector<int> ys = edited.Ys();  // 0 4000 -3000 2000 9000 1000 -9000 0
    const struct Row {
        const char* name;
        UINT command;
        There there;
        int method;  // or function
        float value;
        std::vector<int> expected;
        int outlineMoves = 0;
    } rows[] = {
        {"move all", CmdTranslate, Nothing, 1, 0.125f, {13, 4013, -2987, 2013, 9013, 1013, -8987, 13}},
        {"move all, region too",
         CmdTranslate,
         Region,
         1,
         1.0f,
         {100, 4100, -2900, 2100, 9100, 1100, -8900, 100},
         100},
        {"move point", CmdTranslate, Point, 1, -0.125f, {0, 4000, -3000, 2000, 9000, 1000, -9000, -13}},
        {"move inside",
         CmdTranslateInside,
         Region,
         1,
         2.0f,
         {0, 4000, -2800, 2200, 9200, 1000, -9000, 0},
         200},
        {"move outside",
         CmdTranslateOutside,
         Region,
         1,
         2.0f,
         {200, 4200, -3000, 2000, 9000, 1200, -8800, 200}},
        {"level all", CmdTranslate, Nothing, 0, 5.0f, {500, 500, 500, 500, 500, 500, 500, 500}},
        {"level point", CmdTranslate, Point, 0, 5.0f, {0, 4000, -3000, 2000, 9000, 1000, -9000, 500}},
        {"level inside", CmdTranslateInside, Region, 0, 5.0f, {0, 4000, 500, 500, 500, 1000, -9000, 0}},
        {"level outside", CmdTranslateOutside, Region, 0, 5.0f, {500, 500, -3000, 2000, 9000, 500, 500, 500}},
        {"no function", CmdTranslate, Nothing, 2, 5.0f, ys},
        {"scale all", CmdScale, Nothing, 0, 2.0f, {-1000, 7000, -7000, 3000, 17000, 1000, -19000, -1000}},
        {"scale point", CmdScale, Point, 0, 2.0f, {0, 4000, -3000, 2000, 9000, 1000, -9000, -1000}},
        {"ramp, whatever is current",
         CmdScale,
         Point,
         1,
         7.0f,
         {0, 4100, -2800, 2300, 9400, 1500, -8400, 700}},
        {"scale inside", CmdScaleInside, Region, 0, 2.0f, {0, 4000, -7000, 3000, 17000, 1000, -9000, 0}},
        {"scale outside",
         CmdScaleOutside,
         Region,
         0,
         2.0f,
         {-1000, 7000, -3000, 2000, 9000, 1000, -19000, -1000}},
    };
    CXYEditData& data = *editor->GetDataHandler();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        data.ClearSelection(), data.DeSelectPoint();
        if (!editor->outline.IsEmpty()) editor->RemoveRegion();
        if (row.there == Region) SelectAround(2, 4);
        if (row.there == Point) data.SelectPoint(7);
        editor->translateProperties.translateFunction = editor->scaleProperties.scaleMethod = row.method;
        editor->translateProperties.translateOffset = editor->translateProperties.translateValue = row.value;
        editor->scaleProperties.scaleValue = row.value;
        editor->scaleProperties.scaleOffset = 10.0f;
        const Bytes before = State();
        editor->RunProcessing(row.command);
        EXPECT_EQ(edited.Ys(), row.expected);
        if (row.there == Region) {
            EXPECT_EQ(editor->outline.Vertices()[0], before.outline[0] + CPoint(0, row.outlineMoves));
        }
        EXPECT_TRUE(Run(ID_EDIT_UNDO));
        EXPECT_EQ(State(), before);
        edited.ClearUndoBuffer();
        manager.Clear(&edited);
    }
}

TEST_F(EditorViewTest, ALevelLeftAsItWasShownMovesNothing) {
    edited.GetData()[7].y = 123456789;  // more digits than a float has
    edited.GetData()[0].y = 100000001;
    CXYEditData& data = *editor->GetDataHandler();
    editor->translateProperties.translateFunction = 0;
    data.SelectPoint(7);
    editor->PrepareProcessing(CmdTranslate);
    EXPECT_FLOAT_EQ(editor->translateProperties.translateValue, 1234567.89f);
    editor->RunProcessing(CmdTranslate);
    EXPECT_EQ(edited.GetData()[7], CPoint(7000, 123456789));
    // The first point where there is no current one or the command is about others; the first selected one.
    const struct {
        UINT command;
        bool current;
        float shown;
    } cases[] = {{CmdTranslate, false, 1000000.0f},
                 {CmdTranslateOutside, true, 1000000.0f},
                 {CmdTranslateInside, true, -30.0f}};
    const long selected[] = {2, 3};
    for (const auto& one : cases) {
        data.DeSelectPoint();
        if (one.current) data.SelectPoint(7);
        data.SetSelected(selected, 2);
        editor->PrepareProcessing(one.command);
        EXPECT_FLOAT_EQ(editor->translateProperties.translateValue, one.shown) << one.command;
    }
}

TEST_F(EditorViewTest, SmoothingAndFindingSpikes) {
    editor->PrepareProcessing(CmdFindSpikes);
    EXPECT_STREQ(editor->smoothProperties.waveLengthUnit, "s");
    EXPECT_STREQ(editor->spikeProperties.windowUnit, "m");
    const auto flagged = [this](unsigned short flag) {
        std::vector<int> found;
        for (int i = 0; i < 8; ++i)
            if (edited.GetStatus()[i] & flag) found.push_back(i);
        return found;
    };
    CXYEditData& data = *editor->GetDataHandler();
    const long selected[] = {1, 2, 3, 4};  // four points on either side make a curve
    data.SetSelected(selected, 4);
    editor->smoothProperties.waveLength = 1000.0f;
    editor->RunProcessing(CmdSmoothInside);
    EXPECT_EQ(flagged(PS_SMOOTHED), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_TRUE(Run(ID_EDIT_UNDO));
    data.SetSelected(selected, 4);
    editor->RunProcessing(CmdSmoothOutside);
    EXPECT_EQ(flagged(PS_SMOOTHED), (std::vector<int>{0, 5, 6, 7}));
    EXPECT_TRUE(Run(ID_EDIT_UNDO));
    editor->RunProcessing(CmdSmooth);
    EXPECT_EQ(flagged(PS_SMOOTHED).size(), 8u);
    EXPECT_TRUE(Run(ID_EDIT_UNDO));

    edited.ClearUndoBuffer();
    data.SetSelected(selected, 4);
    editor->spikeProperties.waveLength = 1000.0f;
    editor->spikeProperties.windowSize = 0.01f;
    editor->RunProcessing(CmdFindSpikesInside);
    for (const int i : flagged(PS_SPIKE)) EXPECT_TRUE(i >= 1 && i <= 4) << i;
    EXPECT_TRUE(data.HasSpikes());
    editor->RunProcessing(CmdFindSpikesOutside);
    for (const int i : flagged(PS_SPIKE)) EXPECT_TRUE(i < 1 || i > 4) << i;
    EXPECT_TRUE(data.HasSpikes());
    editor->RunProcessing(CmdFindSpikes);
    EXPECT_TRUE(data.HasSpikes());
    EXPECT_TRUE(RunCommand(*editor, CmdMoveSpikes)) << "which does nothing";
    // Of three neighbours the first one counts as their median: farther than 80 m from it.
    editor->medianProperties.filterLength = 3.0f;
    editor->medianProperties.filterDistance = 80.0f;
    editor->RunProcessing(CmdFindSpikesByMedian);
    EXPECT_EQ(flagged(PS_SPIKE), (std::vector<int>{6, 7})) << "5 lies exactly as far";
    EXPECT_FALSE(edited.CanUndo());
    EXPECT_TRUE(edited.IsModified());
}

// Each command's own page: cancelled it does nothing, finished it works with what was entered, which is kept.
TEST_F(EditorViewTest, ProcessingAsksOnItsPageFirst) {
    const struct {
        UINT first, last, edit;
        const char* name;
        bool detects;
    } families[] = {{CmdTranslate, CmdTranslateOutside, 4042, "Translate_value", false},
                    {CmdScale, CmdScaleOutside, 4084, "Scale_value", false},
                    {CmdSmooth, CmdSmoothOutside, 4087, "SmoothWaveLength", false},
                    {CmdFindSpikes, CmdFindSpikesOutside, 4000, "SpikeWaveLength", true},
                    {CmdFindSpikesByMedian, CmdFindSpikesByMedian, 4144, "MedianFilterLength", true}};
    SelectAround(1, 4);
    for (const auto& family : families) {
        for (UINT id = family.first; id <= family.last; ++id) {
            SCOPED_TRACE(id);
            const Bytes before = State();
            const bool hadSnapshot = edited.CanUndo();
            const auto answer = [&](const char* text, UINT button) {
                DialogDriver::WhileOpen([&] { EXPECT_TRUE(RunCommand(*editor, id)); },
                                        [&](QDialog& shown) {
                                            DialogDriver::Type(shown, family.edit, text);
                                            DialogDriver::Click(shown, button);
                                        });
                Settle();
            };
            answer("77", IDCANCEL);
            EXPECT_EQ(State(), before);
            EXPECT_EQ(edited.CanUndo(), hadSnapshot);
            answer("55", ID_WIZFINISH);
            EXPECT_EQ(application.GetProfileString("EditorViewTest", family.name, "").Left(2), "55");
            EXPECT_EQ(edited.CanUndo(), !family.detects);
            if (family.detects) continue;
            EXPECT_NE(State(), before);
            EXPECT_TRUE(Run(ID_EDIT_UNDO));
            EXPECT_EQ(State(), before);
        }
    }
    // All of them behind the pages of the view's settings; cancelled, nothing counts.
    editor->smoothProperties.waveLength = 3.0f;
    DialogDriver::WhileOpen([&] { RunCommand(*editor, CmdViewSettings); },
                            [&](QDialog& shown) {
                                auto& tabs = Control<QTabWidget>(shown, AFX_IDC_TAB_CONTROL);
                                const int smoothing = tabs.count() - 3;
                                EXPECT_GE(smoothing, 5);
                                tabs.setCurrentIndex(smoothing);
                                DialogDriver::Type(shown, 4087, "9");
                                tabs.setCurrentIndex(smoothing + 1);
                                DialogDriver::Click(shown, IDCANCEL);
                            });
    EXPECT_EQ(editor->smoothProperties.waveLength, 3.0f);
}

TEST_F(EditorViewTest, RejectionsAreClearedWithOneSnapshotAndMarksWithNone) {
    edited.codes = {0, 7, 0, 0, 0, 0, 0, 8};
    edited.GetStatus()[1] = PS_REJECTED | PS_SPIKE;
    EXPECT_FALSE(RunCommand(*editor, CmdClearRejection)) << "left to hosts";
    editor->OnClearRejection(CmdClearRejection);
    EXPECT_EQ(edited.codes, std::vector<int>(8, 0));
    EXPECT_EQ(SnapshotCount(), 1);
    EXPECT_EQ(Actions(), 1);
    EXPECT_FALSE(RunCommand(*editor, CmdMoveSpikes)) << "no spikes were found";
    EXPECT_TRUE(Run(CmdRemoveSpikeMarkings));
    EXPECT_EQ(edited.GetStatus()[1], PS_REJECTED | PS_EDITED);
    EXPECT_EQ(SnapshotCount(), 1);
    EXPECT_TRUE(Run(ID_EDIT_UNDO));
    EXPECT_EQ(edited.codes[7], 8);
}

TEST_F(EditorViewTest, WithoutMemoryForASnapshotNothingIsEdited) {
    SelectAround(2, 4);
    editor->GetDataHandler()->SelectPoint(3);
    const Bytes before = State();
    const CPoint inside = Pixel(2500, 500);
    edited.hasMemory = false;
    const std::function<void()> edits[] = {
        [this] { Run(CmdDelete); },
        [this] { Run(CmdRejectOutside); },
        [this] { Run(CmdInterpolate); },
        [this] { editor->RunProcessing(CmdSmooth); },
        [this, inside] {
            DragEdit(inside, {inside.x, inside.y + 30});
        },
    };
    for (const auto& edit : edits) {
        message = nullptr;
        edit();
        ASSERT_NE(message, nullptr);
        EXPECT_NE(std::string(message).find("Not enough memory"), std::string::npos);
        EXPECT_EQ(State(), before);
        EXPECT_FALSE(edited.CanUndo());
        EXPECT_EQ(Actions(), 0);
    }
    edited.hasMemory = true;
    Press(inside);
    Release(inside);
    EXPECT_TRUE(edited.CanUndo()) << "and with memory it works again";
}

TEST_F(EditorViewTest, KeepsTheParametersOfItsCommandsAndItsMenu) {
    EXPECT_EQ(editor->GetRegionPopupID(), 55);
    EXPECT_EQ(CEditorView().GetRegionPopupID(), -1);
    editor->translateProperties.translateOffset = 2.5f;
    EXPECT_TRUE(editor->SaveStdProperties());
    OpenEditorView other;
    EXPECT_TRUE(other.LoadStdProperties());
    EXPECT_EQ(other.translateProperties.translateOffset, 2.5f);
}

// Bytes that another view, or nobody, put behind the snapshot.
TEST(RegionOutlineTest, RestoresOnlyWhatIsAnOutline) {
    RegionOutline outline;
    for (int i = 0; i < 6; ++i) outline.Add({i, -i});
    std::stringstream stream;
    outline.Save(stream);
    const std::string bytes = stream.str();
    EXPECT_EQ(bytes.size(), 4u + 6u * 8u);
    for (std::size_t kept = 0; kept <= bytes.size(); ++kept) {
        std::istringstream cut(bytes.substr(0, kept));
        RegionOutline restored;
        EXPECT_TRUE(restored.Restore(cut));
        EXPECT_EQ(restored.VertexCount(), kept == bytes.size() ? 6 : 0) << kept;
    }
    std::istringstream wild("\xff\xff\xff\x7f" + bytes);
    EXPECT_TRUE(outline.Restore(wild));
    EXPECT_TRUE(outline.IsEmpty());
}

}  // namespace
