#include "platform/gdi/CDC.h"

#include <exception>
#include <utility>

#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/CDCState.h"
#include "platform/gdi/StockObjects.h"

CDC::CDC() : m_state(std::make_unique<State>()) {
    SelectObject(&StockBlackPen());
    SelectObject(&StockWhiteBrush());
    SelectObject(&StockSystemFont());
}

CDC::CDC(CBitmapEx& picture) : CDC() { SelectObject(&picture); }

CDC::~CDC() = default;

BOOL CDC::CreateCompatibleDC(const CDC* other) {
    if (m_state->picture || m_state->paper) return FALSE;
    m_state->dotsPerInchWithoutPicture = other ? other->GetDeviceCaps(LOGPIXELSX) : kScreenDotsPerInch;
    return TRUE;
}

int CDC::GetDeviceCaps(int index) const {
    switch (index) {
        case HORZRES:
            return m_state->DeviceSize().cx;
        case VERTRES:
            return m_state->DeviceSize().cy;
        case LOGPIXELSX:
        case LOGPIXELSY:
            return m_state->DotsPerInch();
        default:
            return 0;
    }
}

bool CDC::IsPrinting() const { return m_state->paper != nullptr; }

CPen* CDC::SelectObject(CPen* pen) {
    if (!pen) return nullptr;
    const GdiRecord* record = pen->GetSafeHandle();
    m_state->penRecord = record && record->kind == GdiKind::Pen ? *record : GdiRecord{GdiKind::Pen, PS_NULL};
    return std::exchange(m_state->pen, pen);
}

CBrush* CDC::SelectObject(CBrush* brush) {
    if (!brush) return nullptr;
    const GdiRecord* record = brush->GetSafeHandle();
    m_state->brushRecord.reset();
    if (record && record->kind == GdiKind::Brush) m_state->brushRecord = *record;
    return std::exchange(m_state->brush, brush);
}

CFont* CDC::SelectObject(CFont* font) {
    if (!font) return nullptr;
    const GdiRecord* record = font->GetSafeHandle();
    m_state->fontRecord = record && record->kind == GdiKind::Font ? record->font : LOGFONT{};
    return std::exchange(m_state->font, font);
}

CGdiObject* CDC::SelectObject(CGdiObject* object) {
    if (auto* pen = dynamic_cast<CPen*>(object)) return SelectObject(pen);
    if (auto* brush = dynamic_cast<CBrush*>(object)) return SelectObject(brush);
    if (auto* font = dynamic_cast<CFont*>(object)) return SelectObject(font);
    return nullptr;
}

CBitmapEx* CDC::SelectObject(CBitmapEx* picture) {
    if (m_state->paper) return nullptr;
    m_state->picture = picture ? picture->m_picture : nullptr;
    return std::exchange(m_state->selectedPicture, picture);
}

CGdiObject* CDC::SelectStockObject(int index) { return SelectObject(StockObject(index)); }

int CDC::SetROP2(int rasterOperation) {
    const bool known = rasterOperation == R2_COPYPEN || rasterOperation == R2_XORPEN ||
                       rasterOperation == R2_NOT || rasterOperation == R2_NOTXORPEN;
    return known ? std::exchange(m_state->rasterOperation, rasterOperation) : 0;
}

int CDC::GetROP2() const { return m_state->rasterOperation; }

int CDC::SetBkMode(int mode) {
    return mode == TRANSPARENT || mode == OPAQUE ? std::exchange(m_state->bkMode, mode) : 0;
}

COLORREF CDC::SetBkColor(COLORREF color) { return std::exchange(m_state->bkColor, color); }

COLORREF CDC::GetBkColor() const { return m_state->bkColor; }

int CDC::SetMapMode(int mode) {
    const int previous = m_state->mapping.mode;
    return m_state->mapping.SetMode(mode, m_state->DotsPerInch()) ? previous : 0;
}

int CDC::GetMapMode() const { return m_state->mapping.mode; }

CPoint CDC::SetWindowOrg(int x, int y) {
    Mapping& mapping = m_state->mapping;
    return {std::exchange(mapping.x.windowOrg, x), std::exchange(mapping.y.windowOrg, y)};
}

CPoint CDC::SetViewportOrg(int x, int y) {
    Mapping& mapping = m_state->mapping;
    return {std::exchange(mapping.x.viewportOrg, x), std::exchange(mapping.y.viewportOrg, y)};
}

CSize CDC::SetWindowExt(int cx, int cy) {
    const CSize previous = GetWindowExt();
    m_state->mapping.SetWindowExt({cx, cy});
    return previous;
}

CSize CDC::SetViewportExt(int cx, int cy) {
    const CSize previous = GetViewportExt();
    m_state->mapping.SetViewportExt({cx, cy});
    return previous;
}

CPoint CDC::GetWindowOrg() const { return {m_state->mapping.x.windowOrg, m_state->mapping.y.windowOrg}; }

CPoint CDC::GetViewportOrg() const {
    return {m_state->mapping.x.viewportOrg, m_state->mapping.y.viewportOrg};
}

CSize CDC::GetWindowExt() const { return {m_state->mapping.x.windowExt, m_state->mapping.y.windowExt}; }

CSize CDC::GetViewportExt() const { return {m_state->mapping.x.viewportExt, m_state->mapping.y.viewportExt}; }

void CDC::LPtoDP(CPoint* points, int count) const {
    for (int i = 0; i < count; ++i) points[i] = m_state->mapping.ToDevice(points[i]);
}

void CDC::DPtoLP(CPoint* points, int count) const {
    for (int i = 0; i < count; ++i) points[i] = m_state->mapping.ToLogical(points[i]);
}

void CDC::LPtoDP(RECT* rect) const {
    const Mapping& mapping = m_state->mapping;
    *rect = {mapping.x.ToDevice(rect->left), mapping.y.ToDevice(rect->top), mapping.x.ToDevice(rect->right),
             mapping.y.ToDevice(rect->bottom)};
}

void CDC::DPtoLP(RECT* rect) const {
    const Mapping& mapping = m_state->mapping;
    *rect = {mapping.x.ToLogical(rect->left), mapping.y.ToLogical(rect->top),
             mapping.x.ToLogical(rect->right), mapping.y.ToLogical(rect->bottom)};
}

void CDC::LPtoDP(SIZE* size) const {
    size->cx = m_state->mapping.x.LengthToDevice(size->cx);
    size->cy = m_state->mapping.y.LengthToDevice(size->cy);
}

void CDC::DPtoLP(SIZE* size) const {
    size->cx = m_state->mapping.x.LengthToLogical(size->cx);
    size->cy = m_state->mapping.y.LengthToLogical(size->cy);
}

// Through pixels, so that a fixed size is a whole number of pixels on the device.
void CDC::HIMETRICtoLP(SIZE* size) const {
    constexpr int kHundredthsOfMillimetrePerInch = 2540;
    const auto toPixels = [this](LONG length) {
        return SaturateToInt32(
            MulDivHalfAway(length, m_state->DotsPerInch(), kHundredthsOfMillimetrePerInch));
    };
    size->cx = toPixels(size->cx);
    size->cy = toPixels(size->cy);
    DPtoLP(size);
}

int CDC::SaveDC() {
    try {
        m_state->saved.push_back(*m_state);
    } catch (const std::exception&) {
        return 0;
    }
    return static_cast<int>(m_state->saved.size());
}

BOOL CDC::RestoreDC(int savedState) {
    auto& saved = m_state->saved;
    const auto count = static_cast<int>(saved.size());
    const int wanted = savedState == -1 ? count : savedState;
    if (wanted < 1 || wanted > count) return FALSE;
    static_cast<ContextAttributes&>(*m_state) = saved[static_cast<std::size_t>(wanted) - 1];
    saved.resize(static_cast<std::size_t>(wanted) - 1);
    return TRUE;
}

int CDC::SetGraphicsMode(int mode) {
    return mode == GM_COMPATIBLE || mode == GM_ADVANCED ? std::exchange(m_state->graphicsMode, mode) : 0;
}

int CDC::GetGraphicsMode() const { return m_state->graphicsMode; }

BOOL CDC::SetWorldTransform(const XFORM* transform) {
    if (!transform || m_state->graphicsMode != GM_ADVANCED) return FALSE;
    return transform->eM11 == 1.0f && transform->eM12 == 0.0f && transform->eM21 == 0.0f &&
           transform->eM22 == 1.0f && transform->eDx == 0.0f && transform->eDy == 0.0f;
}
