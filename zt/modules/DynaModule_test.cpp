#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tests/AllocationCount.h>
#include <zt/frame/ObjectEx.h>
#include <zt/modules/DynaModule.h>
#include <zt/modules/OpC.h>
#include <zt/modules/QC.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;

// How a module answers a command or a question.
enum class Answer { Base, False, True, Found, Throw };

// The modules that were asked, in order.
std::vector<std::string> asked;

struct Module : DynaModule {
    explicit Module(const char* itsName, Answer itsAnswer = Answer::Base)
        : name(itsName), answer(itsAnswer) {}
    Module(const char* itsName, _GUID& id, Answer itsAnswer = Answer::Base)
        : DynaModule(&id, eConfigDefault), name(itsName), answer(itsAnswer) {}

    bool Execute(OpC& op) override {
        asked.push_back(name);
        if (answer == Answer::Base) return DynaModule::Execute(op);
        return Own();
    }
    bool Execute(QC& qc) override {
        asked.push_back(name);
        if (answer == Answer::Base) return DynaModule::Execute(qc);
        if (answer == Answer::Found) qc.ReturnFound(true);
        return Own();
    }
    HRESULT GetInterface(QC& qc) override {
        asked.push_back(name);
        if (answer == Answer::Base) return DynaModule::GetInterface(qc);
        return Own() ? S_OK : E_FAIL;
    }
    ObjectEx* Upgrade(CObject* obj, QC& qc) override {
        asked.push_back(name);
        if (answer == Answer::Base) return DynaModule::Upgrade(obj, qc);
        upgraded = obj;
        return Own() ? &upgrade : nullptr;
    }
    bool Own() const {
        if (answer == Answer::Throw) throw std::runtime_error(name);
        return answer != Answer::False;
    }

    std::string name;
    Answer answer;
    CObject* upgraded = nullptr;
    ObjectEx upgrade;
};

_GUID Id(unsigned number) {
    return {number, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
}

struct DynaModuleTest : testing::Test {
    DynaModuleTest() { asked.clear(); }

    _GUID ids[4] = {Id(0), Id(1), Id(2), Id(3)};
    _GUID absent = Id(9);
};

// A chain: the root, then b, then c.
struct ModuleChain : DynaModuleTest {
    Module a{"a", ids[0]}, b{"b", ids[1]}, c{"c", ids[2], Answer::Found};
    ModuleChain() {
        a.AddUser(&b);
        b.AddUser(&c);
    }
};

// A diamond: c is reached through b1 and through b2.
struct ModuleDiamond : DynaModuleTest {
    Module a{"a", ids[0]}, b1{"b1", ids[1]}, b2{"b2", ids[2]}, c{"c", ids[3]};
    ModuleDiamond() {
        a.AddUser(&b1);
        a.AddUser(&b2);
        b1.AddUser(&c);
        b2.AddUser(&c);
    }
};

// A module that has no identifier stands between two that have one.
struct HiddenModule : DynaModuleTest {
    Module a{"a", ids[0]}, nameless{"nameless"}, c{"c", ids[2], Answer::Found};
    HiddenModule() {
        a.AddUser(&nameless);
        nameless.AddUser(&c);
    }
};

TEST_F(DynaModuleTest, FieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(DynaModule, m_pID), 8u);
    EXPECT_EQ(offsetof(DynaModule, m_users), 16u);
    const std::size_t behind = 16 + sizeof(DynaModule::m_users);
    EXPECT_EQ(offsetof(DynaModule, m_config), behind);
    EXPECT_EQ(offsetof(DynaModule, m_nReserved), behind + 8);
    EXPECT_EQ(offsetof(DynaModule, m_bReserved), behind + 16);
    EXPECT_EQ(offsetof(DynaModule, m_bStarted), behind + 17);
    EXPECT_EQ(sizeof(DynaModule), behind + 24);
    static_assert(std::is_same_v<decltype(DynaModule::m_pID), _GUID*>);
    static_assert(
        std::is_same_v<decltype(DynaModule::m_users), CTypedPtrList<CObList, DynaModule*>>);
    static_assert(sizeof(DynaModule::EConfiguration) == 4);
    static_assert(std::is_same_v<decltype(DynaModule::m_nReserved), std::uint64_t>);
    static_assert(std::is_base_of_v<CObject, DynaModule>);
}

TEST_F(DynaModuleTest, TableKeepsTheOrderOfTheOperations) {
    struct Recorder : DynaModule {
        std::vector<std::string> calls;
        bool Execute(OpC&) override {
            calls.push_back("operation");
            return true;
        }
        bool Execute(QC&) override {
            calls.push_back("query");
            return true;
        }
        ObjectEx* Upgrade(CObject* obj, QC&) override {
            EXPECT_EQ(obj, this);
            calls.push_back("upgrade");
            return nullptr;
        }
        HRESULT GetInterface(QC&) override {
            calls.push_back("interface");
            return E_FAIL;
        }
    };
    Recorder module;
    OpC op;
    QC qc;
    EXPECT_TRUE((CallSlot<bool, OpC*>(&module, kSlotFirstOwn, &op)));
    EXPECT_TRUE((CallSlot<bool, QC*>(&module, kSlotFirstOwn + 1, &qc)));
    EXPECT_EQ((CallSlot<ObjectEx*, CObject*, QC*>(&module, kSlotFirstOwn + 2, &module, &qc)),
              nullptr);
    EXPECT_EQ((CallSlot<HRESULT, QC*>(&module, kSlotFirstOwn + 3, &qc)), E_FAIL);
    EXPECT_THAT(module.calls, ElementsAre("operation", "query", "upgrade", "interface"));
}

void ExpectDefaults(const DynaModule& module) {
    EXPECT_EQ(module.m_pID, nullptr);
    EXPECT_EQ(module.m_config, 2);
    EXPECT_EQ(module.m_nReserved, 0u);
    EXPECT_EQ(module.m_bReserved, 0);
    EXPECT_FALSE(module.m_bStarted);
    EXPECT_EQ(module.GetID(), nullptr);
    EXPECT_FALSE(module.IsMFCChainOK());
}

TEST_F(DynaModuleTest, StartsWithItsDefaults) {
    const DynaModule module;
    ExpectDefaults(module);
    EXPECT_TRUE(module.m_users.IsEmpty());
}

TEST_F(DynaModuleTest, ConstructorSetsIdentifierAndConfiguration) {
    const DynaModule module(&ids[0], static_cast<DynaModule::EConfiguration>(7));
    EXPECT_EQ(module.GetID(), &ids[0]);
    EXPECT_EQ(module.m_config, 7);
    EXPECT_FALSE(module.m_bStarted);
    EXPECT_TRUE(module.m_users.IsEmpty());
}

TEST_F(DynaModuleTest, ConstructSetsBackAllButTheUsers) {
    DynaModule module(&ids[0], static_cast<DynaModule::EConfiguration>(7)), user;
    module.AddUser(&user);
    module.m_nReserved = 1;
    module.m_bReserved = 1;
    module.m_bStarted = true;
    module.Construct();
    ExpectDefaults(module);
    ASSERT_EQ(module.m_users.GetCount(), 1);
    EXPECT_EQ(module.m_users.GetHead(), &user);
}

TEST_F(DynaModuleTest, UsersAreAppendedWithoutACheck) {
    DynaModule module, first, second;
    module.AddUser(&first);
    module.AddUser(&second);
    module.AddUser(&first);
    EXPECT_THAT(std::vector<DynaModule*>(module.m_users.begin(), module.m_users.end()),
                ElementsAre(&first, &second, &first));
}

TEST_F(DynaModuleTest, UsersTakeMemoryInBlocksOfTen) {
    DynaModule module, user;
    const auto add = [&](int count) {
        return testing_support::AllocationsIn([&] {
            for (int i = 0; i < count; ++i) module.AddUser(&user);
        });
    };
    EXPECT_EQ(add(10), 1u);
    EXPECT_EQ(add(10), 1u);
    EXPECT_EQ(add(1), 1u);
}

// ---- The search of the graph.

TEST_F(ModuleChain, FindsItselfAndWhatItReaches) {
    EXPECT_EQ(a.GetDependency(&ids[0]), &a);
    EXPECT_EQ(a.GetDependency(&ids[1]), &b);
    EXPECT_EQ(a.GetDependency(&ids[2]), &c);
    EXPECT_EQ(b.GetDependency(&ids[0]), nullptr);
    EXPECT_EQ(a.GetDependency(&absent), nullptr);
    EXPECT_EQ(a.GetDependency(nullptr), nullptr);
}

TEST_F(ModuleChain, ComparesIdentifiersByAllTheirBytes) {
    const _GUID same = Id(2);
    EXPECT_EQ(a.GetDependency(&same), &c);
    for (std::size_t byte = 0; byte < sizeof same; ++byte) {
        _GUID other = same;
        reinterpret_cast<unsigned char*>(&other)[byte] ^= 0x80;
        EXPECT_EQ(a.GetDependency(&other), nullptr) << byte;
    }
}

TEST_F(HiddenModule, IsNotFoundBehindOneWithoutAnIdentifier) {
    EXPECT_EQ(a.GetDependency(&ids[2]), nullptr);
    EXPECT_EQ(nameless.GetDependency(&ids[2]), nullptr);
    EXPECT_EQ(c.GetDependency(&ids[2]), &c);
}

TEST_F(ModuleDiamond, FirstOfTwoWithOneIdentifierIsFound) {
    // The walk goes to the depth first: c through b1 comes before b2.
    c.m_pID = &ids[2];
    EXPECT_EQ(a.GetDependency(&ids[2]), &c);
}

TEST_F(ModuleDiamond, SearchGoesOnBehindTheFirstUser) {
    EXPECT_EQ(a.GetDependency(&ids[2]), &b2);
    EXPECT_EQ(a.GetDependency(&ids[3]), &c);
    EXPECT_EQ(a.GetDependency(&absent), nullptr);
}

TEST_F(ModuleDiamond, RequestsReachAModuleBehindTheFirstUser) {
    b2.answer = Answer::Found;
    QC qc(&ids[2]);
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_EQ(qc.m_pFound, 1u);
    OpC op(&ids[2]);
    EXPECT_TRUE(a.Execute(op));
    EXPECT_EQ(a.GetInterface(qc), S_OK);
    EXPECT_THAT(asked, ElementsAre("a", "b2", "a", "b2", "a", "b2"));
    asked.clear();
    EXPECT_EQ(a.Upgrade(&b1, qc), &b2.upgrade);
    EXPECT_EQ(a.UpgradeObject(&b1, qc), &b2.upgrade);
    EXPECT_THAT(asked, ElementsAre("a", "b2", "b2"));
}

TEST_F(HiddenModule, IsFoundOnAnotherPath) {
    Module b{"b", ids[1]};
    a.AddUser(&b);
    b.AddUser(&c);
    EXPECT_EQ(a.GetDependency(&ids[2]), &c);
    QC qc(&ids[2]);
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_THAT(asked, ElementsAre("a", "c"));
}

// ---- Commands.

TEST_F(ModuleChain, CommandGoesToTheModuleThatItNames) {
    OpC op(&ids[2]);
    EXPECT_TRUE(a.Execute(op));
    // Those on the way are not asked.
    EXPECT_THAT(asked, ElementsAre("a", "c"));
}

TEST_F(ModuleChain, AnswerOfTheModuleNamedIsTheAnswer) {
    c.answer = Answer::False;
    OpC op(&ids[2]);
    EXPECT_FALSE(a.Execute(op));
    EXPECT_THAT(asked, ElementsAre("a", "c"));
}

TEST_F(ModuleChain, CommandToTheBaseItselfIsNotExecuted) {
    OpC op(&ids[0]);
    EXPECT_FALSE(a.Execute(op));
    EXPECT_THAT(asked, ElementsAre("a"));
    const _GUID same = Id(0);
    op.m_pModuleId = const_cast<_GUID*>(&same);
    EXPECT_FALSE(a.Execute(op));
}

TEST_F(ModuleChain, CommandToAModuleOutOfReachIsNotExecuted) {
    OpC op(&absent), back(&ids[0]);
    EXPECT_FALSE(a.Execute(op));
    EXPECT_FALSE(b.Execute(back));
    EXPECT_THAT(asked, ElementsAre("a", "b"));
}

TEST_F(HiddenModule, AddressedRequestsDoNotPassAModuleWithoutAnIdentifier) {
    OpC op(&ids[2]);
    EXPECT_FALSE(nameless.Execute(op));
    EXPECT_FALSE(a.Execute(op));
    QC qc(&ids[2]);
    EXPECT_FALSE(nameless.Execute(qc));
    EXPECT_EQ(nameless.GetInterface(qc), E_NOINTERFACE);
    EXPECT_EQ(nameless.Upgrade(&a, qc), nullptr);
    EXPECT_EQ(nameless.UpgradeObject(&a, qc), nullptr);
    EXPECT_THAT(asked, ElementsAre("nameless", "a", "nameless", "nameless", "nameless"));
}

TEST_F(HiddenModule, OffersToAllPassAModuleWithoutAnIdentifier) {
    OpC op;
    EXPECT_TRUE(a.Execute(op));
    QC qc;
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_THAT(asked, ElementsAre("a", "nameless", "c", "a", "nameless", "c"));
}

TEST_F(DynaModuleTest, OfferOfACommandEndsAtTheFirstTrue) {
    Module a{"a"}, first{"first", Answer::False}, second{"second", Answer::True},
        third{"third", Answer::True};
    a.AddUser(&first);
    a.AddUser(&second);
    a.AddUser(&third);
    OpC op;
    EXPECT_TRUE(a.Execute(op));
    EXPECT_THAT(asked, ElementsAre("a", "first", "second"));
}

TEST_F(ModuleDiamond, OfferVisitsAModuleOnEachOfItsPaths) {
    OpC op;
    EXPECT_FALSE(a.Execute(op));
    EXPECT_THAT(asked, ElementsAre("a", "b1", "c", "b2", "c"));
    asked.clear();
    QC qc;
    EXPECT_FALSE(a.Execute(qc));
    EXPECT_THAT(asked, ElementsAre("a", "b1", "c", "b2", "c"));
}

TEST_F(ModuleChain, ExceptionPassesThroughTheWalkAndEndsIt) {
    Module last{"last", Answer::Found};
    a.AddUser(&last);
    c.answer = Answer::Throw;
    OpC op;
    EXPECT_THROW(a.Execute(op), std::runtime_error);
    QC qc;
    EXPECT_THROW(a.Execute(qc), std::runtime_error);
    EXPECT_THAT(asked, ElementsAre("a", "b", "c", "a", "b", "c"));
    qc.m_pModuleId = op.m_pModuleId = &ids[2];
    EXPECT_THROW(a.Execute(op), std::runtime_error);
    EXPECT_THROW(a.Execute(qc), std::runtime_error);
    EXPECT_THROW(a.GetInterface(qc), std::runtime_error);
    EXPECT_THROW(a.UpgradeObject(&a, qc), std::runtime_error);
}

// ---- Questions.

TEST_F(ModuleChain, QuestionGoesToTheModuleThatItNames) {
    QC qc(&ids[2]);
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_EQ(qc.m_pFound, 1u);
    EXPECT_THAT(asked, ElementsAre("a", "c"));
}

TEST_F(ModuleChain, TrueOfTheModuleNamedCountsAlsoWhenItFoundNothing) {
    c.answer = Answer::True;
    QC qc(&ids[2]);
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_EQ(qc.m_pFound, 0u);
    c.answer = Answer::False;
    EXPECT_FALSE(a.Execute(qc));
}

TEST_F(ModuleChain, QuestionToTheBaseItselfOrOutOfReachIsNotAnswered) {
    QC self(&ids[0]), other(&absent), back(&ids[0]);
    EXPECT_FALSE(a.Execute(self));
    EXPECT_FALSE(a.Execute(other));
    EXPECT_FALSE(b.Execute(back));
    EXPECT_THAT(asked, ElementsAre("a", "a", "b"));
}

// Three users who say true, of whom only the last says what was found.
struct Users : DynaModuleTest {
    Module a{"a"}, first{"first", Answer::True}, second{"second", Answer::False},
        third{"third", Answer::Found};
    Users() {
        a.AddUser(&first);
        a.AddUser(&second);
        a.AddUser(&third);
    }
};

TEST_F(Users, OfferOfAQuestionEndsAtTheFirstWhoFoundSomething) {
    Module fourth{"fourth", Answer::Found};
    a.AddUser(&fourth);
    QC qc;
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_THAT(asked, ElementsAre("a", "first", "second", "third"));
}

TEST_F(Users, TrueWithoutAnythingFoundDoesNotEndTheOffer) {
    third.answer = Answer::True;
    QC qc;
    EXPECT_FALSE(a.Execute(qc));
    EXPECT_EQ(qc.m_pFound, 0u);
    EXPECT_THAT(asked, ElementsAre("a", "first", "second", "third"));
}

TEST_F(Users, FoundWithoutATrueAnswerDoesNotEndTheOffer) {
    QC qc;
    qc.m_pFound = 5;
    first.answer = Answer::False;
    third.answer = Answer::True;
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_EQ(qc.m_pFound, 5u);
    EXPECT_THAT(asked, ElementsAre("a", "first", "second", "third"));
}

TEST_F(DynaModuleTest, TrueWithoutAnythingFoundDoesNotEndTheOfferOneLevelDownEither) {
    Module a{"a"}, b{"b"}, c{"c", Answer::True}, d{"d", Answer::Found};
    a.AddUser(&b);
    a.AddUser(&d);
    b.AddUser(&c);
    QC qc;
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_EQ(qc.m_pFound, 1u);
    EXPECT_THAT(asked, ElementsAre("a", "b", "c", "d"));
    asked.clear();
    d.answer = Answer::False;
    QC nothing;
    EXPECT_FALSE(a.Execute(nothing));
    EXPECT_EQ(nothing.m_pFound, 0u);
    EXPECT_THAT(asked, ElementsAre("a", "b", "c", "d"));
}

QC QuestionAboutTheCanvas() {
    QC qc;
    qc.m_objType = QC::eQcCanvas;
    qc.m_nQueryKind = 2;
    return qc;
}

TEST_F(ModuleChain, QuestionAboutTheCanvasGoesToTheModuleThatDraws) {
    c.m_pID = &DMID_CANVAS;
    b.answer = Answer::Found;  // would answer an offer to all
    QC qc = QuestionAboutTheCanvas();
    EXPECT_TRUE(a.Execute(qc));
    EXPECT_EQ(qc.m_pModuleId, &DMID_CANVAS);
    // Put anew to the module itself, override included.
    EXPECT_THAT(asked, ElementsAre("a", "a", "c"));
}

TEST_F(ModuleChain, QuestionAboutTheCanvasKeepsItsModuleWhenThatIsOutOfReach) {
    QC qc = QuestionAboutTheCanvas();
    EXPECT_FALSE(a.Execute(qc));
    EXPECT_EQ(qc.m_pModuleId, &DMID_CANVAS);
    EXPECT_THAT(asked, ElementsAre("a", "a"));
}

TEST_F(ModuleChain, QuestionAboutTheCanvasIsNotAnsweredByTheBaseOfTheModuleThatDraws) {
    a.m_pID = &DMID_CANVAS;
    b.answer = Answer::Found;  // would answer an offer to all
    QC qc = QuestionAboutTheCanvas();
    EXPECT_FALSE(a.Execute(qc));
    EXPECT_EQ(qc.m_pModuleId, &DMID_CANVAS);
    EXPECT_THAT(asked, ElementsAre("a", "a"));
}

TEST_F(HiddenModule, QuestionAboutTheCanvasIsNotOfferedByAModuleWithoutAnIdentifier) {
    c.m_pID = &DMID_CANVAS;
    QC qc = QuestionAboutTheCanvas();
    EXPECT_FALSE(nameless.Execute(qc));
    EXPECT_EQ(qc.m_pModuleId, &DMID_CANVAS);
}

TEST_F(ModuleChain, OtherQuestionsAboutTheCanvasAreOfferedOrGoWhereTheySay) {
    c.m_pID = &DMID_CANVAS;
    b.answer = Answer::Found;
    QC otherKind = QuestionAboutTheCanvas();
    otherKind.m_nQueryKind = 3;
    EXPECT_TRUE(a.Execute(otherKind));
    QC otherType = QuestionAboutTheCanvas();
    otherType.m_objType = QC::eQcMesh;
    EXPECT_TRUE(a.Execute(otherType));
    QC addressed = QuestionAboutTheCanvas();
    addressed.m_pModuleId = &ids[1];
    EXPECT_TRUE(a.Execute(addressed));
    EXPECT_EQ(otherKind.m_pModuleId, nullptr);
    EXPECT_EQ(otherType.m_pModuleId, nullptr);
    EXPECT_THAT(asked, ElementsAre("a", "b", "a", "b", "a", "b"));
}

// ---- Interfaces.

const _GUID interfaceOfRidge = {
    0x261860EF, 0x912E, 0x4F9A, {0x9A, 0x0D, 0x9E, 0x6C, 0x41, 0x77, 0x25, 0xC5}};

TEST_F(DynaModuleTest, OneInterfaceIsKnownByItsModule) {
    const _GUID same = interfaceOfRidge;
    EXPECT_EQ(DynaModule::GetImplementationModule(&same), &DMID_RIDGE);
    EXPECT_EQ(DynaModule::GetImplementationModule(&absent), nullptr);
    EXPECT_EQ(DynaModule::GetImplementationModule(nullptr), nullptr);
}

TEST_F(ModuleChain, KnownInterfaceIsAskedOfItsModule) {
    c.m_pID = &DMID_RIDGE;
    QC qc(interfaceOfRidge);
    EXPECT_EQ(a.GetInterface(qc), S_OK);
    EXPECT_EQ(qc.m_pModuleId, &DMID_RIDGE);
    EXPECT_THAT(asked, ElementsAre("a", "c"));
    c.answer = Answer::False;
    EXPECT_EQ(a.GetInterface(qc), E_FAIL);
}

TEST_F(ModuleChain, QueryLearnsItsModuleAlsoWhenThatIsOutOfReach) {
    QC qc(interfaceOfRidge);
    EXPECT_EQ(a.GetInterface(qc), E_NOINTERFACE);
    EXPECT_EQ(qc.m_pModuleId, &DMID_RIDGE);
}

TEST_F(ModuleChain, KnownInterfaceIsNotGivenByTheBaseOfItsModule) {
    a.m_pID = &DMID_RIDGE;
    QC qc(interfaceOfRidge);
    EXPECT_EQ(a.GetInterface(qc), E_NOINTERFACE);
    EXPECT_EQ(qc.m_pModuleId, &DMID_RIDGE);
    EXPECT_THAT(asked, ElementsAre("a"));
}

TEST_F(HiddenModule, QueryLearnsItsModuleAlsoFromOneWithoutAnIdentifier) {
    QC qc(interfaceOfRidge);
    EXPECT_EQ(nameless.GetInterface(qc), E_NOINTERFACE);
    EXPECT_EQ(qc.m_pModuleId, &DMID_RIDGE);
}

TEST_F(ModuleChain, UnknownInterfaceOrNoneIsNotOffered) {
    QC qc(absent), none;
    EXPECT_EQ(a.GetInterface(qc), E_NOINTERFACE);
    EXPECT_EQ(qc.m_pModuleId, nullptr);
    EXPECT_EQ(a.GetInterface(none), E_NOINTERFACE);
    EXPECT_EQ(none.m_pModuleId, nullptr);
    EXPECT_THAT(asked, ElementsAre("a", "a"));
}

TEST_F(ModuleChain, InterfaceIsAskedOfTheModuleThatIsNamed) {
    QC qc(&ids[2], interfaceOfRidge);
    EXPECT_EQ(a.GetInterface(qc), S_OK);
    EXPECT_EQ(qc.m_pModuleId, &ids[2]);
    QC withoutInterface(&ids[2]);
    EXPECT_EQ(a.GetInterface(withoutInterface), S_OK);
    QC self(&ids[0], interfaceOfRidge);
    EXPECT_EQ(a.GetInterface(self), E_NOINTERFACE);
    EXPECT_THAT(asked, ElementsAre("a", "c", "a", "c", "a"));
}

// ---- Upgrades.

TEST_F(ModuleChain, ObjectIsUpgradedByTheModuleThatIsNamed) {
    ObjectEx old;
    QC qc(&ids[2]);
    EXPECT_EQ(a.Upgrade(&old, qc), &c.upgrade);
    EXPECT_EQ(c.upgraded, &old);
    EXPECT_THAT(asked, ElementsAre("a", "c"));
    asked.clear();
    c.upgraded = nullptr;
    EXPECT_EQ(a.UpgradeObject(&old, qc), &c.upgrade);
    EXPECT_EQ(c.upgraded, &old);
    EXPECT_THAT(asked, ElementsAre("c"));
}

TEST_F(ModuleChain, EntryForUpgradesReachesTheModuleItself) {
    ObjectEx old;
    QC qc(&ids[2]);
    EXPECT_EQ(c.UpgradeObject(&old, qc), &c.upgrade);
    EXPECT_EQ(c.upgraded, &old);
    QC self(&ids[0]);
    EXPECT_EQ(a.UpgradeObject(&old, self), nullptr);
    EXPECT_EQ(a.Upgrade(&old, self), nullptr);
    EXPECT_THAT(asked, ElementsAre("c", "a", "a"));
}

TEST_F(ModuleChain, NothingIsUpgradedWithoutAModule) {
    ObjectEx old;
    QC none, other(&absent);
    EXPECT_EQ(a.Upgrade(&old, none), nullptr);
    EXPECT_EQ(a.Upgrade(&old, other), nullptr);
    EXPECT_THAT(asked, ElementsAre("a", "a"));
    EXPECT_EQ(a.UpgradeObject(&old, none), nullptr);
    EXPECT_EQ(a.UpgradeObject(&old, other), nullptr);
    EXPECT_THAT(asked, ElementsAre("a", "a"));
}

}  // namespace
}  // namespace ZT
