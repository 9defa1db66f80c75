#include <platform/object/NewObject.h>

#include <gtest/gtest.h>
#include <tests/Raises.h>

#include <cstdlib>
#include <memory>
#include <utility>

using testing_support::Raises;

namespace {

int alive = 0;

// An object for which there is memory only while `memory` is set.
struct Scarce {
    explicit Scarce(std::unique_ptr<int> kept) : m_kept(std::move(kept)) {
        if (*m_kept < 0) throw 5;
        ++alive;
    }
    Scarce(const Scarce&) = delete;
    Scarce& operator=(const Scarce&) = delete;
    ~Scarce() { --alive; }

    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
        return memory ? std::malloc(size) : nullptr;
    }
    static void operator delete(void* block) { std::free(block); }
    static void operator delete(void* block, const std::nothrow_t&) noexcept {
        freedAtOnce = true;
        std::free(block);
    }

    static inline bool memory = true;
    static inline bool freedAtOnce = false;
    std::unique_ptr<int> m_kept;
};

TEST(NewObject, IsMadeFromItsArguments) {
    const auto* object = AfxNewObject<Scarce>(std::make_unique<int>(7));
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(*object->m_kept, 7);
    delete object;
    EXPECT_EQ(alive, 0);
}

TEST(NewObject, WithoutMemoryRaises) {
    Scarce::memory = false;
    EXPECT_TRUE(Raises<CMemoryException>([] { AfxNewObject<Scarce>(std::make_unique<int>(7)); }));
    Scarce::memory = true;
    EXPECT_EQ(alive, 0);
}

TEST(NewObject, WhatTheConstructorRaisesPassesThroughAndTheMemoryIsFreed) {
    EXPECT_THROW(AfxNewObject<Scarce>(std::make_unique<int>(-1)), int);
    EXPECT_TRUE(Scarce::freedAtOnce);
    EXPECT_EQ(alive, 0);
}

}  // namespace
