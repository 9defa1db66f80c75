/// @file
/// A walk over all pairs of two lists.

#pragma once

#include <platform/collections/CObList.h>
#include <zt/frame/Export.h>

namespace ZT {

/// A pair of positions, one in each of two lists of objects, that steps through all pairs: the
/// second list is walked through once for each element of the first.
///
/// ```cpp
/// BiPosn pair(&edges, &faces);
/// pair.Init();
/// for (bool more = pair.IsValid(); more; more = pair.Next()) {
///     Test(edges.GetAt(pair.m_pos1), faces.GetAt(pair.m_pos2));
/// }
/// ```
///
/// It owns neither list, and its positions hold for as long as those of the lists do.
class ZT_API BiPosn {
public:
    POSITION m_pos1;
    POSITION m_pos2;
    CObList* m_pList1;
    CObList* m_pList2;

    /// No lists and no pair.
    BiPosn() : BiPosn(nullptr, nullptr) {}
    /// No pair yet: `Init` goes to the first.
    BiPosn(CObList* p1, CObList* p2)
        : m_pos1(nullptr), m_pos2(nullptr), m_pList1(p1), m_pList2(p2) {}

    /// Goes to the first pair, if both lists are set; otherwise nothing changes. Without an
    /// element in one of them the pair is not valid.
    void Init();

    /// Whether both positions are those of elements.
    bool IsValid() const { return m_pos1 != nullptr && m_pos2 != nullptr; }

    /// Goes to the next pair. False after the last, when neither position is left, and for a
    /// pair that is not valid, which stays.
    bool Next();
};

}  // namespace ZT
