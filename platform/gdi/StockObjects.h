// The pens, brushes and fonts that every context may select without creating them. They live until the
// process ends.
#pragma once

class CBrush;
class CFont;
class CGdiObject;
class CPen;

// Null for a number that is not a stock object.
CGdiObject* StockObject(int index);
// What a new context draws with.
CPen& StockBlackPen();
CBrush& StockWhiteBrush();
CFont& StockSystemFont();
