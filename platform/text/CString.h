/// @file
/// The framework's string.

#pragma once

#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>
#include <platform/text/LargeBlock.h>

/// Memory of the framework's strings: running out raises the memory exception.
template <class T>
struct StringAllocator {
    using value_type = T;

    StringAllocator() = default;
    template <class U>
    StringAllocator(const StringAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        const std::size_t bytes = count * sizeof(T);
        void* block = bytes < kLargeBlockBytes ? ::operator new(bytes, std::nothrow)
                                               : AllocateLargeBlock(bytes);
        if (block == nullptr) AfxThrowMemoryException();
        return static_cast<T*>(block);
    }
    void deallocate(T* block, std::size_t count) noexcept {
        if (count * sizeof(T) < kLargeBlockBytes) {
            ::operator delete(block);
        } else {
            FreeLargeBlock(block);
        }
    }

    friend bool operator==(const StringAllocator&, const StringAllocator&) { return true; }
};

/// A counted string of bytes, taken as UTF-8 wherever characters matter.
///
/// A value: copies are independent, and short texts need no memory of their own. It
/// may hold zero bytes; operations that take a `const char*` see their argument only
/// up to its first zero, while the string itself always counts with its full length.
/// A null `const char*` is the empty text. Arguments may point into the string that
/// is being changed.
///
/// Positions and lengths are signed 32-bit byte counts from 0; a search that finds
/// nothing answers -1. The byte at index `GetLength()` is the terminating zero: it may
/// be read, never written. An index out of bounds raises the invalid-argument
/// exception, and so do the cases that an operation names; a text that would exceed
/// 2^31-1 bytes, or has no memory, raises the memory exception.
///
/// Upper and lower case are those of the ASCII letters; white space is the space and
/// the bytes 9 to 13. Neither depends on the process's locale.
class ZTP_API CString {
    template <class... Arguments>
    static constexpr bool kHasString = (std::same_as<Arguments, CString> || ...);

public:
    /// @name Making and assigning
    /// @{
    CString() noexcept = default;
    CString(std::nullptr_t) noexcept {}
    CString(const char* text) : m_text(Checked(OrEmpty(text))) {}
    /// `length` bytes from `text`, zeros included. A negative length, or a null `text`
    /// with a length, raises the invalid-argument exception.
    CString(const char* text, int length);
    /// `c`, `count` times; a count of 0 or below gives the empty string.
    explicit CString(char c, int count = 1);
    /// Wide text up to its zero, converted to UTF-8; what is no text becomes U+FFFD.
    CString(const wchar_t* text);
    /// The first `length` wide characters, with the failures of the narrow form.
    CString(const wchar_t* text, int length);
    CString(std::string_view text) : m_text(Checked(text)) {}

    CString(const CString&) = default;
    CString(CString&&) noexcept = default;
    CString& operator=(const CString&) = default;
    CString& operator=(CString&&) noexcept = default;
    ~CString() = default;

    CString& operator=(std::nullptr_t) noexcept {
        m_text.clear();
        return *this;
    }
    CString& operator=(const char* text);
    CString& operator=(const wchar_t* text);
    CString& operator=(std::string_view text);
    CString& operator=(char c);

    /// Assigns `length` bytes from `text`, with the failures of the constructor.
    void SetString(const char* text, int length);
    void SetString(const char* text) { *this = text; }

    /// Exchanges the texts of the two strings.
    void Swap(CString& other) noexcept { m_text.swap(other.m_text); }
    friend void swap(CString& a, CString& b) noexcept { a.Swap(b); }
    /// @}

    /// @name Length and bytes
    /// @{
    /// Length in bytes.
    int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const noexcept { return m_text.empty(); }
    /// Makes the string empty and gives its memory back.
    void Empty() noexcept;
    /// The byte at `index`, from 0 to the length, where the terminating zero stands.
    char GetAt(int index) const {
        if (index < 0 || index > GetLength()) AfxThrowInvalidArgException();
        return m_text[static_cast<std::size_t>(index)];
    }
    char operator[](int index) const { return GetAt(index); }
    template <std::integral Index>
    char operator[](Index index) const {
        const auto place = static_cast<std::int64_t>(index);
        if (place < 0 || place > GetLength()) AfxThrowInvalidArgException();
        return m_text[static_cast<std::size_t>(place)];
    }
    /// Writes the byte at `index`, below the length.
    void SetAt(int index, char c) {
        if (index < 0 || index >= GetLength()) AfxThrowInvalidArgException();
        m_text[static_cast<std::size_t>(index)] = c;
    }

    /// The bytes with their terminating zero; valid until the string is changed.
    const char* GetString() const noexcept { return m_text.c_str(); }
    operator const char*() const noexcept { return m_text.c_str(); }
    /// The bytes with their count.
    std::string_view View() const noexcept { return m_text; }
    operator std::string_view() const noexcept { return m_text; }
    /// @}

    /// @name Direct writing
    /// @{
    /// A writable buffer of at least `minLength` bytes and one for the zero, which
    /// begins with the present text. Until `ReleaseBuffer` the string counts with the
    /// length of the buffer, the bytes after the text being zero; nothing else but
    /// writing to the buffer should be done to it. A negative `minLength` raises the
    /// invalid-argument exception.
    char* GetBuffer(int minLength);
    /// The buffer of the present length.
    char* GetBuffer() { return m_text.data(); }
    /// Ends the writing: the length becomes `newLength`, or with -1 the place of the
    /// first zero byte. A value below -1 or beyond the buffer raises the
    /// invalid-argument exception.
    void ReleaseBuffer(int newLength = -1);
    /// A writable buffer for a text of exactly `length` bytes; the length is set at
    /// once, and the bytes beyond the present text are zero.
    char* GetBufferSetLength(int length);
    /// Ends the writing with a known length, as `ReleaseBuffer` does.
    void ReleaseBufferSetLength(int newLength);
    /// The buffer of the present length; with strings that share nothing, locking does
    /// nothing more.
    char* LockBuffer() { return GetBuffer(); }
    void UnlockBuffer() {}
    /// Makes room for a text of `length` bytes in all.
    void Preallocate(int length);
    /// Bytes that the string can hold without new memory.
    int GetAllocLength() const noexcept { return static_cast<int>(m_text.capacity()); }
    /// Gives back memory that the text does not need.
    void FreeExtra() { m_text.shrink_to_fit(); }
    /// Cuts the text off at `length`, which must not exceed the present length.
    void Truncate(int length);
    /// @}

    /// @name Appending
    /// @{
    void Append(const char* text) { *this += text; }
    /// Appends `length` bytes from `text`, with the failures of the constructor.
    void Append(const char* text, int length);
    void Append(const CString& text) { *this += text; }
    void AppendChar(char c) {
        CheckSize(m_text.size() + 1);
        m_text.push_back(c);
    }
    /// Appends as `Format` writes.
    void AppendFormat(const char* format, ...) __attribute__((format(printf, 2, 3)));
    template <class... Arguments>
    requires(kHasString<Arguments...>) void AppendFormat(const char* format,
                                                         const Arguments&... arguments) {
        AppendFormat(format, Passed(arguments)...);
    }
    void AppendFormatV(const char* format, va_list arguments) __attribute__((format(printf, 2, 0)));

    CString& operator+=(const CString& text) { return AppendView(text.m_text); }
    CString& operator+=(const char* text) { return AppendView(OrEmpty(text)); }
    CString& operator+=(std::string_view text) { return AppendView(text); }
    CString& operator+=(char c) {
        AppendChar(c);
        return *this;
    }
    /// @}

    /// @name Comparing
    /// Bytes are compared as unsigned. The results are below, equal to or above 0.
    /// @{
    int Compare(std::string_view other) const noexcept { return View().compare(other); }
    int Compare(const char* other) const noexcept { return View().compare(OrEmpty(other)); }
    int Compare(const CString& other) const noexcept { return View().compare(other.View()); }
    /// Ignores the case of the ASCII letters.
    int CompareNoCase(const char* other) const noexcept;
    /// Compares by the collation of the process's locale, up to the first zero byte.
    int Collate(const char* other) const noexcept;
    int CollateNoCase(const char* other) const;

    friend bool operator==(const CString& a, const CString& b) noexcept {
        return a.m_text == b.m_text;
    }
    friend bool operator==(const CString& a, const char* b) noexcept {
        return a.View() == OrEmpty(b);
    }
    friend bool operator==(const CString& a, std::string_view b) noexcept { return a.View() == b; }
    friend bool operator==(const CString& a, char b) noexcept {
        return a.m_text.size() == 1 && a.m_text[0] == b;
    }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept {
        return a.View() <=> b.View();
    }
    friend std::strong_ordering operator<=>(const CString& a, const char* b) noexcept {
        return a.View() <=> OrEmpty(b);
    }
    friend std::strong_ordering operator<=>(const CString& a, std::string_view b) noexcept {
        return a.View() <=> b;
    }
    /// @}

    /// @name Parts
    /// Places and counts out of range are brought into it: a negative one is 0, one too
    /// large is cut. A null set of bytes raises the invalid-argument exception.
    /// @{
    CString Mid(int first) const { return Mid(first, GetLength()); }
    CString Mid(int first, int count) const;
    CString Left(int count) const { return Mid(0, count); }
    CString Right(int count) const;
    /// The longest beginning that consists of bytes of `set` only.
    CString SpanIncluding(const char* set) const;
    /// The longest beginning without a byte of `set`.
    CString SpanExcluding(const char* set) const;
    /// The next piece between bytes of `delimiters`, from `start`, which moves past the
    /// delimiter after it. Runs of delimiters count as one. At the end the result is
    /// empty and `start` becomes -1. Without delimiters the rest is one piece. A
    /// negative `start` raises the invalid-argument exception.
    CString Tokenize(const char* delimiters, int& start) const;
    /// @}

    /// @name Searching
    /// @{
    /// First place of `c` at or after `start`. The terminating zero can be found: a `c`
    /// of 0 gives the length if no zero byte stands before it. A `start` below 0 or not
    /// below the length gives -1.
    int Find(char c, int start = 0) const noexcept;
    /// First place of `text` at or after `start`; an empty `text` is found at `start`, a
    /// null one never. A `start` below 0 or above the length gives -1.
    int Find(const char* text, int start = 0) const noexcept;
    int Find(const CString& text, int start = 0) const noexcept;
    /// Last place of `c`; a `c` of 0 gives the length.
    int ReverseFind(char c) const noexcept;
    /// First place of any byte of `set`; -1 for a null set.
    int FindOneOf(const char* set) const noexcept;
    /// @}

    /// @name Changing
    /// @{
    CString& MakeUpper() noexcept;
    CString& MakeLower() noexcept;
    /// Reverses the order of the bytes, which breaks characters of several bytes.
    CString& MakeReverse() noexcept;

    /// Without argument white space is cut off, otherwise the given byte or the bytes of
    /// the given set; a null or empty set cuts nothing.
    CString& Trim() { return TrimRight().TrimLeft(); }
    CString& Trim(char c) { return TrimRight(c).TrimLeft(c); }
    CString& Trim(const char* set) { return TrimRight(set).TrimLeft(set); }
    CString& TrimLeft();
    CString& TrimLeft(char c);
    CString& TrimLeft(const char* set);
    CString& TrimRight();
    CString& TrimRight(char c);
    CString& TrimRight(const char* set);

    /// Inserts before the byte at `index`; an index below 0 is 0, one beyond the length
    /// appends. Gives the new length.
    int Insert(int index, char c);
    int Insert(int index, const char* text);
    /// Takes out `count` bytes from `index`; a negative value is 0, and what lies beyond
    /// the end is ignored. Gives the new length.
    int Delete(int index, int count = 1);
    /// Takes out every `c`; gives their number.
    int Remove(char c);
    /// Replaces every `old`; gives their number, 0 when the two are the same.
    int Replace(char old, char with) noexcept;
    /// Replaces every `old` from left to right, without looking into what was put in;
    /// gives their number. A null or empty `old` gives 0, a null `with` is the empty text.
    int Replace(const char* old, const char* with);

    /// Writes by the conventions of `printf`, with the decimal point of the process's
    /// locale; the arguments may point into this string. A null format, or one that cannot
    /// be written, raises the invalid-argument exception.
    ///
    /// A `CString` among the arguments goes with "%s" and counts up to its first zero; the
    /// compiler then does not compare format and arguments.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    template <class... Arguments>
    requires(kHasString<Arguments...>) void Format(const char* format,
                                                   const Arguments&... arguments) {
        Format(format, Passed(arguments)...);
    }
    void FormatV(const char* format, va_list arguments) __attribute__((format(printf, 2, 0)));
    /// @}

    /// @name To and from the system
    /// @{
    /// A new `BSTR` with the wide form of the text, zeros included, which the caller frees
    /// with `SysFreeString`.
    wchar_t* AllocSysString() const;
    /// Replaces `*string`, which is a `BSTR` or null, by the wide form of the text and gives
    /// the new value. A null `string` raises the invalid-argument exception.
    wchar_t* SetSysString(wchar_t** string) const;
    /// Takes the value of an environment variable: 1, or 0 and the empty string when there
    /// is none of that name.
    BOOL GetEnvironmentVariable(const char* name);
    /// @}

    friend CString operator+(const CString& a, const CString& b) { return Join(a, b); }
    friend CString operator+(const CString& a, const char* b) { return Join(a, OrEmpty(b)); }
    friend CString operator+(const char* a, const CString& b) { return Join(OrEmpty(a), b); }
    friend CString operator+(const CString& a, char b) { return Join(a, {&b, 1}); }
    friend CString operator+(char a, const CString& b) { return Join({&a, 1}, b); }
    friend CString operator+(CString&& a, const CString& b) { return std::move(a += b); }
    friend CString operator+(CString&& a, const char* b) { return std::move(a += b); }
    friend CString operator+(CString&& a, char b) { return std::move(a += b); }

    /// Writes the bytes.
    ZTP_API friend std::ostream& operator<<(std::ostream& stream, const CString& text);

private:
    using Text = std::basic_string<char, std::char_traits<char>, StringAllocator<char>>;

    static std::string_view OrEmpty(const char* text) noexcept {
        return text == nullptr ? std::string_view() : std::string_view(text);
    }
    static void CheckSize(std::size_t size) {
        if (size > std::size_t{std::numeric_limits<int>::max()}) AfxThrowMemoryException();
    }
    static std::string_view Checked(std::string_view text) {
        CheckSize(text.size());
        return text;
    }
    static const char* Passed(const CString& text) { return text.GetString(); }
    template <class Argument>
    static std::decay_t<const Argument&> Passed(const Argument& argument) {
        return argument;
    }
    static CString Join(std::string_view a, std::string_view b);
    CString& AppendView(std::string_view text) {
        CheckSize(m_text.size() + text.size());
        m_text.append(text);
        return *this;
    }
    void Resize(int length);
    CString& TrimFront(std::string_view set);
    CString& TrimBack(std::string_view set);
    int InsertView(int index, std::string_view text);

    Text m_text;
};

/// The framework's name for the string of bytes, which `CString` is.
using CStringA = CString;

/// Hash of the bytes; equal strings have equal hashes.
template <>
struct std::hash<CString> {
    std::size_t operator()(const CString& text) const noexcept {
        return std::hash<std::string_view>()(text.View());
    }
};
