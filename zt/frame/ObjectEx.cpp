#include <zt/frame/ObjectEx.h>

namespace ZT {

namespace {

// Deliberately a fixed number without a meaning.
constexpr ulong kDefaultData = 1984;

}  // namespace

ObjectEx::ObjectEx() : m_pOwner(nullptr), m_bByVal(true), m_nType(0) {}

ObjectEx::ObjectEx(ObjectEx* p) : ObjectEx() {
    if (p == nullptr) return;
    m_pOwner = p->m_pOwner;
    m_bByVal = false;
    m_nType = p->m_nType;
}

ObjectEx::ObjectEx(const ObjectEx& other)
    : RefObj(other), m_pOwner(other.m_pOwner), m_bByVal(other.m_bByVal), m_nType(other.m_nType) {}

ObjectEx::~ObjectEx() {
    if (m_bByVal) m_nRefCount = 0;
}

void ObjectEx::OnModified(void*) {}

void ObjectEx::Delete() {
    delete this;
}

bool ObjectEx::Execute(QC&) {
    return false;
}

ulong ObjectEx::GetData() {
    return kDefaultData;
}

void ObjectEx::SetData(ulong) {}

}  // namespace ZT
