// Any bytes either give a mesh of finite coordinates, which as a binary file
// gives the same mesh again, or are refused with one printable line.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <string_view>

#include "section/Failure.h"
#include "section/StlReader.h"

namespace {

section::Mesh Read(const std::string& bytes) {
    std::istringstream in(bytes);
    return section::ReadStl(in, bytes.size());
}

std::string BinaryForm(const section::Mesh& mesh) {
    const auto count = static_cast<std::uint32_t>(mesh.FacetCount());
    std::string bytes(80, '\0');
    bytes.append(reinterpret_cast<const char*>(&count), sizeof count);
    for (std::size_t i = 0; i < mesh.FacetCount(); ++i) {
        const section::Facet facet = mesh.GetFacet(i);
        bytes.append(12, '\0');
        bytes.append(reinterpret_cast<const char*>(&facet), sizeof facet);
        bytes.append(2, '\0');
    }
    return bytes;
}

bool IsFinite(const section::Point& point) {
    return std::all_of(point.begin(), point.end(), [](float x) { return std::isfinite(x); });
}

bool IsFinite(const section::Mesh& mesh) {
    for (std::size_t i = 0; i < mesh.FacetCount(); ++i) {
        for (const section::Point& corner : mesh.GetFacet(i)) {
            if (!IsFinite(corner)) return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    try {
        const section::Mesh mesh = Read(bytes);
        if (mesh.FacetCount() == 0 || !IsFinite(mesh)) std::abort();
        if (!(Read(BinaryForm(mesh)) == mesh)) std::abort();
    } catch (const section::Failure& failure) {
        if (section::Printable(failure.what()) != failure.what()) std::abort();
    }
    return 0;
}
