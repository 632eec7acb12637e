// The hint that the views of one document, and their host, send one another through
// CDocument::UpdateAllViews.
#pragma once

#include <cstdint>

#include "platform/core/CObject.h"

class IPointSource;

class CViewUpdate : public CObject {
    DECLARE_DYNCREATE(CViewUpdate)

  public:
    enum UpdateType : std::int32_t {
        SelectionChanged = 0,  // integer: drawing x of the current point
        OriginXChanged = 1,    // integer: visible origin, stored units
        ZoomXChanged = 3,      // double: zoom factor
        ZoomAll = 5,
        ShowSource = 6,    // source: appended to the shown series
        HideSource = 7,    // source: appended to the hidden series
        RemoveSource = 8,  // source: taken out of the view; send it before the series dies
    };

    // `cookie` tells the sender (CXYGraphView::GetCookie).
    CViewUpdate(std::uint32_t cookie, UpdateType type) : type_(type), cookie_(cookie) {
        payload_.integer = 0;
    }
    CViewUpdate(std::uint32_t cookie, UpdateType type, long integer) : type_(type), cookie_(cookie) {
        payload_.integer = integer;
    }
    CViewUpdate(std::uint32_t cookie, UpdateType type, double real) : type_(type), cookie_(cookie) {
        payload_.real = real;
    }
    CViewUpdate(std::uint32_t cookie, UpdateType type, IPointSource* source);
    ~CViewUpdate() override = default;

    UpdateType GetType() const { return type_; }
    std::uint32_t GetCookie() const { return cookie_; }
    long GetInteger() const { return payload_.integer; }
    double GetReal() const { return payload_.real; }
    IPointSource* GetSource() const;

  protected:
    CViewUpdate() : CViewUpdate(0, SelectionChanged) {}

  private:
    UpdateType type_;
    std::uint32_t cookie_;
    union {
        long integer;  // wide enough for a pointer
        double real;
    } payload_;
};
