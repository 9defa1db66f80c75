#include "section/Facing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace section {
namespace {

/// A vector in double precision, in which the differences of corners are exact
/// enough for a normal.
using Vector = std::array<double, eAxisCount>;

Vector Edge(const Point& from, const Point& to) {
    Vector edge;
    for (const Axis axis : {eAxisX, eAxisY, eAxisZ}) {
        edge[axis] = static_cast<double>(to[axis]) - static_cast<double>(from[axis]);
    }
    return edge;
}

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double SquaredLength(const Vector& v) {
    return v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
}

}  // namespace

Facing FacingOf(const Facet& facet) {
    constexpr double kLeastHeight = 1e-7;  // of a facet over its longest edge
    constexpr double kLeastSlope = 1e-6;
    const Vector a = Edge(facet[0], facet[1]), b = Edge(facet[0], facet[2]);
    const Vector normal = Cross(a, b);
    const double length = std::hypot(normal[0], normal[1], normal[2]);
    const double longest =
        std::max({SquaredLength(a), SquaredLength(b), SquaredLength(Edge(facet[1], facet[2]))});
    if (!(length > kLeastHeight * longest)) {
        return {Facing::eDegenerate, 0.0};
    }
    if (!(std::hypot(normal[0], normal[1]) > kLeastSlope * length)) {
        return {Facing::eHorizontal, 0.0};
    }
    return {Facing::eSide, ZT::S1::Factorize(std::atan2(normal[1], normal[0]))};
}

FacingCounts::FacingCounts(const Mesh& mesh) {
    for (std::size_t i = 0; i < mesh.FacetCount(); ++i) {
        switch (FacingOf(mesh.GetFacet(i)).m_eKind) {
            case Facing::eSide:
                ++m_nSide;
                break;
            case Facing::eHorizontal:
                ++m_nHorizontal;
                break;
            case Facing::eDegenerate:
                ++m_nDegenerate;
                break;
        }
    }
}

ZT::RangeS1 SmallestArc(std::vector<double>& directions) {
    if (directions.empty()) {
        ZT::RangeS1 none;
        none.SetEmpty();
        return none;
    }
    std::sort(directions.begin(), directions.end());
    double widest = 0.0;
    double end = directions.back();
    double start = directions.front();
    // The gap over the seam comes last: it ends where the next turn begins.
    for (std::size_t i = 1; i <= directions.size(); ++i) {
        const double before = directions[i - 1];
        const bool atSeam = i == directions.size();
        const double after = atSeam ? directions.front() : directions[i];
        const double gap = after - before + (atSeam ? ZT::z2Pi : 0.0);
        if (gap > widest + ZT::zToler) {
            widest = gap;
            end = before;
            start = after;
        }
    }
    return {start, end};
}

}  // namespace section
