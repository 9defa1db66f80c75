#include <zt/numerics/IndexAlg.h>

#include <platform/collections/CMap.h>

#include <algorithm>
#include <memory>

namespace ZT {

namespace {

using Array = IndexAlg::Array;

constexpr int64 kSeparator = -1;

// From a value to its number.
class Numbers : public CMap<int64, int64, int64, int64> {
public:
    Numbers() : CMap(kBlockSize) { InitHashTable(kBuckets); }

    // The number of a value; a new value gets the next one.
    int64 Of(int64 value) {
        const int64 next = GetCount();
        int64& number = (*this)[value];
        if (GetCount() > next) number = next;
        return number;
    }

private:
    static constexpr UINT kBuckets = 17;
    static constexpr INT_PTR kBlockSize = 10;
};

std::unique_ptr<Array> CopyOf(const int64* first, const int64* last) {
    auto piece = std::make_unique<Array>();
    piece->SetSize(last - first);
    std::copy(first, last, piece->begin());
    return piece;
}

}  // namespace

int64 IndexAlg::CountUnique(const Array& a) {
    Numbers numbers;
    for (const int64 value : a) numbers.Of(value);
    return numbers.GetCount();
}

void IndexAlg::Compactify(const Array& in, Array& compact, Array& unique) {
    unique.SetSize(CountUnique(in));
    compact.SetSize(in.GetSize());
    Numbers numbers;
    for (INT_PTR i = 0; i < in.GetSize(); ++i) {
        const int64 value = in[i];
        const int64 number = numbers.Of(value);
        compact[i] = number;
        unique[number] = value;
    }
}

void IndexAlg::SplitIndex(const Array& in, CPtrList& out) {
    for (const int64* first = in.begin(); first < in.end();) {
        const int64* const last = std::find(first, in.end(), kSeparator);
        std::unique_ptr<Array> piece = CopyOf(first, last);
        out.AddTail(piece.get());
        piece.release();
        first = last == in.end() ? last : last + 1;
    }
}

}  // namespace ZT
