#include <zt/ranges/SetS1.h>

#include <memory>

namespace ZT {

template class HXPtrListBase2<RangeS1>;

namespace {

bool IsSequence(double from, double first, double second) {
    return S1(from).IsCCWSequence(S1(first), S1(second));
}

// The member before which `p` belongs; null when no gap takes it.
POSITION GapFor(const RangeS1& p, const SetS1& set) {
    const RangeS1* prev = set.GetTail();
    for (POSITION pos = set.GetHeadPosition(); pos != nullptr;) {
        const POSITION here = pos;
        const RangeS1* const cur = set.GetNext(pos);
        if (IsSequence(prev->m_max, p.m_min, cur->m_min)) return here;
        prev = cur;
    }
    return nullptr;
}

// Whether an arc holds what lies between its limits as numbers.
bool IsPlain(const RangeS1& arc) {
    return arc.m_eState == RangeS1::eStatePartial && !arc.m_bExternal && arc.m_min <= arc.m_max;
}

// Whether two plain arcs are so far apart that one takes nothing away from the other.
bool AreApart(const RangeS1& a, const RangeS1& b) {
    return b.m_min > a.m_max + zSeamBand || a.m_min > b.m_max + zSeamBand;
}

}  // namespace

void SetS1::InsertSorted(RangeS1* p) {
    const POSITION gap = GetCount() < 2 ? nullptr : GapFor(*p, *this);
    if (gap != nullptr) {
        InsertBefore(gap, p);
    } else {
        AddTail(p);
    }
}

void SetS1::SetFull() {
    Clear();
    auto arc = std::make_unique<RangeS1>();
    arc->SetFull();
    AddTail(arc.get());
    arc.release();
}

void SetS1::Subtract(const RangeS1& r) {
    const RangeS1 taken(r);  // r may be a member and go.
    const bool plain = IsPlain(taken);
    for (POSITION pos = GetHeadPosition(); pos != nullptr;) {
        const POSITION here = pos;
        RangeS1* const member = GetNext(pos);
        // An arc mostly reaches a few members of many.
        if (plain && IsPlain(*member) && AreApart(*member, taken)) continue;
        RangeS1 rest(taken);
        const unsigned char pieces = member->Subtract(rest, nullptr);
        if (pieces == 0) {
            RemoveAt(here);
            delete member;
        } else if (pieces == 2) {
            auto second = std::make_unique<RangeS1>(rest);
            InsertAfter(here, second.get());
            second.release();
        }
    }
}

void SetS1::Subtract(const SetS1& other) {
    if (other.IsFull()) {
        Clear();
        return;
    }
    for (POSITION pos = other.GetHeadPosition(); pos != nullptr;) Subtract(*other.GetNext(pos));
}

void SetS1::RemoveSingletons(double tol) {
    for (POSITION pos = GetHeadPosition(); pos != nullptr;) {
        const POSITION here = pos;
        if (GetNext(pos)->GetDiff() < tol) RemoveAt(here);
    }
}

bool SetS1::IsValidEx(double) const {
    for (const RangeS1* arc : *this) {
        if (arc->IsEmpty()) return false;
    }
    const RangeS1* prev = GetTail();
    for (const RangeS1* cur : *this) {
        if (!cur->IsEmptyIntersection(*prev)) return false;
        prev = cur;
    }
    return true;
}

bool SetS1::IsSorted() const {
    if (!IsValidEx(zToler)) return false;
    if (GetCount() < 2) return true;
    const RangeS1* prev = GetTail();
    for (POSITION pos = GetHeadPosition(); pos != nullptr;) {
        const RangeS1* const cur = GetNext(pos);
        double second = prev->m_max;
        double third = cur->m_min;
        if (prev->IsSingleton()) {
            second = cur->m_min;
            // Passes over the next member, deliberately; raises when there is none.
            third = cur->IsSingleton() ? GetNext(pos)->m_min : cur->m_max;
        }
        if (!IsSequence(prev->m_min, second, third)) return false;
        prev = cur;
    }
    return true;
}

unsigned char SetS1::GetNearestRanges(POSITION* const) const {
    return 0;
}

}  // namespace ZT
