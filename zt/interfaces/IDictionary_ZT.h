/// @file
/// The interface of a typed name/value table, and the types of its entries.
///
/// A module that is handed such a table includes this header and is linked with the platform
/// alone: of the library it needs no code, and of its headers only the two that this one
/// includes, for the fundamental types and the identifiers.

#pragma once

#include <platform/com/Bstr.h>
#include <platform/com/Variant.h>
#include <zt/frame/ZT.h>
#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

/// What an entry holds. The numbers are fixed. The enumerators are reachable through `ZT::` as
/// well.
enum EDictionaryType_ZT : std::int32_t {
    eDictNone = 0,  ///< no such entry; in a count, entries of all types
    eDictInt = 1,
    eDictDouble = 2,
    eDictBool = 3,
    eDict3State = 4,
    eDictString = 5,
    eDictVariant = 6,    ///< a variant; raw pointers are kept in one, too
    eDictInterface = 7,  ///< an interface pointer, which the table does not count
};

namespace ZT {

using ::EDictionaryType_ZT;
using enum ::EDictionaryType_ZT;

/// A table of named entries, each of one type for as long as it exists, by which one module
/// hands parameters to another.
///
/// Names are texts of bytes, compared exactly. An entry is read and changed only through the
/// operations of its own type; nothing is ever converted. The setters create the entry when the
/// name is absent, with an empty description, so that the caller can fill the table freely.
///
/// All results are `S_OK` or one of two failures, and a failure writes nothing:
/// - `DISP_E_PARAMNOTOPTIONAL`: the name is null, or absent where the operation does not create
///   it, or its entry is of another type.
/// - `DISP_E_BADINDEX`: there is no entry at an index.
///
/// A null output is mostly no failure: the answer is then `S_OK`, and nothing happens. The
/// operations that test the name before the output say so; in them a null name fails even
/// without an output, while an absent one does not.
///
/// Indices count the entries in the table's own order, which stays the same until an entry is
/// added. Memory that runs out, and a variant that cannot be copied, raise the platform's
/// exceptions, which pass through the interface.
class IDictionary_ZT : public IUnknown {
public:
    /// @name Entries
    /// @{
    /// Number of entries of a type, by its number. The types that can be counted on their own
    /// are 1, 2, 3, 5, 6 and 7; any other number, deliberately also 4, that of the three-state
    /// entries, counts all. A null `count` gives `DISP_E_PARAMNOTOPTIONAL`.
    virtual HRESULT GetParamCount(int type, int* count) = 0;
    /// The name of the entry at an index, as a string of the caller's own. An entry whose name
    /// is the empty text has one. Walks the table from the start.
    virtual HRESULT GetParamName(int index, BSTR* name) = 0;
    /// The description that a string entry was declared with, as a string of the caller's own.
    /// Entries of all other types deliberately fail, whatever description they hold.
    virtual HRESULT GetParamDescription(const char* name, BSTR* description) = 0;
    /// The number of the entry's type; 0, with `S_OK`, for an absent name.
    virtual HRESULT GetParamType(const char* name, int* type) = 0;
    /// @}

    /// @name Numbers and truth values
    /// `GetInt` and `GetDouble` test the name before the output.
    /// @{
    virtual HRESULT GetInt(const char* name, int* value) = 0;
    virtual HRESULT SetInt(const char* name, int value) = 0;
    virtual HRESULT GetDouble(const char* name, double* value) = 0;
    virtual HRESULT SetDouble(const char* name, double value) = 0;
    /// -1 for true, 0 for false.
    virtual HRESULT GetBool(const char* name, VARIANT_BOOL* value) = 0;
    /// Any number but 0 is true.
    virtual HRESULT SetBool(const char* name, VARIANT_BOOL value) = 0;
    /// -1 for unknown, 1 for true, 0 for false; a number that is none of these, which an entry
    /// may hold, reads as 0.
    virtual HRESULT Get3State(const char* name, int* value) = 0;
    /// Stores the number as it comes.
    virtual HRESULT Set3State(const char* name, ZT3State value) = 0;
    /// @}

    /// @name Texts, variants and interfaces
    /// The three operations that read test the name before the output. The three that write
    /// answer `S_OK` to a null value, once the name is not null, and change nothing.
    /// @{
    /// The text, as a string of the caller's own. An absent name is created with the empty
    /// text: the only operation that reads and changes the table.
    virtual HRESULT GetString(const char* name, BSTR* value) = 0;
    virtual HRESULT SetString(const char* name, const char* value) = 0;
    /// Writes the bits of a copy of the variant over `*value`, and deliberately ends the copy.
    /// `*value` is thus valid only for a type that owns nothing: numbers, truth values, raw
    /// pointers. The string or array of one that does is already freed, and an interface comes
    /// without a reference; such a variant must neither be used nor cleared. What `*value`
    /// held before is not ended.
    virtual HRESULT Get(const char* name, VARIANT* value) = 0;
    /// Stores a copy of the variant.
    virtual HRESULT Set(const char* name, const VARIANT* value) = 0;
    /// The interface pointer, with no reference added. An absent name and an entry of another
    /// type deliberately give `S_OK`, with `*value` as it was.
    virtual HRESULT GetInterface(const char* name, IUnknown** value) = 0;
    /// Stores the pointer, with no reference added: it is valid as long as someone else holds
    /// the object.
    virtual HRESULT SetInterface(const char* name, IUnknown* value) = 0;
    /// @}

protected:
    ~IDictionary_ZT() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IDictionary_ZT> {
    static constexpr IID value = ZT::IID_IDictionary_ZT;
};
