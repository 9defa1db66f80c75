#include <zt/containers/BiPosn.h>

namespace ZT {

void BiPosn::Init() {
    if (m_pList1 == nullptr || m_pList2 == nullptr) return;
    m_pos1 = m_pList1->GetHeadPosition();
    m_pos2 = m_pList2->GetHeadPosition();
}

bool BiPosn::Next() {
    if (!IsValid()) return false;
    m_pList2->GetNext(m_pos2);
    if (m_pos2 != nullptr) return true;
    m_pList1->GetNext(m_pos1);
    if (m_pos1 == nullptr) return false;
    m_pos2 = m_pList2->GetHeadPosition();
    return true;
}

}  // namespace ZT
