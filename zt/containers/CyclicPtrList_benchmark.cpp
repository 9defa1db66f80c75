// A list as a loop, against the same loop written by hand over std::list.

#include <benchmark/benchmark.h>
#include <zt/containers/HXVoidPtrList.h>

#include <cstdint>
#include <iterator>
#include <list>

namespace {

void* P(std::int64_t number) {
    return reinterpret_cast<void*>(number);
}

std::intptr_t N(void* element) {
    return reinterpret_cast<std::intptr_t>(element);
}

/// Twice round the loop from its middle.
void Walk(benchmark::State& state) {
    ZT::HXVoidPtrList loop;
    for (std::int64_t i = 0; i < state.range(0); ++i) loop.AddTail(P(i));
    const POSITION middle = loop.FindIndex(state.range(0) / 2);
    for (auto _ : state) {
        std::intptr_t sum = 0;
        POSITION pos = middle;
        for (std::int64_t left = 2 * state.range(0); left > 0; --left) {
            sum += N(loop.GetNextCyclic(pos));
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}

void Walk_StdList(benchmark::State& state) {
    std::list<void*> loop;
    for (std::int64_t i = 0; i < state.range(0); ++i) loop.push_back(P(i));
    const auto middle = std::next(loop.begin(), state.range(0) / 2);
    for (auto _ : state) {
        std::intptr_t sum = 0;
        auto pos = middle;
        for (std::int64_t left = 2 * state.range(0); left > 0; --left) {
            sum += N(*pos);
            if (++pos == loop.end()) pos = loop.begin();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}

/// Appends a copy of the run from the last quarter into the first, and takes that run out.
void MoveRun(benchmark::State& state) {
    ZT::HXVoidPtrList loop;
    for (std::int64_t i = 0; i < state.range(0); ++i) loop.AddTail(P(i));
    for (auto _ : state) {
        const POSITION from = loop.FindIndex(state.range(0) * 3 / 4);
        const POSITION to = loop.FindIndex(state.range(0) / 4);
        const POSITION tail = loop.GetTailPosition();
        loop.CopyCyclic(loop, from, to);
        loop.Remove(from, tail);
        loop.Remove(loop.GetHeadPosition(), to);
        benchmark::DoNotOptimize(loop.GetHeadPosition());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void MoveRun_StdList(benchmark::State& state) {
    std::list<void*> loop;
    for (std::int64_t i = 0; i < state.range(0); ++i) loop.push_back(P(i));
    for (auto _ : state) {
        const auto from = std::next(loop.begin(), state.range(0) * 3 / 4);
        const auto last = std::next(loop.begin(), state.range(0) / 4);
        const auto tail = std::prev(loop.end());
        for (auto pos = from;;) {
            void* const element = *pos;
            const bool atLast = pos == last;
            pos = pos == tail ? loop.begin() : std::next(pos);
            loop.push_back(element);
            if (atLast) break;
        }
        loop.erase(from, std::next(tail));
        loop.erase(loop.begin(), std::next(last));
        benchmark::DoNotOptimize(loop.front());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(Walk)->Name("CyclicPtrList_Walk/ours")->Arg(10)->Arg(1000);
BENCHMARK(Walk_StdList)->Name("CyclicPtrList_Walk/std")->Arg(10)->Arg(1000);
BENCHMARK(MoveRun)->Name("CyclicPtrList_MoveRun/ours")->Arg(10)->Arg(1000);
BENCHMARK(MoveRun_StdList)->Name("CyclicPtrList_MoveRun/std")->Arg(10)->Arg(1000);

}  // namespace
