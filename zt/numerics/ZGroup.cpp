#include <zt/numerics/ZGroup.h>

#include <zt/numerics/CyclSegment.h>

namespace ZT {

bool ZGroup::InRange(int a, int b) const {
    CyclSegment run(m_rank);
    run.Set(a, b);
    return run.Contains(*this);
}

bool ZGroup::IsNext(int rank, int a, int b) {
    const ZGroup first(rank, a);
    return first.IsNextTo(ZGroup(rank, b));
}

}  // namespace ZT
