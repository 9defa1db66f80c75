/// @file
/// The interface of a block of bytes.

#pragma once

#include <platform/com/SafeArray.h>
#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// A block of bytes that can be filled from a file or an array and given out again.
class IBlob : public IUnknown {
public:
    /// Number of bytes. A null `size` gives `DISP_E_PARAMNOTOPTIONAL`.
    virtual HRESULT GetSize(std::uint32_t* size) = 0;
    /// Frees the block and takes a new one with the bytes of a file; none if the file is empty.
    /// A file that cannot be opened deliberately gives the positive `ERROR_FILE_NOT_FOUND`, for
    /// whatever reason, and the bytes stay.
    virtual HRESULT ReadFile(const char* path) = 0;
    /// Writes the bytes over the start of a file, which is made if there is none; what a
    /// longer file holds behind them stays. `E_UNEXPECTED` if the file does not take them.
    virtual HRESULT WriteFile(const char* path) = 0;
    /// Takes over size and bytes of an array of one dimension whose elements are bytes. **A block
    /// that is there is assumed to be large enough: bytes are written behind a smaller one**;
    /// only without one is a new block made. Null and any other array give
    /// `DISP_E_PARAMNOTOPTIONAL`, and the bytes stay.
    virtual HRESULT SetData(tagSAFEARRAY** array) = 0;
    /// A new array with the bytes, which the caller ends with `SafeArrayDestroy`; what `*array`
    /// held before is not ended. Null gives `DISP_E_PARAMNOTOPTIONAL`, and an array that cannot
    /// be made `E_OUTOFMEMORY`.
    virtual HRESULT GetData(tagSAFEARRAY** array) = 0;

protected:
    ~IBlob() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IBlob> {
    static constexpr IID value = ZT::IID_IBlob;
};
