// A module that knows a dictionary by its interface alone. The tests load it, also as another
// compiler made it.

#include <zt/interfaces/IDictionary_ZT.h>

#include <cwchar>
#include <set>
#include <string>

namespace {

int target = 0;

bool IsText(BSTR string, const wchar_t* text) {
    const bool same = string != nullptr && std::wcscmp(string, text) == 0;
    SysFreeString(string);
    return same;
}

bool HoldsNumbers(ZT::IDictionary_ZT& bag) {
    int number = 0;
    int state = 0;
    double real = 0;
    VARIANT_BOOL truth = VARIANT_FALSE;
    return bag.GetInt("host int", &number) == S_OK && number == -5 &&
           bag.GetDouble("host double", &real) == S_OK && real == 0.1 &&
           bag.GetBool("host bool", &truth) == S_OK && truth == VARIANT_TRUE &&
           bag.Get3State("host state", &state) == S_OK && state == -1;
}

bool HoldsTexts(ZT::IDictionary_ZT& bag) {
    BSTR text = nullptr;
    BSTR description = nullptr;
    return bag.GetString("host text", &text) == S_OK && IsText(text, L"\u00E9t\u00E9") &&
           bag.GetParamDescription("host text", &description) == S_OK &&
           IsText(description, L"a season");
}

bool HoldsPointers(ZT::IDictionary_ZT& bag, IUnknown* object, void* pointer) {
    IUnknown* found = nullptr;
    VARIANT variant = {};
    return bag.GetInterface("host interface", &found) == S_OK && found == object &&
           bag.Get("host pointer", &variant) == S_OK && variant.vt == VT_BYREF &&
           variant.byref == pointer;
}

// The caller has a reference already.
bool CountsReferences(ZT::IDictionary_ZT& bag) {
    const ULONG with = bag.AddRef();
    return with >= 2 && bag.Release() == with - 1;
}

// Whether each index has a name, and no other one the same.
bool NamesDiffer(ZT::IDictionary_ZT& bag, int count) {
    std::set<std::wstring> names;
    for (int i = 0; i < count; ++i) {
        BSTR name = nullptr;
        if (bag.GetParamName(i, &name) != S_OK || name == nullptr) return false;
        names.insert(name);
        SysFreeString(name);
    }
    return names.size() == static_cast<std::size_t>(count);
}

bool HoldsEntries(ZT::IDictionary_ZT& bag, int count) {
    int all = 0;
    int type = 0;
    BSTR name = nullptr;
    return bag.GetParamCount(eDictNone, &all) == S_OK && all == count &&
           bag.GetParamType("host double", &type) == S_OK && type == eDictDouble &&
           bag.GetParamName(count, &name) == DISP_E_BADINDEX &&
           bag.GetInt("host double", &type) == DISP_E_PARAMNOTOPTIONAL;
}

bool StoreAll(ZT::IDictionary_ZT& bag, IUnknown* object) {
    VARIANT pointer = {};
    pointer.vt = VT_BYREF;
    pointer.byref = &target;
    return bag.SetInt("int", 5) == S_OK && bag.SetDouble("double", 2.5) == S_OK &&
           bag.SetBool("bool", VARIANT_TRUE) == S_OK &&
           bag.Set3State("state", ZT3State::eUnknown) == S_OK &&
           bag.SetString("text", "\xC3\xA9t\xC3\xA9") == S_OK &&
           bag.Set("pointer", &pointer) == S_OK && bag.SetInterface("interface", object) == S_OK;
}

// The interface of the object, with a reference.
ZT::IDictionary_ZT* DictionaryOf(IUnknown* object) {
    void* found = nullptr;
    object->QueryInterface(ZT::IID_IDictionary_ZT, &found);
    return static_cast<ZT::IDictionary_ZT*>(found);
}

}  // namespace

// Whether the dictionary behind `shown` holds what the host put in, `count` entries.
extern "C" ZTP_API bool ReadDictionary(IUnknown* shown, int count, IUnknown* object,
                                       void* pointer) {
    ZT::IDictionary_ZT* const bag = DictionaryOf(shown);
    if (bag == nullptr) return false;
    const bool holds = HoldsNumbers(*bag) && HoldsTexts(*bag) &&
                       HoldsPointers(*bag, object, pointer) && HoldsEntries(*bag, count) &&
                       NamesDiffer(*bag, count) && CountsReferences(*bag);
    bag->Release();
    return holds;
}

// Puts an entry of every type into the dictionary behind `shown`. The pointer among them is
// `TargetOfPointer()`.
extern "C" ZTP_API bool FillDictionary(IUnknown* shown, IUnknown* object) {
    ZT::IDictionary_ZT* const bag = DictionaryOf(shown);
    if (bag == nullptr) return false;
    const bool stored = StoreAll(*bag, object);
    bag->Release();
    return stored;
}

extern "C" ZTP_API void* TargetOfPointer() {
    return &target;
}
