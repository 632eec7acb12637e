#include <utility>

#include "platform/gdi/Paper.h"

void PaperLine::Add(CPoint point) {
    if (m_inRun && point.x != m_first.x) FlushRun();
    if (!m_inRun) {
        m_first = m_low = m_high = m_last = point;
        m_inRun = true;
        return;
    }
    if (point.y < m_low.y) {
        m_low = point;
        m_lowFirst = false;
    }
    if (point.y > m_high.y) {
        m_high = point;
        m_lowFirst = true;
    }
    m_last = point;
}

void PaperLine::FlushRun() {
    const auto add = [this](CPoint point) {
        if (m_points.empty() || !(m_points.back() == point)) m_points.push_back(point);
    };
    add(m_first);
    add(m_lowFirst ? m_low : m_high);
    add(m_lowFirst ? m_high : m_low);
    add(m_last);
    m_inRun = false;
}

std::vector<CPoint> PaperLine::Take() {
    if (m_inRun) FlushRun();
    return std::exchange(m_points, {});
}
