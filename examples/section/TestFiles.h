/// @file
/// What the tests of this folder share: a temporary folder and meshes in both
/// forms of an STL file.

#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "section/Mesh.h"

namespace section::test {

/// A fixture with a folder of its own, which goes with the test.
class InFolder : public testing::Test {
protected:
    InFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "section-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        m_folder = name;
    }
    ~InFolder() override {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    /// Writes `bytes` to a file of the folder; its path.
    std::filesystem::path Write(const std::string& name, std::string_view bytes) const {
        const std::filesystem::path path = m_folder / name;
        std::ofstream(path, std::ios::binary).write(bytes.data(), std::ssize(bytes));
        return path;
    }

    std::filesystem::path m_folder;
};

inline std::string Content(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A binary STL file with `count` in its header, whatever number of facets it has.
inline std::string BinaryStl(const std::vector<Facet>& facets, std::uint32_t count,
                             std::string header = "made by a test") {
    header.resize(80);
    std::string bytes = header;
    bytes.append(reinterpret_cast<const char*>(&count), sizeof count);
    for (const Facet& facet : facets) {
        std::string record(50, '\0');
        std::memcpy(record.data() + 12, &facet, sizeof facet);
        bytes += record;
    }
    return bytes;
}

inline std::string BinaryStl(const std::vector<Facet>& facets) {
    return BinaryStl(facets, static_cast<std::uint32_t>(facets.size()));
}

/// An ASCII STL file of one solid, a line for each bracket and each vertex.
inline std::string AsciiStl(const std::vector<Facet>& facets) {
    std::ostringstream text;
    text.precision(9);
    text << "solid made by a test\n";
    for (const Facet& facet : facets) {
        text << "  facet normal 0 0 0\n    outer loop\n";
        for (const Point& p : facet) {
            text << "      vertex " << p[0] << ' ' << p[1] << ' ' << p[2] << '\n';
        }
        text << "    endloop\n  endfacet\n";
    }
    text << "endsolid made by a test\n";
    return text.str();
}

/// The facets of `mesh` one by one.
inline std::vector<Facet> FacetsOf(const Mesh& mesh) {
    std::vector<Facet> facets;
    for (std::size_t i = 0; i < mesh.FacetCount(); ++i) {
        facets.push_back(mesh.GetFacet(i));
    }
    return facets;
}

/// A closed tetrahedron with corners at the origin and at 1, 2 and 4 on the
/// axes x, y and z.
inline std::vector<Facet> Tetrahedron() {
    const Point o{0, 0, 0}, x{1, 0, 0}, y{0, 2, 0}, z{0, 0, 4};
    return {{o, y, x}, {o, x, z}, {o, z, y}, {x, y, z}};
}

/// The four walls of an upright square tube with the centre at the origin, from z = 0
/// to 1, as they are seen from outside.
inline std::vector<Facet> Walls(float halfWidth) {
    const float w = halfWidth;
    const float x[] = {-w, w, w, -w}, y[] = {-w, -w, w, w};
    std::vector<Facet> facets;
    for (int i = 0, j = 1; i < 4; ++i, j = (i + 1) % 4) {
        const Point a{x[i], y[i], 0}, b{x[j], y[j], 0}, c{x[j], y[j], 1}, d{x[i], y[i], 1};
        facets.push_back({a, b, c});
        facets.push_back({a, c, d});
    }
    return facets;
}

/// A closed cube of width 1 on the plane z = 0.
inline std::vector<Facet> Cube() {
    std::vector<Facet> facets = Walls(0.5f);
    for (const float z : {0.0f, 1.0f}) {
        const Point a{-0.5f, -0.5f, z}, b{0.5f, -0.5f, z}, c{0.5f, 0.5f, z}, d{-0.5f, 0.5f, z};
        facets.push_back(z > 0 ? Facet{a, b, c} : Facet{a, c, b});
        facets.push_back(z > 0 ? Facet{a, c, d} : Facet{a, d, c});
    }
    return facets;
}

/// The walls of a ring of height 1: a square of width 3 with a square hole of width 1.
inline std::vector<Facet> Ring() {
    std::vector<Facet> facets = Walls(1.5f);
    for (Facet inner : Walls(0.5f)) {
        std::swap(inner[1], inner[2]);
        facets.push_back(inner);
    }
    return facets;
}

}  // namespace section::test
