#include <zt/containers/PositionIndex.h>

#include <zt/containers/CyclicWalks.h>

namespace ZT {

int glcPosnToIndexNoType(const CPtrList* pList, POSITION pos) {
    return static_cast<int>(CyclicWalks::IndexOf(*pList, pos));
}

}  // namespace ZT
