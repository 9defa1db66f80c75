#include <platform/collections/CPlex.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>

#include <new>

namespace {

constexpr UINT_PTR kLargestBlock = PTRDIFF_MAX;

}  // namespace

CPlex* CPlex::Create(CPlex*& head, UINT_PTR count, UINT_PTR elementSize) {
    if (count == 0 || elementSize == 0) AfxThrowInvalidArgException();
    if (count > (kLargestBlock - sizeof(CPlex)) / elementSize) AfxThrowMemoryException();

    void* memory = ::operator new(sizeof(CPlex) + count * elementSize, std::nothrow);
    if (memory == nullptr) AfxThrowMemoryException();
    return head = ::new (memory) CPlex{head};
}

void CPlex::FreeDataChain(CPlex* head) {
    while (head != nullptr) {
        CPlex* next = head->pNext;
        ::operator delete(head);
        head = next;
    }
}
