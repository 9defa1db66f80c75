#include <zt/modules/QC.h>

#include <platform/object/NewObject.h>
#include <zt/dictionary/DictionaryZT.h>

#include <algorithm>

namespace ZT {

namespace {

struct TypeRow {
    EObjectType type;
    QC::EObjecType inQueries;
};

constexpr TypeRow kTypes[] = {
    {eObjTypeBRepSection, QC::eQcBRepSection},
    {eObjTypeMesh, QC::eQcMesh},
    {eObjTypeSectionOCC, QC::eQcSectionOCC},
    {eObjTypeBRepTextSection, QC::eQcBRepTextSection},
    {eObjTypeArcSplineCurve, QC::eQcArcSplineCurve},
    {eObjTypeLabel3D, QC::eQcLabel3D},
    {eObjTypeMeasurement, QC::eQcMeasurement},
    {eObjTypeLabelSection, QC::eQcLabelSection},
};

}  // namespace

QC::QC() = default;

QC::QC(const _GUID& iid) : m_pIID(&iid) {}

QC::QC(_GUID* module) : m_pModuleId(module) {}

QC::QC(_GUID* module, const _GUID& iid) : m_pModuleId(module), m_pIID(&iid) {}

QC::~QC() {
    if (m_pNamedParams != nullptr) m_pNamedParams->Release();
}

void QC::Construct() {
    QC fresh;
    std::ranges::copy(m_tail, fresh.m_tail);
    *this = fresh;
}

void QC::CopyNoID(const QC& other) {
    if (this == &other) return;
    m_nKey = other.m_nKey;
    m_nQueryKind = other.m_nQueryKind;
    m_pFound = other.m_pFound;
    m_pResult = other.m_pResult;
    m_objType = other.m_objType;
    std::ranges::copy(other.m_blockA, m_blockA);
    std::ranges::copy(other.m_flagsA, m_flagsA);
    m_nSelect = other.m_nSelect;
    std::ranges::copy(other.m_blockB, m_blockB);
}

ETri QC::GetBool(const char* name) const {
    return m_pNamedParams == nullptr ? eUnknown : m_pNamedParams->GetBool3(name);
}

void QC::SetBool(const char* name, bool value) {
    GetNamedParams(true)->SetBool2(name, value);
}

DictionaryZT* QC::GetNamedParams(bool bCreate) {
    if (bCreate && m_pNamedParams == nullptr) m_pNamedParams = AfxNewObject<DictionaryZT>();
    return m_pNamedParams;
}

QC::EObjecType QC::EObjectTypeToQc(EObjectType type) {
    const auto* row = std::ranges::find(kTypes, type, &TypeRow::type);
    return row == std::ranges::end(kTypes) ? eQcNone : row->inQueries;
}

}  // namespace ZT
