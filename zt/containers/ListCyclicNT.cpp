#include <zt/containers/ListCyclicNT.h>

namespace ZT {

ListCyclicNT::ListCyclicNT() : CPtrList(10) {}

bool ListCyclicNT::InRange(POSITION pos, const RangePos& range) const {
    if (!range.IsValidEx()) return false;
    if (pos == range.m_posFirst || pos == range.m_posLast) return true;
    if (pos == nullptr) return false;
    POSITION ahead = pos;
    do {
        GetNextCyclic(ahead);
        if (ahead == range.m_posLast) return true;
    } while (ahead != range.m_posFirst && ahead != pos);
    return false;
}

int ListCyclicNT::Remove(POSITION from, POSITION to) {
    if (from == nullptr) return 0;
    if (to == nullptr) to = GetTailPosition();
    int count = 0;
    for (POSITION pos = from; pos != to && !IsEmpty(); ++count) {
        const POSITION here = pos;
        GetNextCyclic(pos);
        RemoveAt(here);
    }
    // The last one is deliberately not counted.
    if (!IsEmpty()) RemoveAt(to);
    return count;
}

}  // namespace ZT
