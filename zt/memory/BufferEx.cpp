#include <zt/memory/BufferEx.h>

#include <platform/object/Allocation.h>
#include <zt/memory/BufferBase.h>

#include <algorithm>

namespace ZT {

BufferEx::~BufferEx() {
    delete[] m_pFields;
}

unsigned char BufferEx::GetRowSize() const {
    std::uint8_t sum = 0;
    for (int i = 0; i < m_nFieldCount; ++i)
        sum = static_cast<std::uint8_t>(sum + m_pFields[i].m_nSize);
    return sum;
}

void BufferEx::SetFieldCount(unsigned char n) {
    if (n <= m_nFieldCount) return;
    FieldDefinition* const fields = AfxNewArray<FieldDefinition>(n);
    std::move(m_pFields, m_pFields + m_nFieldCount, fields);
    delete[] m_pFields;
    m_pFields = fields;
    m_nFieldCount = n;
}

void BufferEx::SetFieldDefinition(unsigned char i, unsigned char size, const CString& type,
                                  const CString& name) {
    if (i >= m_nFieldCount || !m_pFields) return;
    m_pFields[i] = {size, type, name};
}

void BufferEx::SetFieldDefinition(unsigned char i, unsigned char size, const char* type,
                                  const char* name) {
    SetFieldDefinition(i, size, CString(type), CString(name));
}

short BufferEx::FindField(const char* name) const {
    if (!m_pFields) return 0;  // Not -1, deliberately.
    for (short i = 0; i < m_nFieldCount; ++i)
        if (m_pFields[i].m_strName == name) return i;
    return -1;
}

void BufferEx::Allocate(ulong n) {
    if (!m_pBuffer || m_nFieldCount == 0) return;
    const unsigned char size = GetRowSize();
    if (size == 0) return;
    m_pBuffer->Reshape(size, n);
}

}  // namespace ZT
