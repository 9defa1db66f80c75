/// @file
/// What the program finds out about a mesh.

#pragma once

#include <string>

#include <platform/text/CString.h>

#include "section/Bounds.h"
#include "section/Facing.h"
#include "section/Input.h"
#include "section/Layers.h"
#include "section/Mesh.h"

namespace section {

/// A mesh cut into layers: what is stored and printed.
struct Model {
    CString m_source;
    Mesh m_mesh;
    Input m_input;
    Bounds m_bounds;
    FacingCounts m_facings;
    Layers m_layers;

    /// An empty model, into which a stored one can be loaded.
    Model() = default;

    /// Measures and cuts `mesh`, which has at least one facet. `source` is the
    /// path it was read from; its bytes aren't taken. Throws `Failure` if `cut` doesn't fit the
    /// height.
    Model(const std::string& source, Mesh mesh, const Cut& cut);

    /// An element "Model" with the members.
    void PersistXML(ZT::PCExBase& pc);
};

/// Where two models differ: a name such as "bounds along z", empty if nowhere.
/// Limits and lengths are the same if they agree within six significant digits, since that
/// is what a document keeps of a number. The mesh and the input are compared byte by byte.
std::string FirstDifference(const Model& a, const Model& b);

}  // namespace section
