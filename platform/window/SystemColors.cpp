#include "platform/window/SystemColors.h"

#include <QGuiApplication>
#include <QPalette>

#include "platform/gdi/GdiTypes.h"

namespace {

struct Entry {
    int index;
    QPalette::ColorRole role;
    QPalette::ColorGroup group = QPalette::Active;
};
constexpr Entry kEntries[] = {
    {COLOR_WINDOW, QPalette::Base},
    {COLOR_WINDOWTEXT, QPalette::Text},
    {COLOR_HIGHLIGHT, QPalette::Highlight},
    {COLOR_HIGHLIGHTTEXT, QPalette::HighlightedText},
    {COLOR_GRAYTEXT, QPalette::Text, QPalette::Disabled},
    {COLOR_HOTLIGHT, QPalette::Link},
};

}  // namespace

COLORREF GetSysColor(int index) {
    if (!qGuiApp) return index == COLOR_WINDOW ? RGB(255, 255, 255) : RGB(0, 0, 0);
    for (const Entry& entry : kEntries) {
        if (entry.index != index) continue;
        const QColor color = QGuiApplication::palette().color(entry.group, entry.role);
        return RGB(color.red(), color.green(), color.blue());
    }
    return RGB(0, 0, 0);
}

bool IsDarkPalette() {
    const auto lightness = [](COLORREF color) {
        return 2 * GetRValue(color) + 5 * GetGValue(color) + GetBValue(color);
    };
    return lightness(GetSysColor(COLOR_WINDOWTEXT)) > lightness(GetSysColor(COLOR_WINDOW));
}
