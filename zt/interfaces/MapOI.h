/// @file
/// The interface object that shows a map of pointers.

#pragma once

#include <platform/collections/CMapPtrToPtr.h>
#include <zt/frame/RefObj.h>
#include <zt/interfaces/IRefMap_ZT.h>
#include <zt/interfaces/InterfacePart.h>

namespace ZT {

/// Shows a map from pointers to pointers as `IRefMap_ZT`. The map is made by this object and
/// ends with it, or there is none.
///
/// The count starts at 1: whoever makes it, asks it once for the interface and hands that on,
/// keeps a reference of its own.
///
/// The part that shows the interface tests for the map before all else, and without one even
/// its `AddRef` and `Release` answer the number of `E_UNEXPECTED`, and leave the count. The
/// object itself counts and answers queries with and without a map.
class ZT_API MapOI : public RefObj {
public:
    /// No map.
    MapOI();
    /// With `bOwner` a new, empty map, which ends with this object; otherwise no map.
    explicit MapOI(bool bOwner);
    /// Copies count, by-value mode, pointer and ownership. Of an object that owns its map, both
    /// would destroy it: whoever copies sees to it that only one of them ends with the map.
    MapOI(const MapOI& other);
    /// Destroys the map, if there is one and this object owns it.
    ~MapOI() override;

    /// `IRefMap_ZT` and `IUnknown` give the part that shows the map, with a reference added, also
    /// when there is none. Any other identifier gives null and `E_NOINTERFACE`; a null `ppv`
    /// gives `DISP_E_PARAMNOTOPTIONAL`.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

protected:
    class ZT_API XRefMap_ZT final : public InterfacePart<XRefMap_ZT, MapOI, IRefMap_ZT> {
    public:
        static auto Place() { return &MapOI::m_xRefMap_ZT; }

        /// A null `ppv` gives `DISP_E_PARAMNOTOPTIONAL`, no map `E_UNEXPECTED`; otherwise the
        /// object answers.
        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        ULONG AddRef() override;
        ULONG Release() override;
        HRESULT GetCount(std::int32_t* count) override;
        HRESULT SetAt(void* key, void* value) override;
        HRESULT Lookup(void* key, void** value, std::int16_t* found) override;
        HRESULT RemoveKey(void* key, std::int16_t* removed) override;
        HRESULT RemoveAll() override;
        HRESULT GetStartPosition(POSITION* position) override;
        HRESULT GetNextAssoc(POSITION* position, void** key, void** value) override;

    private:
        CMapPtrToPtr* Map() { return Owner().m_pMap; }
    };

    XRefMap_ZT m_xRefMap_ZT;
    CMapPtrToPtr* m_pMap;
    bool m_bOwner;
};

}  // namespace ZT
