/// @file
/// What was wrong with a text that could not be loaded.

#pragma once

#include <cstdint>
#include <utility>

#include <platform/base/ResultCodes.h>
#include <platform/base/Types.h>
#include <platform/text/CString.h>

/// `IXMLDOMParseError::errorCode` of a text that is not well-formed, or that uses what
/// is not accepted.
constexpr HRESULT DOM_E_MALFORMED = ResultFromBits(0x8007004A);

/// The outcome of a document's last load: all zero and empty after a good one.
class IXMLDOMParseError {
public:
    /// 0, `DOM_E_MALFORMED` for a bad text, `E_OUTOFMEMORY` when the load raised that, or
    /// 0x80070000 plus the system's error number for a file that cannot be read.
    HRESULT errorCode() const { return m_errorCode; }
    /// The line, counted from 1; 0 when the failure has no place in the text.
    LONG line() const { return m_line; }
    /// The character in the line, counted from 1.
    LONG linepos() const { return m_linepos; }
    /// The byte in the text, counted from 0, after its conversion to UTF-8.
    LONGLONG filepos() const { return m_filepos; }
    /// One sentence for a reader.
    const CString& reason() const { return m_reason; }
    /// The line of the failure, at most a few hundred bytes of it.
    const CString& srcText() const { return m_srcText; }
    /// The path that was to be loaded; empty for `loadXML`.
    const CString& url() const { return m_url; }

private:
    friend class DomTree;

    HRESULT m_errorCode = 0;
    LONG m_line = 0;
    LONG m_linepos = 0;
    LONGLONG m_filepos = 0;
    CString m_reason;
    CString m_srcText;
    CString m_url;
};
