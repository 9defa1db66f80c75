/// @file
/// Rows of numbers as text, with one blank between two of them. For the library's own
/// use: clients reach it through the cursor.

#pragma once

#include <platform/object/Allocation.h>
#include <zt/frame/ZT.h>
#include <zt/persist/detail/NumberText.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace ZT::NumberText {

/// How one value of a type is written and scanned, and how long its text can get.
template <class T>
struct Form;

template <>
struct Form<double> {
    static constexpr std::size_t kMaxLength = 13;
    static char* Write(char* out, double value) { return WriteDouble(out, value); }
    static const char* Scan(std::string_view text, double& value) {
        return ScanDouble(text, value);
    }
};

template <>
struct Form<float> {
    static constexpr std::size_t kMaxLength = 13;
    static char* Write(char* out, float value) { return WriteDouble(out, value); }
    static const char* Scan(std::string_view text, float& value) { return ScanFloat(text, value); }
};

template <>
struct Form<int> {
    static constexpr std::size_t kMaxLength = 11;
    static char* Write(char* out, int value) { return WriteInt(out, value); }
    static const char* Scan(std::string_view text, int& value) { return ScanInt(text, value); }
};

/// A byte is scanned as an integer, of which the low 8 bits count.
template <>
struct Form<unsigned char> {
    static constexpr std::size_t kMaxLength = 3;
    static char* Write(char* out, unsigned char value) { return WriteInt(out, value); }
    static const char* Scan(std::string_view text, unsigned char& value) {
        int wide = 0;
        const char* const place = ScanInt(text, wide);
        if (place) value = static_cast<unsigned char>(wide);
        return place;
    }
};

/// The text of a row, in memory of its own; a short one needs none from the heap.
class RowText {
public:
    /// The `n` values from `p`; the empty text for a null `p`.
    template <class T>
    RowText(const T* p, ulong n) {
        if (!p || n == 0) return;
        const std::size_t room = n * (Form<T>::kMaxLength + 1) + kMaxLength;
        char* const begin = Reserve(room);
        char* out = Form<T>::Write(begin, p[0]);
        for (ulong i = 1; i < n; ++i) {
            *out++ = ' ';
            out = Form<T>::Write(out, p[i]);
        }
        m_text = {begin, static_cast<std::size_t>(out - begin)};
    }

    RowText(const RowText&) = delete;
    RowText& operator=(const RowText&) = delete;

    std::string_view View() const { return m_text; }

private:
    char* Reserve(std::size_t size) {
        if (size <= sizeof m_local) return m_local;
        m_heap.reset(AfxNewArray<char>(size));
        return m_heap.get();
    }

    char m_local[256];
    std::unique_ptr<char[]> m_heap;
    std::string_view m_text;
};

/// What `ScanRow` found.
struct RowScan {
    ulong count = 0;      ///< Values stored.
    bool failed = false;  ///< Whether something else stood where a value should be.
};

/// Scans up to `n` values into `p`. The next value is looked for behind the first blank
/// after the place where the last look began, not after the value itself: of two blanks
/// in a row, the second makes a value count twice, and without a blank nothing follows.
template <class T>
RowScan ScanRow(std::string_view text, T* p, ulong n) {
    RowScan row;
    const char* const end = text.data() + text.size();
    const char* look = text.data();   // where the next look begins
    const char* number = nullptr;     // where the number begins that it found last
    const char* in_number = nullptr;  // a place in that number, or right behind it
    T value{};
    while (row.count < n) {
        // Within the white space in front of a number, every look finds that number.
        if (!number || look > number) {
            number = SkipSpace({look, end}).data();
            in_number = Form<T>::Scan({number, end}, value);
            row.failed = !in_number;
            if (row.failed) break;
        }
        p[row.count++] = value;
        // There are no blanks in a number.
        const char* const blank = std::find(look < number ? look : in_number, end, ' ');
        if (blank == end) break;
        look = blank + 1;
    }
    return row;
}

/// Number of blanks in `text` without the white space at its ends, and one more; 0 if
/// nothing is left of it.
inline std::size_t CountByBlanks(std::string_view text) {
    const std::string_view trimmed = Trim(text);
    if (trimmed.empty()) return 0;
    std::size_t count = 1;
    for (const char c : trimmed) count += c == ' ';
    return count;
}

}  // namespace ZT::NumberText
