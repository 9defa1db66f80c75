/// @file
/// Records of a few named values as text.

#pragma once

#include <platform/text/CString.h>
#include <platform/time/CTime.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// A fragment of XML text, one line a value:
///
///     <tag>value</tag>
///
/// with a tab in front. It serves where a record of a few named values has to pass as a
/// string. Values are found by plain search for their tags. There is no parser, there are no
/// attributes, and nothing is escaped: a value with "<" or "&" in it is written as it is, and
/// the text is no XML any more. For documents, see `PCExBase`.
///
/// Fragments nest by `AddBlock`. An element in another of the same name is not told from it:
/// the outer one seems to end where the inner one does.
///
/// To read an element that does not exist is no error; each operation says what it gives
/// then. A value that holds a "<" is a fragment, and for the readers of single values it is
/// empty. Numbers that are none raise `PwException`. A value that has not the form of a date
/// is the zero time, without a report; one that has it and is no date raises `COleException`.
class ZT_API Xml {
public:
    /// The empty fragment.
    Xml() = default;
    /// A fragment of this text, which is not looked at.
    explicit Xml(const CString& s) : m_strText(s) {}
    explicit Xml(const char* s) : m_strText(s) {}

    /// @name Adding
    /// Each appends a line at the end.
    /// @{
    void AddElement(const char* tag, const CString& value);

    /// The value in decimal.
    void AddInt(const char* tag, int v);

    /// "t" or "f".
    void AddBool(const char* tag, bool v);

    /// The local date as year, month and day, eight digits for a year of four: "20240105". A
    /// time outside the calendar of `CTime` is "00000".
    ///
    /// `CTime()`, which stands for no time, does not come back: it is written as the local
    /// date at the start of 1970 in UTC, "19700101" or a day of 1969. Where that was not
    /// midnight, `ReadDate` raises for it, since the midnight of that day lies before the
    /// calendar; in UTC it does come back. Leave the element out instead: a missing one is
    /// read as the zero time.
    void AddDate(const char* tag, CTime t);

    /// Indents `inner` by one tab, which changes it, and adds its text as a value: its first
    /// line stands directly behind the opening tag. A fragment that is added twice is
    /// indented twice.
    void AddBlock(const char* tag, Xml& inner);

    /// Puts a tab in front of each line.
    void Tab();
    /// @}

    /// Whether the text holds no "<": a plain value and not a fragment of elements.
    bool IsData() const;

    /// @name Reading
    /// @{

    /// Gives in `out` the text between the first opening and the first closing tag of that
    /// name. False, and `out` unchanged, when one of them is missing. Where the closing tag
    /// stands before the opening one, the content is empty and the result true.
    bool ReadElement(const char* tag, Xml& out) const;

    /// The same as a result; the empty fragment when there is no such element.
    Xml ReadElement(const char* tag) const;

    /// The value; empty when there is none.
    CString ReadString(const char* tag) const;

    /// The number that the value begins with: 12 for "12x". 0 for an empty value or none.
    /// Raises `PwException` with "Bad int in xml string" for a value that does not begin with
    /// a number.
    int ReadInt(const char* tag) const;

    /// Whether the value begins with "t" or "T". False for an empty value or none.
    bool ReadBool(const char* tag) const;

    /// Midnight, local time, of a date of eight characters, as `AddDate` writes it for years
    /// of four digits. The zero time for a value of another length, for one without a number
    /// in each of its three parts, and for none.
    ///
    /// A date in this form that cannot be raises `COleException`: with 0x80004005 for a year
    /// before 1970, a month outside 1 to 12 or a day outside 1 to 31, and with 0x80070057 for
    /// a time that `CTime` has no calendar for. Days are carried over into the next month: 31
    /// April is 1 May. The last day of 1969 is looked at only by the latter rule.
    CTime ReadDate(const char* tag) const;
    /// @}

    CString m_strText;  ///< The fragment.
};

}  // namespace ZT
