#include <platform/collections/TableSize.h>

#include <algorithm>
#include <iterator>

namespace Collections {

namespace {

constexpr UINT kSizes[] = {17,        37,        79,         163,       331,      673,
                           1361,      2729,      5471,       10949,     21911,    43853,
                           87719,     175447,    350899,     701819,    1403641,  2807303,
                           5614657,   11229331,  22458671,   44917381,  89834777, 179669557,
                           359339171, 718678369, 1437356741, 2874713497};

}  // namespace

TableSize TableSize::Grown() const {
    const UINT* next = std::upper_bound(std::begin(kSizes), std::end(kSizes), m_buckets);
    return next == std::end(kSizes) ? *this : TableSize(*next);
}

}  // namespace Collections
