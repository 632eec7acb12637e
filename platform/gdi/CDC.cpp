#include "platform/gdi/CDC.h"

#include <exception>
#include <utility>

#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/CDCState.h"
#include "platform/gdi/StockObjects.h"

CDC::CDC() : state_(std::make_unique<State>()) {
    SelectObject(&StockBlackPen());
    SelectObject(&StockWhiteBrush());
    SelectObject(&StockSystemFont());
}

CDC::CDC(CBitmapEx& picture) : CDC() { SelectObject(&picture); }

CDC::~CDC() = default;

BOOL CDC::CreateCompatibleDC(const CDC* other) {
    if (state_->picture || state_->paper) return FALSE;
    state_->dotsPerInchWithoutPicture = other ? other->GetDeviceCaps(LOGPIXELSX) : kScreenDotsPerInch;
    return TRUE;
}

int CDC::GetDeviceCaps(int index) const {
    switch (index) {
        case HORZRES:
            return state_->DeviceSize().cx;
        case VERTRES:
            return state_->DeviceSize().cy;
        case LOGPIXELSX:
        case LOGPIXELSY:
            return state_->DotsPerInch();
        default:
            return 0;
    }
}

bool CDC::IsPrinting() const { return state_->paper != nullptr; }

CPen* CDC::SelectObject(CPen* pen) {
    if (!pen) return nullptr;
    const GdiRecord* record = pen->GetSafeHandle();
    state_->penRecord = record && record->kind == GdiKind::Pen ? *record : GdiRecord{GdiKind::Pen, PS_NULL};
    return std::exchange(state_->pen, pen);
}

CBrush* CDC::SelectObject(CBrush* brush) {
    if (!brush) return nullptr;
    const GdiRecord* record = brush->GetSafeHandle();
    state_->brushRecord.reset();
    if (record && record->kind == GdiKind::Brush) state_->brushRecord = *record;
    return std::exchange(state_->brush, brush);
}

CFont* CDC::SelectObject(CFont* font) {
    if (!font) return nullptr;
    const GdiRecord* record = font->GetSafeHandle();
    state_->fontRecord = record && record->kind == GdiKind::Font ? record->font : LOGFONT{};
    return std::exchange(state_->font, font);
}

CGdiObject* CDC::SelectObject(CGdiObject* object) {
    if (auto* pen = dynamic_cast<CPen*>(object)) return SelectObject(pen);
    if (auto* brush = dynamic_cast<CBrush*>(object)) return SelectObject(brush);
    if (auto* font = dynamic_cast<CFont*>(object)) return SelectObject(font);
    return nullptr;
}

CBitmapEx* CDC::SelectObject(CBitmapEx* picture) {
    if (state_->paper) return nullptr;
    state_->picture = picture ? picture->picture_ : nullptr;
    return std::exchange(state_->selectedPicture, picture);
}

CGdiObject* CDC::SelectStockObject(int index) { return SelectObject(StockObject(index)); }

int CDC::SetROP2(int rasterOperation) {
    const bool known = rasterOperation == R2_COPYPEN || rasterOperation == R2_XORPEN ||
                       rasterOperation == R2_NOT || rasterOperation == R2_NOTXORPEN;
    return known ? std::exchange(state_->rasterOperation, rasterOperation) : 0;
}

int CDC::GetROP2() const { return state_->rasterOperation; }

int CDC::SetBkMode(int mode) {
    return mode == TRANSPARENT || mode == OPAQUE ? std::exchange(state_->bkMode, mode) : 0;
}

COLORREF CDC::SetBkColor(COLORREF color) { return std::exchange(state_->bkColor, color); }

COLORREF CDC::GetBkColor() const { return state_->bkColor; }

int CDC::SetMapMode(int mode) {
    const int previous = state_->mapping.mode;
    return state_->mapping.SetMode(mode, state_->DotsPerInch()) ? previous : 0;
}

int CDC::GetMapMode() const { return state_->mapping.mode; }

CPoint CDC::SetWindowOrg(int x, int y) {
    Mapping& mapping = state_->mapping;
    return {std::exchange(mapping.x.windowOrg, x), std::exchange(mapping.y.windowOrg, y)};
}

CPoint CDC::SetViewportOrg(int x, int y) {
    Mapping& mapping = state_->mapping;
    return {std::exchange(mapping.x.viewportOrg, x), std::exchange(mapping.y.viewportOrg, y)};
}

CSize CDC::SetWindowExt(int cx, int cy) {
    const CSize previous = GetWindowExt();
    state_->mapping.SetWindowExt({cx, cy});
    return previous;
}

CSize CDC::SetViewportExt(int cx, int cy) {
    const CSize previous = GetViewportExt();
    state_->mapping.SetViewportExt({cx, cy});
    return previous;
}

CPoint CDC::GetWindowOrg() const { return {state_->mapping.x.windowOrg, state_->mapping.y.windowOrg}; }

CPoint CDC::GetViewportOrg() const { return {state_->mapping.x.viewportOrg, state_->mapping.y.viewportOrg}; }

CSize CDC::GetWindowExt() const { return {state_->mapping.x.windowExt, state_->mapping.y.windowExt}; }

CSize CDC::GetViewportExt() const { return {state_->mapping.x.viewportExt, state_->mapping.y.viewportExt}; }

void CDC::LPtoDP(CPoint* points, int count) const {
    for (int i = 0; i < count; ++i) points[i] = state_->mapping.ToDevice(points[i]);
}

void CDC::DPtoLP(CPoint* points, int count) const {
    for (int i = 0; i < count; ++i) points[i] = state_->mapping.ToLogical(points[i]);
}

void CDC::LPtoDP(RECT* rect) const {
    const Mapping& mapping = state_->mapping;
    *rect = {mapping.x.ToDevice(rect->left), mapping.y.ToDevice(rect->top), mapping.x.ToDevice(rect->right),
             mapping.y.ToDevice(rect->bottom)};
}

void CDC::DPtoLP(RECT* rect) const {
    const Mapping& mapping = state_->mapping;
    *rect = {mapping.x.ToLogical(rect->left), mapping.y.ToLogical(rect->top),
             mapping.x.ToLogical(rect->right), mapping.y.ToLogical(rect->bottom)};
}

void CDC::LPtoDP(SIZE* size) const {
    size->cx = state_->mapping.x.LengthToDevice(size->cx);
    size->cy = state_->mapping.y.LengthToDevice(size->cy);
}

void CDC::DPtoLP(SIZE* size) const {
    size->cx = state_->mapping.x.LengthToLogical(size->cx);
    size->cy = state_->mapping.y.LengthToLogical(size->cy);
}

// Through pixels, so that a fixed size is a whole number of pixels on the device.
void CDC::HIMETRICtoLP(SIZE* size) const {
    constexpr int kHundredthsOfMillimetrePerInch = 2540;
    const auto toPixels = [this](LONG length) {
        return SaturateToInt32(MulDivHalfAway(length, state_->DotsPerInch(), kHundredthsOfMillimetrePerInch));
    };
    size->cx = toPixels(size->cx);
    size->cy = toPixels(size->cy);
    DPtoLP(size);
}

int CDC::SaveDC() {
    try {
        state_->saved.push_back(*state_);
    } catch (const std::exception&) {
        return 0;
    }
    return static_cast<int>(state_->saved.size());
}

BOOL CDC::RestoreDC(int savedState) {
    auto& saved = state_->saved;
    const auto count = static_cast<int>(saved.size());
    const int wanted = savedState == -1 ? count : savedState;
    if (wanted < 1 || wanted > count) return FALSE;
    static_cast<ContextAttributes&>(*state_) = saved[static_cast<std::size_t>(wanted) - 1];
    saved.resize(static_cast<std::size_t>(wanted) - 1);
    return TRUE;
}

int CDC::SetGraphicsMode(int mode) {
    return mode == GM_COMPATIBLE || mode == GM_ADVANCED ? std::exchange(state_->graphicsMode, mode) : 0;
}

int CDC::GetGraphicsMode() const { return state_->graphicsMode; }

BOOL CDC::SetWorldTransform(const XFORM* transform) {
    if (!transform || state_->graphicsMode != GM_ADVANCED) return FALSE;
    return transform->eM11 == 1.0f && transform->eM12 == 0.0f && transform->eM21 == 0.0f &&
           transform->eM22 == 1.0f && transform->eDx == 0.0f && transform->eDy == 0.0f;
}
