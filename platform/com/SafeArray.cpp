#include <platform/com/SafeArray.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <platform/com/Bstr.h>
#include <platform/com/IUnknown.h>
#include <platform/com/Variant.h>

namespace {

// What elements of one type are: their size and how they are ended and copied. A null
// operation stands for plain bytes.
struct ElementKind {
    VARTYPE type;
    ULONG size;
    USHORT features;
    HRESULT (*clear)(void*);
    HRESULT (*copy)(void* to, const void* from);
};

HRESULT ClearString(void* element) {
    SysFreeString(*static_cast<BSTR*>(element));
    return S_OK;
}

HRESULT CopyString(void* to, const void* from) {
    const BSTR string = *static_cast<const BSTR*>(from);
    BSTR& copy = *static_cast<BSTR*>(to);
    copy = nullptr;
    if (string == nullptr) return S_OK;
    copy = SysAllocStringByteLen(reinterpret_cast<const char*>(string), SysStringByteLen(string));
    return copy == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT ClearInterface(void* element) {
    IUnknown* pointer = *static_cast<IUnknown**>(element);
    if (pointer != nullptr) pointer->Release();
    return S_OK;
}

HRESULT CopyInterface(void* to, const void* from) {
    IUnknown* pointer = *static_cast<IUnknown* const*>(from);
    if (pointer != nullptr) pointer->AddRef();
    *static_cast<IUnknown**>(to) = pointer;
    return S_OK;
}

HRESULT ClearVariant(void* element) {
    return VariantClear(static_cast<VARIANT*>(element));
}

HRESULT CopyVariant(void* to, const void* from) {
    VariantInit(static_cast<VARIANT*>(to));
    return VariantCopy(static_cast<VARIANT*>(to), static_cast<const VARIANT*>(from));
}

constexpr ElementKind kKinds[] = {
    {VT_I1, 1, 0, nullptr, nullptr},
    {VT_UI1, 1, 0, nullptr, nullptr},
    {VT_I2, 2, 0, nullptr, nullptr},
    {VT_UI2, 2, 0, nullptr, nullptr},
    {VT_BOOL, 2, 0, nullptr, nullptr},
    {VT_I4, 4, 0, nullptr, nullptr},
    {VT_UI4, 4, 0, nullptr, nullptr},
    {VT_INT, 4, 0, nullptr, nullptr},
    {VT_UINT, 4, 0, nullptr, nullptr},
    {VT_R4, 4, 0, nullptr, nullptr},
    {VT_ERROR, 4, 0, nullptr, nullptr},
    {VT_I8, 8, 0, nullptr, nullptr},
    {VT_UI8, 8, 0, nullptr, nullptr},
    {VT_R8, 8, 0, nullptr, nullptr},
    {VT_DATE, 8, 0, nullptr, nullptr},
    {VT_BSTR, sizeof(BSTR), FADF_BSTR, ClearString, CopyString},
    {VT_UNKNOWN, sizeof(IUnknown*), FADF_UNKNOWN, ClearInterface, CopyInterface},
    {VT_DISPATCH, sizeof(IUnknown*), FADF_DISPATCH, ClearInterface, CopyInterface},
    {VT_VARIANT, sizeof(VARIANT), FADF_VARIANT, ClearVariant, CopyVariant},
};

const ElementKind* FindKind(VARTYPE type) {
    const auto* found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                     [type](const ElementKind& kind) { return kind.type == type; });
    return found == std::end(kKinds) ? nullptr : found;
}

// The element type stands in front of the record that callers see.
constexpr std::size_t kPrefix = 16;
constexpr std::size_t kMostBytes = std::numeric_limits<std::ptrdiff_t>::max();

VARTYPE TypeOf(const SAFEARRAY* array) {
    VARTYPE type;
    std::memcpy(&type, reinterpret_cast<const char*>(array) - kPrefix, sizeof type);
    return type;
}

const ElementKind& KindOf(const SAFEARRAY* array) {
    return *FindKind(TypeOf(array));
}

// The bounds, last dimension first; the record declares the first of them only.
SAFEARRAYBOUND* Bounds(SAFEARRAY* array) {
    return static_cast<SAFEARRAYBOUND*>(array->rgsabound);
}
const SAFEARRAYBOUND* Bounds(const SAFEARRAY* array) {
    return static_cast<const SAFEARRAYBOUND*>(array->rgsabound);
}

// The bounds of a dimension, which is counted from 1.
const SAFEARRAYBOUND& BoundOf(const SAFEARRAY* array, UINT dimension) {
    return Bounds(array)[array->cDims - dimension];
}

bool FitsIndices(const SAFEARRAYBOUND& bound) {
    return std::int64_t{bound.lLbound} + bound.cElements - 1 <= std::numeric_limits<LONG>::max();
}

// Bytes of a block with these bounds, or false when no block can have as many.
bool BlockSize(const SAFEARRAYBOUND* bounds, UINT dimensions, ULONG elementSize,
               std::size_t& bytes) {
    bytes = elementSize;
    for (UINT i = 0; i < dimensions; ++i) {
        const std::size_t elements = bounds[i].cElements;
        if (elements != 0 && bytes > kMostBytes / elements) return false;
        bytes *= elements;
    }
    return true;
}

std::size_t ElementCount(const SAFEARRAY* array) {
    std::size_t bytes = 0;
    BlockSize(Bounds(array), array->cDims, array->cbElements, bytes);
    return bytes / array->cbElements;
}

char* ElementAt(const SAFEARRAY* array, std::size_t index) {
    return static_cast<char*>(array->pvData) + index * array->cbElements;
}

HRESULT ClearElements(const SAFEARRAY* array, std::size_t from, std::size_t to) {
    const ElementKind& kind = KindOf(array);
    if (kind.clear == nullptr) return S_OK;
    for (std::size_t i = from; i < to; ++i) {
        const HRESULT result = kind.clear(ElementAt(array, i));
        if (FAILED(result)) return result;
        std::memset(ElementAt(array, i), 0, array->cbElements);
    }
    return S_OK;
}

HRESULT CopyElements(const SAFEARRAY* from, SAFEARRAY* to) {
    const ElementKind& kind = KindOf(from);
    const std::size_t count = ElementCount(from);
    if (kind.copy == nullptr) {
        std::memcpy(to->pvData, from->pvData, count * from->cbElements);
        return S_OK;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const HRESULT result = kind.copy(ElementAt(to, i), ElementAt(from, i));
        if (FAILED(result)) return result;
    }
    return S_OK;
}

// A block of at least one byte, so that its address tells it from no block.
void* AllocateCleared(std::size_t bytes) {
    return std::calloc(std::max<std::size_t>(bytes, 1), 1);
}

void FreeRecord(SAFEARRAY* array) {
    std::free(reinterpret_cast<char*>(array) - kPrefix);
}

SAFEARRAY* AllocateRecord(const ElementKind& kind, USHORT dimensions) {
    const std::size_t size =
        kPrefix + sizeof(SAFEARRAY) + (dimensions - std::size_t{1}) * sizeof(SAFEARRAYBOUND);
    auto* block = static_cast<char*>(std::calloc(size, 1));
    if (block == nullptr) return nullptr;
    std::memcpy(block, &kind.type, sizeof kind.type);
    auto* array = reinterpret_cast<SAFEARRAY*>(block + kPrefix);
    array->cDims = dimensions;
    array->fFeatures = static_cast<USHORT>(kind.features | FADF_HAVEVARTYPE);
    array->cbElements = kind.size;
    return array;
}

// A new array whose bounds stand as in the record, last dimension first.
SAFEARRAY* Create(const ElementKind& kind, USHORT dimensions, const SAFEARRAYBOUND* bounds) {
    std::size_t bytes;
    if (!BlockSize(bounds, dimensions, kind.size, bytes)) return nullptr;
    SAFEARRAY* array = AllocateRecord(kind, dimensions);
    if (array == nullptr) return nullptr;
    std::copy_n(bounds, dimensions, Bounds(array));
    array->pvData = AllocateCleared(bytes);
    if (array->pvData != nullptr) return array;
    FreeRecord(array);
    return nullptr;
}

HRESULT FindElement(const SAFEARRAY* array, const LONG* indices, char*& element) {
    std::size_t place = 0;
    std::size_t stride = 1;
    for (UINT dimension = 1; dimension <= array->cDims; ++dimension) {
        const SAFEARRAYBOUND& bound = BoundOf(array, dimension);
        const std::int64_t offset = std::int64_t{indices[dimension - 1]} - bound.lLbound;
        if (offset < 0 || offset >= std::int64_t{bound.cElements}) return DISP_E_BADINDEX;
        place += static_cast<std::size_t>(offset) * stride;
        stride *= bound.cElements;
    }
    element = ElementAt(array, place);
    return S_OK;
}

HRESULT CopyElement(const ElementKind& kind, void* to, const void* from) {
    if (kind.copy != nullptr) return kind.copy(to, from);
    std::memcpy(to, from, kind.size);
    return S_OK;
}

bool IsPointerKind(const ElementKind& kind) {
    return (kind.features & (FADF_BSTR | FADF_UNKNOWN | FADF_DISPATCH)) != 0;
}

}  // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds) {
    const ElementKind* kind = FindKind(type);
    if (kind == nullptr || bounds == nullptr || dimensions == 0) return nullptr;
    if (dimensions > std::numeric_limits<USHORT>::max()) return nullptr;
    if (!std::all_of(bounds, bounds + dimensions, FitsIndices)) return nullptr;
    SAFEARRAY* array = Create(*kind, static_cast<USHORT>(dimensions), bounds);
    if (array != nullptr) std::reverse(Bounds(array), Bounds(array) + dimensions);
    return array;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements) {
    const SAFEARRAYBOUND bound = {elements, lowerBound};
    return SafeArrayCreate(type, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
    if (array == nullptr) return S_OK;
    if (array->cLocks != 0) return DISP_E_ARRAYISLOCKED;
    const HRESULT result = ClearElements(array, 0, ElementCount(array));
    if (FAILED(result)) return result;
    std::free(array->pvData);
    FreeRecord(array);
    return S_OK;
}

HRESULT SafeArrayCopy(const SAFEARRAY* array, SAFEARRAY** copy) {
    if (copy == nullptr) return E_INVALIDARG;
    *copy = nullptr;
    if (array == nullptr) return S_OK;
    SAFEARRAY* fresh = Create(KindOf(array), array->cDims, Bounds(array));
    if (fresh == nullptr) return E_OUTOFMEMORY;
    const HRESULT result = CopyElements(array, fresh);
    if (FAILED(result)) {
        SafeArrayDestroy(fresh);
        return result;
    }
    *copy = fresh;
    return S_OK;
}

HRESULT SafeArrayRedim(SAFEARRAY* array, const SAFEARRAYBOUND* bound) {
    if (array == nullptr || bound == nullptr || !FitsIndices(*bound)) return E_INVALIDARG;
    if (array->cLocks != 0) return DISP_E_ARRAYISLOCKED;
    const std::size_t oldCount = ElementCount(array);
    const SAFEARRAYBOUND old = *Bounds(array);
    *Bounds(array) = *bound;
    std::size_t bytes = 0;
    void* block = nullptr;
    if (BlockSize(Bounds(array), array->cDims, array->cbElements, bytes))
        block = AllocateCleared(bytes);
    *Bounds(array) = old;
    if (block == nullptr) return E_OUTOFMEMORY;
    const std::size_t kept = std::min(oldCount, bytes / array->cbElements);
    const HRESULT result = ClearElements(array, kept, oldCount);
    if (FAILED(result)) {
        std::free(block);
        return result;
    }
    std::memcpy(block, array->pvData, kept * array->cbElements);
    std::free(array->pvData);
    array->pvData = block;
    *Bounds(array) = *bound;
    return S_OK;
}

HRESULT SafeArrayLock(SAFEARRAY* array) {
    if (array == nullptr) return E_INVALIDARG;
    if (array->cLocks == std::numeric_limits<USHORT>::max()) return E_UNEXPECTED;
    ++array->cLocks;
    return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY* array) {
    if (array == nullptr) return E_INVALIDARG;
    if (array->cLocks == 0) return E_UNEXPECTED;
    --array->cLocks;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
    if (array == nullptr || data == nullptr) return E_INVALIDARG;
    const HRESULT result = SafeArrayLock(array);
    *data = SUCCEEDED(result) ? array->pvData : nullptr;
    return result;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
    return SafeArrayUnlock(array);
}

UINT SafeArrayGetDim(const SAFEARRAY* array) {
    return array == nullptr ? 0 : array->cDims;
}

UINT SafeArrayGetElemsize(const SAFEARRAY* array) {
    return array == nullptr ? 0 : array->cbElements;
}

HRESULT SafeArrayGetVartype(const SAFEARRAY* array, VARTYPE* type) {
    if (array == nullptr || type == nullptr) return E_INVALIDARG;
    *type = TypeOf(array);
    return S_OK;
}

HRESULT SafeArrayGetLBound(const SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (array == nullptr || bound == nullptr) return E_INVALIDARG;
    if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
    *bound = BoundOf(array, dimension).lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(const SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (array == nullptr || bound == nullptr) return E_INVALIDARG;
    if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
    const SAFEARRAYBOUND& own = BoundOf(array, dimension);
    *bound = static_cast<LONG>(std::int64_t{own.lLbound} + own.cElements - 1);
    return S_OK;
}

HRESULT SafeArrayGetElement(const SAFEARRAY* array, const LONG* indices, void* element) {
    if (array == nullptr || indices == nullptr || element == nullptr) return E_INVALIDARG;
    char* own;
    const HRESULT result = FindElement(array, indices, own);
    return FAILED(result) ? result : CopyElement(KindOf(array), element, own);
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, const void* element) {
    if (array == nullptr || indices == nullptr) return E_INVALIDARG;
    const ElementKind& kind = KindOf(array);
    if (element == nullptr && !IsPointerKind(kind)) return E_INVALIDARG;
    char* own;
    HRESULT result = FindElement(array, indices, own);
    if (FAILED(result)) return result;
    alignas(VARIANT) char fresh[sizeof(VARIANT)];
    const void* source = IsPointerKind(kind) ? static_cast<const void*>(&element) : element;
    result = CopyElement(kind, fresh, source);
    if (FAILED(result)) return result;
    if (kind.clear != nullptr) result = kind.clear(own);
    if (FAILED(result)) {
        kind.clear(fresh);
        return result;
    }
    std::memcpy(own, fresh, kind.size);
    return S_OK;
}

HRESULT SafeArrayPtrOfIndex(const SAFEARRAY* array, const LONG* indices, void** element) {
    if (array == nullptr || indices == nullptr || element == nullptr) return E_INVALIDARG;
    char* own;
    const HRESULT result = FindElement(array, indices, own);
    *element = SUCCEEDED(result) ? own : nullptr;
    return result;
}
