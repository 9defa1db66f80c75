/// @file
/// Which way facets face, as directions about the axis z.

#pragma once

#include <vector>

#include <zt/ranges/RangeS1.h>

#include "section/Mesh.h"

namespace section {

/// Which way a facet faces, by the normal that the order of its corners gives.
///
/// - A **side** facet faces a direction: the angle of its normal about z, in
///   radians from x towards y, in the canonical interval of `ZT::S1`.
/// - The normal of a **horizontal** facet lies along z, up to a millionth of its
///   length. It faces no direction.
/// - A **degenerate** facet has its corners on a line, or so near to one that
///   single precision doesn't tell a normal. It faces no direction either.
struct Facing {
    enum EKind {
        eSide,
        eHorizontal,
        eDegenerate,
    };

    EKind m_eKind = eDegenerate;
    /// Of a side facet; otherwise 0.
    double m_direction = 0.0;
};

Facing FacingOf(const Facet& facet);

/// How many facets of a mesh are of each kind.
struct FacingCounts {
    ZT::uint64 m_nSide = 0;
    ZT::uint64 m_nHorizontal = 0;
    ZT::uint64 m_nDegenerate = 0;

    FacingCounts() = default;
    explicit FacingCounts(const Mesh& mesh);

    bool operator==(const FacingCounts&) const = default;

    /// An element "Facings" with the counts.
    void PersistXML(ZT::PCExBase& pc);
};

/// The smallest arc that holds all of `directions`, which are canonical angles and
/// get sorted: what the widest gap between neighbours leaves of the circle. Of gaps
/// that are the same within the tolerance it is the first one on the way from -pi.
///
/// Empty without a direction, and a point for one. It is never the whole circle:
/// where facets face all ways, the widest gap between two of them is left out.
ZT::RangeS1 SmallestArc(std::vector<double>& directions);

}  // namespace section
