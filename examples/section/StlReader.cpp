#include "section/StlReader.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <string>
#include <string_view>

#include "section/BlockInput.h"
#include "section/Failure.h"
#include "section/MeshBuilder.h"
#include "section/Number.h"

namespace section {
namespace {

constexpr std::size_t kCountOffset = 80;
constexpr std::size_t kHeaderSize = 84;
constexpr std::size_t kRecordSize = 50;
constexpr std::size_t kCornersInRecord = 12;

static_assert(std::endian::native == std::endian::little, "binary STL is little-endian");
static_assert(sizeof(Facet) == 36, "three corners of a record are copied as they stand");

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char c) {
    return c == ' ' || ('\t' <= c && c <= '\r');
}

char LowerCase(char c) {
    return 'A' <= c && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsWord(std::string_view text, std::string_view word) {
    return text.size() == word.size() &&
           std::equal(text.begin(), text.end(), word.begin(),
                      [](char a, char b) { return LowerCase(a) == b; });
}

// ---------------------------------------------------------------- ASCII files

/// The words of a text, with the line on which each stands. A line ends with a
/// line feed, a carriage return, or both.
class Words {
public:
    explicit Words(BlockInput& in) : m_in(in) {
        if (m_in.Peek(kByteOrderMark.size()).substr(0, kByteOrderMark.size()) == kByteOrderMark) {
            m_in.Skip(kByteOrderMark.size());
        }
    }

    /// The next word, empty at the end of the file. It holds until the next call.
    std::string_view Next();

    /// Skips the rest of the line.
    void SkipLine();

    /// "line N: `text`", with the line of the last word.
    Failure Fails(const std::string& text) const {
        return Failure("line " + std::to_string(m_wordLine) + ": " + text);
    }

private:
    void SkipBlanks();
    void CountLine(char c);

    /// Longer than any number or keyword in use.
    static constexpr std::size_t kLongestWord = 128;

    BlockInput& m_in;
    std::uint64_t m_line = 1;
    std::uint64_t m_wordLine = 1;
    bool m_afterReturn = false;
};

void Words::CountLine(char c) {
    if (c == '\r' || (c == '\n' && !m_afterReturn)) {
        ++m_line;
    }
    m_afterReturn = c == '\r';
}

void Words::SkipBlanks() {
    for (std::string_view text = m_in.Peek(1); !text.empty(); text = m_in.Peek(1)) {
        std::size_t count = 0;
        while (count < text.size() && IsBlank(text[count])) {
            CountLine(text[count]);
            ++count;
        }
        m_in.Skip(count);
        if (count < text.size()) {
            return;
        }
    }
}

std::string_view Words::Next() {
    SkipBlanks();
    m_wordLine = m_line;
    const std::string_view text = m_in.Peek(kLongestWord + 1);
    std::size_t length = 0;
    while (length < text.size() && length <= kLongestWord && !IsBlank(text[length])) {
        ++length;
    }
    if (length > kLongestWord) {
        throw Fails("no STL text: a word of more than " + std::to_string(kLongestWord) +
                    " characters");
    }
    m_in.Skip(length);
    m_afterReturn = false;
    return text.substr(0, length);
}

void Words::SkipLine() {
    for (std::string_view text = m_in.Peek(1); !text.empty(); text = m_in.Peek(1)) {
        const std::size_t end = text.find_first_of("\r\n");
        m_in.Skip(std::min(end, text.size()));
        if (end != std::string_view::npos) {
            return;
        }
    }
}

Failure Unexpected(const Words& words, std::string_view wanted, std::string_view found) {
    if (found.empty()) {
        return words.Fails("the file ends where '" + std::string(wanted) + "' is due");
    }
    return words.Fails("'" + std::string(wanted) + "' is due, not " + Quoted(found));
}

void Expect(Words& words, std::string_view wanted) {
    const std::string_view found = words.Next();
    if (!IsWord(found, wanted)) {
        throw Unexpected(words, wanted, found);
    }
}

float ReadCoordinate(Words& words) {
    const std::string_view word = words.Next();
    double number = 0.0;
    if (word.empty()) {
        throw words.Fails("the file ends where a coordinate is due");
    }
    if (!ParseNumber(word, number)) {
        throw words.Fails("a coordinate is due, not " + Quoted(word));
    }
    if (!(std::abs(number) <= std::numeric_limits<float>::max())) {
        throw words.Fails("the coordinate " + Quoted(word) +
                          " is no finite number of single precision");
    }
    return static_cast<float>(number);
}

Point ReadVertex(Words& words) {
    Expect(words, "vertex");
    Point point;
    for (float& coordinate : point) {
        coordinate = ReadCoordinate(words);
    }
    return point;
}

void SkipNormal(Words& words) {
    Expect(words, "normal");
    for (std::size_t i = 0; i < eAxisCount; ++i) {
        words.Next();
    }
}

/// A facet whose opening word has been read.
Facet ReadFacet(Words& words) {
    SkipNormal(words);
    Expect(words, "outer");
    Expect(words, "loop");
    Facet facet;
    for (Point& corner : facet) {
        corner = ReadVertex(words);
    }
    Expect(words, "endloop");
    Expect(words, "endfacet");
    return facet;
}

/// A solid whose opening word has been read.
void ReadSolid(Words& words, MeshBuilder& mesh) {
    words.SkipLine();
    for (;;) {
        const std::string_view word = words.Next();
        if (IsWord(word, "endsolid")) {
            break;
        }
        if (!IsWord(word, "facet")) {
            throw Unexpected(words, "facet", word);
        }
        mesh.Add(ReadFacet(words));
    }
    words.SkipLine();
}

Mesh ReadAscii(BlockInput& in) {
    MeshBuilder mesh;
    Words words(in);
    for (std::string_view word = words.Next(); !word.empty(); word = words.Next()) {
        if (!IsWord(word, "solid")) {
            throw Unexpected(words, "solid", word);
        }
        ReadSolid(words, mesh);
    }
    Mesh read = mesh.Take();
    if (read.FacetCount() == 0) {
        throw words.Fails("the file ends without a facet");
    }
    return read;
}

// --------------------------------------------------------------- binary files

Failure FailsAt(std::uint64_t offset, const std::string& text) {
    return Failure("byte " + std::to_string(offset) + ": " + text);
}

std::uint64_t FacetCount(std::string_view header) {
    std::uint32_t count = 0;
    std::memcpy(&count, header.data() + kCountOffset, sizeof count);
    return count;
}

std::uint64_t BinarySize(std::uint64_t count) {
    return kHeaderSize + kRecordSize * count;
}

void CheckHeader(std::string_view header, std::uint64_t length) {
    if (length == 0) {
        throw FailsAt(0, "the file is empty");
    }
    if (header.size() < kHeaderSize) {
        throw FailsAt(header.size(),
                      "no STL file: it neither begins with 'solid' nor has the 84 bytes of a "
                      "binary header");
    }
    const std::uint64_t count = FacetCount(header);
    if (BinarySize(count) != length) {
        throw FailsAt(kCountOffset, "no STL file, or a damaged one: a facet count of " +
                                        std::to_string(count) + " takes " +
                                        std::to_string(BinarySize(count)) +
                                        " bytes, and the file has " + std::to_string(length));
    }
    if (count == 0) {
        throw FailsAt(kCountOffset, "the file has no facet");
    }
}

void CheckFinite(const Facet& facet, std::uint64_t offset) {
    for (const Point& corner : facet) {
        for (const float& coordinate : corner) {
            if (!std::isfinite(coordinate)) {
                throw FailsAt(offset, "a coordinate is no finite number");
            }
            offset += sizeof coordinate;
        }
    }
}

Mesh ReadBinary(BlockInput& in) {
    const std::string_view header = in.Peek(kHeaderSize);
    CheckHeader(header, in.Length());
    const std::uint64_t count = FacetCount(header);
    MeshBuilder mesh(static_cast<std::size_t>(count));
    in.Skip(kHeaderSize);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string_view record = in.Peek(kRecordSize);
        if (record.size() < kRecordSize) {
            throw FailsAt(in.Offset() + record.size(), "the file ends within a facet");
        }
        Facet facet;
        std::memcpy(&facet, record.data() + kCornersInRecord, sizeof facet);
        CheckFinite(facet, in.Offset() + kCornersInRecord);
        mesh.Add(facet);
        in.Skip(kRecordSize);
    }
    return mesh.Take();
}

// ------------------------------------------------------------ which of the two

bool IsText(std::string_view start) {
    if (start.starts_with(kByteOrderMark)) {
        start.remove_prefix(kByteOrderMark.size());
    }
    while (!start.empty() && IsBlank(start.front())) {
        start.remove_prefix(1);
    }
    constexpr std::string_view kSolid = "solid";
    return IsWord(start.substr(0, kSolid.size()), kSolid) && start.find('\0') == start.npos;
}

bool HasBinaryLength(std::string_view start, std::uint64_t length) {
    return start.size() >= kHeaderSize && BinarySize(FacetCount(start)) == length;
}

void CheckIsFile(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status)) {
        throw Failure("a directory, not a file");
    }
    if (!std::filesystem::exists(status)) {
        throw Failure(status.type() == std::filesystem::file_type::not_found ? "no such file"
                                                                             : error.message());
    }
    if (!std::filesystem::is_regular_file(status)) {
        throw Failure("not a regular file");
    }
}

Mesh ReadRegularFile(const std::filesystem::path& path, const ReadProgress& progress) {
    CheckIsFile(path);
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw Failure(std::string("cannot be opened: ") + std::strerror(errno));
    }
    return ReadStl(in, std::filesystem::file_size(path), progress);
}

}  // namespace

Mesh ReadStl(std::istream& in, std::uint64_t length, const ReadProgress& progress) {
    constexpr std::size_t kStartSize = 256;
    BlockInput input(in, length, progress);
    const std::string_view start = input.Peek(kStartSize).substr(0, kStartSize);
    if (IsText(start) && !HasBinaryLength(start, length)) {
        return ReadAscii(input);
    }
    return ReadBinary(input);
}

Mesh ReadStlFile(const std::filesystem::path& path, const ReadProgress& progress) {
    try {
        return ReadRegularFile(path, progress);
    } catch (const Failure& failure) {
        throw Failure(Printable(path.string()) + ": " + failure.what());
    }
}

}  // namespace section
