#include "app/workbench/PrintedPage.h"

#include <algorithm>

#include "tavin/tavin.h"

namespace app {

namespace {

constexpr const char* kSection = "Page";
constexpr LONG kAcross = 29700;
constexpr LONG kHigh = 21000;
constexpr int kLeastRoom = 2000;  // between the margins

struct Length {
    const char* name;
    LONG& (*of)(PageSetup& page);
};
constexpr Length kLengths[] = {
    {"Width", [](PageSetup& page) -> LONG& { return page.paper.cx; }},
    {"Height", [](PageSetup& page) -> LONG& { return page.paper.cy; }},
    {"Left", [](PageSetup& page) -> LONG& { return page.margin.left; }},
    {"Top", [](PageSetup& page) -> LONG& { return page.margin.top; }},
    {"Right", [](PageSetup& page) -> LONG& { return page.margin.right; }},
    {"Bottom", [](PageSetup& page) -> LONG& { return page.margin.bottom; }},
};

bool IsUsable(const PageSetup& page) {
    const PageMargins& margin = page.margin;
    return std::min({margin.left, margin.top, margin.right, margin.bottom}) >= 0 &&
           page.paper.cx - std::int64_t{margin.left} - margin.right >= kLeastRoom &&
           page.paper.cy - std::int64_t{margin.top} - margin.bottom >= kLeastRoom;
}

}  // namespace

void LoadPrintedPage() {
    PageSetup across;
    across.paper = {kAcross, kHigh};
    PageSetup page = across;
    if (CWinApp* const profile = AfxGetApp())
        for (const Length& length : kLengths)
            length.of(page) =
                static_cast<LONG>(profile->GetProfileInt(kSection, length.name, length.of(page)));
    SetPrintPage(IsUsable(page) ? page : across);
}

void KeepPrintedPage() {
    CWinApp* const profile = AfxGetApp();
    if (!profile) return;
    PageSetup page = PrintPage();
    for (const Length& length : kLengths) profile->WriteProfileInt(kSection, length.name, length.of(page));
}

}  // namespace app
