// The pages of the processing commands: one alone before its command runs, all of them in the sheet of the
// view's settings.
#include <algorithm>
#include <tuple>

#include "pages/ProcessingPages.h"
#include "platform/dialog/CPropertySheet.h"
#include "views/CEditorView.h"

struct CEditorView::Pages {
    explicit Pages(CEditorView& view)
        : translate(view.GetKeyName(), &view.translateProperties),
          scale(view.GetKeyName(), &view.scaleProperties),
          smooth(view.GetKeyName(), &view.smoothProperties),
          spikes(view.GetKeyName(), &view.spikeProperties),
          median(view.GetKeyName(), &view.medianProperties) {}

    CTranslatePage translate;
    CScalePage scale;
    CSmoothPage smooth;
    CWaveWindowPage spikes;
    CMedianFilterPage median;
    const struct {
        EditPage bit;
        TavinPage* page;
    } all[5] = {{PageTranslate, &translate},
                {PageScale, &scale},
                {PageSmooth, &smooth},
                {PageFindSpikes, &spikes},
                {PageMedian, &median}};
};

void CEditorView::OnEditProcessing(UINT id) {
    IPointSource* const series = PrimarySource();
    if (!series) return;
    EndGesture();
    PrepareProcessing(id);
    Pages pages(*this);
    const auto& own = *std::find_if(std::begin(pages.all), std::end(pages.all),
                                    [id](const auto& one) { return one.bit == PageOf(id); });
    TavinPage& asked = *own.page;
    CPropertySheet sheet(asked.Caption(), this);
    sheet.SetWizardMode();
    sheet.AddPage(&asked);
    const bool hadWindow = GetSafeHwnd() != nullptr;
    if (sheet.DoModal() != ID_WIZFINISH || (hadWindow && !GetSafeHwnd())) return;
    asked.OnSaveDefault();
    // While the question was open the host may have shown another series.
    if (PrimarySource() == series) RunProcessing(id);
}

int CEditorView::EditViewSettings() {
    std::list<CPropertyPage*> none;
    return EditViewSettings(none, "Settings");
}

int CEditorView::EditViewSettings(std::list<CPropertyPage*>& pages, CString title) {
    PrepareProcessing(CmdSmooth);
    const auto before = std::make_tuple(translateProperties, scaleProperties, smoothProperties,
                                        spikeProperties, medianProperties);
    Pages own(*this);
    for (const auto& one : own.all)
        if (settingsPages & one.bit) pages.push_back(one.page);
    const int result = CXYGraphView::EditViewSettings(pages, title, false);
    // Pages write into the sets when they are left.
    if (result != IDOK)
        std::tie(translateProperties, scaleProperties, smoothProperties, spikeProperties, medianProperties) =
            before;
    return result != 0;
}
