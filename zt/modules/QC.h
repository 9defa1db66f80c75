/// @file
/// The record of a question from one module to another.

#pragma once

#include <platform/com/Guid.h>
#include <zt/frame/ObjectType.h>
#include <zt/frame/ZT.h>

namespace ZT {

class DictionaryZT;

/// A question that one module asks another: the sender fills it and sends it through the graph
/// of modules, and the module that answers writes into the same record. It lives for that one
/// request, usually on the sender's stack.
///
/// The question is routed by `m_pModuleId`, or offered to all modules when that is null. The
/// fields said to be for the modules have no meaning in this library: it defaults and copies
/// them.
///
/// Options that have no field of their own travel as named parameters, in a dictionary that is
/// made when it is first needed. An option that nobody set reads `eUnknown`, so that who answers
/// can tell one left open from one refused.
///
/// Identifiers are kept by their address and must outlive the record. The dictionary belongs to
/// it: a copy of the record shares the dictionary without a reference of its own, and yet each
/// releases it at its end. A record is therefore copied before it has named parameters, or
/// `m_pNamedParams` of one of the two is set to null before that one ends.
class ZT_API QC {
public:
    /// The kinds of object that queries know. The suite has more; those that this library
    /// names are the ones that it can tell from an `EObjectType`, and one that is routed on its
    /// own.
    enum EObjecType : std::int32_t {
        eQcNone = 0,
        eQcBRepSection = 5,
        eQcMesh = 11,
        eQcSectionOCC = 14,
        eQcCanvas = 21,  ///< with the query kind 2 and no module, goes to the drawing module
        eQcBRepTextSection = 22,
        eQcArcSplineCurve = 23,
        eQcLabel3D = 31,
        eQcMeasurement = 32,
        eQcLabelSection = 33,
    };

    /// All fields at their defaults: zero, null and false, and -1 in `m_nSelect`.
    QC();
    /// Asks for the interface `iid`, which is kept by its address.
    explicit QC(const _GUID& iid);
    /// Addresses `module`.
    explicit QC(_GUID* module);
    /// Addresses `module` and asks it for the interface `iid`, which is kept by its address.
    QC(_GUID* module, const _GUID& iid);
    /// All fields as they stand, the pointer to the dictionary among them.
    QC(const QC&) = default;
    /// The same. The dictionary that the target had is not released.
    QC& operator=(const QC&) = default;
    /// Releases the dictionary, if there is one.
    virtual ~QC();

    /// Back to the defaults, but `m_tail` stays. The dictionary is deliberately forgotten
    /// without being released.
    void Construct();
    /// Copies the question and the answer without the address: `m_nKey`, `m_nQueryKind`,
    /// `m_pFound`, `m_pResult`, `m_objType`, `m_blockA`, `m_flagsA`, `m_nSelect` and `m_blockB`.
    /// The other fields, the dictionary among them, stay.
    void CopyNoID(const QC& other);

    /// Addresses `module`, or any module for null.
    void SetModuleId(_GUID* module) { m_pModuleId = module; }
    /// With `found`, notes in `m_pFound` that there is an answer, unless it holds one already.
    /// True always, so that an answering module can return it.
    bool ReturnFound(bool found) {
        if (found && m_pFound == 0) m_pFound = 1;
        return true;
    }

    /// The option of this name; `eUnknown` if it was not set as a bool.
    ETri GetBool(const char* name) const;
    /// Sets the option of this name. Nothing happens to a parameter of that name which has
    /// another type. A null name sets nothing. The dictionary is made in each case, if there
    /// is none.
    void SetBool(const char* name, bool value);
    /// The named parameters; null if there are none, unless `bCreate` makes them. They stay the
    /// record's own. Where there is no memory for them the memory exception is raised, and the
    /// record stays without.
    DictionaryZT* GetNamedParams(bool bCreate);

    /// What queries call objects of this type; `eQcNone` where they have no name for it.
    static EObjecType EObjectTypeToQc(EObjectType type);

    _GUID* m_pModuleId = nullptr;   ///< The module addressed, not owned; null for any.
    uint64 m_nKey = 0;              ///< For the modules.
    ulong m_nQueryKind = 0;         ///< The kind of question.
    const _GUID* m_pIID = nullptr;  ///< The interface asked for, not owned; null for none.
    /// What was found. An offer to all modules ends at the first that answers true with
    /// any but 0 in here; neither the answer nor the number alone ends it.
    uint64 m_pFound = 0;
    uint64 m_pResult = 0;            ///< For the modules.
    EObjecType m_objType = eQcNone;  ///< The kind of object concerned.
    ulong m_nObjSub = 0;             ///< For the modules.
    uint64 m_blockA[5] = {};         ///< For the modules.
    unsigned char m_flagsA[6] = {};  ///< For the modules.
    std::int32_t m_nSelect = -1;     ///< For the modules.
    uint64 m_blockB[5] = {};         ///< For the modules.
    /// For the modules. Only a copy of the whole record changes it.
    ulong m_tail[5] = {};
    /// The named parameters, owned; null until they are needed.
    DictionaryZT* m_pNamedParams = nullptr;
};

}  // namespace ZT
