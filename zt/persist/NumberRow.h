/// @file
/// Rows of numbers as text, with one blank between two of them. For the library's own
/// use: clients reach it through the cursor.

#pragma once

#include <zt/frame/ZT.h>
#include <zt/persist/NumberText.h>

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
    static bool Scan(std::string_view text, double& value) { return ScanDouble(text, value); }
};

template <>
struct Form<float> {
    static constexpr std::size_t kMaxLength = 13;
    static char* Write(char* out, float value) { return WriteDouble(out, value); }
    static bool Scan(std::string_view text, float& value) { return ScanFloat(text, value); }
};

template <>
struct Form<int> {
    static constexpr std::size_t kMaxLength = 11;
    static char* Write(char* out, int value) { return WriteInt(out, value); }
    static bool Scan(std::string_view text, int& value) { return ScanInt(text, value); }
};

/// A byte is scanned as an integer, of which the low 8 bits count.
template <>
struct Form<unsigned char> {
    static constexpr std::size_t kMaxLength = 3;
    static char* Write(char* out, unsigned char value) { return WriteInt(out, value); }
    static bool Scan(std::string_view text, unsigned char& value) {
        int wide = 0;
        if (!ScanInt(text, wide)) return false;
        value = static_cast<unsigned char>(wide);
        return true;
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
        m_heap.reset(new char[size]);
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
    std::string_view rest = text;
    const char* value_begin = nullptr;
    T value{};
    while (row.count < n) {
        // Within the white space in front of a value, every look finds that value.
        if (!value_begin || rest.data() > value_begin) {
            const std::string_view number = SkipSpace(rest);
            value_begin = number.data();
            row.failed = !Form<T>::Scan(number, value);
            if (row.failed) break;
        }
        p[row.count++] = value;
        const std::size_t blank = rest.find(' ');
        if (blank == std::string_view::npos) break;
        rest.remove_prefix(blank + 1);
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
