#include <platform/com/Bstr.h>
#include <platform/text/CStringArray.h>
#include <zt/containers/ByteSet.h>
#include <zt/containers/HXString.h>
#include <algorithm>
#include <optional>

namespace ZT {

namespace {

constexpr char kWordSeparators[] = " \n\t\r[]{}*+\\/()~,\"':;";
constexpr ByteSet kWordEnds(kWordSeparators);
constexpr ByteSet kPhraseGaps(" ,.;\t\n\r");

void RequireNotNegative(int index) {
    if (index < 0) AfxThrowInvalidArgException();
}

bool StandsAlone(std::string_view text, int start, int length, const ByteSet& separators) {
    if (start > 0 && !separators.Has(CharAt(text, start - 1))) return false;
    return separators.Has(CharAt(text, start + length));
}

int FindWordFrom(const CString& s, const char* word, const ByteSet& separators, int& position) {
    if (word == nullptr || s.IsEmpty()) return -1;
    const int length = static_cast<int>(std::string_view(word).size());
    int start = s.Find(word, position);
    while (start >= 0 && !StandsAlone(s, start, length, separators))
        start = s.Find(word, start + 1);
    if (start >= 0) position = start + length;
    return start;
}

int FindWordDownFrom(const CString& s, const CString& word, const ByteSet& separators, int from) {
    if (s.IsEmpty()) return -1;
    int start = HXString::ReverseFind(s, word, from < 0 ? s.GetLength() - 1 : from);
    while (start >= 0 && !StandsAlone(s, start, word.GetLength(), separators)) {
        start = HXString::ReverseFind(s, word, start - 1);
    }
    return start;
}

// Puts `with` in the place of `count` characters at `first`; `with` may be a part of
// the text itself.
void Splice(CString& s, int first, int count, std::string_view with) {
    const std::string_view old = s;
    const std::size_t begin = std::min(static_cast<std::size_t>(first), old.size());
    CString result(old.substr(0, begin));
    result += with;
    result += old.substr(std::min(begin + static_cast<std::size_t>(count), old.size()));
    s.Swap(result);
}

// Where a phrase whose first word has no second one ends: behind the separators after
// `gap`, which is -1 when the text ran out.
int EndOfLonePhrase(std::string_view text, int gap) {
    const int end = FirstNotIn(text, gap + 1, kPhraseGaps);
    return end < 0 ? static_cast<int>(text.size()) - 1 : end;
}

// Where a phrase ends whose second word is expected at `start`. A `start` of -1, the
// text having run out, deliberately compares the beginning of the text.
std::optional<int> EndOfPhrase(std::string_view text, int start, std::string_view second) {
    if (text.substr(static_cast<std::size_t>(std::max(start, 0)), second.size()) != second)
        return {};
    const int end = start + static_cast<int>(second.size());
    if (!kPhraseGaps.Has(CharAt(text, end))) return {};
    return end;
}

constexpr char kDigits[] = "0123456789ABCDEF";

void AppendHex(CString& text, std::uint32_t value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        text.AppendChar(kDigits[value >> shift & 0xF]);
    }
}

}  // namespace

HXString::~HXString() = default;

int HXString::Count(const CString& s, const CString& sub, int from, int to) {
    if (sub.IsEmpty()) return 0;
    const int last = to < 0 ? s.GetLength() - 1 : to;
    int count = 0;
    for (int start = std::max(from, 0); start <= last; ++count) {
        const int found = s.Find(sub, start);
        if (found < 0) break;
        start = found + sub.GetLength();
    }
    return count;
}

int HXString::Count(const CString& s, char c, int from, int to) {
    const int last = to < 0 ? s.GetLength() - 1 : to;
    int count = 0;
    for (int start = std::max(from, 0); start <= last; ++count) {
        const int found = s.Find(c, start);
        if (found < 0) break;
        start = found + 1;
    }
    return count;
}

int HXString::CountWords(CString& s) {
    if (s.IsEmpty()) return 0;
    // Deliberately the caller's own text.
    s.Trim(kWordSeparators);
    if (s.IsEmpty()) return 0;
    const std::string_view text = s;
    const int last = s.GetLength() - 1;
    int count = 1;
    for (int place = 0; place < last; ++count) {
        const int gap = FirstIn(text, place + 1, kWordEnds);
        if (gap < 0) break;
        place = FirstNotIn(text, gap, kWordEnds);
        if (place < 0) break;
    }
    return count;
}

int HXString::FindOneOf(const CString& s, const CStringArray& subs, int from, int* pWhich) {
    int best = -1;
    for (int i = 0; i < static_cast<int>(subs.GetSize()); ++i) {
        const int found = s.Find(subs.GetAt(i), std::max(from, 0));
        if (found < 0 || (best >= 0 && found >= best)) continue;
        best = found;
        if (pWhich != nullptr) *pWhich = i;
    }
    return best;
}

int HXString::FindOneOf(const CString& s, int from, const char* chars) {
    if (chars == nullptr) return -1;
    RequireNotNegative(from);
    return FirstIn(s, from, ByteSet(chars));
}

int HXString::ReveseFindOneOf(const CString& s, int from, const char* chars) {
    if (chars == nullptr || from < 0) return -1;
    return LastIn(s, std::min(from, s.GetLength()), ByteSet(chars));
}

int HXString::ReverseFind(const CString& s, char c, int from) {
    const std::string_view text = s;
    int place = std::min(from, s.GetLength());
    while (place >= 0 && CharAt(text, place) != c) --place;
    return std::max(place, -1);
}

int HXString::ReverseFind(const CString& s, const CString& sub, int from) {
    const std::string_view text = s;
    const char head = CharAt(sub, 0);
    int place = ReverseFind(s, head, from);
    while (place >= 0 &&
           text.substr(static_cast<std::size_t>(place), sub.View().size()) != sub.View()) {
        place = ReverseFind(s, head, place - 1);
    }
    return place;
}

int HXString::Skip(const CString& s, int from, const char* chars) {
    if (chars == nullptr) return 0;
    RequireNotNegative(from);
    return FirstNotIn(s, from, ByteSet(chars));
}

int HXString::SkipReverse(const CString& s, int from, const char* chars) {
    if (chars == nullptr) return 0;
    if (from < 0 || from >= s.GetLength()) return -1;
    return LastNotIn(s, from, ByteSet(chars));
}

int HXString::FindClosing(const CString& s, int from, char open, char close) {
    int place = s.Find(open, from);
    if (place < 0) return -1;
    const std::string_view text = s;
    int depth = 0;
    for (++place; place < s.GetLength(); ++place) {
        // An opening first: with one character for both there is never a closing.
        if (CharAt(text, place) == open) {
            ++depth;
        } else if (CharAt(text, place) == close && depth-- == 0) {
            return place;
        }
    }
    return -1;
}

int HXString::FindWord(const CString& s, const char* word, int from) {
    return FindWordRef(s, word, &from);
}

int HXString::FindWordRef(const CString& s, const char* word, int* pPos) {
    int start = 0;
    return FindWordFrom(s, word, kWordEnds, pPos == nullptr ? start : *pPos);
}

int HXString::FindWordSep(const CString& s, const char* word, const char* seps, int* pPos) {
    int start = 0;
    return FindWordFrom(s, word, ByteSet(seps), pPos == nullptr ? start : *pPos);
}

int HXString::FindWordReverse(const CString& s, const CString& word, int from) {
    return FindWordDownFrom(s, word, kWordEnds, from);
}

int HXString::FindWordReverseSep(const CString& s, const CString& word, const char* seps,
                                 int from) {
    return FindWordDownFrom(s, word, ByteSet(seps), from);
}

int HXString::GetNextWord(const CString& s, int from, const char* seps, CString& word) {
    if (seps == nullptr || from < 0 || from >= s.GetLength()) return -1;
    const ByteSet separators(seps);
    const int gap = FirstIn(s, from, separators);
    if (gap < 0) return -1;
    const int start = FirstNotIn(s, gap, separators);
    if (start < 0) return -1;
    const int end = FirstIn(s, start, separators);
    word = end < 0 ? s.Mid(start) : s.Mid(start, end - start);
    return start;
}

int HXString::GetPrevWord(const CString& s, int from, const char* seps, CString& word) {
    // With null separators both walks below answer at once, 0 and -1: deliberately the
    // word is then the first character.
    const int last = SkipReverse(s, from, seps);
    if (last < 0) {
        word.Empty();
        return 0;
    }
    const int start = ReveseFindOneOf(s, last, seps) + 1;
    word = s.Mid(start, last - start + 1);
    return start;
}

int HXString::FindFraseReverse(const CString& s, const CString& first, const CString& second,
                               int from) {
    const std::string_view text = s;
    int place = FindWordReverse(s, second, from);
    while (place > 0) {
        const int last = LastNotIn(text, place - 1, kPhraseGaps);
        const int start = LastIn(text, last, kPhraseGaps) + 1;
        if (first == s.Mid(start, last - start + 1)) return start;
        place = FindWordReverse(s, second, place - 1);
    }
    return -1;
}

int HXString::Replace(CString& s, int first, int last, const CString& with) {
    if (first < 0 || last < first) return 0;
    const int removed = std::max(std::min(last, s.GetLength() - 1) - first + 1, 0);
    const int added = with.GetLength();
    Splice(s, first, removed, with);
    return added - removed;
}

int HXString::Replace(CString& s, int first, int last, const char* old, const char* with) {
    if (old == nullptr || with == nullptr || first < 0 || last < first || *old == '\0') return 0;
    const std::string_view target(old);
    const std::string_view put(with);
    const std::string_view span = s.View().substr(0, static_cast<std::size_t>(last) + 1);
    std::size_t taken = static_cast<std::size_t>(first);
    std::size_t found = span.find(target, taken);
    if (found == std::string_view::npos) return 0;

    CString result(span.substr(0, taken));
    int count = 0;
    while (found != std::string_view::npos) {
        result += span.substr(taken, found - taken);
        result += put;
        taken = found + target.size();
        // Deliberately not counted; `last` is a place of the text as it was before.
        if (result.GetLength() > last) break;
        ++count;
        found = span.find(target, taken);
    }
    result += s.View().substr(taken);
    s.Swap(result);
    return count;
}

int HXString::ReplaceFrase(CString& s, const CString& first, const CString& second,
                           const CString& with, int from) {
    const CString head = first;
    const CString tail = second;
    const CString put = with;
    int count = 0;
    int rest = -1;
    for (int place = s.Find(head, from); place >= 0; place = s.Find(head, place + 1)) {
        // The character after the first word is deliberately passed over unseen.
        const int gap = FirstNotIn(s, place + head.GetLength() + 1, kPhraseGaps);
        const std::optional<int> end =
            tail.IsEmpty() ? EndOfLonePhrase(s, gap) : EndOfPhrase(s, gap, tail);
        if (!end) continue;
        const int removed = std::max(*end - place, 0);
        const int behind = s.GetLength() - place - removed;
        // The same text behind two replacements would bring the same finds for ever.
        if (behind == rest) break;
        Splice(s, place, removed, put);
        ++count;
        // Before that, the start of the text may still change what is found.
        rest = place >= tail.GetLength() ? behind : -1;
    }
    return count;
}

void HXString::PadRightMakeLength(CString& s, int length, char c) {
    const int lacking = length - s.GetLength();
    if (lacking > 0) s += CString(c, lacking);
}

void HXString::Tab(CString& s) {
    const std::string_view text = s;
    CString result('\t');
    for (std::size_t i = 0; i < text.size(); ++i) {
        result.AppendChar(text[i]);
        if (text[i] == '\n' && i + 1 < text.size()) result.AppendChar('\t');
    }
    s.Swap(result);
}

CString HXString::BSTRtoCString(wchar_t* const& bstr) {
    if (SysStringLen(bstr) == 0) return CString();
    return CString(bstr);
}

void HXString::CStringToBSTR(const CString& s, wchar_t** pBstr) {
    if (pBstr == nullptr) return;
    if (*pBstr != nullptr && !s.IsEmpty()) {
        s.SetSysString(pBstr);
    } else {
        // An old value is deliberately not freed here.
        *pBstr = s.AllocSysString();
    }
}

CString HXString::GuidToString(const _GUID& g) {
    CString text;
    text.Preallocate(36);
    AppendHex(text, g.Data1, 8);
    text.AppendChar('_');
    AppendHex(text, g.Data2, 4);
    text.AppendChar('_');
    AppendHex(text, g.Data3, 4);
    text.AppendChar('_');
    for (int i = 0; i < 8; ++i) {
        AppendHex(text, g.Data4[i], 2);
        if (i == 1) text.AppendChar('_');
    }
    return text;
}

CString HXString::GetUniqueStringGuid() {
    _GUID id;
    CoCreateGuid(&id);
    return GuidToString(id);
}

}  // namespace ZT
