#include <zt/dictionary/DictionaryZT.h>

#include <platform/object/NewObject.h>

#include <memory>

namespace ZT {

namespace {

HRESULT Answer(bool done) {
    return done ? S_OK : DISP_E_PARAMNOTOPTIONAL;
}

}  // namespace

DictionaryZT::Item::~Item() = default;
DictionaryZT::ItemBasic::~ItemBasic() = default;
DictionaryZT::ItemString::~ItemString() = default;
DictionaryZT::ItemVariant::~ItemVariant() = default;
DictionaryZT::ItemInterface::~ItemInterface() = default;

DictionaryZT::DictionaryZT(bool bOption, bool bByVal) : m_map(10), m_bOption(bOption) {
    SetByVal(bByVal, bByVal);
}

DictionaryZT::~DictionaryZT() {
    Clear();
}

void DictionaryZT::Clear() {
    for (const CMapStringToPtr::CPair& pair : m_map) delete static_cast<Item*>(pair.value);
    m_map.RemoveAll();
}

HRESULT DictionaryZT::QueryInterface(const GUID& iid, void** ppv) {
    return QueryPartsOrNative(*this, iid, ppv, m_xDictionary_ZT);
}

bool DictionaryZT::AddItem(const char* name, EDictionaryType_ZT type, const char* description) {
    if (name == nullptr || type == eDictNone || IsIn(name)) return false;
    std::unique_ptr<Item> item(CreateNewItem(type));
    item->m_strDescription = description;
    m_map.SetAt(name, item.get());
    item.release();
    return true;
}

DictionaryZT::Item* DictionaryZT::CreateNewItem(EDictionaryType_ZT type) {
    switch (type) {
        case eDictString:
            return AfxNewObject<ItemString>(type);
        case eDictVariant:
            return AfxNewObject<ItemVariant>(type);
        case eDictInterface:
            return AfxNewObject<ItemInterface>(type);
        default:
            return AfxNewObject<ItemBasic>(type);
    }
}

const CMapStringToPtr::CPair* DictionaryZT::PairAt(int index) const {
    if (index < 0 || index >= m_map.GetCount()) return nullptr;
    const CMapStringToPtr::CPair* pair = m_map.PGetFirstAssoc();
    for (; index > 0; --index) pair = m_map.PGetNextAssoc(pair);
    return pair;
}

DictionaryZT::Item* DictionaryZT::GetItem(int index) const {
    const CMapStringToPtr::CPair* pair = PairAt(index);
    return pair == nullptr ? nullptr : static_cast<Item*>(pair->value);
}

int DictionaryZT::GetParamCount(EDictionaryType_ZT type) const {
    if (type == eDictNone) return static_cast<int>(m_map.GetCount());
    int count = 0;
    for (const CMapStringToPtr::CPair& pair : m_map) {
        if (static_cast<const Item*>(pair.value)->m_type == type) ++count;
    }
    return count;
}

CString DictionaryZT::GetParamName(int index) const {
    const CMapStringToPtr::CPair* pair = PairAt(index);
    return pair == nullptr ? CString() : pair->key;
}

EDictionaryType_ZT DictionaryZT::GetParamType(const char* name) const {
    const Item* item = FindItem(name);
    return item == nullptr ? eDictNone : item->m_type;
}

bool DictionaryZT::GetParamDescription(const char* name, CString& out) const {
    const auto* item = FindTyped<ItemString>(name, eDictString);
    if (item == nullptr) return false;
    out = item->m_strDescription;
    return true;
}

EDictionaryType_ZT DictionaryZT::IntToType(int number) {
    const bool counted = number >= eDictInt && number <= eDictInterface && number != eDict3State;
    return counted ? static_cast<EDictionaryType_ZT>(number) : eDictNone;
}

bool DictionaryZT::Get3State(const char* name, ZT3State& out) const {
    const auto* item = FindTyped<ItemBasic>(name, eDict3State);
    if (item == nullptr) return false;
    out = TriStateAlg::IntTo3State(static_cast<int>(item->m_value.stateValue));
    return true;
}

bool DictionaryZT::Get(const char* name, COleVariant& out) const {
    const auto* item = FindTyped<ItemVariant>(name, eDictVariant);
    if (item == nullptr) return false;
    out = item->m_value;
    return true;
}

bool DictionaryZT::Set(const char* name, const COleVariant& value) {
    auto* item = FindTyped<ItemVariant>(name, eDictVariant);
    if (item == nullptr) return false;
    item->m_value = value;
    return true;
}

bool DictionaryZT::GetBool2(const char* name) const {
    return GetBool3(name) == eTrue;
}

ETri DictionaryZT::GetBool3(const char* name) const {
    bool value = false;
    if (!GetBool(name, value)) return eUnknown;
    return value ? eTrue : eFalse;
}

template <class Typed>
Typed* DictionaryZT::FindOrDeclare(const char* name, EDictionaryType_ZT type) {
    AddItem(name, type, "");
    return FindTyped<Typed>(name, type);
}

void DictionaryZT::SetBool2(const char* name, bool value) {
    if (auto* item = FindOrDeclare<ItemBasic>(name, eDictBool)) item->m_value.boolValue = value;
}

bool DictionaryZT::GetInterface(const char* name, IUnknown*& out) const {
    const auto* item = FindTyped<ItemInterface>(name, eDictInterface);
    if (item == nullptr) return false;
    out = item->m_pUnknown;
    return true;
}

void DictionaryZT::SetInterface(const char* name, IUnknown* p) {
    if (auto* item = FindOrDeclare<ItemInterface>(name, eDictInterface)) item->m_pUnknown = p;
}

bool DictionaryZT::SetPointer(const char* name, void* p) {
    auto* item = FindOrDeclare<ItemVariant>(name, eDictVariant);
    if (item == nullptr) return false;
    // Deliberately not cleared first.
    item->m_value.vt = VT_BYREF;
    item->m_value.byref = p;
    return true;
}

void* DictionaryZT::GetPointer(const char* name) const {
    const auto* item = FindTyped<ItemVariant>(name, eDictVariant);
    return item != nullptr && item->m_value.vt == VT_BYREF ? item->m_value.byref : nullptr;
}

DictionaryZT& DictionaryZT::XDictionary_ZT::Declared(const char* name, EDictionaryType_ZT type) {
    Owner().AddItem(name, type, "");
    return Owner();
}

HRESULT DictionaryZT::XDictionary_ZT::GetParamCount(int type, int* count) {
    if (count == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *count = Owner().GetParamCount(IntToType(type));
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::GetParamName(int index, BSTR* name) {
    if (name == nullptr) return S_OK;
    const CMapStringToPtr::CPair* pair = Owner().PairAt(index);
    if (pair == nullptr) return DISP_E_BADINDEX;
    *name = pair->key.AllocSysString();
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::GetParamDescription(const char* name, BSTR* description) {
    if (description == nullptr) return S_OK;
    CString text;
    if (!Owner().GetParamDescription(name, text)) return DISP_E_PARAMNOTOPTIONAL;
    *description = text.AllocSysString();
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::GetParamType(const char* name, int* type) {
    if (type == nullptr) return S_OK;
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *type = Owner().GetParamType(name);
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::GetInt(const char* name, int* value) {
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    return value == nullptr ? S_OK : Answer(Owner().GetInt(name, *value));
}

HRESULT DictionaryZT::XDictionary_ZT::SetInt(const char* name, int value) {
    return Answer(Declared(name, eDictInt).SetInt(name, value));
}

HRESULT DictionaryZT::XDictionary_ZT::GetDouble(const char* name, double* value) {
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    return value == nullptr ? S_OK : Answer(Owner().GetDouble(name, *value));
}

HRESULT DictionaryZT::XDictionary_ZT::SetDouble(const char* name, double value) {
    return Answer(Declared(name, eDictDouble).SetDouble(name, value));
}

HRESULT DictionaryZT::XDictionary_ZT::GetBool(const char* name, VARIANT_BOOL* value) {
    if (value == nullptr) return S_OK;
    bool stored = false;
    if (!Owner().GetBool(name, stored)) return DISP_E_PARAMNOTOPTIONAL;
    *value = stored ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::SetBool(const char* name, VARIANT_BOOL value) {
    return Answer(Declared(name, eDictBool).SetBool(name, value != VARIANT_FALSE));
}

HRESULT DictionaryZT::XDictionary_ZT::Get3State(const char* name, int* value) {
    if (value == nullptr) return S_OK;
    ZT3State state;
    if (!Owner().Get3State(name, state)) return DISP_E_PARAMNOTOPTIONAL;
    *value = static_cast<int>(state);
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::Set3State(const char* name, ZT3State value) {
    return Answer(Declared(name, eDict3State).Set3State(name, value));
}

HRESULT DictionaryZT::XDictionary_ZT::GetString(const char* name, BSTR* value) {
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (value == nullptr) return S_OK;
    // Deliberately declares what is absent.
    const auto* item = Owner().FindOrDeclare<ItemString>(name, eDictString);
    if (item == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *value = item->m_value.AllocSysString();
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::SetString(const char* name, const char* value) {
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (value == nullptr) return S_OK;
    auto* item = Owner().FindOrDeclare<ItemString>(name, eDictString);
    if (item == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    item->m_value = value;
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::Get(const char* name, VARIANT* value) {
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (value == nullptr) return S_OK;
    COleVariant copy;
    if (!Owner().Get(name, copy)) return DISP_E_PARAMNOTOPTIONAL;
    // Deliberately the bits of a copy that ends here.
    *value = copy;
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::Set(const char* name, const VARIANT* value) {
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (value == nullptr) return S_OK;
    auto* item = Owner().FindOrDeclare<ItemVariant>(name, eDictVariant);
    if (item == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    item->m_value = *value;
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::GetInterface(const char* name, IUnknown** value) {
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (value == nullptr) return S_OK;
    // Deliberately a success also when there is no such entry.
    Owner().GetInterface(name, *value);
    return S_OK;
}

HRESULT DictionaryZT::XDictionary_ZT::SetInterface(const char* name, IUnknown* value) {
    if (name == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (value == nullptr) return S_OK;
    Owner().SetInterface(name, value);
    return Answer(Owner().GetParamType(name) == eDictInterface);
}

}  // namespace ZT
