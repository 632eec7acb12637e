#include "app/workbench/CStartView.h"

#include <algorithm>
#include <filesystem>

#include "app/workbench/RecentFiles.h"
#include "app/workbench/SampleFile.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

// 0.01 mm
constexpr int kMargin = 1200;
constexpr int kTitleHeight = 900;
constexpr int kTextHeight = 380;
constexpr int kLineHeight = 700;
constexpr int kDetailGap = 500;

constexpr int kNone = -1;

}  // namespace

void CStartView::OnInitialUpdate() {
    entries_ = {{ID_FILE_OPEN, "Open files...", "Ctrl+O, or drop them here"}};
    if (const std::string sample = SampleFile(); !sample.empty())
        entries_.push_back({kOpenSample, "Open the sample", "a month of readings of a tide gauge"});
    UINT command = kRecentFirst;
    for (const std::string& path : RecentFiles()) {
        const std::filesystem::path whole(path);
        entries_.push_back(
            {command++, CString(whole.filename().string()), CString(whole.parent_path().string())});
    }
    SetFocus();
}

void CStartView::OnDraw(CDC* dc) {
    const auto pixels = [&](int hundredths) {
        return RoundHalfAway(hundredths * dc->GetDeviceCaps(LOGPIXELSX) / 2540.0);
    };
    CRect area;
    GetClientRect(&area);
    dc->FillSolidRect(area, GetSysColor(COLOR_WINDOW));
    dc->SetBkMode(TRANSPARENT);
    CFont titleFont, textFont;
    titleFont.CreateSimple(pixels(kTitleHeight));
    textFont.CreateSimple(pixels(kTextHeight));
    const int left = pixels(kMargin);
    int y = pixels(kMargin);
    {
        const Selected useTitle(*dc, titleFont);
        dc->SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
        dc->TextOut(left, y, "Tavin");
        y += pixels(kTitleHeight + kLineHeight);
    }
    const Selected useText(*dc, textFont);
    const int line = pixels(kLineHeight);
    int widest = 0;
    for (const Entry& entry : entries_) widest = std::max<int>(widest, dc->GetTextExtent(entry.text).cx);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        Entry& entry = entries_[i];
        // Recent files stand apart.
        if (entry.command == kRecentFirst) {
            y += line / 2;
            dc->SetTextColor(GetSysColor(COLOR_GRAYTEXT));
            dc->TextOut(left, y, "Recent files");
            y += line;
        }
        const int detailX = left + widest + pixels(kDetailGap);
        const int right = detailX + dc->GetTextExtent(entry.detail).cx;
        const int inset = line / 4;
        entry.place = CRect(left - inset, y - inset, right + inset, y + line - inset);
        const bool chosen = static_cast<int>(i) == chosen_;
        if (chosen) dc->FillSolidRect(entry.place, GetSysColor(COLOR_HIGHLIGHT));
        dc->SetTextColor(GetSysColor(chosen ? COLOR_HIGHLIGHTTEXT : COLOR_HOTLIGHT));
        dc->TextOut(left, y, entry.text);
        dc->SetTextColor(GetSysColor(chosen ? COLOR_HIGHLIGHTTEXT : COLOR_GRAYTEXT));
        dc->TextOut(detailX, y, entry.detail);
        y += line;
    }
}

void CStartView::Choose(int entry) {
    if (entry == chosen_) return;
    chosen_ = entry;
    Invalidate(FALSE);
}

int CStartView::EntryAt(CPoint point) const {
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (entries_[i].place.PtInRect(point)) return static_cast<int>(i);
    return kNone;
}

void CStartView::Run(int entry) {
    if (entry == kNone) return;
    RunCommand(*GetParentFrame()->GetTopLevelFrame(), entries_[static_cast<std::size_t>(entry)].command);
}

void CStartView::OnLButtonDown(UINT, CPoint point) { Run(EntryAt(point)); }

void CStartView::OnMouseMove(UINT, CPoint point) {
    if (const int entry = EntryAt(point); entry != kNone) Choose(entry);
}

void CStartView::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    const int last = static_cast<int>(entries_.size()) - 1;
    switch (key) {
        case VK_UP:
            return Choose(std::max(0, chosen_ - 1));
        case VK_DOWN:
            return Choose(std::min(last, chosen_ + 1));
        case VK_HOME:
            return Choose(0);
        case VK_END:
            return Choose(last);
        case VK_RETURN:
            return Run(chosen_);
        default:
            CView::OnKeyDown(key, repeat, flags);
    }
}

BOOL CStartFrame::OnCreateClient(CREATESTRUCT*, CCreateContext*) {
    SetWindowText("Start");
    auto* const view = new CStartView;
    return view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), this, AFX_IDW_PANE_FIRST, nullptr);
}

}  // namespace app
