/// @file
/// The parts by which an object that holds a list shows it.

#pragma once

#include <zt/containers/CyclicWalks.h>
#include <zt/interfaces/IIterator64.h>
#include <zt/interfaces/IList64.h>
#include <zt/interfaces/InterfacePart.h>

namespace ZT {

/// Shows a list as `IIterator64`; a walk does not wrap. `Part` says by a static `ListOf(object)`
/// which list of the platform that is.
template <class Part, class Object>
class IteratorPart : public InterfacePart<Part, Object, IIterator64> {
public:
    HRESULT GetCount(std::int64_t* count) override {
        if (count == nullptr) return DISP_E_PARAMNOTOPTIONAL;
        *count = List().GetCount();
        return S_OK;
    }
    HRESULT GetHeadPosition(POSITION* position) override { return Start(position, true); }
    HRESULT GetNext(POSITION* position) override { return Step(position, true); }
    HRESULT GetTailPosition(POSITION* position) override { return Start(position, false); }
    HRESULT GetPrev(POSITION* position) override { return Step(position, false); }

protected:
    ~IteratorPart() = default;

private:
    const auto& List() { return Part::ListOf(this->Owner()); }

    HRESULT Start(POSITION* position, bool bForward) {
        if (position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
        *position = CyclicWalks::StartPosition(List(), bForward);
        return S_OK;
    }
    HRESULT Step(POSITION* position, bool bForward) {
        if (position == nullptr || *position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
        CyclicWalks::Next(List(), *position, bForward);
        return S_OK;
    }
};

/// Answers `IList64::GetAt` with what `GetAtVirt` of `list` gives; `bInterfaces` tells whether
/// that is an interface pointer, which gets a reference.
template <class List>
HRESULT GiveElement(List& list, bool bInterfaces, POSITION position, IUnknown** element) {
    if (element == nullptr) return S_OK;
    if (position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    // What the list holds as an object is an interface pointer, if anything can be called on it.
    *element = reinterpret_cast<IUnknown*>(list.GetAtVirt(position));
    if (bInterfaces && *element != nullptr) (*element)->AddRef();
    return S_OK;
}

}  // namespace ZT
