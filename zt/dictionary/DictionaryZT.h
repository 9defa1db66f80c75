/// @file
/// The typed name/value table.

#pragma once

#include <platform/collections/CMapStringToPtr.h>
#include <platform/com/COleVariant.h>
#include <zt/frame/RefObj.h>
#include <zt/frame/TriStateAlg.h>
#include <zt/interfaces/IDictionary_ZT.h>
#include <zt/interfaces/InterfacePart.h>

namespace ZT {

/// A bag of named parameters, each an entry of one type for as long as it exists: an `int`, a
/// `double`, a `bool`, a three-state value, a text, a variant or an interface pointer.
///
/// Names are compared byte by byte, so that upper and lower case differ; the empty text is a
/// name like any other. An entry is read and changed only through the operations of its own
/// type: a request of another type answers false and converts nothing. Only `Clear` makes a
/// name free for another type.
///
/// The table has two faces. Here, the setters refuse a name that was not declared by `AddItem`,
/// so that a set of declared parameters is closed; only `SetBool2`, `SetInterface` and
/// `SetPointer` declare what is missing. Through `IDictionary_ZT`, all setters do, so that
/// another module can fill the bag freely.
///
/// A null name is never found and never entered: the operations answer as for an absent name.
/// Those that would declare an absent one, `AddItem`, `SetBool2`, `SetInterface` and
/// `SetPointer`, do nothing for a null one, and answer false if they answer. Where an operation
/// answers false, what it would have written stays as it was. Finding a name takes the same time
/// however many entries there are, and allocates nothing. An entry for which there is no memory
/// raises the memory exception, and the table stays as it was.
///
/// A dictionary lives by its reference count, which starts at 1; in by-value mode it starts at
/// 0, and nothing but its owner ends it. It has no stored form.
class ZT_API DictionaryZT : public RefObj {
public:
    /// @name Items
    /// What a name stands for, with the description it was declared with.
    /// @{
    class ZT_API Item {
    public:
        explicit Item(EDictionaryType_ZT type) : m_type(type) {}
        Item(const Item&) = delete;
        Item& operator=(const Item&) = delete;
        virtual ~Item();

        EDictionaryType_ZT m_type;
        CString m_strDescription;
    };

    /// A number or a truth value, in one slot that is read by the type of the item. Zero and
    /// false to begin with.
    class ZT_API ItemBasic : public Item {
    public:
        explicit ItemBasic(EDictionaryType_ZT type) : Item(type) {}
        ~ItemBasic() override;

        union Slot {
            int64 bits = 0;  ///< the whole slot
            int intValue;
            double doubleValue;
            bool boolValue;
            ZT3State stateValue;
        };
        Slot m_value;
    };

    /// A text, empty to begin with.
    class ZT_API ItemString : public Item {
    public:
        explicit ItemString(EDictionaryType_ZT type) : Item(type) {}
        ~ItemString() override;

        CString m_value;
    };

    /// A variant, empty to begin with; what it owns ends with the item.
    class ZT_API ItemVariant : public Item {
    public:
        explicit ItemVariant(EDictionaryType_ZT type) : Item(type) {}
        ~ItemVariant() override;

        COleVariant m_value;
    };

    /// An interface pointer, null to begin with. It is neither counted nor released.
    class ZT_API ItemInterface : public Item {
    public:
        explicit ItemInterface(EDictionaryType_ZT type) : Item(type) {}
        ~ItemInterface() override;

        IUnknown* m_pUnknown = nullptr;
    };
    /// @}

    /// Empty, with the option set.
    DictionaryZT() : DictionaryZT(true, false) {}
    /// Empty. The library stores `bOption` and never reads it, nor is there an operation that
    /// does: it is a field for classes that derive from this one. `bByVal` is the by-value
    /// mode.
    DictionaryZT(bool bOption, bool bByVal);
    ~DictionaryZT() override;

    /// Destroys all items. The table is emptied only after the last one has ended: what an item
    /// ends with itself, as the object of a variant whose last reference it held, must not use
    /// this dictionary, which still has the names of items that are gone.
    void Clear();

    /// `IDictionary_ZT` and `IUnknown` give the part that shows this table, with a reference
    /// added; `IID_NativeObject` gives the `DictionaryZT` itself, with none. Any other
    /// identifier gives null and `E_NOINTERFACE`, a null `ppv` `DISP_E_PARAMNOTOPTIONAL`.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

    /// @name Declaring entries
    /// @{
    /// Enters a name with a cleared value. False when the name is null or has an entry already,
    /// or the type is `eDictNone`. A number that is none of the types makes an `ItemBasic` that
    /// keeps that number, and that no typed operation reads.
    bool AddItem(const char* name, EDictionaryType_ZT type, const char* description);
    /// A new item of the class for that type, which the caller owns and which stands in no
    /// table: a number that has no class of its own, `eDictNone` included, gives an `ItemBasic`.
    static Item* CreateNewItem(EDictionaryType_ZT type);
    /// @}

    /// @name Examining entries
    /// An index counts the entries in the order of the table's walk, which stays the same until
    /// an entry is added. What takes one walks from the start.
    /// @{
    /// The item of a name, or null. The table keeps it.
    Item* FindItem(const char* name) const {
        if (name == nullptr) return nullptr;
        const CMapStringToPtr::CPair* pair = m_map.PLookup(name);
        return pair == nullptr ? nullptr : static_cast<Item*>(pair->value);
    }
    /// The item at an index, or null.
    Item* GetItem(int index) const;
    bool IsIn(const char* name) const { return FindItem(name) != nullptr; }
    /// Number of entries of a type; of all entries for `eDictNone`.
    int GetParamCount(EDictionaryType_ZT type) const;
    /// The name at an index; empty if there is none.
    CString GetParamName(int index) const;
    /// The type of an entry; `eDictNone` for a name that has none.
    EDictionaryType_ZT GetParamType(const char* name) const;
    /// Copies the description of a string entry. Deliberately false for an entry of any other
    /// type, whatever description it holds; `FindItem` gives that.
    bool GetParamDescription(const char* name, CString& out) const;
    /// The type that is counted for a number that came through the interface: 1, 2, 3, 5, 6 and
    /// 7 stay, and every other number gives `eDictNone`. Deliberately so does 4: three-state
    /// entries are not counted on their own.
    static EDictionaryType_ZT IntToType(int number);
    /// @}

    /// @name Values
    /// False when the name is absent or its entry is of another type. The setters declare
    /// nothing.
    /// @{
    bool GetInt(const char* name, int& out) const {
        return Read(name, eDictInt, &ItemBasic::Slot::intValue, out);
    }
    bool SetInt(const char* name, int value) {
        return Write(name, eDictInt, &ItemBasic::Slot::intValue, value);
    }
    bool GetDouble(const char* name, double& out) const {
        return Read(name, eDictDouble, &ItemBasic::Slot::doubleValue, out);
    }
    bool SetDouble(const char* name, double value) {
        return Write(name, eDictDouble, &ItemBasic::Slot::doubleValue, value);
    }
    bool GetBool(const char* name, bool& out) const {
        return Read(name, eDictBool, &ItemBasic::Slot::boolValue, out);
    }
    bool SetBool(const char* name, bool value) {
        return Write(name, eDictBool, &ItemBasic::Slot::boolValue, value);
    }
    /// A stored number that is none of the three states reads as false.
    bool Get3State(const char* name, ZT3State& out) const;
    /// Stores the number as it comes.
    bool Set3State(const char* name, ZT3State value) {
        return Write(name, eDict3State, &ItemBasic::Slot::stateValue, value);
    }
    bool GetString(const char* name, CString& out) const {
        const auto* item = FindTyped<ItemString>(name, eDictString);
        if (item == nullptr) return false;
        out = item->m_value;
        return true;
    }
    bool SetString(const char* name, const CString& value) {
        auto* item = FindTyped<ItemString>(name, eDictString);
        if (item == nullptr) return false;
        item->m_value = value;
        return true;
    }
    /// A copy of the variant. One that cannot be copied raises the OLE exception.
    bool Get(const char* name, COleVariant& out) const;
    /// Stores a copy of the variant. One that cannot be copied raises the OLE exception.
    bool Set(const char* name, const COleVariant& value);
    /// @}

    /// @name Options
    /// A `bool` that may not have been set at all.
    /// @{
    /// The value; false also for a name that is absent or of another type.
    bool GetBool2(const char* name) const;
    /// The value; `eUnknown` for a name that is absent or of another type.
    ETri GetBool3(const char* name) const;
    /// Declares the entry, if the name is absent, and sets it. A null name and an entry of
    /// another type are left alone.
    void SetBool2(const char* name, bool value);
    /// @}

    /// @name Pointers
    /// The table owns none of them and counts no references: a pointer is valid as long as
    /// someone else keeps what it points to.
    /// @{
    /// Hands over the interface pointer, with no reference added. False as for a value.
    bool GetInterface(const char* name, IUnknown*& out) const;
    /// Declares the entry, if the name is absent, and stores the pointer, with no reference
    /// added. A null name and an entry of another type are left alone.
    void SetInterface(const char* name, IUnknown* p);
    /// Keeps a raw pointer in a variant entry, as a variant of the type word `VT_BYREF`, and
    /// declares the entry if the name is absent. False for a null name or an entry of another
    /// type. The variant is deliberately overwritten without being cleared: a string, array or
    /// interface reference that the entry held is lost, not ended.
    bool SetPointer(const char* name, void* p);
    /// The pointer that `SetPointer` stored, or null: also for a variant entry with another
    /// type word.
    void* GetPointer(const char* name) const;
    /// @}

protected:
    class ZT_API XDictionary_ZT final
        : public InterfacePart<XDictionary_ZT, DictionaryZT, IDictionary_ZT> {
    public:
        static auto Place() { return &DictionaryZT::m_xDictionary_ZT; }

        HRESULT GetParamCount(int type, int* count) override;
        HRESULT GetParamName(int index, BSTR* name) override;
        HRESULT GetParamDescription(const char* name, BSTR* description) override;
        HRESULT GetParamType(const char* name, int* type) override;
        HRESULT GetInt(const char* name, int* value) override;
        HRESULT SetInt(const char* name, int value) override;
        HRESULT GetDouble(const char* name, double* value) override;
        HRESULT SetDouble(const char* name, double value) override;
        HRESULT GetBool(const char* name, VARIANT_BOOL* value) override;
        HRESULT SetBool(const char* name, VARIANT_BOOL value) override;
        HRESULT Get3State(const char* name, int* value) override;
        HRESULT Set3State(const char* name, ZT3State value) override;
        HRESULT GetString(const char* name, BSTR* value) override;
        HRESULT SetString(const char* name, const char* value) override;
        HRESULT Get(const char* name, VARIANT* value) override;
        HRESULT Set(const char* name, const VARIANT* value) override;
        HRESULT GetInterface(const char* name, IUnknown** value) override;
        HRESULT SetInterface(const char* name, IUnknown* value) override;

    private:
        /// The table, with an entry of this name: one of this type, if there was none.
        DictionaryZT& Declared(const char* name, EDictionaryType_ZT type);
    };

    XDictionary_ZT m_xDictionary_ZT;
    CMapStringToPtr m_map;
    bool m_bOption;

private:
    /// The item of a name, if it is of this type, of which `Typed` is the class.
    template <class Typed>
    Typed* FindTyped(const char* name, EDictionaryType_ZT type) const {
        Item* item = FindItem(name);
        return item != nullptr && item->m_type == type ? static_cast<Typed*>(item) : nullptr;
    }
    /// The same; an absent name is declared first, without a description.
    template <class Typed>
    Typed* FindOrDeclare(const char* name, EDictionaryType_ZT type);

    template <class Value>
    bool Read(const char* name, EDictionaryType_ZT type, Value ItemBasic::Slot::*field,
              Value& out) const {
        const auto* item = FindTyped<ItemBasic>(name, type);
        if (item == nullptr) return false;
        out = item->m_value.*field;
        return true;
    }
    template <class Value>
    bool Write(const char* name, EDictionaryType_ZT type, Value ItemBasic::Slot::*field,
               Value value) {
        auto* item = FindTyped<ItemBasic>(name, type);
        if (item == nullptr) return false;
        item->m_value.*field = value;
        return true;
    }

    const CMapStringToPtr::CPair* PairAt(int index) const;
};

}  // namespace ZT
