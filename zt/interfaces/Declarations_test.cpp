// What a module needs that only knows interfaces: these headers and the platform's component
// types. Nothing else of the library or the platform may stand above the names below.

#include <zt/interfaces/IArray.h>
#include <zt/interfaces/IArray2.h>
#include <zt/interfaces/IArrayNum.h>
#include <zt/interfaces/IArray_PW.h>
#include <zt/interfaces/IBlob.h>
#include <zt/interfaces/IDataContext.h>
#include <zt/interfaces/IDictionary_ZT.h>
#include <zt/interfaces/IIterator64.h>
#include <zt/interfaces/IList64.h>
#include <zt/interfaces/INotify.h>
#include <zt/interfaces/IObject_ZT.h>
#include <zt/interfaces/IQueryClient.h>
#include <zt/interfaces/IRange.h>
#include <zt/interfaces/IRefMap_ZT.h>
#include <zt/interfaces/ITypeBasic_ZT.h>
#include <zt/interfaces/InterfaceIds.h>
#include <zt/interfaces/ResultCodes.h>

// Names for something else: a declaration that brought along the class of the name would make
// this file fail to compile.
namespace {
struct Free {};
}  // namespace
using CObject = Free;
using CString = Free;
using CPtrList = Free;
using CObList = Free;
using CArchive = Free;
namespace ZT {
using RefObj = Free;
}  // namespace ZT

#include <gtest/gtest.h>

#include <type_traits>

namespace ZT {
namespace {

template <class Interface>
struct InterfaceDeclaration : testing::Test {};

using AllInterfaces = testing::Types<IObject_ZT, IList64, IIterator64, IDictionary_ZT, INotify,
                                     IQueryClient, IRefMap_ZT, IArray, IArray2, IArray_PW, IBlob,
                                     IDataContext, IRange, IArrayNum, ITypeBasic_ZT>;
TYPED_TEST_SUITE(InterfaceDeclaration, AllInterfaces);

TYPED_TEST(InterfaceDeclaration, IsATableOfOperationsAndNothingElse) {
    EXPECT_TRUE((std::is_base_of_v<IUnknown, TypeParam>));
    EXPECT_TRUE(std::is_abstract_v<TypeParam>);
    EXPECT_EQ(sizeof(TypeParam), sizeof(void*));
}

// A position needs no list.
TEST(InterfaceDeclarations, PositionIsAPlainPointer) {
    EXPECT_EQ(sizeof(POSITION), sizeof(void*));
    EXPECT_TRUE(std::is_pointer_v<POSITION>);
}

}  // namespace
}  // namespace ZT
