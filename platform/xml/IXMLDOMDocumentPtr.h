/// @file
/// The handle on a document.

#pragma once

#include <platform/base/ResultCodes.h>
#include <platform/com/Guid.h>
#include <platform/xml/DomPtr.h>
#include <platform/xml/IXMLDOMDocument.h>
#include <platform/xml/IXMLDOMNodePtr.h>

/// The class of documents, for `IXMLDOMDocumentPtr::CreateInstance`.
inline constexpr CLSID CLSID_DOMDocument = {
    0x283003D3, 0xFA9E, 0x46F5, {0x97, 0x75, 0xDC, 0xF7, 0x82, 0x68, 0x95, 0xBC}};

/// A counted handle on a document. See `DomPtr` for what handles do.
class ZTP_API IXMLDOMDocumentPtr : public DomPtr<IXMLDOMDocument> {
public:
    using DomPtr::DomPtr;
    IXMLDOMDocumentPtr() = default;
    /// The document that a node is, null for every other node.
    IXMLDOMDocumentPtr(const IXMLDOMNodePtr& node);

    /// Makes this handle one on a new, empty document of the class `classId`, which is
    /// `CLSID_DOMDocument`:
    /// @code
    ///     IXMLDOMDocumentPtr document;
    ///     HRESULT result = document.CreateInstance(CLSID_DOMDocument);
    /// @endcode
    /// The result is 0. Any other class gives `REGDB_E_CLASSNOTREG` (0x80040154), and no
    /// memory `E_OUTOFMEMORY`; the handle is null then, whatever it was before.
    HRESULT CreateInstance(const CLSID& classId);

    /// A handle on a new, empty document. Without memory `_com_error` with
    /// `E_OUTOFMEMORY`. Not to be called on a handle, which it leaves alone.
    [[nodiscard]] static IXMLDOMDocumentPtr CreateInstance();
};

inline IXMLDOMNodePtr::IXMLDOMNodePtr(const IXMLDOMDocumentPtr& document) {
    BindTo(document);
}
