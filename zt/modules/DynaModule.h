/// @file
/// The graph of modules, along which queries and operations travel.

#pragma once

#include <platform/base/ResultCodes.h>
#include <platform/collections/CArray.h>
#include <platform/collections/CObList.h>
#include <platform/collections/CTypedPtrList.h>
#include <platform/com/Guid.h>
#include <platform/object/CObject.h>
#include <platform/text/CString.h>
#include <zt/frame/ZT.h>
#include <zt/modules/ModuleIds.h>

struct AFX_EXTENSION_MODULE;

namespace ZT {

class ObjectEx;
class OpC;
class QC;

/// A module of the suite as a node of the graph that ties the modules together.
///
/// A module derives from this class, overrides the virtual operations for what it can answer
/// itself, and calls the base for the rest, which does the routing: what names a module is
/// carried along the graph to that module, what names none is offered to the modules in turn.
///
/// Edges run from a node to its users, the modules that were attached to it with `AddUser`; a
/// node reaches its users, theirs, and so on. One module may be attached to several nodes. The
/// graph is built when the modules are loaded, then only read, and never taken apart. Nothing
/// checks it: a module that reaches itself makes every walk go on without end, and one that is
/// attached twice, or to two nodes, is visited twice. It owns no module; all must live as long
/// as anyone uses it.
///
/// A module without an identifier (`m_pID` is null) cannot be addressed, and hides everything
/// behind it from what is addressed; offers to all pass through it.
///
/// False, null and `E_NOINTERFACE` are all that a failure ever says: nothing tells a module that
/// cannot answer from one that is not there. An exception that a module raises passes through
/// the walk and ends it.
///
/// Whoever overrides one of the two `Execute` hides the other from callers of his class; a
/// `using DynaModule::Execute` brings it back.
class ZT_API DynaModule : public CObject {
public:
    /// How a module is to work. All values belong to the modules; this library knows one.
    enum EConfiguration : std::int32_t {
        eConfigDefault = 2,
    };

    /// A module without an identifier.
    DynaModule();
    /// A module with the identifier at `id`, which is kept by its address.
    DynaModule(_GUID* id, EConfiguration c);
    ~DynaModule() override;

    /// @name Requests
    /// @{
    /// Gives a command to the module that it names, and returns that module's answer. One that
    /// names none is offered to the users in their order, until one answers true. False if
    /// nobody did, if the module named is not reached from here, or if it is this very module,
    /// which the base has no answer for.
    virtual bool Execute(OpC& op);

    /// Puts a question to the module that it names, and returns that module's answer. One that
    /// names none is offered to the users in their order, until one answers true and has set
    /// `m_pFound`: a true answer that does not say what was found does not end the round. False
    /// otherwise, as with a command.
    ///
    /// A question of kind 2 about `QC::eQcCanvas` that names no module always goes to
    /// `DMID_CANVAS`, which stays in the record as the module named: it is put anew to this
    /// module's own `Execute`, override included.
    virtual bool Execute(QC& qc);

    /// Hands an object of an older kind to the module that the query names, which gives the
    /// object that takes its place. Null if the query names none, if the module named is not
    /// reached from here, or if it is this very module. `UpgradeObject` is the one to call.
    ///
    /// A query that names a module must not be handed to a module without an identifier; the
    /// answer would be null.
    virtual ObjectEx* Upgrade(CObject* obj, QC& qc);

    /// Asks the module that the query names for the interface `m_pIID`, and returns that
    /// module's answer. A query that names no module is first given the one that implements the
    /// interface, if that is known (`GetImplementationModule`). `E_NOINTERFACE` if there is
    /// still none, or if it is not reached from here or this very module.
    virtual HRESULT GetInterface(QC& qc);

    /// Hands an object to the module that the query names, this one included. Null as with
    /// `Upgrade`.
    ObjectEx* UpgradeObject(CObject* obj, QC& qc);
    /// @}

    /// @name The graph
    /// @{
    /// This module's identifier; null for none.
    const _GUID* GetID() const { return m_pID; }
    /// Attaches a module behind the others. It must not be null.
    void AddUser(DynaModule* user);
    /// The first module with that identifier in the part of the graph that is reached from
    /// here, this module included, each module before its users; null if there is none.
    DynaModule* GetDependency(const _GUID* id);
    /// @}

    /// @name Start
    /// @{
    /// Joins the chain in which classes and resources are looked up, with the record of the
    /// module's own shared library, which must have been started. False, and nothing done, if
    /// this was called before. The link lives until the library is unloaded. Without memory for
    /// it the memory exception is raised, and the module can be started again.
    bool Start(AFX_EXTENSION_MODULE& ext);
    /// Whether `Start` was called.
    bool IsMFCChainOK() const { return m_bStarted; }
    /// Back to the defaults, as a module without an identifier that can be started again. The
    /// users stay.
    void Construct();
    /// @}

    /// @name What is known of all modules
    /// @{
    /// The module that implements an interface; null if it is not known here.
    static _GUID* GetImplementationModule(const _GUID* iid);
    /// The name by which users know an object type, by its `EObjectType` number; empty for a
    /// type without one. Some differ from the names of the enumeration.
    static CString GetTypeName(int type);
    /// Fills `out` with the types that an object of this type can also serve as: one, or none.
    /// What serves as another need not be served by it.
    static void GetCompatibleTypes(int type, CArray<int, int>& out);
    /// @}

    _GUID* m_pID = nullptr;                           ///< The identifier, not owned; may be null.
    CTypedPtrList<CObList, DynaModule*> m_users{10};  ///< The modules attached, not owned.
    EConfiguration m_config = eConfigDefault;         ///< For the modules.
    uint64 m_nReserved = 0;                           ///< Without a meaning.
    unsigned char m_bReserved = 0;                    ///< Without a meaning.
    bool m_bStarted = false;                          ///< Whether `Start` was called.

private:
    DynaModule* FindBehind(const _GUID& id) const;
    DynaModule* AddressedBehind(const _GUID& target) const;
};

}  // namespace ZT
