// Any bytes either give a mesh of finite coordinates, which as a binary file
// gives the same mesh again, or are refused with one printable line.

#include <cmath>
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
    const auto count = static_cast<std::uint32_t>(mesh.m_facets.size());
    std::string bytes(80, '\0');
    bytes.append(reinterpret_cast<const char*>(&count), sizeof count);
    for (const section::Facet& facet : mesh.m_facets) {
        bytes.append(12, '\0');
        bytes.append(reinterpret_cast<const char*>(&facet), sizeof facet);
        bytes.append(2, '\0');
    }
    return bytes;
}

bool IsFinite(const section::Mesh& mesh) {
    for (const section::Facet& facet : mesh.m_facets) {
        for (const section::Point& corner : facet) {
            for (const float coordinate : corner) {
                if (!std::isfinite(coordinate)) return false;
            }
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    try {
        const section::Mesh mesh = Read(bytes);
        if (mesh.m_facets.empty() || !IsFinite(mesh)) std::abort();
        if (Read(BinaryForm(mesh)).m_facets != mesh.m_facets) std::abort();
    } catch (const section::Failure& failure) {
        if (section::Printable(failure.what()) != failure.what()) std::abort();
    }
    return 0;
}
