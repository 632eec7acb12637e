// The outline that the user draws around points, in stored units: a polygon, vertex by vertex, or a rectangle
// dragged from its first vertex. As long as there is one vertex, or a rectangle, the Shift key decides which
// of them it is.
//
// Operations that need memory and find none return false; the outline is then empty.
#pragma once

#include <iosfwd>
#include <vector>

#include "platform/core/Geometry.h"

class RegionOutline {
  public:
    bool IsEmpty() const { return vertices_.empty(); }
    bool IsRectangle() const { return isRectangle_; }
    int VertexCount() const { return static_cast<int>(vertices_.size()); }
    const CPoint* Vertices() const { return vertices_.data(); }

    void Clear();
    void FollowShift(bool held);
    bool Add(CPoint vertex);
    // The corner opposite to the first vertex of a rectangle.
    void DragTo(CPoint corner);
    // Ends the drawing at `point`: a rectangle's corner, or the last vertex of a polygon where the click
    // before has not added it.
    bool Close(CPoint point, bool shiftHeld);
    void Move(CPoint distance);

    // The number of vertices in 4 bytes, then x and y of each, 4 bytes each.
    void Save(std::ostream& stream) const;
    // A stream at its end, or one that breaks off, gives an empty outline.
    bool Restore(std::istream& stream);

  private:
    std::vector<CPoint> vertices_;
    bool isRectangle_ = false;
};
