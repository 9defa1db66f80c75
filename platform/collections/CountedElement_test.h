/// @file
/// An element type for the tests of containers of values.

#pragma once

#include <compare>

/// An element that counts how many of its kind live, that knows whether it does itself,
/// and that refuses to be copied when told to. Not plain in any way.
class CountedElement {
public:
    CountedElement() : CountedElement(0) {}
    CountedElement(int number) : m_self(this), m_number(number) {
        Spend();
        ++s_living;
    }
    CountedElement(const CountedElement& other) : CountedElement(other.m_number) {}
    CountedElement(CountedElement&& other) noexcept : m_self(this), m_number(other.m_number) {
        other.m_number = kMoved;
        ++s_living;
    }
    CountedElement& operator=(const CountedElement& other) {
        Spend();
        m_number = other.m_number;
        return *this;
    }
    CountedElement& operator=(CountedElement&& other) = delete;
    ~CountedElement() {
        m_self = nullptr;
        --s_living;
    }

    /// Whether the object was constructed where it stands.
    bool IsAlive() const { return m_self == this; }
    int Number() const { return m_number; }
    friend bool operator==(const CountedElement& a, const CountedElement& b) {
        return a.m_number == b.m_number;
    }

    static int Living() { return s_living; }
    /// Lets `count` more constructions and assignments succeed, and the next one throw.
    static void FailAfter(int count) { s_allowed = count; }
    static void NeverFail() { s_allowed = -1; }

    struct Failure {};

private:
    static constexpr int kMoved = -99999;

    static void Spend() {
        if (s_allowed == 0) throw Failure();
        if (s_allowed > 0) --s_allowed;
    }

    static inline int s_living = 0;
    static inline int s_allowed = -1;

    const CountedElement* m_self;
    int m_number;
};
