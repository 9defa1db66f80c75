#include <platform/object/Allocation.h>
#include <zt/containers/HXString.h>
#include <zt/frame/TriStateAlg.h>
#include <zt/persist/PCExBase.h>
#include <zt/persist/detail/NumberRow.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace ZT {
namespace {

constexpr char kColor[] = "Co";

}  // namespace

void PCExBase::PersistInt(const char* name, int& v) {
    if (IsStoring())
        PushInt(name, v);
    else
        ReadInt(name, v);
}

void PCExBase::PersistBool(const char* name, bool& v) {
    if (IsStoring())
        PushBool(name, v);
    else
        ReadBool(name, v);
}

void PCExBase::PersistNik(const char* name, ETri& v) {
    int value = v;
    PersistInt(name, value);
    if (!IsStoring()) v = TriStateAlg::IntToNik(value);
}

void PCExBase::PersistDouble(const char* name, double& v) {
    if (IsStoring())
        PushData(name, &v, 1);
    else
        ReadData(name, &v, 1, true);
}

void PCExBase::PersistFloat(const char* name, float& v) {
    PersistDataFloat(name, &v, 1, true);
}

void PCExBase::PersistDWORD(const char* name, uint64& v, bool) {
    if (IsStoring()) {
        PushInt(name, static_cast<int>(static_cast<ulong>(v)));
        return;
    }
    const IXMLDOMElementPtr* const current = Current();
    if (!current) return;
    // No such element, or no number in it, gives 0, unlike the other values: deliberate.
    int value = 0;
    ReadInt(*current, name, value);
    v = static_cast<ulong>(value);
}

void PCExBase::PersistString(const char* name, CString& s, bool bChild) {
    if (IsStoring())
        PushString(name, s);
    else
        s = ReadItem(name, bChild);
}

void PCExBase::PersistColor(float* rgb) {
    if (rgb) PersistDataFloat(kColor, rgb, 3, true);
}

void PCExBase::PersistColor4(float* rgba) {
    if (rgba) PersistDataFloat(kColor, rgba, 4, true);
}

IXMLDOMElementPtr PCExBase::PersistData(const char* name, double* p, ulong n, bool bChild) {
    if (IsStoring()) return PushData(name, p, n);
    return ReadRow(name, p, n, bChild);
}

void PCExBase::PersistDataInt(const char* name, int* p, ulong n, bool bChild) {
    if (IsStoring())
        PushDataInt(name, p, n);
    else
        ReadDataInt(name, p, n, bChild);
}

void PCExBase::PersistDataFloat(const char* name, float* p, ulong n, bool bChild) {
    if (IsStoring())
        PushDataFloat(name, p, n);
    else
        ReadDataFloat(name, p, n, bChild);
}

void PCExBase::PersistDataByte(const char* name, unsigned char* p, ulong n, bool bChild) {
    if (IsStoring())
        PushDataByte(name, p, n);
    else
        ReadDataByte(name, p, n, bChild);
}

void PCExBase::PersistDataIntAuto(const char* name, int*& p, ulong& n, bool bChild) {
    if (IsStoring()) {
        PushDataInt(name, p, n);
        return;
    }
    const IXMLDOMElementPtr* const current = Current();
    if (!current) return;
    const IXMLDOMElementPtr element = bChild ? (*current)->childElement(name, 0) : *current;
    if (!element) return;
    std::string scratch;
    const std::string_view text = element->textView(scratch);
    n = static_cast<ulong>(NumberText::CountByBlanks(text));
    if (n == 0) return;
    p = AfxNewArray<int>(n);
    std::fill_n(p, n, 0);
    n = NumberText::ScanRow(text, p, n).count;
}

void PCExBase::PersistArrayDouble(const char* name, CArray<double, double>& a, bool bChild) {
    if (IsStoring()) {
        PushData(name, a.GetData(), static_cast<ulong>(a.GetSize()));
        return;
    }
    CString text = ReadItem(name, bChild);
    const int count = HXString::CountWords(text);
    a.SetSize(count, -1);
    // The values come from the child in every case: deliberate.
    if (count != 0) ReadData(name, a.GetData(), static_cast<ulong>(count), true);
}

void PCExBase::PersistArrayInt(const char* name, CArray<int, int>& a, bool bChild) {
    if (IsStoring()) {
        PushDataInt(name, a.GetData(), static_cast<ulong>(a.GetSize()));
        return;
    }
    CString text = ReadItem(name, bChild);
    const int count = HXString::CountWords(text);
    a.SetSize(count, -1);
    // The values come from the child in every case: deliberate.
    if (count != 0) ReadDataInt(name, a.GetData(), static_cast<ulong>(count), true);
}

}  // namespace ZT
