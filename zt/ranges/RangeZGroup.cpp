#include <zt/ranges/RangeZGroup.h>

#include <cstdlib>

namespace ZT {

namespace {

RangeS1::EState ComplementOf(RangeS1::EState state) {
    switch (state) {
        case RangeS1::eStateFull:
            return RangeS1::eStateEmpty;
        case RangeS1::eStateEmpty:
            return RangeS1::eStateFull;
        default:
            return RangeS1::eStatePartial;
    }
}

}  // namespace

void RangeZGroup::GetComplimentary(RangeZGroup& out) const {
    RangeZGroup complement(m_rank, WrappingSum(m_last, 1), WrappingDifference(m_first, 1));
    complement.m_eState = ComplementOf(m_eState);
    out.Copy(complement);
}

void RangeZGroup::MoveEnd(unsigned char i, int d) {
    if (d == 0 || m_eState != RangeS1::eStatePartial) return;
    const std::int64_t count = std::int64_t{GetSpan()} + 1;
    const std::int64_t distance = std::abs(std::int64_t{d});

    std::int32_t& limit = i != 0 ? m_last : m_first;
    limit = ZGroup::Factorize(m_rank, WrappingSum(limit, d));

    const bool extends = (i != 0) == (d > 0);
    if (extends) {
        if (distance >= m_rank - count) SetFull();
    } else if (distance >= count) {
        SetEmpty();
    }
}

}  // namespace ZT
