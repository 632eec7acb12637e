#include "platform/gdi/StockObjects.h"

#include "platform/gdi/CBrush.h"
#include "platform/gdi/CFont.h"
#include "platform/gdi/CPen.h"

CPen& StockBlackPen() {
    static CPen& pen = *new CPen(PS_SOLID, 0, RGB(0, 0, 0));
    return pen;
}

CBrush& StockWhiteBrush() {
    static CBrush& brush = *new CBrush(RGB(255, 255, 255));
    return brush;
}

CFont& StockSystemFont() {
    static CFont& font = *new CFont;
    return font;
}

CGdiObject* StockObject(int index) {
    static CPen& whitePen = *new CPen(PS_SOLID, 0, RGB(255, 255, 255));
    static CPen& nullPen = *new CPen(PS_NULL, 0, 0);
    static CBrush& lightGray = *new CBrush(RGB(192, 192, 192));
    static CBrush& gray = *new CBrush(RGB(128, 128, 128));
    static CBrush& darkGray = *new CBrush(RGB(64, 64, 64));
    static CBrush& black = *new CBrush(RGB(0, 0, 0));
    static CBrush& nothing = *new CBrush;
    switch (index) {
        case WHITE_BRUSH:
            return &StockWhiteBrush();
        case LTGRAY_BRUSH:
            return &lightGray;
        case GRAY_BRUSH:
            return &gray;
        case DKGRAY_BRUSH:
            return &darkGray;
        case BLACK_BRUSH:
            return &black;
        case NULL_BRUSH:
            return &nothing;
        case WHITE_PEN:
            return &whitePen;
        case BLACK_PEN:
            return &StockBlackPen();
        case NULL_PEN:
            return &nullPen;
        case SYSTEM_FONT:
            return &StockSystemFont();
        default:
            return nullptr;
    }
}
