/// @file
/// A counted pointer to an interface.

#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

#include <platform/com/ComError.h>
#include <platform/com/IUnknown.h>

/// Holds one reference to an object through `Interface`, or nothing. A value: each copy
/// holds a reference of its own. It converts to the plain pointer, which the holder keeps;
/// its address operator is for operations that give an interface out.
///
/// A call through a null pointer raises `_com_error` with `E_POINTER`. Made or assigned
/// from a pointer to another interface, it asks the object for its own: an object that
/// answers `E_NOINTERFACE` gives the null pointer, and another failure raises
/// `_com_error` with that result.
///
/// `id` identifies the interface; `InterfaceIdOf<Interface>` tells it.
template <class Interface, const IID* id = &InterfaceIdOf<Interface>::value>
class ComPtr {
public:
    ComPtr() noexcept = default;
    ComPtr(std::nullptr_t) noexcept {}
    /// Holds `pointer` with a reference added, or with `addReference` false the
    /// reference that the caller had.
    ComPtr(Interface* pointer, bool addReference = true) noexcept : m_pointer(pointer) {
        if (addReference) AddReference();
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.m_pointer) {}
    ComPtr(ComPtr&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
    /// The object's own interface, asked of it through another one.
    template <class Other>
    requires(!std::is_convertible_v<Other*, Interface*> && std::is_convertible_v<Other*, IUnknown*>)
        ComPtr(Other* other) {
        Ask(other);
    }
    template <class Other, const IID* otherId>
    requires(!std::is_same_v<Other, Interface>) ComPtr(const ComPtr<Other, otherId>& other) {
        Ask(other.GetInterfacePtr());
    }
    ~ComPtr() {
        if (m_pointer != nullptr) m_pointer->Release();
    }

    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(m_pointer, other.m_pointer);
        return *this;
    }

    static const IID& GetIID() { return *id; }

    /// The plain pointer, no reference added.
    Interface* GetInterfacePtr() const noexcept { return m_pointer; }
    operator Interface*() const noexcept { return m_pointer; }
    Interface& operator*() const { return *Required(); }
    Interface* operator->() const { return Required(); }

    /// Where an operation may write a new interface pointer whose reference this pointer
    /// then holds; what it held before is released.
    Interface** operator&() noexcept {
        *this = nullptr;
        return &m_pointer;
    }

    /// Takes over `pointer` with the caller's reference, or with `addReference` true with a
    /// new one; what was held before is released.
    void Attach(Interface* pointer, bool addReference = false) noexcept {
        *this = ComPtr(pointer, addReference);
    }
    /// Hands the pointer with its reference over to the caller.
    Interface* Detach() noexcept { return std::exchange(m_pointer, nullptr); }

    /// Adds a reference for the caller. A null pointer raises `E_POINTER`.
    void AddRef() { Required()->AddRef(); }
    /// Gives up the reference and becomes null. A null pointer raises `E_POINTER`.
    void Release() {
        Required();
        *this = nullptr;
    }

    /// Asks the object for the interface `otherId`; `*pointer` gets a reference of its own.
    /// `E_POINTER` for a null pointer.
    HRESULT QueryInterface(const IID& otherId, void** pointer) const {
        if (m_pointer == nullptr) return E_POINTER;
        return m_pointer->QueryInterface(otherId, pointer);
    }
    /// The same, into a plain pointer to another interface.
    template <class Other>
    HRESULT QueryInterface(const IID& otherId, Other** pointer) const {
        return QueryInterface(otherId, reinterpret_cast<void**>(pointer));
    }

    explicit operator bool() const noexcept { return m_pointer != nullptr; }
    bool operator!() const noexcept { return m_pointer == nullptr; }

    friend bool operator==(const ComPtr& a, const ComPtr& b) noexcept {
        return a.m_pointer == b.m_pointer;
    }
    template <class T>
    requires std::is_convertible_v<T*, const Interface*>
    friend bool operator==(const ComPtr& a, T* b) noexcept { return a.m_pointer == b; }
    friend bool operator==(const ComPtr& a, std::nullptr_t) noexcept {
        return a.m_pointer == nullptr;
    }
    friend std::strong_ordering operator<=>(const ComPtr& a, const ComPtr& b) noexcept {
        return std::compare_three_way()(a.m_pointer, b.m_pointer);
    }

private:
    void AddReference() const {
        if (m_pointer != nullptr) m_pointer->AddRef();
    }
    Interface* Required() const {
        if (m_pointer == nullptr) _com_issue_error(E_POINTER);
        return m_pointer;
    }
    void Ask(IUnknown* other) {
        if (other == nullptr) return;
        void* found = nullptr;
        const HRESULT result = other->QueryInterface(*id, &found);
        if (FAILED(result) && result != E_NOINTERFACE) _com_issue_error(result);
        if (SUCCEEDED(result)) m_pointer = static_cast<Interface*>(found);
    }

    Interface* m_pointer = nullptr;
};

using IUnknownPtr = ComPtr<IUnknown>;
