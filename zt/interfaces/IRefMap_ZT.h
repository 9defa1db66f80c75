/// @file
/// The interface of a map from pointers to pointers. A `POSITION` is an opaque pointer, which
/// comes without any map.

#pragma once

#include <platform/collections/POSITION.h>
#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// A map from untyped pointers to untyped pointers, either of which may be null. The map owns
/// neither.
///
/// Truth values are -1 and 0. Without a map behind it every operation answers `E_UNEXPECTED`
/// and writes nothing.
class IRefMap_ZT : public IUnknown {
public:
    /// Number of keys. A null `count` gives `DISP_E_PARAMNOTOPTIONAL`.
    virtual HRESULT GetCount(std::int32_t* count) = 0;
    /// Gives the key this value, in place of the one it may have.
    virtual HRESULT SetAt(void* key, void* value) = 0;
    /// Looks the key up. `*found` tells whether the map has it; if so, `*value` becomes its
    /// value, otherwise it stays. Either output may be null, or both.
    virtual HRESULT Lookup(void* key, void** value, std::int16_t* found) = 0;
    /// Takes the key out. `*removed` tells whether the map had it; it may be null.
    virtual HRESULT RemoveKey(void* key, std::int16_t* removed) = 0;
    /// Empties the map.
    virtual HRESULT RemoveAll() = 0;
    /// Where a walk begins: -1, the mark for before the first pair, or 0 for an empty map. A
    /// null `position` gives `S_OK`.
    virtual HRESULT GetStartPosition(POSITION* position) = 0;
    /// Key and value of the pair at `*position`, which moves to the next one: to 0 after the
    /// last. Either output may be null. A null `position` gives `DISP_E_PARAMNOTOPTIONAL`; a
    /// position that is 0 on entry raises the invalid-argument exception.
    virtual HRESULT GetNextAssoc(POSITION* position, void** key, void** value) = 0;

protected:
    ~IRefMap_ZT() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IRefMap_ZT> {
    static constexpr IID value = ZT::IID_IRefMap_ZT;
};
