#include "canvas/path.h"

#include <algorithm>
#include <cmath>

APath APath::rectangle(const AFRect& rect) {
    APath path;
    path.moveTo({rect.left, rect.top});
    path.lineTo({rect.right, rect.top});
    path.lineTo({rect.right, rect.bottom});
    path.lineTo({rect.left, rect.bottom});
    path.close();
    return path;
}

void APath::moveTo(AFPoint to) {
    m_verbs.push_back(EVerb::move);
    m_points.push_back(to);
}

void APath::lineTo(AFPoint to) {
    if (empty()) return moveTo(to);
    m_verbs.push_back(EVerb::line);
    m_points.push_back(to);
}

void APath::curveTo(AFPoint control1, AFPoint control2, AFPoint to) {
    if (empty()) moveTo(control1);
    m_verbs.push_back(EVerb::curve);
    m_points.insert(m_points.end(), {control1, control2, to});
}

void APath::close() {
    if (!empty()) m_verbs.push_back(EVerb::close);
}

void APath::clear() {
    m_verbs.clear();
    m_points.clear();
}

void APath::append(const APath& other, const AAffine& transform) {
    m_verbs.insert(m_verbs.end(), other.m_verbs.begin(), other.m_verbs.end());
    // Grows by more than it needs: long texts append letter by letter.
    const std::size_t before = m_points.size();
    m_points.resize(before + other.m_points.size());
    std::transform(other.m_points.begin(), other.m_points.end(),
                   m_points.begin() + static_cast<std::ptrdiff_t>(before),
                   [&](const AFPoint& point) { return transform.apply(point); });
}

bool APath::isFinite() const {
    return std::all_of(m_points.begin(), m_points.end(),
                       [](const AFPoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); });
}

AFRect APath::bounds() const {
    if (m_points.empty()) return {};
    AFRect box{m_points[0].x, m_points[0].y, m_points[0].x, m_points[0].y};
    for (const AFPoint& point : m_points) {
        box.left = std::min(box.left, point.x);
        box.top = std::min(box.top, point.y);
        box.right = std::max(box.right, point.x);
        box.bottom = std::max(box.bottom, point.y);
    }
    return box;
}

APath APath::scaled(double scale, double dx, double dy) const {
    APath path = *this;
    for (AFPoint& point : path.m_points) point = {point.x * scale + dx, point.y * scale + dy};
    return path;
}
