#include <zt/interfaces/DataContext.h>

namespace ZT {

// The record's base deliberately skips RefObj.
IMPLEMENT_DYNAMIC(DataContext, CObject)

DataContext::DataContext() = default;
DataContext::DataContext(const DataContext& other) = default;
DataContext::~DataContext() = default;

HRESULT DataContext::QueryInterface(const GUID& iid, void** ppv) {
    return QueryPartsOrNative(*this, iid, ppv, m_xDataContext);
}

void DataContext::Reset() {
    m_bOptionA = true;
}

void DataContext::Copy(const DataContext* p) {
    if (p == nullptr) return;
    m_bOptionA = p->m_bOptionA;
    m_bOptionB = p->m_bOptionB;
}

HRESULT DataContext::XDataContext::QueryInterface(REFIID iid, void** ppv) {
    if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    return Owner().QueryInterface(iid, ppv);
}

HRESULT DataContext::XDataContext::SetOptionA(std::int16_t flag) {
    Owner().m_bOptionA = flag != 0;
    return S_OK;
}

HRESULT DataContext::XDataContext::SetOptionB(std::int16_t flag) {
    Owner().m_bOptionB = flag != 0;
    return S_OK;
}

}  // namespace ZT
