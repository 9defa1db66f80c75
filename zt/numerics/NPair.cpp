#include <zt/numerics/NPair.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace ZT {

namespace {

std::int64_t Apart(std::int32_t a, std::int32_t b) {
    return std::abs(std::int64_t{a} - std::int64_t{b});
}

}  // namespace

NPair::~NPair() = default;

int NPair::DistM(NPair other) const {
    constexpr std::int64_t kFarthest = std::numeric_limits<int>::max();
    const std::int64_t distance =
        std::max(Apart(m_n[0], other.m_n[0]), Apart(m_n[1], other.m_n[1]));
    return static_cast<int>(std::min(distance, kFarthest));
}

}  // namespace ZT
