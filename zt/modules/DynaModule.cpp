#include <zt/modules/DynaModule.h>

#include <platform/modules/CDynLinkLibrary.h>
#include <platform/object/NewObject.h>
#include <zt/frame/ObjectEx.h>
#include <zt/frame/ObjectType.h>
#include <zt/modules/OpC.h>
#include <zt/modules/QC.h>

#include <algorithm>
#include <iterator>

namespace ZT {

namespace {

// The one interface of the suite whose module is known here.
constexpr _GUID kInterfaceOfRidge = {
    0x261860EF, 0x912E, 0x4F9A, {0x9A, 0x0D, 0x9E, 0x6C, 0x41, 0x77, 0x25, 0xC5}};

// The kind of a question about the canvas that always goes to the module that draws.
constexpr ulong kQueryOfCanvas = 2;

// By number; a null stands for a type that has no name.
constexpr const char* kTypeNames[] = {
    nullptr,
    "Line",
    "MeshSection",
    nullptr,
    nullptr,
    nullptr,
    "Frame",
    "3DPoint",
    "PointArraySection",
    "SegmentStripSection",
    "Plane",
    "Box",
    "Arc",
    "FreeFormCurve",
    "SplinedCurve",
    "PipeSection",
    "NumericArray",
    "Circle",
    "BRepSection",
    "PathCollisionDetector",
    "Move",
    "3DS",
    "SOR",
    "GraphicItem",
    "CutEffect",
    "Measurement",
    nullptr,
    "Ellipse",
    "Ray",
    "Array",
    "SectionOCC",
    "ESPAlgorithm",
    "Label3D",
    "ViewPoint",
    "SceneItemMeasurement",
    "SceneItemAngleAnnotation",
    "Overlay",
    "ListUnkn",
    "LabelSection",
    nullptr,
    nullptr,
    "SmartLabel",
    "Mesh",
    "Sphere",
};

struct Compatible {
    int type;
    int servesAs;
};

// Only a line and a ray serve as each other.
constexpr Compatible kCompatible[] = {
    {eObjTypePipeSection, eObjTypeMeshSection},
    {eObjType3DS, eObjTypeMeshSection},
    {eObjTypeSOR, eObjTypeMeshSection},
    {eObjTypeLineStrip, eObjTypePointSet},
    {eObjTypeRay, eObjTypeLine},
    {eObjTypeLine, eObjTypeRay},
};

}  // namespace

DynaModule::DynaModule() = default;

DynaModule::DynaModule(_GUID* id, EConfiguration c) : m_pID(id), m_config(c) {}

DynaModule::~DynaModule() = default;

void DynaModule::Construct() {
    m_pID = nullptr;
    m_nReserved = 0;
    m_bReserved = 0;
    m_bStarted = false;
    m_config = eConfigDefault;
}

void DynaModule::AddUser(DynaModule* user) {
    m_users.AddTail(user);
}

DynaModule* DynaModule::GetDependency(const _GUID* id) {
    if (m_pID == nullptr || id == nullptr) return nullptr;
    return *m_pID == *id ? this : FindBehind(*id);
}

// The module among the users and what they reach.
DynaModule* DynaModule::FindBehind(const _GUID& id) const {
    for (DynaModule* const user : m_users) {
        if (DynaModule* const found = user->GetDependency(&id)) return found;
    }
    return nullptr;
}

// The module that a request goes to from here; null also if it is this one, or if this one has
// no identifier.
DynaModule* DynaModule::AddressedBehind(const _GUID& target) const {
    if (m_pID == nullptr || *m_pID == target) return nullptr;
    return FindBehind(target);
}

bool DynaModule::Execute(OpC& op) {
    if (op.m_pModuleId != nullptr) {
        DynaModule* const module = AddressedBehind(*op.m_pModuleId);
        return module != nullptr && module->Execute(op);
    }
    for (DynaModule* const user : m_users) {
        if (user->Execute(op)) return true;
    }
    return false;
}

bool DynaModule::Execute(QC& qc) {
    if (qc.m_pModuleId != nullptr) {
        DynaModule* const module = AddressedBehind(*qc.m_pModuleId);
        return module != nullptr && module->Execute(qc);
    }
    if (qc.m_objType == QC::eQcCanvas && qc.m_nQueryKind == kQueryOfCanvas) {
        qc.m_pModuleId = &DMID_CANVAS;
        return Execute(qc);
    }
    for (DynaModule* const user : m_users) {
        if (user->Execute(qc) && qc.m_pFound != 0) return true;
    }
    return false;
}

HRESULT DynaModule::GetInterface(QC& qc) {
    if (qc.m_pIID != nullptr && qc.m_pModuleId == nullptr) {
        qc.m_pModuleId = GetImplementationModule(qc.m_pIID);
    }
    if (qc.m_pModuleId == nullptr) return E_NOINTERFACE;
    DynaModule* const module = AddressedBehind(*qc.m_pModuleId);
    return module == nullptr ? E_NOINTERFACE : module->GetInterface(qc);
}

ObjectEx* DynaModule::Upgrade(CObject* obj, QC& qc) {
    if (qc.m_pModuleId == nullptr) return nullptr;
    DynaModule* const module = AddressedBehind(*qc.m_pModuleId);
    return module == nullptr ? nullptr : module->Upgrade(obj, qc);
}

ObjectEx* DynaModule::UpgradeObject(CObject* obj, QC& qc) {
    DynaModule* const module = GetDependency(qc.m_pModuleId);
    return module == nullptr ? nullptr : module->Upgrade(obj, qc);
}

bool DynaModule::Start(AFX_EXTENSION_MODULE& ext) {
    if (m_bStarted) return false;
    // The chain owns the link.
    AfxNewObject<CDynLinkLibrary>(ext);
    m_bStarted = true;
    return true;
}

_GUID* DynaModule::GetImplementationModule(const _GUID* iid) {
    return iid != nullptr && *iid == kInterfaceOfRidge ? &DMID_RIDGE : nullptr;
}

CString DynaModule::GetTypeName(int type) {
    if (type < 0 || type >= static_cast<int>(std::size(kTypeNames))) return CString();
    return CString(kTypeNames[type]);
}

void DynaModule::GetCompatibleTypes(int type, CArray<int, int>& out) {
    out.RemoveAll();
    const auto* const row = std::ranges::find(kCompatible, type, &Compatible::type);
    if (row != std::ranges::end(kCompatible)) out.Add(row->servesAs);
}

}  // namespace ZT
