#include <sibling/BufferBase.h>

#include <platform/object/Allocation.h>
#include <algorithm>

namespace PW {

void BufferBase::SetCount(std::uint32_t n) {
    if (n == m_nCount) return;
    const std::uint32_t total = m_nRowSize * n;
    unsigned char* block = nullptr;
    if (total != 0) {
        block = AfxNewArray<unsigned char>(total);
        if (m_pData) std::copy_n(m_pData, std::min(total, m_nRowSize * m_nCount), block);
    }
    delete[] m_pData;
    m_pData = block;
    m_nCount = total != 0 ? n : 0;
    m_nAllocated = 0;
}

void BufferBase::DestroyNoCount() {
    delete[] m_pData;
    m_pData = nullptr;
    m_nAllocated = 0;
}

}  // namespace PW
