// The program's graph view: the series of one file, in one plot or in tiles. Every plot has y axes of its
// own, one for each unit in it; all plots of the view share the x axis. One can zoom until a few samples fill
// the window: the view keeps the ranges that it shows in the values of the file (ZoomStack) and maps each
// series for itself. Works without a window too.
//
// The sources: CSeriesView (series, ranges, export), ...Drawing, ...Series (how one is drawn), ...Mouse
// (modes, wheel, panning), ...Zoom,
// ...Commands, ...ReadOut. How axes read is AxisReader's, where things lie PlotPanels'.
#pragma once

#include <vector>

#include "app/workbench/Legend.h"
#include "app/workbench/PictureFile.h"
#include "app/workbench/PlotPainter.h"
#include "app/workbench/SeriesFile.h"

namespace app {

class CSeriesView : public CXYGraphView {
  public:
    // The file outlives the view. Shows the first series and hides the others.
    CSeriesView(SeriesFile& file, const CString& key);

    bool OnCmdMsg(UINT id, CCmdUI* update) override;

    const SeriesFile& File() const { return file_; }
    using CXYGraphView::Redraw;
    bool IsShown(std::size_t i) const;
    // In the order in which they were chosen.
    std::vector<std::size_t> ShownSeries() const;
    // Shows or hides a series; the last one shown stays. The x axis keeps its range.
    void Show(std::size_t i, bool show);
    void ShowOnly(const std::vector<std::size_t>& series);
    // The whole x axis from and to, in user units.
    CPointEx RangeX() const;
    // What of it is in view.
    CPointEx VisibleX() const;
    // Shows this part of it, with the values in it.
    void ShowRange(double fromUser, double toUser);

    // Whether all series share one plot with an axis for each unit, each unit has a plot, or each series.
    enum class PlotFor { All, Unit, Series };
    void SetPlotFor(PlotFor what);
    // Above the plots; the window's frame says what it shows, so that only pictures need it.
    void SetHeading(const CString& text) { heading_ = text; }

    // A line breaks where neighbours lie more than this many usual steps apart, and at empty cells; 0: never.
    void SetGapFactor(double factor);

    // Of the window, with the dots per inch of its screen.
    PictureSize ShownSize() const;
    CString PictureTitle() const { return CString(file_.title); }

    // What is shown now; panels are those of the last picture.
    Range ShownX() const;
    const std::vector<PlotPanel>& Panels() const { return panels_; }
    // Takes over the x range of another view: from a time or a value of the axis to another.
    void FollowX(const XReading& reading, const Range& x);

    CString& FormatCaptionStr(CString& text) override;
    void SetCaption() override;
    void UpdateColors() override;
    void ZoomAll() override;
    bool SaveStdProperties() override;
    void AllocDataHandler(IPointSource* source) override;
    void OnInitialUpdate() override;
    using CXYGraphView::EditViewSettings;
    // What is in view stays, whatever the sheet changes; what the user agreed to is kept at once.
    int EditViewSettings(std::list<CPropertyPage*>& morePages, CString title, bool canApply) override;

  protected:
    void OnPrepareDC(CDC* dc, CPrintInfo* info = nullptr) override;
    void OnActivateView(BOOL activate, CView* activated, CView* deactivated) override;
    void OnDestroy() override;
    int DrawBackground(CDC* dc, CBrush* brush, CSize area) override;
    int DrawBitmap(CDC* dc) override;
    int DrawAfterBitmap(CDC* dc) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    void OnMouseLeave() override;
    void OnMouseMove(UINT flags, CPoint point) override;
    void OnMButtonDblClk(UINT flags, CPoint point) override;
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point) override;
    BOOL OnMouseHWheel(UINT flags, short delta, CPoint point) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnKeyUp(UINT key, UINT repeat, UINT flags) override;
    void OnHScroll(UINT code, UINT position, CScrollBar* scrollBar) override;
    void OnVScroll(UINT code, UINT position, CScrollBar* scrollBar) override;

  protected:
    enum class Keep { Entry, InPlace };

  private:
    static const CommandRow<CSeriesView> kCommands[];
    class PointerMode;
    class RectangleMode;
    class MeasuringMode;

    void OnSeries(UINT id);
    void OnUpdateSeries(CCmdUI* state);
    void OnStepSeries(UINT id);
    void OnAllSeries();
    void OnUpdateManySeries(CCmdUI* state);
    void OnPlotFor(UINT id);
    void OnUpdatePlotFor(CCmdUI* state);
    void OnNormalised();
    void OnUpdateNormalised(CCmdUI* state);
    void OnFileOrder();
    void OnUpdateFileOrder(CCmdUI* state);
    void OnPage(UINT id);
    void OnUpdatePage(CCmdUI* state);
    void OnRulerType(UINT id);
    void OnUpdateRulerType(CCmdUI* state);
    void OnToggleGrid();
    void OnUpdateToggleGrid(CCmdUI* state);
    void OnDrawStyle(UINT id);
    void OnUpdateDrawStyle(CCmdUI* state);
    void OnToggleFlag(UINT id);
    void OnUpdateFlag(CCmdUI* state);
    void OnBackground();
    void OnSeriesColor();
    void OnLineProperties();
    void OnZoomCommand(UINT id);
    void OnUpdateZoomCommand(CCmdUI* state);
    void OnEscape();
    bool& FlagOf(UINT id);

  protected:
    // Series and axes.
    std::size_t IndexOf(IPointSource* source) const;
    // The series that were shown when the file was open last; none when nothing is known of it.
    std::vector<std::size_t> StoredSeries() const;
    void ArrangeTiles();
    // A plot of nothing has no axes.
    void KeepOneShown();
    // The lists of shown and hidden series are other ones now.
    void SeriesChosen();
    void UseFile();
    void TakeFile(SeriesFile again);
    void UpdatePanels();
    void SyncRanges();
    void Arrange(const CDC& dc);
    void AddSeriesModes();
    Range WholeX() const;
    PlotPanel* Panel(std::size_t i) { return i < panels_.size() ? &panels_[i] : nullptr; }

    // Zoom: a range that is asked for becomes a new entry of the stack or changes the current one.
    virtual void ShowRanges(ShownRanges next, Keep keep);
    void ZoomAbout(double factor, std::optional<CPoint> pixel);
    void ZoomTo(const PlotPanel& panel, const CRect& pixels);
    void PanBy(CSize pixels, std::size_t panel);
    void FitValues();
    void ShowExtent();
    void KeepAspect(ShownRanges& shown) const;
    bool LimitX(Range& x) const;
    bool LimitY(Range& y, const PlotAxis& axis) const;
    void TellLinked();
    void ShowScrollBars();
    void Scroll(int bar, UINT code, UINT position);
    void RangesChanged();

    void Draw(CDC& dc);
    void DrawHeading(CDC& dc);
    void DrawPanel(CDC& dc, const PlotPanel& panel);
    void DrawSeries(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i);
    void DrawSampleDots(CDC& dc, const SeriesFacts& facts, COLORREF color);
    bool HasOriginal(std::size_t i) const;
    void DrawOriginal(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i);
    void DrawMarks(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i);
    std::vector<LegendLine> LegendOf(const PlotPanel& panel) const;
    void DrawLegendOf(CDC& dc, std::size_t panel);
    LegendCorner EmptiestCorner(const Legend& legend, const PlotPanel& panel, LegendCorner before) const;
    void DrawConnectionLines(CDC& dc);
    void DrawHover(CDC& dc);
    void DrawRuler(CDC& dc);
    COLORREF ColorOf(std::size_t i) const;
    // Dark only in a window: pictures and pages are light unless a colour was chosen.
    const PlotTheme& Theme() const { return DrawsElsewhere() ? paperTheme_ : windowTheme_; }

    struct Hovered {
        std::size_t series;
        int index;
        CPoint pixel;
    };
    std::optional<Hovered> Hover() const;
    std::vector<CString> SampleText(const Hovered& sample) const;
    void ShowPointer(CPoint pixel);
    void ShowZoomText();
    CString MeasuredText() const;
    void ShowStatus(int pane, const CString& text);
    void Say(const CString& text);

    SeriesFile& file_;
    std::vector<SeriesFacts> facts_;
    std::vector<SeriesFacts> originals_;  // of the series of the file's original
    CXYData originalData_;
    PointPyramids originalPyramids_;
    std::unique_ptr<AxisReader> xReader_;
    ZoomStack stack_;
    std::vector<PlotPanel> panels_;
    CSize grid_{1, 1};
    bool arranged_ = false;  // panels lie where arrangedArea_ says
    CRect arrangedArea_;
    int arrangedDots_ = 0;          // per inch
    std::size_t gesturePanel_ = 0;  // that the last press, or the pointer, was in
    PlotTheme windowTheme_;
    PlotTheme paperTheme_;
    COLORREF chosenBackground_ = 0;
    double gapFactor_ = 2.5;
    bool normalised_ = false;
    bool breakAtGaps_ = true;
    bool stacked_ = false;  // a plot for each unit
    bool marks_ = true;
    bool original_ = true;
    bool crosshair_ = false;
    bool readOut_ = true;
    bool spaceHeld_ = false;
    std::optional<CPoint> pointer_;
    std::optional<Hovered> hovered_;
    std::optional<CPoint> panFrom_;
    std::size_t panPanel_ = 0;
    LegendCorner legendCorner_ = LegendCorner::Emptiest;
    bool legendFolded_ = true;
    std::vector<CRect> legends_;          // where they lie
    std::vector<LegendCorner> emptiest_;  // of each panel, in the window
    CString heading_;
    CString positionText_;
    CString zoomText_;
    static bool linked_;  // the x axes of all windows
};

}  // namespace app
