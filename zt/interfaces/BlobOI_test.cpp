#include <zt/interfaces/BlobOI.h>

#include <gtest/gtest.h>
#include <platform/object/CFileException.h>
#include <tests/CountedObject.h>
#include <tests/Raises.h>
#include <zt/memory/BlobCached.h>

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <zt/frame/VirtualTable_test.hpp>
#include <zt/memory/Blob_test.hpp>
#include <zt/memory/TempDirectory_test.hpp>

namespace ZT {
namespace {

int destroyed = 0;

struct Open : BlobOI {
    using BlobOI::BlobOI;
    using BlobOI::m_xBlob;
    Open(const Open&) = default;
    ~Open() override { ++destroyed; }

    static constexpr std::size_t PartOffset() { return offsetof(Open, m_xBlob); }
    static constexpr std::size_t BlobOffset() { return offsetof(Open, m_blob); }
    static constexpr std::size_t PointerOffset() { return offsetof(Open, m_pBlob); }
    static constexpr std::size_t CachedOffset() { return offsetof(Open, m_bCached); }
};

SAFEARRAY* ArrayOf(const std::string& bytes, VARTYPE type = VT_UI1) {
    SAFEARRAY* const array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(bytes.size()));
    if (!bytes.empty()) std::memcpy(array->pvData, bytes.data(), bytes.size());
    return array;
}

std::string BytesIn(const SAFEARRAY* array) {
    return {static_cast<const char*>(array->pvData), array->rgsabound[0].cElements};
}

struct BlobOITest : testing::Test {
    BlobOITest() { destroyed = 0; }
    IBlob* Shown() { return &object.m_xBlob; }

    std::string bytes = "abcdef";
    HXBlob client = Naming(bytes);
    Open object{&client};
    void* found = this;
};

TEST_F(BlobOITest, FieldsFollowTheRootAndThePart) {
    EXPECT_EQ(Open::PartOffset(), sizeof(RefObj));
    EXPECT_EQ(Open::BlobOffset(), sizeof(RefObj) + sizeof(void*));
    EXPECT_EQ(Open::PointerOffset(), Open::BlobOffset() + sizeof(HXBlob));
    EXPECT_EQ(Open::CachedOffset(), Open::PointerOffset() + sizeof(void*));
    EXPECT_EQ(sizeof(BlobOI), Open::CachedOffset() + sizeof(void*));
}

TEST_F(BlobOITest, DefaultShowsTheEmbeddedBlobWithoutABlock) {
    const Open plain;
    EXPECT_EQ(plain.GetRef(), 0u);
    EXPECT_EQ(plain.m_pBlob, &plain.m_blob);
    EXPECT_EQ(plain.m_blob.m_nSize, 0u);
    EXPECT_EQ(plain.m_blob.m_pData, nullptr);
    EXPECT_FALSE(plain.m_bCached);
}

TEST_F(BlobOITest, NamesBytesInTheEmbeddedBlob) {
    const Open naming(4, AddressIn(bytes));
    EXPECT_EQ(naming.GetRef(), 0u);
    EXPECT_EQ(naming.m_pBlob, &naming.m_blob);
    EXPECT_EQ(naming.m_blob.m_nSize, 4u);
    EXPECT_EQ(naming.m_blob.m_pData, AddressIn(bytes));
    EXPECT_FALSE(naming.m_blob.m_bAutoDelete);
    EXPECT_FALSE(naming.m_bCached);
}

TEST_F(BlobOITest, ShowsAnotherBlobOrTheEmbeddedOneForNull) {
    EXPECT_EQ(object.GetRef(), 0u);
    EXPECT_EQ(object.m_pBlob, &client);
    EXPECT_EQ(object.m_blob.m_pData, nullptr);
    EXPECT_FALSE(object.m_bCached);
    const Open null(static_cast<HXBlob*>(nullptr));
    EXPECT_EQ(null.GetRef(), 0u);
    EXPECT_EQ(null.m_pBlob, &null.m_blob);
    EXPECT_FALSE(null.m_bCached);
}

TEST_F(BlobOITest, AllocatesABlobOfTheKindAskedFor) {
    const Open plain(true, false);
    const std::unique_ptr<HXBlob> plainBlob(plain.m_pBlob);
    EXPECT_EQ(plain.GetRef(), 0u);
    EXPECT_NE(plain.m_pBlob, &plain.m_blob);
    EXPECT_EQ(dynamic_cast<BlobCached*>(plain.m_pBlob), nullptr);
    EXPECT_EQ(plain.m_pBlob->m_pData, nullptr);
    EXPECT_FALSE(plain.m_pBlob->m_bAutoDelete);
    EXPECT_FALSE(plain.m_bCached);

    const Open cached(true, true);
    const std::unique_ptr<HXBlob> cachedBlob(cached.m_pBlob);
    EXPECT_EQ(cached.GetRef(), 0u);
    EXPECT_NE(dynamic_cast<BlobCached*>(cached.m_pBlob), nullptr);
    EXPECT_EQ(cached.m_pBlob->m_nSize, 0u);
    EXPECT_FALSE(cached.m_pBlob->m_bAutoDelete);
    EXPECT_TRUE(cached.m_bCached);
}

TEST_F(BlobOITest, WithoutAllocationCachingHasNoEffect) {
    for (const bool cached : {false, true}) {
        const Open embedded(false, cached);
        EXPECT_EQ(embedded.GetRef(), 0u);
        EXPECT_EQ(embedded.m_pBlob, &embedded.m_blob);
        EXPECT_FALSE(embedded.m_bCached);
    }
}

TEST_F(BlobOITest, CopyGoesOnUsingTheEmbeddedBlobOfTheOther) {
    Open original(4, AddressIn(bytes));
    original.AddRef();
    original.m_bCached = true;
    Open copy(original);
    EXPECT_EQ(copy.GetRef(), 0u);
    EXPECT_EQ(copy.m_pBlob, &original.m_blob);
    EXPECT_EQ(copy.m_blob.m_pData, AddressIn(bytes));
    EXPECT_EQ(copy.m_blob.m_nSize, 4u);
    EXPECT_TRUE(copy.m_bCached);
    copy.QueryInterface(IID_IBlob, &found);
    EXPECT_EQ(found, static_cast<IBlob*>(&copy.m_xBlob)) << "its own part";
    EXPECT_EQ(original.GetRef(), 1u);
}

TEST_F(BlobOITest, CopyDoesNotFreeTheBlockOfAnAutoDeletingBlob) {
    Open original;
    original.m_blob.m_bAutoDelete = true;
    original.m_blob.Set("x");
    {
        const Open copy(original);
        EXPECT_EQ(copy.m_blob.m_pData, original.m_blob.m_pData);
        EXPECT_FALSE(copy.m_blob.m_bAutoDelete);
    }
    EXPECT_EQ(Bytes(original.m_blob), "x\0"s);
}

TEST_F(BlobOITest, CopyKeepsTheByValueMode) {
    object.SetByVal(true, false);
    Open copy(object);
    EXPECT_EQ(copy.m_pBlob, &client);
    EXPECT_EQ(copy.AddRef(), 1u);
    EXPECT_EQ(copy.Release(), 0u);
    EXPECT_EQ(destroyed, 0);
}

TEST_F(BlobOITest, ConstructMakesItShowItsOwnBlobAsItIs) {
    alignas(Open) std::byte memory[sizeof(Open)];
    Open& raw = *new (memory) Open(&client);
    raw.AddRef();
    raw.m_bCached = true;
    raw.m_blob.m_nSize = 9;
    raw.Construct();
    EXPECT_EQ(raw.GetRef(), 0u);
    EXPECT_EQ(raw.m_pBlob, &raw.m_blob);
    EXPECT_FALSE(raw.m_bCached);
    EXPECT_EQ(raw.m_blob.m_nSize, 9u);
    raw.~Open();
}

TEST_F(BlobOITest, ConstructKeepsTheByValueMode) {
    object.SetByVal(true, false);
    object.Construct();
    EXPECT_EQ(object.AddRef(), 1u);
    EXPECT_EQ(object.Release(), 0u);
    EXPECT_EQ(destroyed, 0);
}

TEST_F(BlobOITest, FirstQueryGivesTheFirstReferenceAndItsReleaseEndsTheObject) {
    for (const IID& id : {IID_IBlob, IID_IUnknown}) {
        destroyed = 0;
        auto* const counted = new Open(&client);
        EXPECT_EQ(counted->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, static_cast<IBlob*>(&counted->m_xBlob));
        EXPECT_EQ(counted->GetRef(), 1u);
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(static_cast<IBlob*>(found)->Release(), 0u);
        EXPECT_EQ(destroyed, 1);
    }
    EXPECT_EQ(bytes, "abcdef");
}

TEST_F(BlobOITest, PartAnswersForTheWholeObject) {
    for (const IID& id : {IID_IBlob, IID_IUnknown}) {
        found = nullptr;
        EXPECT_EQ(Shown()->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, Shown());
    }
    EXPECT_EQ(object.GetRef(), 2u);
    EXPECT_EQ(Shown()->AddRef(), 3u);
    EXPECT_EQ(Shown()->Release(), 2u);
}

TEST_F(BlobOITest, HasNoOtherInterfaceAndNoNativeObject) {
    for (const IID& id : {IID_NativeObject, testing_support::IID_ICounted, IID_IRange}) {
        found = this;
        EXPECT_EQ(object.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
        found = this;
        EXPECT_EQ(Shown()->QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(object.QueryInterface(IID_IBlob, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.QueryInterface(IID_NativeObject, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Shown()->QueryInterface(IID_IBlob, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.GetRef(), 0u);
}

// What the destructor frees: nothing but the block of an embedded blob that deletes itself.
TEST_F(BlobOITest, EndFreesNeitherBytesNorTheAllocatedBlob) {
    HXBlob* allocated = nullptr;
    {
        const Open ending(true, false);
        allocated = ending.m_pBlob;
        allocated->Set("kept");
    }
    EXPECT_EQ(Bytes(*allocated), "kept\0"s);
    allocated->Delete();
    delete allocated;

    HXBlob block(3u);
    { const Open ending(block.m_nSize, block.m_pData); }
    EXPECT_EQ(Bytes(block), "\0\0\0"s);
    block.Delete();
}

TEST_F(BlobOITest, EndFreesTheBlockOfAnAutoDeletingEmbeddedBlob) {
    Open ending;
    ending.m_blob.m_bAutoDelete = true;
    ending.m_blob.Set("freed with the object");
    EXPECT_EQ(Bytes(*ending.m_pBlob), "freed with the object\0"s);
}

TEST_F(BlobOITest, SizeIsTheVirtualOne) {
    struct Elsewhere : HXBlob {
        ulong GetSize() override { return 77; }
    };
    std::uint32_t size = 0;
    EXPECT_EQ(Shown()->GetSize(&size), S_OK);
    EXPECT_EQ(size, 6u);
    Elsewhere elsewhere;
    object.m_pBlob = &elsewhere;
    EXPECT_EQ(Shown()->GetSize(&size), S_OK);
    EXPECT_EQ(size, 77u);
    EXPECT_EQ(Shown()->GetSize(nullptr), DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(BlobOITest, ReadsAFile) {
    const TestDirectory directory;
    MakeFile(directory / "some", "from the file");
    Own target("before");
    object.m_pBlob = &target;
    EXPECT_EQ(Shown()->ReadFile((directory / "some").c_str()), 0);
    EXPECT_EQ(Bytes(target), "from the file");
}

TEST_F(BlobOITest, EmptyFileLeavesNoBlock) {
    const TestDirectory directory;
    MakeFile(directory / "empty", "");
    Own target("before");
    object.m_pBlob = &target;
    EXPECT_EQ(Shown()->ReadFile((directory / "empty").c_str()), S_OK);
    std::uint32_t size = 99;
    EXPECT_EQ(Shown()->GetSize(&size), S_OK);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(target.m_pData, nullptr);
}

// Reading swallows nothing, unlike writing.
TEST_F(BlobOITest, FailureWhileReadingPassesThroughTheInterface) {
    struct Failing : HXBlob {
        int Read(CFile&) override { AfxThrowFileException(CFileException::genericException); }
    };
    const TestDirectory directory;
    const std::string path = directory / "some";
    MakeFile(path, "cannot be read");
    Failing failing;
    object.m_pBlob = &failing;
    EXPECT_TRUE(testing_support::Raises<CFileException>([&] { Shown()->ReadFile(path.c_str()); }));
}

TEST_F(BlobOITest, MissingFileGivesAPositiveAnswerThatPassesForSuccess) {
    const TestDirectory directory;
    const HRESULT answer = Shown()->ReadFile((directory / "missing").c_str());
    EXPECT_EQ(answer, 2);
    EXPECT_TRUE(SUCCEEDED(answer));
    EXPECT_EQ(Shown()->ReadFile(nullptr), 2);
    EXPECT_EQ(client.m_pData, AddressIn(bytes)) << "as it was";
    EXPECT_EQ(bytes, "abcdef");
}

TEST_F(BlobOITest, WritesAFileOverItsStart) {
    const TestDirectory directory;
    const std::string path = directory / "some";
    EXPECT_EQ(Shown()->WriteFile(path.c_str()), S_OK);
    EXPECT_EQ(BytesOf(path), "abcdef");
    MakeFile(path, "0123456789");
    EXPECT_EQ(Shown()->WriteFile(path.c_str()), S_OK);
    EXPECT_EQ(BytesOf(path), "abcdef6789");
}

TEST_F(BlobOITest, FileThatCannotBeWrittenIsUnexpected) {
    const TestDirectory directory;
    EXPECT_EQ(Shown()->WriteFile((directory / "no/such/place").c_str()), E_UNEXPECTED);
    EXPECT_EQ(Shown()->WriteFile(nullptr), E_UNEXPECTED);
}

// A full disk raises inside; the blob swallows it.
TEST_F(BlobOITest, FullDiskIsUnexpected) {
    const TestDirectory directory;
    const FileSizeLimit limit(3);
    EXPECT_EQ(Shown()->WriteFile((directory / "some").c_str()), E_UNEXPECTED);
}

TEST_F(BlobOITest, TakesOverAnArrayOfBytes) {
    Own target;
    object.m_pBlob = &target;
    SAFEARRAY* array = ArrayOf("xyz");
    EXPECT_EQ(Shown()->SetData(&array), S_OK);
    EXPECT_EQ(Bytes(target), "xyz");
    EXPECT_NE(target.m_pData, array->pvData) << "a copy";
    EXPECT_EQ(SafeArrayDestroy(array), S_OK) << "not locked any more";
}

TEST_F(BlobOITest, RefusesArraysOfAnotherShape) {
    const SAFEARRAYBOUND square[] = {{2, 0}, {3, 0}};
    SAFEARRAY* const refused[] = {ArrayOf("\1\2", VT_I2), SafeArrayCreate(VT_UI1, 2, square),
                                  nullptr};
    for (SAFEARRAY* array : refused) {
        EXPECT_EQ(Shown()->SetData(&array), DISP_E_PARAMNOTOPTIONAL);
        SafeArrayDestroy(array);
    }
    EXPECT_EQ(Shown()->SetData(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(client.m_nSize, 6u);
    EXPECT_EQ(client.m_pData, AddressIn(bytes));
    EXPECT_EQ(bytes, "abcdef");
}

TEST_F(BlobOITest, GivesAnArrayOfBytes) {
    SAFEARRAY* array = nullptr;
    EXPECT_EQ(Shown()->GetData(&array), S_OK);
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(SafeArrayGetDim(array), 1u);
    EXPECT_EQ(SafeArrayGetElemsize(array), 1u);
    EXPECT_EQ(BytesIn(array), "abcdef");
    EXPECT_NE(array->pvData, client.m_pData) << "a copy";
    EXPECT_EQ(SafeArrayDestroy(array), S_OK) << "not locked any more";
    EXPECT_EQ(Shown()->GetData(nullptr), DISP_E_PARAMNOTOPTIONAL);
}

// More elements than an array can count.
TEST_F(BlobOITest, ArrayThatCannotBeMadeIsOutOfMemory) {
    HXBlob huge = Blockless(0x80000001u);
    object.m_pBlob = &huge;
    SAFEARRAY* array = nullptr;
    EXPECT_EQ(Shown()->GetData(&array), E_OUTOFMEMORY);
    EXPECT_EQ(array, nullptr);
}

TEST_F(BlobOITest, LargeFileOfACachedBlobStaysInItsTemporaryFile) {
    const TestDirectory directory;
    const TempDirectory temporary;
    const std::string content = Pattern(10001);
    MakeFile(directory / "large", content);
    Open caching(true, true);
    const std::unique_ptr<HXBlob> allocated(caching.m_pBlob);
    EXPECT_EQ(caching.m_xBlob.ReadFile((directory / "large").c_str()), S_OK);
    std::uint32_t size = 0;
    EXPECT_EQ(caching.m_xBlob.GetSize(&size), S_OK);
    EXPECT_EQ(size, 10001u);
    EXPECT_EQ(allocated->m_nSize, 0u) << "nothing in memory";
    EXPECT_TRUE(BytesOf(temporary.OnlyFile()) == content);
    EXPECT_EQ(caching.m_xBlob.WriteFile((directory / "copy").c_str()), S_OK);
    EXPECT_TRUE(BytesOf(directory / "copy") == content);

    static_cast<BlobCached&>(*allocated).LoadCache();
    SAFEARRAY* array = nullptr;
    EXPECT_EQ(caching.m_xBlob.GetData(&array), S_OK);
    ASSERT_NE(array, nullptr);
    EXPECT_TRUE(BytesIn(array) == content);
    SafeArrayDestroy(array);

    EXPECT_EQ(allocated->m_nSize, 0u) << "freed again";
    EXPECT_EQ(caching.m_xBlob.GetData(&array), S_OK);
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(array->rgsabound[0].cElements, 0u);
    SafeArrayDestroy(array);
}

TEST_F(BlobOITest, LargeArrayGoesToTheTemporaryFileOfACachedBlob) {
    const TempDirectory temporary;
    const std::string content = Pattern(10001);
    Open caching(true, true);
    const std::unique_ptr<HXBlob> allocated(caching.m_pBlob);
    SAFEARRAY* array = ArrayOf(content);
    EXPECT_EQ(caching.m_xBlob.SetData(&array), S_OK);
    SafeArrayDestroy(array);
    std::uint32_t size = 0;
    EXPECT_EQ(caching.m_xBlob.GetSize(&size), S_OK);
    EXPECT_EQ(size, 10001u);
    EXPECT_EQ(allocated->m_nSize, 0u) << "nothing in memory";
    EXPECT_TRUE(BytesOf(temporary.OnlyFile()) == content);
}

TEST_F(BlobOITest, CachedBlobThatWasNotReadBackGivesNoElements) {
    const TestDirectory directory;
    const TempDirectory temporary;
    MakeFile(directory / "large", Pattern(10001));
    Open caching(true, true);
    const std::unique_ptr<HXBlob> allocated(caching.m_pBlob);
    EXPECT_EQ(caching.m_xBlob.ReadFile((directory / "large").c_str()), S_OK);
    SAFEARRAY* array = nullptr;
    EXPECT_EQ(caching.m_xBlob.GetData(&array), S_OK);
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(array->rgsabound[0].cElements, 0u);
    SafeArrayDestroy(array);
}

TEST_F(BlobOITest, TableOfThePartIsInOrder) {
    const TestDirectory directory;
    const std::string written = directory / "written";
    Own target("abc");
    object.m_pBlob = &target;
    IBlob* const shown = Shown();
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_IBlob, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 2u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 1u);
    std::uint32_t size = 0;
    EXPECT_EQ((CallSlot<HRESULT, std::uint32_t*>(shown, 3, &size)), S_OK);
    EXPECT_EQ(size, 3u);
    MakeFile(directory / "read", "defgh");
    EXPECT_EQ((CallSlot<HRESULT, const char*>(shown, 4, (directory / "read").c_str())), S_OK);
    EXPECT_EQ(Bytes(target), "defgh");
    EXPECT_EQ((CallSlot<HRESULT, const char*>(shown, 5, written.c_str())), S_OK);
    EXPECT_EQ(BytesOf(written), "defgh");
    SAFEARRAY* array = ArrayOf("ij");
    EXPECT_EQ((CallSlot<HRESULT, SAFEARRAY**>(shown, 6, &array)), S_OK);
    EXPECT_EQ(Bytes(target), "ij");
    SafeArrayDestroy(array);
    EXPECT_EQ((CallSlot<HRESULT, SAFEARRAY**>(shown, 7, &array)), S_OK);
    EXPECT_EQ(BytesIn(array), "ij");
    SafeArrayDestroy(array);
}

TEST_F(BlobOITest, TableOfTheObjectIsThatOfTheRoot) {
    EXPECT_EQ((CallSlot<HRESULT, const GUID*, void**>(&object, kSlotFirstOwn, &IID_IBlob, &found)),
              S_OK);
    EXPECT_EQ(found, Shown());
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 2), 2u);
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 1), 1u);
}

// Answers each operation of its own with the place in the table.
struct Numbered final : IBlob {
    HRESULT QueryInterface(REFIID, void**) override { return 0; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 2; }
    HRESULT GetSize(std::uint32_t*) override { return 3; }
    HRESULT ReadFile(const char*) override { return 4; }
    HRESULT WriteFile(const char*) override { return 5; }
    HRESULT SetData(tagSAFEARRAY**) override { return 6; }
    HRESULT GetData(tagSAFEARRAY**) override { return 7; }
};

TEST(IBlobTable, OperationsStandInOrder) {
    Numbered object;
    IBlob* const shown = &object;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, nullptr, nullptr)), 0);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 1u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    for (std::size_t slot = 3; slot <= 7; ++slot) {
        EXPECT_EQ((CallSlot<HRESULT, void*>(shown, slot, nullptr)), static_cast<HRESULT>(slot));
    }
    EXPECT_EQ(InterfaceIdOf<IBlob>::value, IID_IBlob);
}

}  // namespace
}  // namespace ZT
