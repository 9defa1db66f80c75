/// @file
/// A pair of flags that clients pass along.

#pragma once

#include <zt/frame/RefObj.h>
#include <zt/interfaces/IDataContext.h>
#include <zt/interfaces/InterfacePart.h>

namespace ZT {

/// Two flags, shown as `IDataContext`, for the client that passes the context along: the
/// library never reads them.
///
/// The count starts at 1. Whoever makes it, asks it once for its interface and hands that on,
/// keeps a reference of its own.
///
/// It has run-time class information under the name "DataContext", without a way to make one
/// by that name. The record's base is deliberately that of `CObject`, not of `RefObj`.
class ZT_API DataContext : public RefObj {
    DECLARE_DYNAMIC(DataContext)

public:
    /// The first flag set, the second not.
    DataContext();
    /// Copies count, by-value mode and both flags.
    DataContext(const DataContext& other);
    ~DataContext() override;

    /// `IDataContext` and `IUnknown` give the part that shows the flags, with a reference added;
    /// `IID_NativeObject` gives this object, without. Any other identifier gives null and
    /// `E_NOINTERFACE`. A null `ppv` gives `DISP_E_PARAMNOTOPTIONAL`.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

    /// Sets the first flag. The second deliberately stays.
    virtual void Reset();

    /// Takes over both flags; nothing for null.
    void Copy(const DataContext* p);

protected:
    class ZT_API XDataContext final
        : public InterfacePart<XDataContext, DataContext, IDataContext> {
    public:
        static auto Place() { return &DataContext::m_xDataContext; }

        /// The object's answer to every identifier.
        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        HRESULT SetOptionA(std::int16_t flag) override;
        HRESULT SetOptionB(std::int16_t flag) override;
    };

    XDataContext m_xDataContext;

public:
    bool m_bOptionA = true;   ///< For the clients.
    bool m_bOptionB = false;  ///< For the clients.
};

}  // namespace ZT
