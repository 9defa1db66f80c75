/// @file
/// Word search, phrase search, counted replacement and conversion of text.

#pragma once

#include <platform/com/Guid.h>
#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

class CStringArray;

namespace ZT {

/// A bag of static operations on text; an object of the class holds nothing.
///
/// Positions are character indices from 0, and -1 says that nothing was found,
/// unless an operation names another answer. `from` is the place where a search
/// begins. A negative `from` finds nothing, unless the operation says otherwise.
///
/// A set of characters is given as a text of its members. The terminating zero,
/// which stands at index length, is a member of every set, so the end of the text
/// bounds a word as a separator does; so is a zero byte within the text.
///
/// Words are bounded by the word separators: space, line feed, tab, carriage return,
/// `[ ] { } * + \ / ( ) ~ , " ' : ;`. The two words of a phrase stand apart by
/// phrase separators: space, comma, full stop, semicolon, tab, line feed, carriage
/// return.
class ZT_API HXString {
public:
    HXString() {}
    HXString(const HXString&) {}
    HXString& operator=(const HXString&) { return *this; }
    virtual ~HXString();

    /// @name Counting and simple search
    /// @{

    /// The number of occurrences of `sub` without overlap. The search for one begins at
    /// `from`, then behind the last one found, and goes on while it begins at or before
    /// `to`; so an occurrence that begins after `to` counts when its search began in
    /// time. A negative `from` is 0, a negative `to` the last place. An empty `sub`
    /// gives 0.
    static int Count(const CString& s, const CString& sub, int from, int to);

    /// The same for one character.
    static int Count(const CString& s, char c, int from, int to);

    /// The number of words. Cuts the word separators off both ends of `s` itself.
    static int CountWords(CString& s);

    /// The earliest place, at or after `from`, of any of `subs`; the first of them wins
    /// a tie. A negative `from` is 0. `pWhich`, unless null, gets the index of the one
    /// that was found, and stays unwritten when there is none.
    static int FindOneOf(const CString& s, const CStringArray& subs, int from, int* pWhich);

    /// The first place at or after `from` of any of `chars`; -1 for null `chars`. A
    /// negative `from` raises the invalid-argument exception.
    static int FindOneOf(const CString& s, int from, const char* chars);

    /// The last place at or before `from` of any of `chars`; -1 for null `chars`. With a
    /// `from` at or past the length that is the length, where the zero stands.
    static int ReveseFindOneOf(const CString& s, int from, const char* chars);

    /// The last place at or before `from` of `c`.
    static int ReverseFind(const CString& s, char c, int from);

    /// The last occurrence of `sub` that begins at or before `from`; it may run past
    /// `from`. An empty `sub` is found at the length, from there or beyond.
    static int ReverseFind(const CString& s, const CString& sub, int from);

    /// The first place at or after `from` that holds none of `chars`; -1 when the text
    /// ends before. Null `chars` give 0. A negative `from` raises the invalid-argument
    /// exception.
    static int Skip(const CString& s, int from, const char* chars);

    /// The last place at or before `from` that holds none of `chars`; -1 when there is
    /// none or `from` lies outside the text. Null `chars` give 0.
    static int SkipReverse(const CString& s, int from, const char* chars);

    /// The place of the `close` that belongs to the first `open` at or after `from`;
    /// pairs between the two are passed over. When `open` and `close` are the same
    /// character, the answer is always -1.
    static int FindClosing(const CString& s, int from, char open, char close);
    /// @}

    /// @name Words
    /// @{

    /// The first place at or after `from` where `word` stands as a whole word: bounded
    /// on both sides by a word separator or an end of the text. -1 for a null `word`.
    static int FindWord(const CString& s, const char* word, int from);

    /// The same from `*pPos`, or from 0 for a null `pPos`. On success `*pPos` becomes the
    /// place behind the word, on failure it stays.
    static int FindWordRef(const CString& s, const char* word, int* pPos);

    /// The same with separators of the caller's; null `seps` leave only the ends.
    static int FindWordSep(const CString& s, const char* word, const char* seps, int* pPos);

    /// The last place at or before `from` where `word` stands as a whole word. A negative
    /// `from` means the end of the text.
    static int FindWordReverse(const CString& s, const CString& word, int from);

    /// The same with separators of the caller's; null `seps` leave only the ends.
    static int FindWordReverseSep(const CString& s, const CString& word, const char* seps,
                                  int from);

    /// Gives in `word` the word after the one at `from`, and its place. -1 with `word` as
    /// it was when no word follows, `from` lies outside the text or `seps` is null.
    static int GetNextWord(const CString& s, int from, const char* seps, CString& word);

    /// Gives in `word` the word at or before `from`, and its place. A word that `from`
    /// stands in is given up to `from` only. 0 with an empty `word` when there is none or
    /// `from` lies outside the text. With null `seps`, `word` is the first character of
    /// the text and the answer 0.
    static int GetPrevWord(const CString& s, int from, const char* seps, CString& word);

    /// The last place where the word `first` is followed by the word `second`, with only
    /// phrase separators between, and `second` begins at or before `from`. A negative
    /// `from` means the end of the text.
    static int FindFraseReverse(const CString& s, const CString& first, const CString& second,
                                int from);
    /// @}

    /// @name Editing
    /// @{

    /// Replaces the characters from `first` to `last`, both included, by `with`. Gives
    /// the change of length. Negative places, or a `last` below `first`, change nothing
    /// and give 0. What lies beyond the end is not counted as removed.
    static int Replace(CString& s, int first, int last, const CString& with);

    /// Replaces each `old` between the places `first` and `last` by `with` and gives
    /// their number. A replacement whose end comes to lie above `last` is the final one
    /// and is made but not counted: the answer is then one short. 0 for a null `old` or
    /// `with`, an empty `old`, negative places, or a `last` below `first`.
    static int Replace(CString& s, int first, int last, const char* old, const char* with);

    /// Replaces each phrase of `first` and `second`, from `from` on, by `with` and gives
    /// their number.
    ///
    /// `first` need not be a whole word. The character after `first` is passed over
    /// unseen, and so is part of the phrase whatever it is. `second` must be followed by a
    /// phrase separator, which stays. With an empty `second` the phrase is `first`, the
    /// separators behind it, the one character after them, and separators again; where the
    /// text ends with that, its last character stays.
    ///
    /// When nothing but separators follows `first`, `second` is looked for at the
    /// beginning of the text, and the phrase ends there. If that lies before `first`,
    /// `with` is put in before `first` and nothing is taken out.
    ///
    /// Each search goes on one place after the last one's find, also inside of what was
    /// put in. A replacement that would leave the same text behind it as the one before,
    /// and so be made for ever, is not made and ends the walk. Beware of a `with` that
    /// holds the phrase itself behind its first character: where each replacement leaves
    /// more behind it than the one before, the text grows until memory runs out.
    static int ReplaceFrase(CString& s, const CString& first, const CString& second,
                            const CString& with, int from);

    /// Appends `c` until `s` has `length` characters; never shortens.
    static void PadRightMakeLength(CString& s, int length, char c);

    /// Indents each line by a tab; a line feed at the very end opens no line.
    static void Tab(CString& s);
    /// @}

    /// @name Conversion
    /// @{

    /// The text of a BSTR in UTF-8, up to its first zero character; empty for null.
    static CString BSTRtoCString(wchar_t* const& bstr);

    /// Puts the wide form of `s` into `*pBstr`. A BSTR that is there is replaced and
    /// freed when `s` is not empty. When `s` is empty, a new empty BSTR takes its place,
    /// and the old one is not freed. A null `pBstr` does nothing.
    static void CStringToBSTR(const CString& s, wchar_t** pBstr);

    /// The upper-case digits of an identifier with underscores between its groups:
    /// "06AF987B_6631_43ED_A181_FDC3FE7F0120".
    static CString GuidToString(const _GUID& g);

    /// The text of a new identifier, which no one else has.
    static CString GetUniqueStringGuid();
    /// @}
};

}  // namespace ZT
