#include <utility>

#include "platform/gdi/Paper.h"

void PaperLine::Add(CPoint point) {
    if (inRun_ && point.x != first_.x) FlushRun();
    if (!inRun_) {
        first_ = low_ = high_ = last_ = point;
        inRun_ = true;
        return;
    }
    if (point.y < low_.y) {
        low_ = point;
        lowFirst_ = false;
    }
    if (point.y > high_.y) {
        high_ = point;
        lowFirst_ = true;
    }
    last_ = point;
}

void PaperLine::FlushRun() {
    const auto add = [this](CPoint point) {
        if (points_.empty() || !(points_.back() == point)) points_.push_back(point);
    };
    add(first_);
    add(lowFirst_ ? low_ : high_);
    add(lowFirst_ ? high_ : low_);
    add(last_);
    inRun_ = false;
}

std::vector<CPoint> PaperLine::Take() {
    if (inRun_) FlushRun();
    return std::exchange(points_, {});
}
