/// @file
/// A variant that takes care of itself.

#pragma once

#include <concepts>
#include <type_traits>

#include <platform/base/Export.h>
#include <platform/com/Variant.h>
#include <platform/text/CString.h>

/// Type word of a `COleVariant` that is made from text: the string then holds the bytes of
/// the text and not its wide form. The variant itself has the type `VT_BSTR`.
inline constexpr VARTYPE VT_BSTRT = 82;

/// A variant as a value: it starts empty, copies deeply and ends what it owns.
///
/// A failure of the variant operations raises the OLE exception with its result, or the
/// memory exception for `E_OUTOFMEMORY`. Text is UTF-8 on this side and wide in the variant.
///
/// An integer takes the type of its width. A plain `long` has 64 bits here and so makes a
/// `VT_I8`, which no value is too large for. A reader that expects the 32-bit `VT_I4` gets it
/// from an `int` or a `LONG`, or from the constructor that names the type.
class ZTP_API COleVariant : public tagVARIANT {
public:
    /// @name Making
    /// @{
    COleVariant() noexcept;
    COleVariant(const VARIANT& source);
    /// A copy of `*source`, or empty for null.
    COleVariant(const VARIANT* source);
    COleVariant(const COleVariant& source);
    COleVariant(COleVariant&& source) noexcept;
    /// A `VT_BSTR` with the text; null gives a null string.
    COleVariant(const char* text);
    COleVariant(const CString& text);
    /// The text as `VT_BSTR`, wide, or as `VT_BSTRT`, in bytes. Another type raises the
    /// invalid-argument exception.
    COleVariant(const char* text, VARTYPE type);
    COleVariant(const wchar_t* text);
    /// A `VT_BOOL`. Nothing converts to it: a pointer is no truth value here.
    template <std::same_as<bool> Bool>
    COleVariant(Bool value) noexcept : COleVariant() {
        vt = VT_BOOL;
        boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    COleVariant(signed char value) noexcept;
    COleVariant(BYTE value) noexcept;
    /// A `VT_I2`, or a `VT_BOOL` that is true for any value but 0. Another type raises the
    /// invalid-argument exception.
    COleVariant(SHORT value, VARTYPE type = VT_I2);
    COleVariant(USHORT value) noexcept;
    /// A `VT_I4`, a `VT_INT`, a `VT_ERROR`, or a `VT_BOOL` that is true for any value but 0.
    /// Another type raises the invalid-argument exception.
    COleVariant(LONG value, VARTYPE type = VT_I4);
    COleVariant(ULONG value) noexcept;
    /// A `VT_I8`; a plain `long` comes here.
    COleVariant(LONGLONG value) noexcept;
    /// A `VT_I8`, or one of the types of a `LONG`. Another type, or a value that does not
    /// fit, raises the invalid-argument exception.
    COleVariant(LONGLONG value, VARTYPE type);
    COleVariant(ULONGLONG value) noexcept;
    COleVariant(long long value) noexcept : COleVariant(LONGLONG{value}) {}
    COleVariant(unsigned long long value) noexcept : COleVariant(ULONGLONG{value}) {}
    COleVariant(float value) noexcept;
    COleVariant(double value) noexcept;
    /// A `VT_UNKNOWN` with a reference added; null is allowed.
    explicit COleVariant(IUnknown* object) noexcept;
    /// What the variant owns is ended; a locked array that it holds is left standing.
    ~COleVariant();
    /// @}

    /// @name Assigning
    /// The variant takes the type of the value. On a failure it is unchanged.
    /// @{
    COleVariant& operator=(const VARIANT& source);
    COleVariant& operator=(const VARIANT* source);
    COleVariant& operator=(const COleVariant& source);
    COleVariant& operator=(COleVariant&& source) noexcept;
    template <class T>
    requires(!std::is_base_of_v<tagVARIANT, T> && !std::is_pointer_v<T> &&
             std::is_constructible_v<COleVariant, T>) COleVariant&
    operator=(const T& value) {
        return Take(COleVariant(value));
    }
    COleVariant& operator=(const char* text) { return Take(COleVariant(text)); }
    COleVariant& operator=(const wchar_t* text) { return Take(COleVariant(text)); }

    /// Takes text as the constructor with a type does.
    void SetString(const char* text, VARTYPE type) { Take(COleVariant(text, type)); }
    /// @}

    /// Ends the value and makes the variant empty.
    void Clear();

    /// Turns the value into another type, by `VariantChangeType`; with a `source`, takes its
    /// value in that type instead.
    void ChangeType(VARTYPE type, const VARIANT* source = nullptr);

    /// Ends the value and takes over that of `source`, which becomes empty.
    void Attach(VARIANT& source);
    /// Hands the value over to the caller, who clears it.
    VARIANT Detach() noexcept;

    /// The variant itself, for operations that want a pointer to one.
    operator VARIANT*() noexcept { return this; }
    operator const VARIANT*() const noexcept { return this; }

    /// Whether both have the same type word and equal values: numbers by `==`, texts and
    /// arrays by their contents, arrays also by their bounds, interfaces and references by
    /// their pointers. A null array equals only a null one; a null string is the empty one.
    bool operator==(const VARIANT& other) const;
    bool operator==(const COleVariant& other) const {
        return *this == static_cast<const VARIANT&>(other);
    }
    /// The same; false for null.
    bool operator==(const VARIANT* other) const;

private:
    COleVariant& Take(COleVariant&& fresh);
};
