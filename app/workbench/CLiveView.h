// The view of series that arrive while they are shown. It follows the newest samples until it is held; then
// it is zoomed and measured like any other, while the series go on, and let go it catches up.
//
// A view that follows draws what is new: the picture of what stands is moved by whole columns (LiveColumns),
// and only the columns of new samples, of those that the series have forgotten, and the labels of the x axis
// are drawn. Anything else, a new range of y above all, is a whole redraw; both give the same pixels.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "app/workbench/CSeriesView.h"
#include "app/workbench/LiveColumns.h"
#include "app/workbench/LiveSession.h"

namespace app {

enum class LiveRange {
    Scrolling,  // the window's length up to the newest sample
    Whole,      // everything that the series keep
    Fixed       // what was shown when it was chosen
};

class CLiveView : public CSeriesView {
  public:
    // The session outlives the view. Shows all series.
    CLiveView(LiveSession& session, const CString& key, double window);

    bool OnCmdMsg(UINT id, CCmdUI* update) override;
    void OnInitialUpdate() override;

    // Shows what the session has taken since the last call.
    void Follow();
    void Hold(bool hold);
    bool IsHeld() const { return held_; }
    void SetRange(LiveRange range);
    LiveRange GetRange() const { return range_; }
    // The length of the scrolling range, in units of the x axis.
    void SetWindow(double length);
    double GetWindow() const { return window_; }
    // A value that the newest samples of the first plot's first axis should not be above; it is drawn, and
    // the plot gets a frame of its colour while one is.
    void SetAlarm(std::optional<double> level);
    bool IsAlarmed() const;

    // How many pictures were drawn whole, and how many moved on.
    struct Drawn {
        int whole = 0;
        int advanced = 0;
    };
    Drawn Pictures() const { return drawn_; }
    using CSeriesView::Redraw;

  protected:
    int DrawBackground(CDC* dc, CBrush* brush, CSize area) override;
    int DrawBitmap(CDC* dc) override;
    int DrawAfterBitmap(CDC* dc) override;
    void ShowRanges(ShownRanges next, Keep keep) override;

  private:
    static const CommandRow<CLiveView> kCommands[];
    // Of one plot as it stands in the picture.
    struct Standing {
        LiveColumns columns;
        std::vector<AxisTick> xTicks;
    };
    // Of one series as it stands there.
    struct Seen {
        std::uint64_t appended = 0;
        std::uint64_t first = 0;
    };

    void OnHold();
    void OnUpdateHold(CCmdUI* state);
    void OnRange(UINT id);
    void OnUpdateRange(CCmdUI* state);
    void OnWindowLength();
    void OnAlarm();

    bool Follows() const { return !held_ && !DrawsElsewhere(); }
    void TakeSeries();
    Range RangeToShow() const;
    bool ChooseRanges(bool closer);
    bool FitY(const PlotAxis& axis, bool closer);
    LiveColumns ColumnsFor(const PlotPanel& panel) const;
    bool PlanAdvance(const CDC& dc);
    void DrawWhole(CDC& dc);
    void DrawAdvanced(CDC& dc);
    void AdvancePanel(CDC& dc, const PlotPanel& panel, const Standing& before, const Standing& now);
    void DrawPart(CDC& dc, const PlotPanel& panel, const Standing& standing, const CRect& part);
    void DrawLive(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i,
                  const LiveColumns& columns, const CRect& part);
    void MovePixels(const CRect& plot, int columns);
    void NoteDrawn();
    Range XOf(const LiveColumns& columns) const;

    LiveSession& session_;
    bool held_ = false;
    LiveRange range_ = LiveRange::Scrolling;
    double window_;
    Range fixed_;
    std::optional<double> alarm_;
    std::uint64_t rowsShown_ = 0;
    bool advancing_ = false;  // nothing but new samples makes the picture stale
    bool planned_ = false;    // the redraw under way only advances
    std::vector<Standing> standing_;
    std::vector<Standing> next_;
    std::vector<Seen> seen_;
    CRect drawnArea_;
    Range whole_;           // of LiveRange::Whole
    int untilCloser_ = 60;  // pictures until an axis may become shorter
    Drawn drawn_;
};

}  // namespace app
