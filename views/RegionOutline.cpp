#include "views/RegionOutline.h"

#include <algorithm>
#include <cstdint>
#include <istream>
#include <new>
#include <ostream>

namespace {

constexpr std::size_t kCorners = 4;
constexpr std::size_t kVerticesAtOnce = 5;

// The bytes of a vertex are those of its two numbers.
static_assert(sizeof(CPoint) == 2 * sizeof(std::int32_t));

}  // namespace

void RegionOutline::Clear() {
    vertices_.clear();
    isRectangle_ = false;
}

void RegionOutline::FollowShift(bool held) {
    if (vertices_.size() != 1 && !isRectangle_) return;
    isRectangle_ = held;
    vertices_.resize(held ? kCorners : 1, vertices_.front());  // Add() made room for the corners
}

bool RegionOutline::Add(CPoint vertex) try {
    if (vertices_.size() % kVerticesAtOnce == 0) vertices_.reserve(vertices_.size() + kVerticesAtOnce);
    vertices_.push_back(vertex);
    return true;
} catch (const std::bad_alloc&) {
    Clear();
    return false;
}

void RegionOutline::DragTo(CPoint corner) {
    if (!isRectangle_) return;
    vertices_[1] = {corner.x, vertices_[0].y};
    vertices_[2] = corner;
    vertices_[3] = {vertices_[0].x, corner.y};
}

bool RegionOutline::Close(CPoint point, bool shiftHeld) {
    FollowShift(shiftHeld);
    DragTo(point);
    const bool full = !isRectangle_ && !IsEmpty() && vertices_.size() % kVerticesAtOnce == 0;
    return !full || vertices_.back() == point || Add(point);
}

void RegionOutline::Move(CPoint distance) {
    for (CPoint& vertex : vertices_) vertex += distance;
}

void RegionOutline::Save(std::ostream& stream) const {
    const std::int32_t count = VertexCount();
    stream.write(reinterpret_cast<const char*>(&count), sizeof count);
    stream.write(reinterpret_cast<const char*>(vertices_.data()),
                 static_cast<std::streamsize>(vertices_.size() * sizeof(CPoint)));
}

bool RegionOutline::Restore(std::istream& stream) try {
    Clear();
    std::int32_t count = 0;
    if (!stream.read(reinterpret_cast<char*>(&count), sizeof count)) return true;
    // One by one: a count that is none of ours asks for no more memory than there are bytes.
    for (CPoint vertex; count > 0; --count) {
        if (!stream.read(reinterpret_cast<char*>(&vertex), sizeof vertex)) {
            Clear();
            break;
        }
        vertices_.push_back(vertex);
    }
    return true;
} catch (const std::bad_alloc&) {
    Clear();
    return false;
}
