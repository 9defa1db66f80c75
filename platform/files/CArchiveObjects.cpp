// Before an object there stands a tag of 16 bits: 0 for null, 0xFFFF for a new
// class with its record behind it, 0x8000 plus a number for a class, or a number
// for an object that was seen before. Numbers from 0x7FFF on do not fit: then the
// tag is 0x7FFF, and 32 bits follow, with the highest set for a class.

#include <platform/files/CArchive.h>
#include <platform/files/detail/ArchiveObjects.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CNotSupportedException.h>
#include <platform/object/CObject.h>

#include <cstring>
#include <string>

namespace {

constexpr WORD newClassTag = 0xFFFF;
constexpr WORD classBit = 0x8000;
constexpr WORD longTag = 0x7FFF;
constexpr DWORD longClassBit = 0x80000000;
constexpr DWORD mostObjects = 0x3FFFFFFE;
constexpr UINT noSchema = 0xFFFFFFFF;
constexpr std::size_t longestClassName = 1024;

bool HasArchiveRecord(const CRuntimeClass* aClass) {
    return aClass->m_wSchema != AFX_NO_SCHEMA;
}

WORD SchemaInArchive(const CRuntimeClass* aClass) {
    return static_cast<WORD>(aClass->m_wSchema);
}

bool IsOfRequested(const CRuntimeClass* aClass, const CRuntimeClass* requested) {
    return !requested || aClass->IsDerivedFrom(requested);
}

}  // namespace

struct CArchive::Tag {
    DWORD number;
    bool isClass;
    bool isNew;
};

void CRuntimeClass::Store(CArchive& ar) const {
    const auto length = static_cast<WORD>(std::strlen(m_lpszClassName));
    ar << SchemaInArchive(this) << length;
    ar.Write(m_lpszClassName, length);
}

CRuntimeClass* CRuntimeClass::Load(CArchive& ar, UINT* schema) {
    WORD storedSchema = 0;
    WORD length = 0;
    ar >> storedSchema >> length;
    if (schema) *schema = storedSchema;
    if (length > longestClassName) return nullptr;
    std::string name(length, 0);
    ar.EnsureRead(name.data(), length);
    return FromName(name.c_str());
}

CArchive::Objects& CArchive::Map() {
    if (!m_objects) m_objects = std::make_unique<Objects>();
    const std::size_t used = IsStoring() ? m_objects->next : m_objects->entries.size();
    if (used > mostObjects) Fail(CArchiveException::badIndex);
    return *m_objects;
}

void CArchive::SetLoadParams(UINT growBy) {
    if (IsLoading()) Map().entries.reserve(growBy);
}

void CArchive::SetStoreParams(UINT hashSize, UINT /*blockSize*/) {
    if (IsStoring()) Map().numbers.reserve(hashSize);
}

UINT CArchive::GetObjectSchema() {
    const UINT schema = m_nObjectSchema;
    m_nObjectSchema = noSchema;
    return schema;
}

void CArchive::MapObject(const CObject* object) {
    Objects& objects = Map();
    if (IsStoring())
        objects.numbers[object] = objects.next++;
    else
        objects.entries.push_back({const_cast<CObject*>(object), nullptr});
}

void CArchive::WriteNumber(DWORD number, bool isClass) {
    if (number < longTag)
        *this << static_cast<WORD>(isClass ? classBit | number : number);
    else
        *this << longTag << (isClass ? longClassBit | number : number);
}

CArchive& CArchive::operator<<(const CObject* object) {
    WriteObject(object);
    return *this;
}

void CArchive::WriteObject(const CObject* object) {
    CheckTransfer(TRUE);
    if (!object) {
        WriteNumber(0, false);
        return;
    }
    const auto known = Map().numbers.find(object);
    if (known != Map().numbers.end()) {
        WriteNumber(known->second, false);
        return;
    }
    WriteClass(object->GetRuntimeClass());
    MapObject(object);
    const_cast<CObject*>(object)->Serialize(*this);
}

void CArchive::WriteClass(const CRuntimeClass* aClass) {
    CheckTransfer(TRUE);
    if (!aClass) AfxThrowInvalidArgException();
    if (!HasArchiveRecord(aClass)) AfxThrowNotSupportedException();
    Objects& objects = Map();
    const auto known = objects.numbers.find(aClass);
    if (known != objects.numbers.end()) {
        WriteNumber(known->second, true);
        return;
    }
    *this << newClassTag;
    aClass->Store(*this);
    objects.numbers[aClass] = objects.next++;
}

void CArchive::SerializeClass(const CRuntimeClass* aClass) {
    if (IsStoring()) {
        WriteClass(aClass);
        return;
    }
    UINT schema = noSchema;
    ReadClass(aClass, &schema);
    SetObjectSchema(schema);
}

CArchive& CArchive::operator>>(CObject*& object) {
    object = ReadObject(nullptr);
    return *this;
}

CObject* CArchive::ReadObject(const CRuntimeClass* requested) {
    UINT schema = noSchema;
    DWORD tag = 0;
    const CRuntimeClass* aClass = ReadClass(requested, &schema, &tag);
    return aClass ? ReadNewObject(aClass, schema) : FindObject(requested, tag);
}

CObject* CArchive::FindObject(const CRuntimeClass* requested, DWORD tag) {
    if (tag == 0) return nullptr;
    const auto& entries = Map().entries;
    if (tag >= entries.size() || !entries[tag].object) Fail(CArchiveException::badIndex);
    CObject* const object = entries[tag].object;
    if (!IsOfRequested(object->GetRuntimeClass(), requested)) Fail(CArchiveException::badClass);
    return object;
}

// The object gets its number before its content is read, which may refer to it.
CObject* CArchive::ReadNewObject(const CRuntimeClass* aClass, UINT schema) {
    std::unique_ptr<CObject> object(aClass->CreateObject());
    if (!object) Fail(CArchiveException::badClass);
    const std::size_t number = Map().entries.size();
    MapObject(object.get());
    const UINT outerSchema = m_nObjectSchema;
    m_nObjectSchema = schema;
    try {
        object->Serialize(*this);
    } catch (...) {
        m_objects->entries[number].object = nullptr;
        throw;
    }
    m_nObjectSchema = outerSchema;
    return object.release();
}

CArchive::Tag CArchive::ReadTag() {
    WORD tag = 0;
    *this >> tag;
    if (tag == newClassTag) return {0, true, true};
    if (tag != longTag) return {DWORD{tag} & ~DWORD{classBit}, (tag & classBit) != 0, false};
    DWORD number = 0;
    *this >> number;
    return {number & ~longClassBit, (number & longClassBit) != 0, false};
}

CRuntimeClass* CArchive::ReadClass(const CRuntimeClass* requested, UINT* schema, DWORD* objectTag) {
    CheckTransfer(FALSE);
    if (requested && !HasArchiveRecord(requested)) AfxThrowNotSupportedException();
    const Tag tag = ReadTag();
    if (!tag.isClass) {
        if (!objectTag) Fail(CArchiveException::badIndex);
        *objectTag = tag.number;
        return nullptr;
    }
    UINT storedSchema = noSchema;
    CRuntimeClass* const aClass =
        tag.isNew ? ReadNewClass(storedSchema) : FindClass(tag.number, storedSchema);
    if (!IsOfRequested(aClass, requested)) Fail(CArchiveException::badClass);
    if (schema) *schema = storedSchema;
    return aClass;
}

CRuntimeClass* CArchive::ReadNewClass(UINT& schema) {
    CRuntimeClass* const aClass = CRuntimeClass::Load(*this, &schema);
    if (!aClass || !HasArchiveRecord(aClass)) Fail(CArchiveException::badClass);
    if (schema != SchemaInArchive(aClass)) {
        if (!(aClass->m_wSchema & VERSIONABLE_SCHEMA)) Fail(CArchiveException::badSchema);
        Map().schemas[aClass] = schema;
    }
    Map().entries.push_back({nullptr, aClass});
    return aClass;
}

CRuntimeClass* CArchive::FindClass(DWORD number, UINT& schema) {
    const Objects& objects = Map();
    if (number >= objects.entries.size() || !objects.entries[number].aClass)
        Fail(CArchiveException::badIndex);
    CRuntimeClass* const aClass = objects.entries[number].aClass;
    const auto other = objects.schemas.find(aClass);
    schema = other == objects.schemas.end() ? SchemaInArchive(aClass) : other->second;
    return aClass;
}
