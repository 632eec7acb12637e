// The program's graph view: the series of one file. A time axis shows dates and times at round times of the
// calendar, other axes as many decimals as the step between their ticks needs. Works without a window too.
#pragma once

#include <vector>

#include "app/workbench/PictureFile.h"
#include "app/workbench/SeriesFile.h"
#include "app/workbench/TimeTicks.h"

namespace app {

class CSeriesView : public CXYGraphView {
  public:
    // The file outlives the view. Shows the first series and hides the others.
    CSeriesView(SeriesFile& file, const CString& key);

    bool OnCmdMsg(UINT id, CCmdUI* update) override;

    const SeriesFile& File() const { return file_; }
    using CXYGraphView::Redraw;
    bool IsShown(std::size_t i) const;
    // In the order in which they are drawn.
    std::vector<std::size_t> ShownSeries() const;
    // Shows or hides a series. Series of another scale give way, and the last one shown stays.
    void Show(std::size_t i, bool show);
    void ShowOnly(const std::vector<std::size_t>& series);
    // The x axis from and to, in user units.
    CPointEx RangeX() const { return {axes.MinX, axes.MaxX}; }
    // Shows this part of it, with the values in it.
    void ShowRange(double fromUser, double toUser);

    // What of it is in view.
    CPointEx VisibleX() const;
    // Of the window, with the dots per inch of its screen.
    PictureSize ShownSize() const;
    CString PictureTitle() const { return CString(file_.title); }

    CString& FormatXLabel(CString& text, double value) override;
    CString& FormatYLabel(CString& text, double value) override;
    CString& FormatCaptionStr(CString& text) override;
    CSizeEx GetTickSpacing(CSizeEx visible, CSize minimum) override;
    int DrawCoordinateSystem(CDC* dc) override;
    void SetPositionText(CPoint& point) override;
    void SetCaption() override;
    void UpdateAxis() override;
    void OnInitialUpdate() override;

  protected:
    void OnDestroy() override;
    int DrawBitmap(CDC* dc) override;

  private:
    static const CommandRow<CSeriesView> kCommands[];

    void OnSeries(UINT id);
    void OnUpdateSeries(CCmdUI* state);
    void OnStepSeries(UINT id);
    void OnAllSeries();
    void OnUpdateManySeries(CCmdUI* state);
    void OnToggleTiles();
    void OnUpdateToggleTiles(CCmdUI* state);
    void OnPage(UINT id);
    void OnUpdatePage(CCmdUI* state);
    void OnRulerType(UINT id);
    void OnUpdateRulerType(CCmdUI* state);
    void OnToggleGrid();
    void OnUpdateToggleGrid(CCmdUI* state);
    void OnDrawStyle(UINT id);
    void OnUpdateDrawStyle(CCmdUI* state);
    void OnBackground();
    void OnSeriesColor();

    void ShowStatus(int pane, const CString& text);
    void PadAxis();
    void RefreshShown();
    std::size_t IndexOf(IPointSource* source) const;
    const FileSeries& Primary() const;
    std::vector<double> TickPlaces(double from, double to);
    void ChooseDatedTick(const std::vector<Microseconds>& times);
    CString TimeLabel(double value) const;
    CString MeasuredText(const KRuler& measured) const;
    double UserPerPixelX() const;
    double UserPerPixelY() const;

    SeriesFile& file_;
    TimeStep timeStep_;
    double numberStep_ = 0;       // of a numeric x axis, real units
    bool drawingLabels_ = false;  // false while labels are only measured
    // The tick that says its date because no midnight is in sight.
    std::optional<Microseconds> datedTick_;
};

}  // namespace app
