#include "settings/KDrawProperty.h"

#include "platform/core/Types.h"
#include "platform/registry/CWinApp.h"

namespace {

constexpr int kGraphColor = 0x825B00;

// The profile keeps 32-bit numbers: a colour with the top bit set must not widen to a negative one.
DWORD DefaultColor() {
    CWinApp* const host = AfxGetApp();
    return host ? host->GetProfileInt("Settings", "Default graph color", kGraphColor) : kGraphColor;
}

}  // namespace

KDrawProperty::KDrawProperty() : color(DefaultColor()) {}

void KDrawProperty::readwrite() {
    readwriteValue("color", color);
    readwriteValue("lineStyle", lineStyle);
    readwriteValue("dotSize", dotSize);
    readwriteValue("legend", legend);
    readwriteValue("drawStyle", drawStyle);
}
