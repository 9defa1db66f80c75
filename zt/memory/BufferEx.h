/// @file
/// Named fields of the rows of a buffer.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

#include <cstdint>

namespace ZT {

class BufferBase;

/// A description of the fields that stand side by side in each row of a buffer, in the order
/// of their definitions. It names the buffer and does not own it; nothing checks that the
/// rows of the buffer are laid out like this.
///
/// `m_pFields` is null until the first `SetFieldCount`. The description owns the definitions;
/// a plain copy names the same ones, which both destructors would end.
class ZT_API BufferEx {
public:
    /// One field.
    struct FieldDefinition {
        std::uint8_t m_nSize = 0;  ///< Bytes of the field in the row.
        CString m_strType;         ///< Free text; no operation here reads it.
        CString m_strName;         ///< What `FindField` looks for.
    };

    /// No buffer and no fields.
    BufferEx() = default;
    /// A copy names the same buffer and the same definitions, and so does an assigned one;
    /// definitions that were there are not ended. The caller keeps one of the two from ending
    /// them: no definitions are a null `m_pFields` and a count of 0.
    BufferEx(const BufferEx&) = default;
    BufferEx& operator=(const BufferEx&) = default;
    /// Ends the definitions. The buffer stays.
    ~BufferEx();

    /// Names the buffer, which may be null.
    void AttachData(BufferBase* p) { m_pBuffer = p; }

    unsigned char GetFieldCount() const { return m_nFieldCount; }

    /// Sum of the field sizes in 8 bits: fields of 256 bytes in all give 0. So does a
    /// description without fields.
    unsigned char GetRowSize() const;

    /// Makes `n` the number of definitions; new ones have size 0 and no texts. Nothing when
    /// `n` is not above the present number. Raises the memory exception, with the description
    /// unchanged, when there is no memory.
    void SetFieldCount(unsigned char n);

    /// Fills definition `i`; nothing when there is none. A null text is an empty one.
    void SetFieldDefinition(unsigned char i, unsigned char size, const CString& type,
                            const CString& name);
    void SetFieldDefinition(unsigned char i, unsigned char size, const char* type,
                            const char* name);

    /// Index of the first field called `name`, in exactly this case. -1 if there is none, but
    /// 0 before the first `SetFieldCount`: ask `GetFieldCount` before using a 0.
    short FindField(const char* name) const;

    /// Gives the buffer the row size of `GetRowSize` and `n` rows, as `BufferBase::Allocate`
    /// does: rows of that size that are there keep their bytes, and what is new reads as
    /// zero. Nothing without a buffer or fields, or with a row size of 0.
    ///
    /// Rows of another size are not taken apart. The block keeps its first bytes in their
    /// order, as many as the old count of rows has by the old and by the new row size. When
    /// there is no memory, the memory exception is raised and the buffer stays as it was.
    void Allocate(ulong n);

    BufferBase* m_pBuffer = nullptr;       ///< The buffer; not owned.
    std::uint8_t m_nFieldCount = 0;        ///< Number of definitions.
    FieldDefinition* m_pFields = nullptr;  ///< The definitions, made by `new[]`, or null.
};

}  // namespace ZT
