// How KViewEx keeps the placement of its frame.
#include <array>

#include "platform/registry/CWinApp.h"
#include "platform/registry/RegistryTransaction.h"
#include "platform/window/CFrameWnd.h"
#include "views/KViewEx.h"

namespace {

// The spelling is that of the settings already stored.
constexpr std::array kNames{"Position left",         "Position top",          "Position right",
                            "Position bottom",       "Windows flags",         "Windows show state",
                            "Windows MinPosition X", "Windows MinPosition Y", "Windows MaxnPosition X",
                            "Windows MaxnPosition Y"};

using Values = std::array<std::int32_t, kNames.size()>;

Values ValuesOf(const WINDOWPLACEMENT& p) {
    return {p.rcNormalPosition.left,
            p.rcNormalPosition.top,
            p.rcNormalPosition.right,
            p.rcNormalPosition.bottom,
            static_cast<std::int32_t>(p.flags),
            static_cast<std::int32_t>(p.showCmd),
            p.ptMinPosition.x,
            p.ptMinPosition.y,
            p.ptMaxPosition.x,
            p.ptMaxPosition.y};
}

void SetValues(WINDOWPLACEMENT& p, const Values& v) {
    p.rcNormalPosition = {v[0], v[1], v[2], v[3]};
    p.flags = static_cast<UINT>(v[4]);
    p.showCmd = static_cast<UINT>(v[5]);
    p.ptMinPosition = {v[6], v[7]};
    p.ptMaxPosition = {v[8], v[9]};
}

}  // namespace

void KViewEx::SavePosition() {
    CFrameWnd* const frame = GetParentFrame();
    CWinApp* const profile = AfxGetApp();
    WINDOWPLACEMENT placement;
    if (!frame || !profile || !frame->GetWindowPlacement(&placement)) return;
    const RegistryTransaction together;
    const Values values = ValuesOf(placement);
    for (std::size_t i = 0; i < values.size(); ++i) profile->WriteProfileInt(keyName, kNames[i], values[i]);
}

void KViewEx::SetPosition() {
    CFrameWnd* const frame = GetSafeHwnd() ? GetParentFrame() : nullptr;
    CWinApp* const profile = AfxGetApp();
    WINDOWPLACEMENT placement;
    if (!frame || !profile || !frame->GetWindowPlacement(&placement)) return;
    const Values current = ValuesOf(placement);
    Values values = current;
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<std::int32_t>(profile->GetProfileInt(keyName, kNames[i], values[i]));
    // Nothing stored leaves the frame where it is, also one that the user is just moving.
    if (values == current) return;
    SetValues(placement, values);
    frame->SetWindowPlacement(&placement);
}
