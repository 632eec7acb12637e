// The graph view: series against an x and a y axis with ticks, grid, labels and a legend, in one plot or in
// tiles over several pages; zoomed, scrolled and measured with mouse, keys and commands.
//
// The first shown series is the primary one: it gives the view its units, scales, offset and caption. Series
// are the host's; take one out of every view (CViewUpdate::RemoveSource) before it dies. Logical coordinates
// of the view's contexts are stored units: stored = user * scale - offset, on each axis.
//
// Without a window: give the view its series, call OnInitialUpdate, then DrawOn.
//
// The sources: CXYGraphView (series, pages, caption), ...Layout (mapping, margins), ...Drawing (the picture),
// ...Axes, ...Legend, ...Zoom, ...Mouse, ...Modes, ...Commands, ...Settings (the store), ...Sheet.
#pragma once

#include <list>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "editing/CXYData.h"
#include "platform/gdi/CFont.h"
#include "platform/gdi/CPen.h"
#include "platform/gdi/PointPyramid.h"
#include "settings/CAxisProperties.h"
#include "settings/CTiledLayoutProperties.h"
#include "views/CCarthesian.h"
#include "views/CViewUpdate.h"
#include "views/GestureOverlay.h"
#include "views/GraphCommands.h"
#include "views/GraphLayout.h"
#include "views/GraphMouseMode.h"
#include "views/GraphZoom.h"
#include "views/KRuler.h"
#include "views/KViewEx.h"

class CPropertyPage;
class KPointSourceProperties;
namespace KConnectionLineManager {
class LineProperties;
}

class CXYGraphView : public KViewEx {
    DECLARE_DYNCREATE(CXYGraphView)

  public:
    // The part of the x axis that the last tile drawn shows, and where: pixel columns of the picture and
    // stored units.
    struct AxisChangeInfo {
        int plotLeft = 0;
        int plotRight = 0;
        double fromX = 0.0;
        double toX = 0.0;
        CString unitX;
    };
    // Told after each redraw of the window, or of whatever a view without one draws on, so that something
    // beside the view can follow its x axis.
    class IAxisChangeListener {
      public:
        virtual void OnAxisChanged(AxisChangeInfo* info) = 0;

      protected:
        ~IAxisChangeListener() = default;
    };
    enum MouseMode {
        ShowPosition = 0,
        ZoomArmed = 1,
        ZoomDragging = 2,
        RulerArmed = 16,
        RulerDragging = 17,
    };

    CXYGraphView();
    // The first four as KViewEx takes them. `legendValues`: the legend shows names (0) or names with the
    // newest value. The series may be null.
    CXYGraphView(CString keyName, bool deviceIndependent, int contextMenu, unsigned long backgroundColor,
                 int legendValues, IPointSource* source);
    ~CXYGraphView() override;

    // Null is ignored. A shown series goes to the end of the shown ones, with its statistics renewed.
    void AddSource(IPointSource* source, bool shown);
    void RemoveSource(IPointSource* source);
    // Takes units, scales, offset and caption from the series and has the data handler work on it; null only
    // does the latter. Returns the series that it worked on before.
    IPointSource* SetPrimaryData(IPointSource* source);

    // The draw properties kept under the series' key.
    unsigned long GetColor(IPointSource* source);
    int GetDotSize(IPointSource* source);
    int GetDrawStyle(IPointSource* source);
    int GetLineStyle(IPointSource* source);
    void SetColor(IPointSource* source, unsigned long color);

    // Pages of tiles; 1 unless tiled.
    int GetNumPages();
    void OnViewNextPage();
    void OnViewPrevPage();

    // The listener must outlive the view or be removed before it ends, which it may do while it listens.
    void AddAxisChangeListener(IAxisChangeListener* listener) { listeners.push_back(listener); }
    void RemoveAxisChangeListener(IAxisChangeListener* listener) { listeners.remove(listener); }

    // What the mouse does while mouseMode is `number`; replaces what it did before. Null is ignored.
    void AddMouseMode(int number, std::shared_ptr<GraphMouseMode> mode);
    // The mode before ends, and the new one's status text is shown. A number without a mode is that of
    // ShowPosition.
    void EnterMode(int number);

    int GetIsoAspect() const { return zoom.isoAspect; }
    void SetIsoAspect(int iso) { zoom.isoAspect = iso; }
    // Runs a zoom command about a point in stored units, counted from the visible area's origin.
    void HandleZoom(unsigned int command, CPoint about);

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    // Also makes a view without a window ready to draw.
    void OnInitialUpdate() override;
    void SetKeyName(const CString& name) override;
    // "Empty" or the primary series' name.
    const char* GetViewName() override;
    bool OnCmdMsg(UINT id, CCmdUI* update) override;

    // Which series are shown and how each is drawn, over the view's two lists; the view's, made when somebody
    // first asks.
    virtual KPointSourceProperties* GetDSProperties();
    virtual int DrawCoordinateSystem(CDC* dc);
    // The distances of the ticks in user units for visible ranges in user units and the smallest size of a
    // label in logical units.
    virtual CSizeEx GetTickSpacing(CSizeEx visible, CSize minimum);
    // The label of a value in user units; both return `text`. An override that writes as many decimals as the
    // ticks need asks TickSpacingInForce.
    virtual CString& FormatXLabel(CString& text, double value);
    virtual CString& FormatYLabel(CString& text, double value);
    virtual CString& FormatCaptionStr(CString& text);
    // In the key name's section; both return true.
    virtual bool LoadStdProperties();
    virtual bool SaveStdProperties();
    // Makes the object that draws and edits the primary series, and attaches it to the series (null: none).
    virtual void AllocDataHandler(IPointSource* source);
    // The primary series is another one, or was filled anew.
    virtual void PrimaryDataChanged(IPointSource* source);
    virtual void ZoomAll();
    // 0 when there is nothing to list.
    virtual int DrawLegend(CDC* dc, std::list<IPointSource*>& sources);
    virtual int DrawLegend(CDC* dc);
    // What follows the name of the i-th series in the legend.
    virtual CString AddExtraLegend(int i);
    // Shows a point, in stored units with the offset added, in the status bar.
    virtual void SetPositionText(CPoint& point);
    virtual void SetCaption();
    // Gives the axes that scale themselves the range of the shown series.
    virtual void UpdateAxis();
    virtual void UpdateColors();
    // The sheet of the view's settings, with more pages of the caller's at its end: IDOK or IDCANCEL, which
    // leaves axes, colours and tiles as they were. `canApply`: with a button Apply.
    virtual int EditViewSettings(std::list<CPropertyPage*>& morePages, CString title, bool canApply);
    virtual int EditViewSettings();
    // Tells the views of a document apart in the hints they send.
    virtual unsigned int GetCookie();

  protected:
    void OnPrepareDC(CDC* dc, CPrintInfo* info = nullptr) override;
    void OnUpdate(CView* sender, long hint, CObject* hintObject) override;
    void OnActivateView(BOOL activate, CView* activated, CView* deactivated) override;
    int DrawBitmap(CDC* dc) override;
    int DrawAfterBitmap(CDC* dc) override;

    int OnCreate(CREATESTRUCT* create) override;
    void OnSize(UINT type, int width, int height) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    void OnLButtonUp(UINT flags, CPoint point) override;
    void OnMButtonDblClk(UINT flags, CPoint point) override;
    void OnMouseMove(UINT flags, CPoint point) override;
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnKeyUp(UINT key, UINT repeat, UINT flags) override;
    BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message) override;
    void OnHScroll(UINT code, UINT position, CScrollBar* scrollBar) override;
    void OnVScroll(UINT code, UINT position, CScrollBar* scrollBar) override;

    void OnZoom(unsigned int command);
    void OnModeEscape();
    void OnToggleLegend();
    void OnCreateRuler();
    void OnTitleBarOnOff();
    void OnToggleIsoAspect();
    void OnViewSettings();
    void OnUpdateZoom(CCmdUI* state);
    void OnUpdateToggleLegend(CCmdUI* state);
    void OnUpdateCreateRuler(CCmdUI* state);
    void OnUpdateTitleBarOnOff(CCmdUI* state);
    void OnUpdateToggleIsoAspect(CCmdUI* state);

    bool AddZoom(CZoomInfo entry) { return zoom.Add(entry); }
    // About a point as HandleZoom takes it.
    void Zoom(float factorX, float factorY, CPoint about) { zoom.About(factorX, factorY, about); }
    void ZoomExtent();
    void SetScrollSizes();

    // How series are drawn.
    LineLook lineLook = LineLook::Hairline;
    // The distance of neighbouring ticks on either axis in user units, as far as it is known: 0 before the
    // first layout.
    CSizeEx TickSpacingInForce() const { return tickSpacing; }
    IPointSource* PrimarySource() const { return shownSources.empty() ? nullptr : shownSources.front(); }
    // Sends a hint to the other views of the document.
    // False when a receiver ended this view: its series may be gone.
    bool SendUpdate(CViewUpdate hint);
    bool SendZoom();
    // Replaces the pen by a hairline.
    static void SetPenColor(CPen& pen, int style, unsigned long color);
    CPoint AdjustLegendPosToAxis(CPoint corner, CSize plot, CSize legend, int lines) const;
    void SetTiledViewportOrg(CDC* dc, CPoint firstTile, int tile) const;
    void SetTiledClipRgn(CDC* dc);

    GraphMouseMode& Mode() const;
    // Takes away what a gesture has inverted on the window.
    void HideGesture();
    // The rubber band from corner to corner of zoomRect.
    void ShowZoomRect();
    // Takes an update that came during a drag, once that has ended.
    void CatchUp();
    // The part of the x axis that the picture shows, in stored units of the series drawn last.
    void TellListeners(double fromX, double toX);
    // Shows the stored point under a client point in the status bar.
    void ShowPositionOf(CPoint point);

    // The ruler on a client context, inverted so that drawing it again erases it.
    bool StartRuler(CDC* dc, CPoint point);
    bool RulerTo(CDC* dc, CPoint point);
    bool EndRuler(CDC* dc, CPoint point);

    CPoint lastMousePosition;
    AxisChangeInfo axisChange;
    std::list<IAxisChangeListener*> listeners;                 // not owned
    CRect tileClip;                                            // of the last tile drawn, device units
    std::unique_ptr<KPointSourceProperties> sourceProperties;  // null until GetDSProperties
    std::unique_ptr<KConnectionLineManager::LineProperties> connectionLines;
    // Which pages of its own the sheet of settings has.
    enum SettingsPage {
        PageAxes = 0x01,
        PageColors = 0x02,
        PageSources = 0x04,
        PageLines = 0x10,
        PageTiles = 0x20
    };
    int settingsPages = 63;
    CAxisProperties axes;
    CTiledLayoutProperties tiledLayout;
    CCarthesian coordinates;  // user units to stored units
    std::list<IPointSource*> shownSources;
    std::list<IPointSource*> hiddenSources;
    std::unique_ptr<CXYData> dataHandler;
    GraphZoom zoom;
    double scaleX = 1000.0;  // of the primary series
    double scaleY = 1000.0;
    CPoint offset;
    CPen gridPen;
    CPen axisPen;
    CPen dottedPen;
    CPen rulerPen;
    KRuler ruler;
    bool rulerVisible = false;
    int mouseMode = ShowPosition;
    GestureOverlay gesture;
    CRect plotArea;          // of the plot that the gesture works in, device units; OnPrepareDC sets it
    PointPyramids pyramids;  // of the shown series, while only the view moves
    CPoint gestureStart;     // where the drag began, device units
    CRect zoomRect;          // device pixels, corners as dragged
    std::optional<CPoint> lastMiddlePosition;  // of the middle button held
    int titleBarOff = 0;
    int isoAspectAllowed = 0;
    int tiled = 0;  // set by derived views
    CSize tileSize;
    int page = 0;
    bool showLegend = true;
    int legendValues;

  private:
    static const CommandRow<CXYGraphView> kCommands[];

    void Init(IPointSource* source);
    std::optional<CPoint> NewestSample();
    StoredRange AxisRange() const;
    TileGrid Tiles() const;
    void TakeUpdate(const CViewUpdate& hint);
    // Out of both lists, for the moment or for good.
    void TakeOut(IPointSource* source);
    struct Settings;
    void TakeSettings(const Settings& before, bool rangesTouched, bool colorsTouched);

    void SetCoordinates();
    CRect PlotOfGesture(const CRect& first) const;
    void SetStoredMapping(CDC& dc, const CRect& plot);
    PlotMargins Margins(CDC& dc, const CRect& tile);
    CSizeEx SpacingFor(CSize plot, CSize xLabel, CSize yLabel);
    CSize LargestXLabel(const CDC& dc);
    CSize LargestYLabel(const CDC& dc);
    void ShowScrollPosition();

    void DrawPage(CDC& dc, std::size_t first, std::size_t last);
    void DrawSource(CDC& dc, IPointSource* source);
    void DrawTicks(CDC& dc, const PlotMap& map, const CRect& plot);
    void DrawGrid(CDC& dc, const PlotMap& map, const CRect& plot, const std::vector<double>& xTicks,
                  const std::vector<double>& yTicks);
    void DrawYAxis(CDC& dc, const PlotMap& map, const CRect& plot, const std::vector<double>& ticks);
    void DrawXAxis(CDC& dc, const PlotMap& map, const CRect& plot, const std::vector<double>& ticks);
    CString LegendText(IPointSource* source, int i);
    void DrawConnectionLines(CDC& dc);
    void DrawRulerOverlay(CDC& dc);

    class PositionMode;
    class ZoomRectMode;
    class RulerMode;
    void AddOwnModes();
    void EndZoomRect(CPoint point);
    void ShowRuler(CDC& dc);
    void PanTo(CDC& dc, CPoint point);
    void ShowRulerText();
    void RunZoomCommand(unsigned int command, CPoint about);
    std::optional<int> ScrollTarget(int bar, UINT code, UINT position) const;

    std::map<int, std::shared_ptr<GraphMouseMode>> modes;
    bool updateMissed = false;
    bool settingsOpen = false;
    CSizeEx tickSpacing;
    PlotMargins plotMargins;
    CString viewName;  // what GetViewName returned last
};
