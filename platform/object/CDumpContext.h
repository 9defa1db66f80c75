/// @file
/// The sink of diagnostics in words.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

#include <concepts>
#include <string_view>

class CFile;
class CObject;

/// A sink for the state of objects in words, as `CObject::Dump` writes it: a file,
/// or standard error.
///
/// The depth is a hint for classes that hold others: at 0 they tell about
/// themselves, above it about their elements too.
class ZTP_API CDumpContext {
public:
    /// Writes to `file`, which must outlive the sink; to standard error if null.
    constexpr explicit CDumpContext(CFile* file = nullptr) : m_pFile(file) {}

    CDumpContext(const CDumpContext&) = delete;
    CDumpContext& operator=(const CDumpContext&) = delete;

    /// Depth of the dump; 0 to begin with.
    INT GetDepth() const { return m_nDepth; }
    void SetDepth(INT depth) { m_nDepth = depth; }

    /// Writes text as it stands. A null text is written as "(NULL)".
    CDumpContext& operator<<(LPCTSTR text);

    /// Writes an address in hexadecimal, as "$7f001200"; null as "NULL".
    CDumpContext& operator<<(const void* address);

    /// Lets the object write itself; "NULL" for a null one.
    CDumpContext& operator<<(const CObject* object);
    CDumpContext& operator<<(const CObject& object);

    /// Writes a number in decimal digits: floating point with the shortest digits
    /// that read back the same, `bool` as 0 or 1, a character as itself.
    template <class T>
    requires(std::integral<T> || std::floating_point<T>) CDumpContext& operator<<(T number) {
        if constexpr (std::same_as<T, char>)
            return WriteCharacter(number);
        else if constexpr (std::same_as<T, float>)
            return WriteReal(number);
        else if constexpr (std::floating_point<T>)
            return WriteReal(static_cast<double>(number));
        else if constexpr (std::signed_integral<T>)
            return WriteSigned(number);
        else
            return WriteUnsigned(number);
    }

    /// Writes `count` bytes as pairs of hexadecimal digits, `width` bytes a line,
    /// each line begun with `line`. A `width` of 0 counts as 1.
    void HexDump(LPCTSTR line, const BYTE* bytes, INT count, INT width);

    /// Hands what was written to the system.
    void Flush();

private:
    void Write(std::string_view text);
    CDumpContext& WriteCharacter(char c);
    CDumpContext& WriteReal(float number);
    CDumpContext& WriteReal(double number);
    CDumpContext& WriteSigned(LONGLONG number);
    CDumpContext& WriteUnsigned(ULONGLONG number);

    CFile* m_pFile;
    INT m_nDepth = 0;
};

/// The sink that writes to standard error.
extern ZTP_API CDumpContext afxDump;
