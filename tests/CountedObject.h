/// @file
/// An object with one interface for tests that look at its count.

#pragma once

#include <platform/com/IUnknown.h>

namespace testing_support {

inline constexpr IID IID_ICounted = {
    0x3A9C5C1E, 0x52B7, 0x4C39, {0x9A, 0x11, 0x0D, 0x6E, 0x2B, 0x84, 0xF7, 0x03}};

class ICounted : public IUnknown {
public:
    /// 7.
    virtual int Seven() = 0;

protected:
    ~ICounted() = default;
};

/// Stands on the stack; counts references and never ends itself. The first is the maker's.
class CountedObject final : public ICounted {
public:
    HRESULT QueryInterface(REFIID id, void** object) override {
        ++queries;
        *object = nullptr;
        if (FAILED(failure)) return failure;
        if (id != IID_ICounted && id != IID_IUnknown) return E_NOINTERFACE;
        *object = static_cast<ICounted*>(this);
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return ++count; }
    ULONG Release() override { return --count; }
    int Seven() override { return 7; }

    ULONG count = 1;
    int queries = 0;
    HRESULT failure = S_OK;  ///< what every query answers, if it is a failure
};

}  // namespace testing_support

template <>
struct InterfaceIdOf<testing_support::ICounted> {
    static constexpr IID value = testing_support::IID_ICounted;
};
