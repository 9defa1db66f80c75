/// @file
/// The interface of a pair of flags.

#pragma once

#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// Two flags, to be set by clients, which agree among themselves on what they mean. Any number
/// but 0 sets a flag. Both operations answer `S_OK`.
class IDataContext : public IUnknown {
public:
    virtual HRESULT SetOptionA(std::int16_t flag) = 0;
    virtual HRESULT SetOptionB(std::int16_t flag) = 0;

protected:
    ~IDataContext() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IDataContext> {
    static constexpr IID value = ZT::IID_IDataContext;
};
