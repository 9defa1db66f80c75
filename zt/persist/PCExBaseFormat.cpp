#include <zt/persist/PCExBase.h>
#include <zt/persist/detail/NumberRow.h>

namespace ZT {

using NumberText::RowText;

CString PCExBase::FormatData(const double* p, ulong n) {
    return CString(RowText(p, n).View());
}

CString PCExBase::FormatDataFloat(const float* p, ulong n) const {
    return CString(RowText(p, n).View());
}

CString PCExBase::FormatDataInt(const int* p, ulong n) const {
    return CString(RowText(p, n).View());
}

CString PCExBase::FormatDataByte(const unsigned char* p, ulong n) const {
    return CString(RowText(p, n).View());
}

}  // namespace ZT
