#include <platform/collections/CPtrList.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <list>

namespace {

void* P(std::int64_t number) {
    return reinterpret_cast<void*>(number);
}

/// Adds `count` elements, walks over them, takes every second one out of the middle, adds as
/// many again, and empties the list.
void FillWalkThin(benchmark::State& state) {
    const std::int64_t count = state.range(0);
    for (auto _ : state) {
        CPtrList list;
        for (std::int64_t i = 0; i < count; ++i) list.AddTail(P(i));
        std::intptr_t sum = 0;
        for (POSITION pos = list.GetHeadPosition(); pos != nullptr;) {
            sum += reinterpret_cast<std::intptr_t>(list.GetNext(pos));
        }
        for (POSITION pos = list.GetHeadPosition(); pos != nullptr;) {
            const POSITION here = pos;
            list.GetNext(pos);
            if (pos != nullptr) list.GetNext(pos);
            list.RemoveAt(here);
        }
        for (std::int64_t i = 0; i < count / 2; ++i) list.AddHead(P(i));
        benchmark::DoNotOptimize(sum);
        benchmark::DoNotOptimize(list.GetHeadPosition());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void FillWalkThin_StdList(benchmark::State& state) {
    const std::int64_t count = state.range(0);
    for (auto _ : state) {
        std::list<void*> list;
        for (std::int64_t i = 0; i < count; ++i) list.push_back(P(i));
        std::intptr_t sum = 0;
        for (void* element : list) sum += reinterpret_cast<std::intptr_t>(element);
        for (auto it = list.begin(); it != list.end();) {
            it = list.erase(it);
            if (it != list.end()) ++it;
        }
        for (std::int64_t i = 0; i < count / 2; ++i) list.push_front(P(i));
        benchmark::DoNotOptimize(sum);
        benchmark::DoNotOptimize(list.front());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

template <class LIST>
void WalkOver(benchmark::State& state, LIST& list) {
    for (auto _ : state) {
        std::intptr_t sum = 0;
        for (void* element : list) sum += reinterpret_cast<std::intptr_t>(element);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Walk(benchmark::State& state) {
    CPtrList list;
    for (std::int64_t i = 0; i < state.range(0); ++i) list.AddTail(P(i));
    WalkOver(state, list);
}

void Walk_StdList(benchmark::State& state) {
    std::list<void*> list;
    for (std::int64_t i = 0; i < state.range(0); ++i) list.push_back(P(i));
    WalkOver(state, list);
}

BENCHMARK(FillWalkThin)->Name("CPtrList_FillWalkThin/ours")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(FillWalkThin_StdList)->Name("CPtrList_FillWalkThin/std")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(Walk)->Name("CPtrList_Walk/ours")->Arg(1000);
BENCHMARK(Walk_StdList)->Name("CPtrList_Walk/std")->Arg(1000);

}  // namespace
