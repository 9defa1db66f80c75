#include <zt/frame/TriStateAlg.h>

namespace ZT {

CString TriStateAlg::ToString(ETri value) {
    switch (IntToNik(value)) {
        case eUnknown:
            return "eUnknown";
        case eTrue:
            return "eTrue";
        default:
            return "eFalse";
    }
}

}  // namespace ZT
