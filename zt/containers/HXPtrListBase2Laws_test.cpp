// Any order of operations on two lists, beside a plain model of elements and nodes.

#include <rapidcheck.h>
#include <tests/Evenly.h>
#include <zt/containers/HXPtrListBase2_test.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace {

using namespace testing_support;

// Leaves its elements to the test.
class BorrowingList : public ItemList {
public:
    void DeleteElement(Item*) override {}
};

// What a list should hold: the numbers from head to tail, and where its nodes are.
struct Model {
    std::vector<int> numbers;
    std::ptrdiff_t blocks = 0;
    std::ptrdiff_t free = 0;
    std::ptrdiff_t lost = 0;

    std::ptrdiff_t Size() const { return std::ssize(numbers); }

    NodeLedger Ledger() const {
        return {.blocks = blocks, .listed = Size(), .free = free, .lost = lost};
    }

    void Insert(std::ptrdiff_t index, int number) {
        if (free == 0) {
            ++blocks;
            free = 10;
        }
        --free;
        numbers.insert(numbers.begin() + index, number);
    }
    void Append(const std::vector<int>& added) {
        for (const int number : added) Insert(Size(), number);
    }
    // With the last element all blocks go.
    void Erase(std::ptrdiff_t index) {
        numbers.erase(numbers.begin() + index);
        ++free;
        if (numbers.empty()) *this = Model();
    }
    // Where a number stands; the size when nowhere.
    std::ptrdiff_t Find(int number) const {
        return std::find(numbers.begin(), numbers.end(), number) - numbers.begin();
    }
};

// A run by the indices of its ends, which are the same on an empty list.
struct Run {
    std::ptrdiff_t first;
    std::ptrdiff_t last;

    // The numbers of the run in a loop.
    std::vector<int> Round(const Model& model) const {
        std::vector<int> run;
        for (std::ptrdiff_t i = first;; i = (i + 1) % model.Size()) {
            run.push_back(model.numbers[static_cast<std::size_t>(i)]);
            if (i == last) return run;
        }
    }
    // Erases it from a loop.
    void EraseFrom(Model& model) const {
        const std::ptrdiff_t atFront = last < first ? last + 1 : 0;
        const std::ptrdiff_t end = last < first ? model.Size() : last + 1;
        for (std::ptrdiff_t i = first; i < end; ++i) model.Erase(first);
        for (std::ptrdiff_t i = 0; i < atFront; ++i) model.Erase(0);
    }
};

struct Side {
    BorrowingList list;
    Model model;

    POSITION At(std::ptrdiff_t index) const { return list.CPtrList::FindIndex(index); }

    Run AnyRun() const {
        return {Evenly<std::ptrdiff_t>(0, model.Size()), Evenly<std::ptrdiff_t>(0, model.Size())};
    }
    Run RunToTail() const { return {AnyRun().first, model.Size() - 1}; }
    // One that does not pass the tail.
    Run PlainRun() const {
        const Run run = AnyRun();
        return {std::min(run.first, run.last), std::max(run.first, run.last)};
    }

    bool IsAsItShouldBe() const {
        list.AssertValid();
        return Numbers(list) == model.numbers && list.Ledger() == model.Ledger();
    }
};

std::array<Item, 6> items = {Item(1), Item(2), Item(3), Item(4), Item(5), Item(6)};

Item* AnyItem() {
    return &items[Evenly<std::size_t>(0, items.size())];
}

// The operations on one list, which may take something from the other one.

void Add(Side& side, Side&) {
    Item* const item = AnyItem();
    const bool atHead = *rc::gen::arbitrary<bool>();
    side.list.Add(item, atHead);
    side.model.Insert(atHead ? 0 : side.model.Size(), item->number);
}

void AddUnlessThere(Side& side, Side&) {
    Item* const item = AnyItem();
    const bool there = side.model.Find(item->number) != side.model.Size();
    RC_ASSERT((side.list.AddEx(item, false, true) == nullptr) == there);
    if (!there) side.model.Insert(side.model.Size(), item->number);
}

void Append(Side& side, Side& other) {
    side.list.AppendPtrList(other.list);
    side.model.Append(other.model.numbers);
}

// A list that is copied to another one replaces it.
void CopyPtrList(Side& side, Side& other) {
    side.list.CopyPtrList(other.list);
    side.model = Model();
    side.model.Append(other.model.numbers);
}

void CopyAll(Side& side, Side& other) {
    const bool reverse = *rc::gen::arbitrary<bool>();
    side.list.Copy(other.list, reverse);
    std::vector<int> numbers = other.model.numbers;
    if (reverse) std::reverse(numbers.begin(), numbers.end());
    side.model.Append(numbers);
}

void CopyRun(Side& side, Side& other) {
    if (other.model.Size() == 0) return;
    const Run run = other.PlainRun();
    const bool reverse = *rc::gen::arbitrary<bool>();
    side.list.Copy(other.list, reverse, other.At(run.first), other.At(run.last));
    std::vector<int> numbers = run.Round(other.model);
    if (reverse) std::reverse(numbers.begin(), numbers.end());
    side.model.Append(numbers);
}

void CopyLoop(Side& side, Side& other) {
    if (other.model.Size() == 0) return;
    const Run run = other.AnyRun();
    side.list.CopyCyclic(other.list, other.At(run.first), other.At(run.last));
    side.model.Append(run.Round(other.model));
}

void RemoveItem(Side& side, Side&) {
    Item* const item = AnyItem();
    const std::ptrdiff_t index = side.model.Find(item->number);
    const POSITION place = side.At(index);
    RC_ASSERT((side.list.Remove(item) == place));
    if (index < side.model.Size()) side.model.Erase(index);
}

void RemoveRun(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.PlainRun();
    side.list.Remove(side.At(run.first), side.At(run.last));
    run.EraseFrom(side.model);
}

void RemoveFromHead(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = {0, side.AnyRun().last};
    side.list.Remove(nullptr, side.At(run.last));
    run.EraseFrom(side.model);
}

void RemoveToTail(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.RunToTail();
    side.list.Remove(side.At(run.first), nullptr);
    run.EraseFrom(side.model);
}

void RemoveLoop(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.AnyRun();
    side.list.RemoveCyclic(side.At(run.first), side.At(run.last));
    run.EraseFrom(side.model);
}

void DeleteRun(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.PlainRun();
    side.list.Delete(side.At(run.first), side.At(run.last), *rc::gen::arbitrary<bool>());
    run.EraseFrom(side.model);
}

void DeleteToTail(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.RunToTail();
    side.list.Delete(side.At(run.first), nullptr, *rc::gen::arbitrary<bool>());
    run.EraseFrom(side.model);
}

// A last one that stands before the first does not come up.
void DeletePastLast(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.PlainRun();
    if (run.first == run.last) return;
    side.list.Delete(side.At(run.last), side.At(run.first), false);
    Run{run.last, side.model.Size() - 1}.EraseFrom(side.model);
}

void DeleteLoop(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.AnyRun();
    side.list.Delete(side.At(run.first), side.At(run.last), true);
    run.EraseFrom(side.model);
}

void MoveToHead(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.PlainRun();
    side.list.MoveToHead(side.At(run.first), side.At(run.last));
    const auto begin = side.model.numbers.begin();
    std::rotate(begin, begin + run.first, begin + run.last + 1);
}

void MoveToTail(Side& side, Side&) {
    if (side.model.Size() == 0) return;
    const Run run = side.PlainRun();
    side.list.MoveToTail(side.At(run.first), side.At(run.last));
    const auto begin = side.model.numbers.begin();
    std::rotate(begin + run.first, begin + run.last + 1, side.model.numbers.end());
}

void MoveLoop(Side& side, Side& other) {
    if (other.model.Size() == 0) return;
    const Run run = other.AnyRun();
    side.list.MoveCyclic(other.list, other.At(run.first), other.At(run.last));
    side.model.Append(run.Round(other.model));
    run.EraseFrom(other.model);
}

void Extend(Side& side, Side& other) {
    side.list.Extend(&other.list);
    if (other.model.Size() == 0) return;
    Model& model = side.model;
    const Model taken = std::exchange(other.model, Model());
    model.numbers.insert(model.numbers.end(), taken.numbers.begin(), taken.numbers.end());
    model.blocks += taken.blocks;
    model.lost += model.free + taken.lost;  // Free nodes of the longer list come to no use.
    model.free = taken.free;
}

// What the list held is not freed: the keeper does that.
void MoveAttributes(Side& side, Side& other) {
    ItemList keeper;
    keeper.Adopt(side.list);
    side.list.MoveAttributes(other.list);
    side.model = std::exchange(other.model, Model());
}

// As above.
void SetEmpty(Side& side, Side&) {
    ItemList keeper;
    keeper.Adopt(side.list);
    side.list.SetEmpty();
    side.model = Model();
}

void Reverse(Side& side, Side&) {
    side.list.Reverse();
    std::reverse(side.model.numbers.begin(), side.model.numbers.end());
}

void DeleteAll(Side& side, Side&) {
    side.list.DeleteAll();
    side.model = Model();
}

// The elements are the test's: the list is to clear null pointers.
void ClearOfNull(Side& side, Side&) {
    for (POSITION pos = side.list.GetHeadPosition(); pos != nullptr;) {
        const POSITION here = pos;
        side.list.GetNext(pos);
        side.list.SetAt(here, nullptr);
    }
    side.list.Clear();
    side.model = Model();
}

struct Operation {
    const char* name;
    void (*perform)(Side&, Side&);
};

// What stands here several times comes up more often.
constexpr Operation kOperations[] = {
    {"Add", Add},
    {"Add", Add},
    {"Add", Add},
    {"Add", Add},
    {"AddUnlessThere", AddUnlessThere},
    {"Append", Append},
    {"CopyPtrList", CopyPtrList},
    {"CopyAll", CopyAll},
    {"CopyRun", CopyRun},
    {"CopyLoop", CopyLoop},
    {"RemoveItem", RemoveItem},
    {"RemoveRun", RemoveRun},
    {"RemoveFromHead", RemoveFromHead},
    {"RemoveToTail", RemoveToTail},
    {"RemoveLoop", RemoveLoop},
    {"DeleteRun", DeleteRun},
    {"DeleteToTail", DeleteToTail},
    {"DeletePastLast", DeletePastLast},
    {"DeleteLoop", DeleteLoop},
    {"MoveLoop", MoveLoop},
    {"MoveToHead", MoveToHead},
    {"MoveToTail", MoveToTail},
    {"Extend", Extend},
    {"Extend", Extend},
    {"MoveAttributes", MoveAttributes},
    {"SetEmpty", SetEmpty},
    {"Reverse", Reverse},
    {"DeleteAll", DeleteAll},
    {"ClearOfNull", ClearOfNull},
};

const Operation& AnyOperation() {
    return kOperations[Evenly<std::size_t>(0, std::size(kOperations))];
}

TEST(HXPtrListBase2Laws, AnyOrderOfOperationsKeepsElementsNodesAndBlocks) {
    EXPECT_TRUE(rc::check([] {
        std::array<Side, 2> sides;
        const int length = Evenly(1, 60);
        for (int i = 0; i < length; ++i) {
            const auto which = Evenly<std::size_t>(0, 2);
            Side& side = sides[which];
            // Copies double the lists.
            const bool tooLong = side.model.Size() > 100;
            const Operation operation =
                tooLong ? Operation{"DeleteAll", DeleteAll} : AnyOperation();
            RC_LOG() << operation.name << " of list " << which << std::endl;
            operation.perform(side, sides[1 - which]);
            RC_ASSERT(sides[0].IsAsItShouldBe());
            RC_ASSERT(sides[1].IsAsItShouldBe());
        }
    }));
}

// A list of some of the items, in any order and number.
void FillAtRandom(CPtrList& list) {
    const auto numbers = *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 7));
    for (const int number : numbers) list.AddTail(&items[static_cast<std::size_t>(number) - 1]);
}

TEST(HXPtrListBase2Laws, WalkInEitherSenseVisitsEachPositionOnce) {
    EXPECT_TRUE(rc::check([] {
        ItemList list;
        FillAtRandom(list);
        RC_PRE(!list.IsEmpty());
        const bool forward = *rc::gen::arbitrary<bool>();
        const POSITION start = list.IndexToPosition(Evenly<std::ptrdiff_t>(0, list.GetCount()));
        std::vector<POSITION> visited;
        POSITION pos = start;
        do {
            visited.push_back(pos);
            list.GetNextCyclic(pos, forward);
        } while (pos != start);
        RC_ASSERT(std::ssize(visited) == list.GetCount());
        std::sort(visited.begin(), visited.end());
        RC_ASSERT(std::adjacent_find(visited.begin(), visited.end()) == visited.end());
    }));
}

TEST(HXPtrListBase2Laws, PositionsAndIndicesAreInverse) {
    EXPECT_TRUE(rc::check([] {
        ItemList list;
        FillAtRandom(list);
        const auto index = Evenly<std::int64_t>(0, list.GetCount() + 1);
        const POSITION pos = list.IndexToPosition(index);
        RC_ASSERT(((pos == nullptr) == (index == list.GetCount())));
        RC_ASSERT(list.PositionToIndex(pos) == (pos == nullptr ? -1 : index));
        RC_ASSERT(list.GetRangeCount(nullptr, pos) ==
                  (pos == nullptr ? list.GetCount() : index + 1));
    }));
}

TEST(HXPtrListBase2Laws, FirstPlaceIsTheSameBySearchOfEitherKind) {
    EXPECT_TRUE(rc::check([] {
        ItemList list;
        FillAtRandom(list);
        Item* const item = AnyItem();
        unsigned int index = 0;
        const POSITION pos = list.FindItem(item, nullptr, &index);
        RC_ASSERT((pos == list.FindCyclic(item)));
        RC_ASSERT((pos == list.Find(item)));
        RC_ASSERT(static_cast<int>(index) == list.FindIndex(item));
        RC_ASSERT(list.PositionToIndex(pos) == list.FindIndex(item));
    }));
}

}  // namespace
