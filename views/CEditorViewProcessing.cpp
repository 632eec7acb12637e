// The commands that move, scale and smooth points and find spikes, with the parameters in the view's sets.
#include "platform/core/Rounding.h"
#include "views/CEditorView.h"

// Each family has three commands in a row; what the first one means is its own.
enum class CEditorView::Scope { PointOrAll, Inside, Outside };

struct CEditorView::Processing {
    UINT first;
    UINT last;
    EditPage page;
    int (CEditorView::*edit)(CXYEditData& data, Scope scope);
    bool marksOnly;  // finds spikes: no snapshot, but every view shows them
};

const CEditorView::Processing* CEditorView::FindProcessing(unsigned int id) {
    static constexpr Processing kProcessing[] = {
        {CmdTranslate, CmdTranslateOutside, PageTranslate, &CEditorView::Translate, false},
        {CmdScale, CmdScaleOutside, PageScale, &CEditorView::Scale, false},
        {CmdSmooth, CmdSmoothOutside, PageSmooth, &CEditorView::Smooth, false},
        {CmdFindSpikes, CmdFindSpikesOutside, PageFindSpikes, &CEditorView::FindSpikes, true},
        {CmdFindSpikesByMedian, CmdFindSpikesByMedian, PageMedian, &CEditorView::FindSpikesByMedian, true},
    };
    for (const Processing& one : kProcessing)
        if (id >= one.first && id <= one.last) return &one;
    return nullptr;
}

CEditorView::EditPage CEditorView::PageOf(unsigned int id) { return FindProcessing(id)->page; }

void CEditorView::PrepareProcessing(unsigned int id) {
    smoothProperties.waveLengthUnit = spikeProperties.waveLengthUnit = axes.UnitX;
    spikeProperties.windowUnit = axes.UnitY;
    const Processing* const processing = FindProcessing(id);
    IPointSource* const series = PrimarySource();
    CXYEditData* const data = series ? GetDataHandler() : nullptr;
    if (!data || !processing || processing->edit != &CEditorView::Translate) return;
    long shown = series->empty() ? -1 : 0;
    if (id == CmdTranslateInside) shown = data->GetFirstSelectedIndex();
    if (id == CmdTranslate && data->GetSelectedIndex() >= 0) shown = data->GetSelectedIndex();
    prefilledLevel.reset();
    translateProperties.translateValue = 0.0f;
    if (shown < 0) return;
    const LONG level = series->GetData()[shown].y;
    translateProperties.translateValue = static_cast<float>((static_cast<double>(level) + offset.y) / scaleY);
    prefilledLevel = {translateProperties.translateValue, level};
}

void CEditorView::RunProcessing(unsigned int id) {
    const Processing* const processing = FindProcessing(id);
    if (!processing || !PrimarySource()) return;
    const auto scope = static_cast<Scope>(id - processing->first);
    const auto edit = [&](CXYEditData& data) { return (this->*processing->edit)(data, scope); };
    if (!processing->marksOnly) {
        RunEdit(edit);
        Redraw();
    } else {
        EndGesture();
        if (CXYEditData* const data = GetDataHandler()) DataChanged(edit(*data));
        ShowEdit();
    }
    prefilledLevel.reset();
}

int CEditorView::Translate(CXYEditData& data, Scope scope) {
    const CTranslateProperties& set = translateProperties;
    if (set.translateFunction == 1)
        return MoveBy(data, scope, RoundHalfAway(double{set.translateOffset} * scaleY));
    if (set.translateFunction != 0) return 0;
    // A level that was left as it was shown is the point's own, of which a float may hold less.
    const bool leftAlone = prefilledLevel && prefilledLevel->shown == set.translateValue;
    const long level = leftAlone ? long{prefilledLevel->stored}
                                 : long{RoundHalfAway(double{set.translateValue} * scaleY)} - offset.y;
    return SetLevel(data, scope, level);
}

int CEditorView::MoveBy(CXYEditData& data, Scope scope, int distance) {
    if (scope == Scope::Outside) return data.TranslateSelected(0, distance, false, false);
    if (scope == Scope::PointOrAll && data.GetSelectedIndex() >= 0)
        return data.TranslateSelected(0, distance, false);
    const int changed = scope == Scope::Inside ? data.TranslateSelected(0, distance, false, true)
                                               : data.TranslateAll(0, distance, false);
    if (changed) MoveRegion({0, distance});
    return changed;
}

int CEditorView::SetLevel(CXYEditData& data, Scope scope, long level) {
    if (scope != Scope::PointOrAll) return data.TranslateSelected(0, level, true, scope == Scope::Inside);
    const long current = data.GetSelectedIndex();
    if (current < 0) return data.TranslateAll(0, level, true);
    return data.TranslateSelected(PrimarySource()->GetData()[current].x, level, true);
}

int CEditorView::Scale(CXYEditData& data, Scope scope) {
    const int method = scaleProperties.scaleMethod;
    const double factor = scaleProperties.scaleValue;
    const double origin = double{scaleProperties.scaleOffset} * scaleY - offset.y;
    if (scope != Scope::PointOrAll) return data.ScaleSelected(method, factor, origin, scope == Scope::Inside);
    if (method != 0 || data.GetSelectedIndex() < 0) return data.ScaleAll(method, factor, origin);
    return data.ScaleSelected(factor, origin);
}

int CEditorView::Smooth(CXYEditData& data, Scope scope) {
    const double waveLength = smoothProperties.waveLength;
    return scope == Scope::PointOrAll ? data.SmoothAll(waveLength)
                                      : data.SmoothSelected(waveLength, scope == Scope::Inside);
}

int CEditorView::FindSpikes(CXYEditData& data, Scope scope) {
    const CSpikeDetectProperties& set = spikeProperties;
    const bool show = set.showWindow != 0;
    return scope == Scope::PointOrAll
               ? data.SpikeDetectAll(set.waveLength, set.windowSize, show)
               : data.SpikeDetectSelected(set.waveLength, set.windowSize, scope == Scope::Inside, show);
}

int CEditorView::FindSpikesByMedian(CXYEditData& data, Scope) {
    const CMedianFilterProperties& set = medianProperties;
    return data.SpikeDetectMedianFilter(set.filterLength, set.filterDistance, set.showWindow != 0);
}
