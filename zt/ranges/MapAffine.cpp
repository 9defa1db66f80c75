#include <zt/ranges/MapAffine.h>

namespace ZT {

void MapAffine::Map(const RangeR1& in, RangeR1& out) const {
    const double lo = Map(in.m_min);
    const double hi = Map(in.m_max);
    out.m_min = lo;
    out.m_max = hi;
}

}  // namespace ZT
