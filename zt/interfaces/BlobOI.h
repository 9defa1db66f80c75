/// @file
/// The interface object that shows a blob.

#pragma once

#include <zt/frame/RefObj.h>
#include <zt/interfaces/IBlob.h>
#include <zt/interfaces/InterfacePart.h>
#include <zt/memory/HXBlob.h>

namespace ZT {

/// Shows a blob as `IBlob`: its own, embedded one, or any other.
///
/// The count starts at 0: the first query gives the first reference, and its release ends the
/// object.
///
/// The object is a view. It owns neither bytes nor blobs: at its end only the embedded blob's
/// destructor runs, which frees nothing unless that blob is auto-deleting. Whoever wants the
/// block, or a blob that was allocated, to be freed keeps `m_pBlob` and does it.
///
/// As `IBlob`, it works with the blob's own operations, where the hazards are told:
/// - `GetSize` is the virtual one, so that a cached blob answers for its file.
/// - `ReadFile` is `HXBlob::Read`, and `WriteFile` is `HXBlob::Write`. A null path is an empty
///   one, which names no file. **Reading frees the block that is shown, with `delete[]`, also
///   one that was only attached.** A file that opens but cannot be read raises its
///   `CFileException`, which passes through the interface.
/// - `SetData` is `HXBlob::Copy` of an array: **a block that is there must be large enough.**
/// - `GetData` is `HXBlob::CopyTo`, which makes as many elements as `m_nSize` says. **Of a
///   cached blob whose bytes are in the file it gives an array without elements**: call its
///   `LoadCache` before each `GetData`, which frees what was read back.
class ZT_API BlobOI : public RefObj {
public:
    /// Shows the embedded blob, without a block.
    BlobOI();
    /// Shows the embedded blob, which names `n` bytes at `p`; nothing is copied.
    BlobOI(ulong n, unsigned char* p);
    /// Shows `p`, which must live as long as this object is used; the embedded blob if it is
    /// null.
    explicit BlobOI(HXBlob* p);
    /// With `bAllocate`, shows a new blob: a `BlobCached` with `bCached`, otherwise an `HXBlob`.
    /// It is not ended with this object. Without `bAllocate`, the embedded blob is shown, and
    /// `bCached` has no effect.
    BlobOI(bool bAllocate, bool bCached);
    /// Shows what `o` shows: if that is the blob embedded in `o`, **the copy goes on using that
    /// one**. The own embedded blob names the same block. The count starts at 0, and the
    /// by-value mode is that of `o`.
    BlobOI(const BlobOI& o);
    ~BlobOI() override;

    /// For raw memory: the count is 0, the embedded blob is shown, and `m_bCached` is false. The
    /// embedded blob and the by-value mode are left as they are.
    void Construct();

    /// `IBlob` and `IUnknown` give the part that shows the blob, with a reference added; any
    /// other identifier gives null and `E_NOINTERFACE`. A null `ppv` gives
    /// `DISP_E_PARAMNOTOPTIONAL`.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

protected:
    class ZT_API XBlob final : public InterfacePart<XBlob, BlobOI, IBlob> {
    public:
        static auto Place() { return &BlobOI::m_xBlob; }

        HRESULT GetSize(std::uint32_t* size) override;
        HRESULT ReadFile(const char* path) override;
        HRESULT WriteFile(const char* path) override;
        HRESULT SetData(tagSAFEARRAY** array) override;
        HRESULT GetData(tagSAFEARRAY** array) override;

    private:
        HXBlob& Blob() { return *Owner().m_pBlob; }
    };

    XBlob m_xBlob;

public:
    HXBlob m_blob;    ///< The embedded blob.
    HXBlob* m_pBlob;  ///< The blob that is shown.
    bool m_bCached;   ///< Whether the blob that was allocated is a `BlobCached`.
};

}  // namespace ZT
