/// @file
/// The failure of an interface operation as an exception.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/ResultCodes.h>
#include <platform/com/BstrT.h>

/// A failed result on its way to whoever handles it, with the text that the failing
/// object gave, if it gave one. Thrown by value, caught by reference.
class ZTP_API _com_error {
public:
    /// A failure `code`, and what the failing object says about it in UTF-8; null for
    /// nothing. `code` is carried as it stands, also when it is no failure.
    explicit _com_error(HRESULT code, const char* description = nullptr);
    _com_error(const _com_error&);
    _com_error& operator=(const _com_error&);
    virtual ~_com_error();

    /// The result.
    HRESULT Error() const { return m_code; }
    /// The general text of the result; the system's for a result that is 0x80070000 plus
    /// a number of the system's errors, and "Unknown error 0x80041234" where there is
    /// none. The text lives as long as the exception.
    const char* ErrorMessage() const;
    /// The text of the failing object; empty when it gave none.
    _bstr_t Description() const { return m_description; }

private:
    HRESULT m_code;
    _bstr_t m_description;
    // The text of a result that has none of its own.
    char m_text[96] = {};
};

/// Throws `_com_error` with `code`.
[[noreturn]] ZTP_API void _com_issue_error(HRESULT code);

/// Throws `_com_error` with `code` and the failing object's own text.
[[noreturn]] ZTP_API void _com_raise_error(HRESULT code, const char* description = nullptr);

namespace _com_util {

/// Throws `_com_error` with `result` if that is a failure.
inline void CheckError(HRESULT result) {
    if (FAILED(result)) _com_issue_error(result);
}

}  // namespace _com_util
