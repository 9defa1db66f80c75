// Loads any bytes as a document and reads every kind of value out of it.

#include <platform/object/CMemoryException.h>
#include <tests/FailingNew.h>
#include <zt/memory/BufferBase.h>
#include <zt/memory/BufferEx.h>
#include <zt/memory/HXBlob.h>
#include <zt/persist/PCExBase.h>
#include <zt/ranges/RangeR1.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace ZT {
namespace {

constexpr ulong kValues = 16;

// A document may well claim more memory than the process is given.
constexpr std::size_t kGreatestArray = std::size_t{1} << 20;

/// Reads with every operation that has a name for the child, by the name `name`.
void ReadAll(PCExBase& cursor, const char* name, bool child) {
    double doubles[kValues] = {};
    float floats[kValues] = {};
    int ints[kValues] = {};
    unsigned char bytes[kValues] = {};
    cursor.ReadItem(name, child);
    cursor.ReadItemElement(name, child);
    cursor.ReadData(name, doubles, kValues, child);
    cursor.ReadDataFloat(name, floats, kValues, child);
    cursor.ReadDataInt(name, ints, kValues, child);
    cursor.ReadDataByte(name, bytes, kValues, child);
    cursor.PersistData(name, doubles, kValues, child);
    cursor.PersistDataFloat(name, floats, kValues, child);
    cursor.PersistDataInt(name, ints, kValues, child);
    cursor.PersistDataByte(name, bytes, kValues, child);
    CString text;
    cursor.PersistString(name, text, child);
    PCExBase::GetElementCount(text);
    int* allocated = nullptr;
    ulong count = 0;
    cursor.PersistDataIntAuto(name, allocated, count, child);
    const std::unique_ptr<int[]> owner(allocated);
    CArray<double, double> double_array;
    cursor.PersistArrayDouble(name, double_array, child);
    CArray<int, int> int_array;
    cursor.PersistArrayInt(name, int_array, child);
}

/// Reads the single values.
void ReadSingle(PCExBase& cursor, const char* name) {
    const IXMLDOMNodePtr node = cursor.GetCurElem();
    int i = 0;
    bool b = false;
    unsigned char byte = 0;
    ulong word = 0;
    double d = 0;
    float f[4] = {};
    uint64 wide = 0;
    ETri tri = eUnknown;
    cursor.ReadInt(name, i);
    cursor.ReadBool(name, b);
    PCExBase::ReadInt(node, name, i);
    PCExBase::ReadBool(node, name, b);
    PCExBase::ReadBYTE(node, name, byte);
    PCExBase::ReadDWORD(node, name, word);
    cursor.ReadData(node, &d, 1);
    cursor.PersistInt(name, i);
    cursor.PersistBool(name, b);
    cursor.PersistNik(name, tri);
    cursor.PersistDouble(name, d);
    cursor.PersistFloat(name, *f);
    cursor.PersistDWORD(name, wide, b);
    cursor.PersistColor(f);
    cursor.PersistColor4(f);
    RangeR1().PersistXML(cursor);
    cursor.HasChild(name);
    cursor.GetChildCount(name);
    PCExBase::GetChildElementCount(cursor.GetCurElem());
    PCExBase::GetAttribute(cursor.GetCurElem(), name);
}

/// Does what may want more memory than there is.
template <class Work>
void Try(Work work) {
    try {
        work();
    } catch (CMemoryException* e) {
        e->Delete();
    }
}

/// Whatever rows there are have bytes to be read and written. Rows without a size may be any
/// number.
void TouchRows(const BufferBase& rows) {
    if (rows.GetRowSize() == 0) return;
    for (ulong i = 0; i < rows.GetCount() && rows.GetRow(i); ++i) {
        for (int place = 0; place < rows.GetRowSize(); ++place) ++rows.GetRow(i)[place];
    }
}

/// Loads a table of rows, and goes on with rows of that shape.
void ReadRows(PCExBase& cursor) {
    BufferBase rows;
    rows.SetRowSize(3);
    rows.AllocateEx(5);
    Try([&] { rows.PersistXML(cursor, true); });
    TouchRows(rows);
    BufferBase copy;
    copy.Copy(rows, 0);
    if (!copy.IsSame(rows)) std::abort();
    const auto goOn = [&](auto work) {
        BufferBase other;
        other.Copy(rows, 0);
        Try([&] { work(other); });
        TouchRows(other);
    };
    goOn([](BufferBase& other) { other.AddNewRow(); });
    goOn([](BufferBase& other) { other.Allocate(); });
    goOn([](BufferBase& other) { other.Merge(other); });
    for (const int size : {1, 3, 255}) {
        BufferBase few;
        few.SetRowSize(static_cast<unsigned char>(size));
        few.Allocate(2);
        goOn([&](BufferBase& other) { other.Merge(few); });
        goOn([&](BufferBase& other) { other.Unite(few); });
        Try([&] { few.Unite(rows); });
        Try([&] { few.Merge(rows); });
        TouchRows(few);
        goOn([&](BufferBase& other) {
            BufferEx description;
            description.AttachData(&other);
            description.SetFieldCount(1);
            description.SetFieldDefinition(0, static_cast<unsigned char>(size), "", "");
            description.Allocate(2);
        });
    }
    // Here the room of the rows that were there before can still be known.
    for (int i = 0; i < 3; ++i) Try([&] { rows.AddNewRow(); });
    BufferBase row;
    row.SetRowSize(255);
    row.Allocate(1);
    Try([&] { rows.Merge(row); });
    TouchRows(rows);
}

/// Loads a block of bytes, reads it, and stores it by its text.
void ReadBlob(PCExBase& cursor) {
    HXBlob blob;
    try {
        blob.PersistXML(cursor);
    } catch (CMemoryException* e) {
        e->Delete();
        if (blob.m_nSize != 0 || blob.m_pData) std::abort();
    }
    HXBlob copy;
    if (blob.IsValid()) {
        if (!copy.StringToBinary(blob.ToCString()) || !copy.IsSameData(blob)) std::abort();
        if (std::memcmp(copy.m_pData, blob.m_pData, blob.m_nSize) != 0) std::abort();
    }
    copy.Delete();
    blob.Delete();
}

/// Reads the current element, and with it as many levels below it as `depth` says. The
/// tags are those of the document's own elements.
void ReadElement(PCExBase& cursor, int depth) {
    ReadRows(cursor);
    ReadBlob(cursor);
    std::vector<CString> names = {"Rg", "Co"};
    for (IXMLDOMNodePtr node = cursor.GetCurElem()->firstChild(); node && names.size() < 8;
         node = node->nextSibling())
        if (node->nodeType() == NODE_ELEMENT) names.push_back(node->nodeName());
    for (const CString& name : names) {
        ReadAll(cursor, name, true);
        ReadAll(cursor, name, false);
        ReadSingle(cursor, name);
        cursor.GetChild(name, 1, cursor.GetCurElem());
        for (std::uint16_t index = 0; index < 3; ++index) {
            cursor.m_nChildIndex = index;
            ReadAll(cursor, name, true);
            cursor.m_nChildIndex = index;
            const bool opened = static_cast<bool>(cursor.PersistElement(name, true));
            cursor.m_nChildIndex = 0;
            if (!opened) continue;
            if (depth > 0) ReadElement(cursor, depth - 1);
            cursor.PopElement(false);
        }
    }
}

}  // namespace
}  // namespace ZT

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const testing_support::NoMemory limit(ZT::kGreatestArray);
    const IXMLDOMDocumentPtr doc = IXMLDOMDocumentPtr::CreateInstance();
    if (!doc->loadXML(std::string_view(reinterpret_cast<const char*>(data), size))) return 0;
    ZT::PC pc;
    pc.m_mode = 0;
    ZT::PCExBase cursor(&pc, doc);
    cursor.Push(doc->documentElement());
    ZT::ReadElement(cursor, 1);
    return 0;
}
