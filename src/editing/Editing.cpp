#include <Tavrin/Editing.h>

#include "editing/FigureKind.h"
#include "editing/RegistryAccess.h"

#include <cmath>
#include <cstring>
#include <vector>

namespace Tavrin {

namespace {

bool insidePicture(const tagTAVRIN_POINT& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y) && p.x >= 0.0f && p.x <= 1.0f && p.y >= 0.0f && p.y <= 1.0f;
}

bool sameVertices(const std::vector<tagTAVRIN_POINT>& a, const std::vector<tagTAVRIN_POINT>& b)
{
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0);
}

// Sets the new vertex list and points the selection at the vertex it named before.
bool replaceVertices(VcaObject* object, const std::vector<tagTAVRIN_POINT>& points, unsigned int selected)
{
    if (!editing::setPointsOf(object, points)) {
        return false;
    }
    object->SetSelPointIndex(selected);
    return true;
}

}  // namespace

VertexLimits GetVertexLimits(VcaObject* object)
{
    const editing::KindLimits limits = editing::limitsOf(object);
    return VertexLimits{limits.minCount, limits.maxCount, limits.closed};
}

bool InsertVertex(VcaObject* object, unsigned int index, const tagTAVRIN_POINT& point)
{
    const VertexLimits limits = GetVertexLimits(object);
    if (limits.minCount == limits.maxCount || !insidePicture(point)) {
        return false;
    }
    std::vector<tagTAVRIN_POINT> points = editing::pointsOf(object);
    if (points.size() >= limits.maxCount || index > points.size()) {
        return false;
    }
    points.insert(points.begin() + index, point);
    unsigned int selected = object->GetSelPointIndex();
    if (selected > index && selected <= points.size() - 1) {
        ++selected;
    }
    return replaceVertices(object, points, selected);
}

bool RemoveVertex(VcaObject* object, unsigned int index)
{
    const VertexLimits limits = GetVertexLimits(object);
    if (limits.minCount == limits.maxCount) {
        return false;
    }
    std::vector<tagTAVRIN_POINT> points = editing::pointsOf(object);
    if (points.size() <= limits.minCount || index >= points.size()) {
        return false;
    }
    points.erase(points.begin() + index);
    unsigned int selected = object->GetSelPointIndex();
    if (selected == index + 1) {
        selected = 0;
    } else if (selected > index + 1 && selected <= points.size() + 1) {
        --selected;
    }
    return replaceVertices(object, points, selected);
}

EdgeHit HitEdge(VcaObject* object, const tagTAVRIN_POINT& cursor, int width, int height, float tolerancePixels)
{
    EdgeHit best{false, 0, tagTAVRIN_POINT{0.0f, 0.0f}, 0.0f};
    if (width <= 0 || height <= 0 || !(tolerancePixels >= 0.0f) || !std::isfinite(tolerancePixels) ||
        !std::isfinite(cursor.x) || !std::isfinite(cursor.y)) {
        return best;
    }
    const std::vector<tagTAVRIN_POINT> points = editing::pointsOf(object);
    const std::size_t n = points.size();
    if (n < 2) {
        return best;
    }
    const std::size_t edges = GetVertexLimits(object).closed && n > 2 ? n : n - 1;
    const double w = width;
    const double h = height;
    const double cx = cursor.x * w;
    const double cy = cursor.y * h;
    double nearest = static_cast<double>(tolerancePixels);
    for (std::size_t e = 0; e < edges; ++e) {
        const tagTAVRIN_POINT& a = points[e];
        const tagTAVRIN_POINT& b = points[(e + 1) % n];
        const double ax = a.x * w;
        const double ay = a.y * h;
        const double dx = b.x * w - ax;
        const double dy = b.y * h - ay;
        const double lengthSquared = dx * dx + dy * dy;
        double t = lengthSquared > 0.0 ? ((cx - ax) * dx + (cy - ay) * dy) / lengthSquared : 0.0;
        t = t < 0.0 ? 0.0 : (t > 1.0 ? 1.0 : t);
        const double fx = ax + t * dx;
        const double fy = ay + t * dy;
        const double distance = std::hypot(cx - fx, cy - fy);
        // The first of equally near edges wins.
        if (distance < nearest || (!best.hit && distance <= nearest)) {
            nearest = distance;
            best = EdgeHit{true, static_cast<unsigned int>(e),
                           tagTAVRIN_POINT{static_cast<float>(fx / w), static_cast<float>(fy / h)},
                           static_cast<float>(distance)};
        }
    }
    return best;
}

bool Nudge(VcaObject* object, float dxPixels, float dyPixels, int width, int height)
{
    if (object == nullptr || width <= 0 || height <= 0 || !std::isfinite(dxPixels) || !std::isfinite(dyPixels)) {
        return false;
    }
    // From the origin, so the figure's drag vector is exactly the offset in normalised units.
    tagTAVRIN_POINT from{0.0f, 0.0f};
    tagTAVRIN_POINT to{dxPixels / static_cast<float>(width), dyPixels / static_cast<float>(height)};
    const std::vector<tagTAVRIN_POINT> before = editing::pointsOf(object);
    object->Move(from, to);
    return !sameVertices(before, editing::pointsOf(object));
}

std::vector<tagTAVRIN_POINT> GetVertices(VcaObject* object)
{
    try {
        return object == nullptr ? std::vector<tagTAVRIN_POINT>() : editing::pointsOf(object);
    } catch (...) {
        return {};
    }
}

std::vector<int> GetOccupiedSlots()
{
    std::vector<int> out;
    std::vector<std::pair<int, VcaObject*>> slots;
    try {
        slots = RegistryAccess::occupiedSlots();
        out.reserve(slots.size());
    } catch (...) {
        // Without memory for the answer, an empty one; the references taken are released below.
    }
    for (const auto& slot : slots) {
        if (out.capacity() > out.size()) {
            out.push_back(slot.first);
        }
        slot.second->ReleaseRef();
    }
    return out;
}

}  // namespace Tavrin
