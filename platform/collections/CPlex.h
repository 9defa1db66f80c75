/// @file
/// Blocks of memory from which the lists and the maps cut their nodes.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

#include <cstddef>

/// The head of one block of equal elements; the elements follow it in memory.
///
/// Blocks form a chain, the newest first. A block is only ever freed with the whole
/// chain behind it, and freeing runs no destructor: whoever put objects into the block
/// has ended them before.
struct ZTP_API CPlex {
    /// The block that was made before this one, or null. Aligned so that the elements are.
    alignas(std::max_align_t) CPlex* pNext;

    /// The first element of the block, aligned for any ordinary type.
    void* data() { return this + 1; }

    /// Makes a block of `count` elements of `elementSize` bytes, not initialised, and puts
    /// it in front of the chain `head`. A count or a size of 0 raises the invalid-argument
    /// exception; a block that is too large or for which there is no memory raises the
    /// memory exception and leaves the chain as it was.
    static CPlex* Create(CPlex*& head, UINT_PTR count, UINT_PTR elementSize);

    /// Frees this block and all that were made before it. May be called on null, as the
    /// chain of an empty container is.
    static void FreeDataChain(CPlex* head);

    /// Frees this block and all that were made before it.
    void FreeDataChain() { FreeDataChain(this); }
};
