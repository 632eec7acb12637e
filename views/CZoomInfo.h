// One entry of a graph view's zoom stack. Origins and follow values are in stored units.
#pragma once

class CZoomInfo {
  public:
    CZoomInfo() = default;
    CZoomInfo(const CZoomInfo&) = default;
    CZoomInfo& operator=(const CZoomInfo&) = default;
    CZoomInfo(float factorX, float factorY, int orgX, int orgY, int newestX, int newestY)
        : zoomX(factorX), zoomY(factorY), originX(orgX), originY(orgY), followX(newestX), followY(newestY) {}
    CZoomInfo(int orgX, int orgY, int newestX, int newestY)
        : CZoomInfo(1.0f, 1.0f, orgX, orgY, newestX, newestY) {}
    virtual ~CZoomInfo() = default;

    float zoomX = 1.0f;  // cumulative: 1 shows the whole axis range
    float zoomY = 1.0f;
    int originX = 0;  // lower corner of the visible area
    int originY = 0;
    int followX = 0;  // newest sample of the primary series when the entry was last aligned to it
    int followY = 0;
};
