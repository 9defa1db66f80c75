/// @file
/// The cursor by which objects store themselves into a document and load themselves
/// from it.

#pragma once

#include <platform/collections/CArray.h>
#include <platform/object/Allocation.h>
#include <platform/text/CString.h>
#include <platform/xml/Dom.h>
#include <zt/frame/ZT.h>
#include <zt/persist/PC.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace ZT {

/// A stack of the cursor. It grows and never shrinks; the entry that a pop leaves
/// behind stays alive until a push overwrites it or `Free` ends it. Copies are
/// memberwise: they share the array, which nobody may then free twice.
template <class T>
struct PCExStack {
    std::int32_t m_nCount = 0;
    T* m_pData = nullptr;
    std::int32_t m_nCapacity = 0;
    std::uint16_t m_nMarker = 1;  ///< Read by nothing.

    void Push(T entry) {
        if (m_nCount >= m_nCapacity) Grow();
        m_pData[m_nCount++] = std::move(entry);
    }

    /// The last entry, or null on an empty stack.
    T* Top() const { return m_nCount > 0 ? m_pData + (m_nCount - 1) : nullptr; }

    /// Ends all entries and the array.
    void Free() {
        delete[] m_pData;
        m_pData = nullptr;
        m_nCount = m_nCapacity = 0;
    }

private:
    void Grow() {
        const std::int32_t capacity = m_nCapacity < 1 ? 1 : 2 * m_nCapacity;
        T* const entries = AfxNewArray<T>(static_cast<std::size_t>(capacity));
        std::move(m_pData, m_pData + m_nCount, entries);
        delete[] m_pData;
        m_pData = entries;
        m_nCapacity = capacity;
    }
};

/// The cursor over one XML document. An object has one `PersistXML` function, which
/// makes the same calls in the same order in both directions; the cursor turns each
/// call into the making of an element or into the search for one.
///
/// The direction is that of the context: storing, loading, or neither, which reads
/// like loading. The cursor keeps a stack of open elements. Its last entry is the
/// current element; with an empty stack, or with a null entry on top, there is none.
/// Attributes are never written.
///
/// Whoever starts a run gives the cursor a document, a context with its mode set and
/// the first element: on storing the root is appended to the document by the starter
/// and pushed, on loading the document's root is pushed. At the end the starter pops
/// the root. The context is not owned and must outlive the cursor.
///
/// With `m_bIndent` set, storing writes a newline and tabs around elements, so that
/// the document can be read by people; loading does not care.
///
/// Text crosses as UTF-8. Tags are compared exactly. A failure of the document, or a
/// call that needs a document or a node and has none, raises `_com_error` (0x80004003
/// for the missing one); the stack then stays where it was, an element whose text could
/// not be written remains on it, and the cursor is spent. Nothing is caught here.
///
/// Copies are memberwise and share the arrays of both stacks, while each destructor
/// frees them: copy a cursor only while nothing has ever been pushed on either stack.
///
/// A cursor serves one thread.
class ZT_API PCExBase {
public:
    /// @name Construction
    /// @{

    /// No context and no document. The context must be assigned before anything asks for
    /// the direction, which is read without a check.
    PCExBase();

    /// A cursor over `document` that goes the way of `context`.
    PCExBase(PC* context, const IXMLDOMDocumentPtr& document);

    PCExBase(const PCExBase&) = default;
    PCExBase& operator=(const PCExBase&) = default;
    ~PCExBase();

    /// Back to no context, no indentation and no flag; the document and both stacks stay.
    void Construct();

    /// @}
    /// @name Direction and current element
    /// @{

    bool IsLoading() const { return m_pPC->m_mode == 0; }
    bool IsStoring() const { return m_pPC->m_mode == 1; }

    /// Number of entries on the stack of open elements.
    int GetStackPosn() const { return m_stack.m_nCount; }

    /// The last entry of the stack; null on an empty one.
    IXMLDOMElementPtr GetCurElem() const;

    /// Replaces the last entry of the stack; without one, does nothing.
    void SetCurElem(const IXMLDOMElementPtr& element);

    /// @}
    /// @name Opening and closing elements
    /// @{

    /// Makes `element` the current one, also a null one, and when storing with
    /// indentation raises the level. Attaches nothing.
    void Push(const IXMLDOMElementPtr& element);

    /// The same for a node; a null one is ignored, and one that is no element counts as a
    /// null element.
    void Push(const IXMLDOMNodePtr& node);

    /// Appends `element` to the current one and pushes it. Does not ask for the direction.
    void PushElement(const IXMLDOMElementPtr& element);

    /// Makes an element, appends it to the current one and pushes it. Without a current
    /// element it is pushed all the same and stays unattached: so a root is opened, which
    /// the caller then appends to the document. A name that no element can have raises
    /// `_com_error` (0x80070057). Does not ask for the direction.
    IXMLDOMElementPtr PushElement(const char* name);

    /// Closes the current element. When storing with indentation, the level is lowered,
    /// also without a current element; and unless `bNoTabs` is set, the closing tag gets a
    /// line of its own. Without a current element the stack stays as it is.
    void PopElement(bool bNoTabs);

    /// `PopElement(false)`, only when loading.
    void PopIfLoading();

    /// `PopElement(false)`, only when storing.
    void PopIfStoring();

    /// Opens a container in both directions.
    ///
    /// Storing makes and pushes it, whatever `bChild`. Otherwise, with `bChild` set, the
    /// child element of that name is pushed, the first or the one that `m_nChildIndex`
    /// selects; if there is none, the result is null and nothing is pushed. Test the result
    /// and close with `PopElement(false)`. With `bChild` unset, the current element itself
    /// is the result if it has that name, otherwise null; nothing is pushed. Close with
    /// `PopIfStoring()`.
    IXMLDOMElementPtr PersistElement(const char* name, bool bChild);

    /// @}
    /// @name Indentation
    /// @{

    /// Raises the level by one, if `m_bIndent` is set.
    void PushIndent();

    /// Lowers the level by one, if `m_bIndent` is set; never below 0.
    void PopIndent();

    /// A newline and as many tabs as the level, whether or not `m_bIndent` is set.
    CString GetTabs() const;

    /// Appends the text of `GetTabs` to `element`, if `m_bIndent` is set; a null one is
    /// left alone.
    void AddTabs(const IXMLDOMElementPtr& element);

    /// Appends `element` to the current element, with the indentation in front of it.
    /// Without a current element nothing is attached.
    void AppendChild(const IXMLDOMElementPtr& element);

    /// The same for any node.
    void AppendChild(const IXMLDOMNodePtr& node);

    /// @}
    /// @name Flag
    /// @{

    /// Saves `m_bFlag` and sets it to `b`.
    void PushFlag(bool b);

    /// Restores the flag that the last `PushFlag` saved. The two must pair: without its
    /// `PushFlag`, it reads in front of the array.
    void PopFlag();

    /// @}
    /// @name Children and attributes
    /// @{

    /// Whether the current element has a child element of that name. `m_nChildIndex` is not
    /// looked at.
    bool HasChild(const char* name) const;

    /// Number of child elements of that name; 0 without a current element.
    int GetChildCount(const char* name) const;

    /// Number of child elements; 0 for a null `element`.
    static int GetChildElementCount(IXMLDOMElementPtr element);

    /// The child element of `parent` that has `index` others of its name before it, or null.
    /// A negative index gives null; a null `parent` raises the pointer failure. Null also if
    /// `m_nChildIndex`, not `index`, is not below the number of all child nodes, texts
    /// included.
    IXMLDOMElementPtr GetChild(const char* name, int index, IXMLDOMElementPtr parent) const;

    /// The element that a value is read from, which is not pushed: the current element, or
    /// with `bChild` set its child of that name, the first or the one that `m_nChildIndex`
    /// selects, which then returns to 0. Null if there is none.
    IXMLDOMElementPtr ReadItemElement(const char* name, bool bChild);

    /// Text of an attribute; empty if it is absent. A null `element` raises the pointer
    /// failure.
    static CString GetAttribute(IXMLDOMElementPtr element, const char* name);

    /// @}

    /// Writes one line about the current element to the debugger's channel.
    void Pr() const;

    /// @name Numbers as text
    /// `n` values with one blank between two of them; real numbers have six significant
    /// digits ("%g"), the others are decimal. Empty for a null pointer or for no values.
    /// @{
    static CString FormatData(const double* p, ulong n);
    CString FormatDataFloat(const float* p, ulong n) const;
    CString FormatDataInt(const int* p, ulong n) const;
    CString FormatDataByte(const unsigned char* p, ulong n) const;
    /// @}

    /// @name Storing values
    /// Each makes a child of the current element with the value as its text, and closes it
    /// again on its line: the result is no longer on the stack. None asks for the direction
    /// to decide whether to write.
    /// @{
    IXMLDOMElementPtr PushInt(const char* name, int v);

    /// "0x" and eight hexadecimal digits of the low 32 bits; the high ones are lost.
    IXMLDOMElementPtr PushHex(const char* name, uint64 v);

    /// "1" or "0"; the result says whether the element was made.
    bool PushBool(const char* name, bool v);

    /// The text as it stands; an empty one makes an empty element. One that a document cannot
    /// hold, such as one with a zero byte, raises `_com_error`.
    IXMLDOMElementPtr PushString(const char* name, const CString& s);

    /// Six significant digits a value, as for all real numbers. No values, or a null
    /// pointer, make no element: the result is null. So do the other forms.
    IXMLDOMElementPtr PushData(const char* name, const double* p, ulong n);
    IXMLDOMElementPtr PushDataFloat(const char* name, const float* p, ulong n);
    IXMLDOMElementPtr PushDataInt(const char* name, const int* p, ulong n);
    IXMLDOMElementPtr PushDataByte(const char* name, const unsigned char* p, ulong n);
    /// @}

    /// @name Loading values
    /// With `bChild` set the value stands in the child element called `name`, otherwise it
    /// is the text of the current element and `name` plays no part.
    ///
    /// Several values are separated by single blanks. A tab or a newline between two values
    /// ends the reading after the first of them; of two blanks in a row, the second makes the
    /// value behind it count twice. Values beyond `n` are ignored, and entries for which the
    /// text has no value keep what they held.
    /// @{

    /// Text of `ReadItemElement`; empty if there is none.
    CString ReadItem(const char* name, bool bChild);

    /// The number in the child called `name` of the current element, or of `node`. False, and
    /// `v` unchanged, without a current element, without that child, or if its text does not
    /// begin with a number. A null `node` raises the pointer failure. `m_nChildIndex` is not
    /// looked at.
    bool ReadInt(const char* name, int& v) const;
    static bool ReadInt(IXMLDOMNodePtr node, const char* name, int& v);
    /// As `ReadInt`; any number but 0 is true.
    bool ReadBool(const char* name, bool& v) const;
    static bool ReadBool(IXMLDOMNodePtr node, const char* name, bool& v);
    /// As `ReadInt`; the low 8 bits count.
    static bool ReadBYTE(IXMLDOMNodePtr node, const char* name, unsigned char& v);
    /// As `ReadInt`; a negative number comes out as its 32 bits.
    static bool ReadDWORD(IXMLDOMNodePtr node, const char* name, ulong& v);

    /// Reads up to `n` numbers. Null if `p` is null, if the element is missing, or if the
    /// text has something else where a number should be; otherwise the node.
    IXMLDOMNodePtr ReadData(const char* name, double* p, ulong n, bool bChild);
    /// Reads up to `n` numbers from the text of `node`. A null `p` is ignored; a null `node`
    /// raises the pointer failure.
    void ReadData(IXMLDOMNodePtr node, double* p, ulong n) const;
    void ReadDataFloat(const char* name, float* p, ulong n, bool bChild);
    /// `m_nChildIndex` is not looked at: with `bChild` set the first child counts.
    void ReadDataInt(const char* name, int* p, ulong n, bool bChild) const;
    /// As `ReadDataInt`; of each number the low 8 bits count.
    void ReadDataByte(const char* name, unsigned char* p, ulong n, bool bChild) const;

    /// Number of blanks in `s`, without white space at its ends, and one more; 0 if that is
    /// empty. `s` itself is not changed.
    static int GetElementCount(const CString& s);

    /// @}
    /// @name Values in both directions
    /// Each stores when the direction is storing and loads otherwise. When the element is
    /// missing on loading, the variable stays as it was, unless the comment says otherwise.
    /// @{
    void PersistInt(const char* name, int& v);
    void PersistBool(const char* name, bool& v);
    /// The number of the value. After loading, also when the element is missing, `v` is one
    /// of the three values.
    void PersistNik(const char* name, ETri& v);
    /// Six significant digits: what is loaded is not exactly what was stored.
    void PersistDouble(const char* name, double& v);
    void PersistFloat(const char* name, float& v);
    /// The low 32 bits, stored as a signed number. Loading clears the high half, and gives 0
    /// when the element is missing or holds no number; only without a current element does
    /// `v` stay. The last argument plays no part.
    void PersistDWORD(const char* name, uint64& v, bool);
    /// A missing element empties the string. `bChild` counts on loading only.
    void PersistString(const char* name, CString& s, bool bChild);
    /// Three numbers in an element "Co". A null pointer is ignored in both directions and
    /// leaves `m_nChildIndex` as it is.
    void PersistColor(float* rgb);
    /// The same with four numbers.
    void PersistColor4(float* rgba);
    /// `n` numbers; null if nothing was stored, or if `ReadData` gives null. `bChild` counts
    /// on loading only, here and below.
    IXMLDOMElementPtr PersistData(const char* name, double* p, ulong n, bool bChild);
    void PersistDataInt(const char* name, int* p, ulong n, bool bChild);
    void PersistDataFloat(const char* name, float* p, ulong n, bool bChild);
    void PersistDataByte(const char* name, unsigned char* p, ulong n, bool bChild);
    /// As many numbers as the text has. Loading allocates `p`, which the caller ends with
    /// `delete[]` also when `n` comes back as 0 with a new `p`, because the text begins with
    /// no number; an older array is not freed. A blank text sets `n` to 0 and leaves `p`.
    /// `m_nChildIndex` is not looked at.
    void PersistDataIntAuto(const char* name, int*& p, ulong& n, bool bChild);
    /// All numbers of an array, which loading sizes by `HXString::CountWords`. A plus sign
    /// between two characters of a number ("1e+06"), and any other separator of words in that
    /// place ("1,5"), adds an entry at the end, which stays zero if it is new; a sign in front
    /// of a number adds none. A missing element empties the array.
    ///
    /// With `bChild` set the size and the values come from the child called `name`. A
    /// `m_nChildIndex` selects the child for the size alone and is used up by that; the
    /// values come from the first one.
    ///
    /// With `bChild` unset the text of the current element gives the size, but the values
    /// still come from a child called `name`; it is that child which `m_nChildIndex`, used up
    /// by then, selects.
    void PersistArrayDouble(const char* name, CArray<double, double>& a, bool bChild);
    /// As `PersistArrayDouble`, but the values come from the first child called `name` in
    /// every case: with `bChild` unset `m_nChildIndex` is not looked at and stays.
    void PersistArrayInt(const char* name, CArray<int, int>& a, bool bChild);
    /// @}

    PC* m_pPC = nullptr;                   ///< The context of the run; not owned.
    IXMLDOMDocumentPtr m_pDoc;             ///< Makes elements and texts.
    bool m_bIndent = false;                ///< Whether storing writes white space.
    std::uint16_t m_nTabs = 0;             ///< Level of indentation.
    PCExStack<IXMLDOMElementPtr> m_stack;  ///< Open elements.
    bool m_bFlag = false;                  ///< For the `PersistXML` code of clients.
    PCExStack<std::uint8_t> m_flags;       ///< What `PushFlag` saved.
    /// Selects, for one look-up that heeds it, the child with so many others of its name
    /// before it; that look-up sets it back to 0. A look-up by a list of child nodes that is
    /// not longer than this gives null and leaves it set, except in `ReadItemElement`.
    std::uint16_t m_nChildIndex = 0;

private:
    /// The current element; null where there is none.
    const IXMLDOMElementPtr* Current() const {
        const IXMLDOMElementPtr* const top = m_stack.Top();
        return top && *top ? top : nullptr;
    }
    /// `ReadData`, with the element that it found.
    IXMLDOMElementPtr ReadRow(const char* name, double* p, ulong n, bool bChild);
    bool IsIndexPastChildren(const IXMLDOMElementPtr& parent) const;
};

}  // namespace ZT
