#include "app/workbench/CSeriesView.h"

#include <algorithm>
#include <cmath>

#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr const char* kLegendCorner = "LegendPlace";

void UseColor(IPointSource& source, unsigned long color) {
    auto& manager = KDrawPropertyManager::Instance();
    KDrawProperty& property = manager.GetProperty(source.GetKey());
    // A series that nobody has coloured yet has the colour of all new series.
    if (property.getColor() == manager.GetProperty(nullptr).getColor()) property.setColor(color);
}

// A connection line without its series.
struct NamedLine {
    CString start;
    CString end;
    int type;
    int style;
    COLORREF color;
};

std::unique_ptr<AxisReader> ReaderOf(const SeriesFile& file) {
    if (file.x.isTime) return TimeAxis(file.x);
    const bool sorted = !file.xRises && file.order == PointOrder::OfX;
    return NumberAxis(CString(file.x.name + (sorted ? " (sorted)" : "")), CString(file.x.unit));
}

}  // namespace

bool CSeriesView::linked_ = false;

CSeriesView::CSeriesView(SeriesFile& file, const CString& key)
    : CXYGraphView(key, true, static_cast<int>(kViewContextMenu), CColorProperties().background, 0, nullptr),
      file_(file) {
    UseDoubleBitmap(true);
    isoAspectAllowed = 1;
    // The view finds its axes and tiles by itself.
    settingsPages = PageColors | PageSources | PageLines;
    lineLook = LineLook::Smooth;
    chosenBackground_ = colors.background;
    AddSeriesModes();
    UseFile();
    for (std::size_t i = 0; i < file_.series.size(); ++i) AddSource(file_.series[i].source.get(), i == 0);
    UpdatePanels();
}

void CSeriesView::UseFile() {
    xReader_ = ReaderOf(file_);
    facts_.clear();
    for (std::size_t i = 0; i < file_.series.size(); ++i) {
        facts_.emplace_back(file_, i);
        UseColor(*file_.series[i].source, SeriesColor(i));
    }
    originals_.clear();
    for (std::size_t i = 0; file_.original && i < file_.original->series.size(); ++i)
        originals_.emplace_back(*file_.original, i);
}

// The same file, read once more; what is shown stays as far as it is still there.
void CSeriesView::TakeFile(SeriesFile again) {
    std::vector<std::size_t> shown;
    for (const std::size_t i : ShownSeries())
        if (i < again.series.size()) shown.push_back(i);
    if (shown.empty()) shown.push_back(0);
    // The lines end with their series, and come back by the names.
    std::vector<NamedLine> joined;
    for (const auto& line : connectionLines->lines)
        joined.push_back(
            {line->start->GetName(), line->end->GetName(), line->type, line->style, line->color});
    for (auto& one : file_.series) RemoveSource(one.source.get());
    file_ = std::move(again);
    UseFile();
    ShowOnly(shown);
    const auto named = [this](const CString& name) -> IPointSource* {
        for (auto& one : file_.series)
            if (name == one.source->GetName()) return one.source.get();
        return nullptr;
    };
    for (const NamedLine& line : joined) {
        IPointSource* const start = named(line.start);
        IPointSource* const end = named(line.end);
        if (!start || !end) continue;
        connectionLines->lines.push_back(
            std::make_unique<KConnectionLine>(start, end, line.type, line.style, line.color));
    }
}

void CSeriesView::OnInitialUpdate() {
    if (CWinApp* const profile = AfxGetApp())
        legendCorner_ = static_cast<LegendCorner>(
            std::clamp(static_cast<int>(profile->GetProfileInt(GetKeyName(), kLegendCorner, 4)), 0, 4));
    // Just those: the base would leave the first series with them.
    if (const auto stored = StoredSeries(); !stored.empty()) ShowOnly(stored);
    CXYGraphView::OnInitialUpdate();
    ruler.setType(KRuler::RulerType(0));
    stack_ = {};
    RangesChanged();
}

std::vector<std::size_t> CSeriesView::StoredSeries() const {
    if (GetKeyName().IsEmpty()) return {};
    std::list<IPointSource*> hidden;
    std::list<IPointSource*> shown;
    for (const auto& one : file_.series) hidden.push_back(one.source.get());
    KPointSourceProperties(hidden, shown, nullptr).LoadFromRegistry(GetKeyName());
    std::vector<std::size_t> stored;
    for (IPointSource* const source : shown) stored.push_back(IndexOf(source));
    return stored;
}

int CSeriesView::EditViewSettings(std::list<CPropertyPage*>& morePages, CString title, bool canApply) {
    const bool hadWindow = GetSafeHwnd() != nullptr;
    const ZoomStack shown = stack_;
    const int result = CXYGraphView::EditViewSettings(morePages, title, canApply);
    if (hadWindow && !GetSafeHwnd()) return result;
    KeepOneShown();
    stack_ = shown;
    SetCaption();
    RangesChanged();
    Redraw();
    if (result == IDOK) SaveStdProperties();
    return result;
}

void CSeriesView::KeepOneShown() {
    if (!shownSources.empty() || hiddenSources.empty()) return;
    shownSources.splice(shownSources.end(), hiddenSources, hiddenSources.begin());
    PrimaryDataChanged(PrimarySource());
}

void CSeriesView::OnDestroy() {
    SaveStdProperties();
    CXYGraphView::OnDestroy();
}

// The background that a dark desktop calls for is not the user's choice.
bool CSeriesView::SaveStdProperties() {
    const COLORREF shown = std::exchange(colors.background, chosenBackground_);
    const bool saved = CXYGraphView::SaveStdProperties();
    colors.background = shown;
    connectionLines->SaveToRegistry(GetKeyName());
    if (CWinApp* const profile = AfxGetApp())
        profile->WriteProfileInt(GetKeyName(), kLegendCorner, static_cast<int>(legendCorner_));
    return saved;
}

// Deleted points of a series are bridged.
void CSeriesView::AllocDataHandler(IPointSource* source) {
    dataHandler = std::make_unique<CXYEditData>();
    dataHandler->SelectPointSource(source);
}

std::size_t CSeriesView::IndexOf(IPointSource* source) const {
    for (std::size_t i = 0; i < file_.series.size(); ++i)
        if (file_.series[i].source.get() == source) return i;
    return 0;
}

std::vector<std::size_t> CSeriesView::ShownSeries() const {
    std::vector<std::size_t> shown;
    for (IPointSource* const source : shownSources) shown.push_back(IndexOf(source));
    return shown;
}

bool CSeriesView::IsShown(std::size_t i) const {
    return i < file_.series.size() && std::find(shownSources.begin(), shownSources.end(),
                                                file_.series[i].source.get()) != shownSources.end();
}

void CSeriesView::Show(std::size_t i, bool show) {
    if (i >= file_.series.size() || show == IsShown(i)) return;
    std::vector<std::size_t> wanted;
    for (std::size_t k = 0; k < file_.series.size(); ++k)
        if (k == i ? show : IsShown(k)) wanted.push_back(k);
    ShowOnly(wanted);
}

void CSeriesView::ShowOnly(const std::vector<std::size_t>& series) {
    if (series.empty()) return;
    shownSources.clear();
    hiddenSources.clear();
    for (const std::size_t i : series) shownSources.push_back(file_.series[i].source.get());
    for (std::size_t i = 0; i < file_.series.size(); ++i)
        if (!IsShown(i)) hiddenSources.push_back(file_.series[i].source.get());
    SeriesChosen();
}

void CSeriesView::SeriesChosen() {
    PrimaryDataChanged(PrimarySource());
    UpdateAxis();
    page = 0;
    rulerVisible = false;
    SetCaption();
    RangesChanged();
    Redraw();
}

// Pages of tiles as the base counts them.
void CSeriesView::ArrangeTiles() {
    constexpr std::size_t kMostTiles = 12;
    const std::size_t perTile = static_cast<std::size_t>(std::max(1, tiledLayout.NumSourcesPerTile));
    const std::size_t tiles = (shownSources.size() + perTile - 1) / perTile;
    grid_ = tiled ? GridFor(std::min(tiles, kMostTiles)) : CSize(1, 1);
    tiledLayout.NumColumns = grid_.cx;
    tiledLayout.NumRows = grid_.cy;
    page = std::clamp(page, 0, GetNumPages() - 1);
}

void CSeriesView::UpdatePanels() {
    const double gapFactor = breakAtGaps_ ? gapFactor_ : 0;
    for (const std::size_t i : ShownSeries()) facts_[i].Refresh(gapFactor);
    for (SeriesFacts& original : originals_) original.Refresh(gapFactor);
    ArrangeTiles();
    const auto perTile =
        tiled ? static_cast<std::size_t>(std::max(1, tiledLayout.NumSourcesPerTile)) : shownSources.size();
    std::vector<std::size_t> series = ShownSeries();
    if (tiled) {
        const auto perPage = perTile * static_cast<std::size_t>(grid_.cx * grid_.cy);
        const auto first = std::min(series.size(), perPage * static_cast<std::size_t>(page));
        series = {series.begin() + static_cast<std::ptrdiff_t>(first),
                  series.begin() + static_cast<std::ptrdiff_t>(std::min(series.size(), first + perPage))};
    }
    const Together together = tiled         ? Together::ByUnit
                              : stacked_    ? Together::Stacked
                              : normalised_ ? Together::Normalised
                                            : Together::ByUnit;
    panels_ = MakePanels(file_, facts_, series, perTile, together);
    if (!tiled) grid_ = StackFor(panels_.size());
    gesturePanel_ = std::min(gesturePanel_, panels_.empty() ? 0 : panels_.size() - 1);
    SyncRanges();
    arranged_ = false;
}

void CSeriesView::SyncRanges() {
    const auto& known = stack_.Current().y;
    for (PlotPanel& panel : panels_)
        for (PlotAxis& axis : panel.axes) {
            const auto found = known.find(axis.key);
            axis.shown = found != known.end() ? found->second : axis.whole;
        }
}

Range CSeriesView::WholeX() const {
    Range whole = Range::None();
    for (const std::size_t i : ShownSeries())
        if (!facts_[i].X().IsNone()) whole.Add(facts_[i].X());
    if (whole.IsNone()) return {0, 1};
    if (whole.Length() > 0) return whole;
    return {whole.from - 1, whole.to + 1};
}

Range CSeriesView::ShownX() const { return stack_.Current().x.value_or(WholeX()); }

CPointEx CSeriesView::RangeX() const {
    const Range whole = WholeX();
    return {file_.x.User(whole.from), file_.x.User(whole.to)};
}

CPointEx CSeriesView::VisibleX() const {
    const Range shown = ShownX();
    return {file_.x.User(shown.from), file_.x.User(shown.to)};
}

void CSeriesView::ShowRange(double fromUser, double toUser) {
    ShownRanges next;
    next.x = Range{file_.x.Real(fromUser), file_.x.Real(toUser)};
    stack_ = {};
    stack_.Current() = next;
    FitValues();
    stack_.KeepCurrent();
}

void CSeriesView::SetPlotFor(PlotFor what) {
    tiled = what == PlotFor::Series;
    stacked_ = what == PlotFor::Unit;
    page = 0;
    rulerVisible = false;
    RangesChanged();
}

void CSeriesView::SetGapFactor(double factor) {
    gapFactor_ = factor;
    Redraw();
}

void CSeriesView::UpdateColors() {
    const COLORREF plain = CColorProperties().background;
    const COLORREF dark = RGB(30, 31, 34);
    // A dark desktop makes views dark whose background nobody chose.
    if (colors.background != dark) chosenBackground_ = colors.background;
    const PlotTheme chosen = PlotTheme::For(chosenBackground_, colors.axis, colors.grid);
    paperTheme_ = chosen.dark ? PlotTheme::For(plain, colors.axis, colors.grid) : chosen;
    colors.background = chosenBackground_ == plain && IsDarkPalette() ? dark : chosenBackground_;
    windowTheme_ = PlotTheme::For(colors.background, colors.axis, colors.grid);
    CXYGraphView::UpdateColors();
    SetPenColor(rulerPen, PS_SOLID, windowTheme_.axis);
}

PictureSize CSeriesView::ShownSize() const { return {size, picture ? picture->GetDotsPerInch() : 96}; }

CString& CSeriesView::FormatCaptionStr(CString& text) {
    text = CString(file_.title);
    if (IPointSource* const source = PrimarySource()) text += " - " + source->GetName();
    if (shownSources.size() > 1) {
        CString more;
        more.Format(" and %d more", static_cast<int>(shownSources.size()) - 1);
        text += more;
    }
    return text;
}

// The view's own text is what a screen reader says of it.
void CSeriesView::SetCaption() {
    CXYGraphView::SetCaption();
    CString text;
    SetWindowText(FormatCaptionStr(text));
}

}  // namespace app
