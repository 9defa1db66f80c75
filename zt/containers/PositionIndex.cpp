#include <zt/containers/PositionIndex.h>

namespace ZT {

int glcPosnToIndexNoType(const CPtrList* pList, POSITION pos) {
    int index = 0;
    for (POSITION here = pList->GetHeadPosition(); here != nullptr; ++index) {
        if (here == pos) return index;
        pList->GetNext(here);
    }
    return -1;
}

}  // namespace ZT
