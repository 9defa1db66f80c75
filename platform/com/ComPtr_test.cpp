#include <platform/com/ComPtr.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>

#include <utility>

namespace {

using testing_support::CountedObject;
using testing_support::ICounted;
using testing_support::IID_ICounted;

constexpr IID kOtherId = {0x11111111, 0x2222, 0x3333, {1, 2, 3, 4, 5, 6, 7, 8}};

// An interface that the object does not have.
class IOther : public IUnknown {
protected:
    ~IOther() = default;
};

using CountedPtr = ComPtr<ICounted>;
using OtherPtr = ComPtr<IOther, &kOtherId>;

template <class Work>
HRESULT ThrownResult(Work work) {
    try {
        work();
    } catch (const _com_error& error) {
        return error.Error();
    }
    return S_OK;
}

struct ComPtrTest : testing::Test {
    ~ComPtrTest() override { EXPECT_EQ(object.count, 1u); }

    CountedObject object;
};

TEST_F(ComPtrTest, HoldsAReferenceWhileItLives) {
    {
        const CountedPtr pointer(&object);
        EXPECT_EQ(object.count, 2u);
        EXPECT_EQ(pointer->Seven(), 7);
        EXPECT_EQ((*pointer).Seven(), 7);
        EXPECT_EQ(pointer.GetInterfacePtr(), &object);
    }
    EXPECT_EQ(object.count, 1u);
    EXPECT_EQ(object.queries, 0);
}

TEST_F(ComPtrTest, TakesOverAReferenceOnRequest) {
    object.AddRef();
    const CountedPtr pointer(&object, false);
    EXPECT_EQ(object.count, 2u);
}

TEST_F(ComPtrTest, CopiesHoldReferencesOfTheirOwn) {
    CountedPtr first(&object);
    CountedPtr second(first);
    EXPECT_EQ(object.count, 3u);
    CountedPtr third;
    third = second;
    EXPECT_EQ(object.count, 4u);
    const CountedPtr& same = third;
    third = same;
    EXPECT_EQ(object.count, 4u);
    const CountedPtr moved(std::move(second));
    EXPECT_EQ(object.count, 4u);
    EXPECT_TRUE(second == nullptr);
    third = std::move(first);
    EXPECT_EQ(object.count, 3u);
    third = nullptr;
    EXPECT_EQ(object.count, 2u);
}

TEST_F(ComPtrTest, AssignsAPlainPointer) {
    CountedPtr pointer;
    pointer = &object;
    EXPECT_EQ(object.count, 2u);
}

TEST_F(ComPtrTest, CallThroughNullRaisesThePointerFailure) {
    CountedPtr pointer;
    EXPECT_EQ(ThrownResult([&] { pointer->Seven(); }), E_POINTER);
    EXPECT_EQ(ThrownResult([&] { (*pointer).Seven(); }), E_POINTER);
    EXPECT_EQ(ThrownResult([&] { pointer.AddRef(); }), E_POINTER);
    EXPECT_EQ(ThrownResult([&] { pointer.Release(); }), E_POINTER);
    void* found;
    EXPECT_EQ(pointer.QueryInterface(IID_ICounted, &found), E_POINTER);
}

TEST_F(ComPtrTest, AttachAndDetachPassTheReference) {
    CountedPtr pointer;
    object.AddRef();
    pointer.Attach(&object);
    EXPECT_EQ(object.count, 2u);
    pointer.Attach(&object, true);
    EXPECT_EQ(object.count, 2u);
    ICounted* plain = pointer.Detach();
    EXPECT_FALSE(pointer);
    EXPECT_EQ(object.count, 2u);
    plain->Release();
}

TEST_F(ComPtrTest, AddRefAndReleaseByHand) {
    CountedPtr pointer(&object);
    pointer.AddRef();
    EXPECT_EQ(object.count, 3u);
    object.Release();
    pointer.Release();
    EXPECT_TRUE(!pointer);
    EXPECT_EQ(object.count, 1u);
}

TEST_F(ComPtrTest, AddressReleasesWhatWasHeld) {
    CountedPtr pointer(&object);
    ICounted** place = &pointer;
    EXPECT_EQ(object.count, 1u);
    EXPECT_EQ(*place, nullptr);
    object.QueryInterface(IID_ICounted, reinterpret_cast<void**>(place));
    EXPECT_EQ(pointer->Seven(), 7);
    EXPECT_EQ(object.count, 2u);
}

TEST_F(ComPtrTest, AnotherInterfaceIsAskedFor) {
    const IUnknownPtr unknown(&object);
    const CountedPtr pointer(unknown);
    EXPECT_EQ(object.queries, 1);
    EXPECT_EQ(pointer->Seven(), 7);
    EXPECT_EQ(object.count, 3u);
    CountedPtr assigned;
    assigned = unknown;
    EXPECT_EQ(object.count, 4u);
    IUnknown* plain = unknown;
    assigned = plain;
    EXPECT_EQ(object.count, 4u);
}

TEST_F(ComPtrTest, MissingInterfaceGivesNull) {
    const CountedPtr pointer(&object);
    const OtherPtr other(pointer);
    EXPECT_TRUE(other == nullptr);
    EXPECT_EQ(object.count, 2u);
    EXPECT_TRUE(OtherPtr(CountedPtr()) == nullptr);
}

TEST_F(ComPtrTest, OtherFailuresOfTheQueryAreRaised) {
    const CountedPtr pointer(&object);
    object.failure = E_UNEXPECTED;
    EXPECT_EQ(ThrownResult([&] { OtherPtr other(pointer); }), E_UNEXPECTED);
    object.failure = S_OK;
}

TEST_F(ComPtrTest, QueriesIntoPlainPointers) {
    const CountedPtr pointer(&object);
    IUnknown* unknown = nullptr;
    EXPECT_EQ(pointer.QueryInterface(IID_IUnknown, &unknown), S_OK);
    EXPECT_EQ(object.count, 3u);
    unknown->Release();
    EXPECT_EQ(pointer.QueryInterface(kOtherId, &unknown), E_NOINTERFACE);
}

TEST_F(ComPtrTest, ComparesPointers) {
    CountedObject another;
    const CountedPtr a(&object), b(&object), c(&another), null;
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a != c);
    EXPECT_TRUE(a == &object);
    EXPECT_TRUE(null == nullptr);
    EXPECT_TRUE(a != nullptr);
    EXPECT_TRUE((a < c) != (c < a));
    EXPECT_TRUE(a && !null);
}

TEST_F(ComPtrTest, KnowsItsIdentifier) {
    EXPECT_EQ(CountedPtr::GetIID(), IID_ICounted);
    EXPECT_EQ(OtherPtr::GetIID(), kOtherId);
}

}  // namespace
