#include <platform/object/NewObject.h>
#include <zt/interfaces/MapOI.h>

namespace ZT {

namespace {

// What AddRef and Release answer without a map: a result value in the place of a count.
constexpr ULONG kNoMapCount = static_cast<ULONG>(E_UNEXPECTED);

// Writes to an output that may be left out.
template <class T>
void Give(T* out, T value) {
    if (out != nullptr) *out = value;
}

std::int16_t Truth(bool b) {
    return b ? std::int16_t{-1} : std::int16_t{0};
}

}  // namespace

MapOI::MapOI() : MapOI(false) {}

MapOI::MapOI(bool bOwner)
    : m_pMap(bOwner ? AfxNewObject<CMapPtrToPtr>(10) : nullptr), m_bOwner(bOwner) {}

// The map now has two owners, deliberately.
MapOI::MapOI(const MapOI& other) = default;

MapOI::~MapOI() {
    if (m_bOwner) delete m_pMap;
}

HRESULT MapOI::QueryInterface(const GUID& iid, void** ppv) {
    return QueryParts(*this, iid, ppv, m_xRefMap_ZT);
}

HRESULT MapOI::XRefMap_ZT::QueryInterface(REFIID iid, void** ppv) {
    if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (Map() == nullptr) return E_UNEXPECTED;
    return Owner().QueryInterface(iid, ppv);
}

ULONG MapOI::XRefMap_ZT::AddRef() {
    return Map() == nullptr ? kNoMapCount : Owner().AddRef();
}

ULONG MapOI::XRefMap_ZT::Release() {
    return Map() == nullptr ? kNoMapCount : Owner().Release();
}

HRESULT MapOI::XRefMap_ZT::GetCount(std::int32_t* count) {
    if (Map() == nullptr) return E_UNEXPECTED;
    if (count == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *count = static_cast<std::int32_t>(Map()->GetCount());
    return S_OK;
}

HRESULT MapOI::XRefMap_ZT::SetAt(void* key, void* value) {
    if (Map() == nullptr) return E_UNEXPECTED;
    Map()->SetAt(key, value);
    return S_OK;
}

HRESULT MapOI::XRefMap_ZT::Lookup(void* key, void** value, std::int16_t* found) {
    if (Map() == nullptr) return E_UNEXPECTED;
    const CMapPtrToPtr::CPair* const pair = Map()->PLookup(key);
    if (pair != nullptr) Give(value, pair->value);
    Give(found, Truth(pair != nullptr));
    return S_OK;
}

HRESULT MapOI::XRefMap_ZT::RemoveKey(void* key, std::int16_t* removed) {
    if (Map() == nullptr) return E_UNEXPECTED;
    Give(removed, Truth(Map()->RemoveKey(key)));
    return S_OK;
}

HRESULT MapOI::XRefMap_ZT::RemoveAll() {
    if (Map() == nullptr) return E_UNEXPECTED;
    Map()->RemoveAll();
    return S_OK;
}

HRESULT MapOI::XRefMap_ZT::GetStartPosition(POSITION* position) {
    if (Map() == nullptr) return E_UNEXPECTED;
    Give(position, Map()->GetStartPosition());
    return S_OK;
}

HRESULT MapOI::XRefMap_ZT::GetNextAssoc(POSITION* position, void** key, void** value) {
    if (Map() == nullptr) return E_UNEXPECTED;
    if (position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    void* itsKey = nullptr;
    void* itsValue = nullptr;
    Map()->GetNextAssoc(*position, itsKey, itsValue);
    Give(key, itsKey);
    Give(value, itsValue);
    return S_OK;
}

}  // namespace ZT
