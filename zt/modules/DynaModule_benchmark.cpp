// Requests over a chain of modules against the same walks written out by hand.

#include <benchmark/benchmark.h>
#include <zt/modules/DynaModule.h>
#include <zt/modules/QC.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace {

using ZT::DynaModule;
using ZT::QC;

_GUID IdOf(std::size_t number) {
    return {static_cast<std::uint32_t>(number), 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
}

// The last of a chain, which answers what it is asked.
struct Answering : DynaModule {
    using DynaModule::DynaModule;
    using DynaModule::Execute;
    bool Execute(QC& qc) override { return qc.ReturnFound(true); }
};

// `size` modules, each attached to the one before.
struct OurChain {
    explicit OurChain(std::size_t size) : ids(size) {
        for (std::size_t i = 0; i < size; ++i) {
            ids[i] = IdOf(i);
            modules.push_back(i + 1 < size ? Make<DynaModule>(i) : Make<Answering>(i));
            if (i > 0) modules[i - 1]->AddUser(modules[i].get());
        }
    }
    template <class Module>
    std::unique_ptr<DynaModule> Make(std::size_t i) {
        return std::make_unique<Module>(&ids[i], DynaModule::eConfigDefault);
    }
    bool Ask(_GUID* module) {
        QC qc(module);
        return modules.front()->Execute(qc);
    }

    std::vector<_GUID> ids;
    std::vector<std::unique_ptr<DynaModule>> modules;
};

// The least that does the same: identifiers, users in a vector, one virtual operation.
struct PlainModule {
    explicit PlainModule(std::size_t number) : id(IdOf(number)) {}
    virtual ~PlainModule() = default;
    virtual bool Offer(QC& qc) {
        for (PlainModule* const user : users)
            if (user->Offer(qc)) return true;
        return false;
    }
    PlainModule* Find(const _GUID& wanted) {
        if (id == wanted) return this;
        for (PlainModule* const user : users)
            if (PlainModule* const found = user->Find(wanted)) return found;
        return nullptr;
    }

    _GUID id;
    std::vector<PlainModule*> users;
};

struct PlainAnswering : PlainModule {
    using PlainModule::PlainModule;
    bool Offer(QC& qc) override { return qc.ReturnFound(true); }
};

struct PlainChain {
    explicit PlainChain(std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            if (i + 1 < size) {
                modules.push_back(std::make_unique<PlainModule>(i));
            } else {
                modules.push_back(std::make_unique<PlainAnswering>(i));
            }
            if (i > 0) modules[i - 1]->users.push_back(modules[i].get());
        }
        last = IdOf(size - 1);
    }
    bool Ask(const _GUID* module) {
        QC qc;
        if (module == nullptr) return modules.front()->Offer(qc);
        PlainModule* const found = modules.front()->Find(*module);
        return found != nullptr && found->Offer(qc);
    }

    _GUID last;
    std::vector<std::unique_ptr<PlainModule>> modules;
};

template <class Chain, class Module>
void Ask(benchmark::State& state, Chain& chain, Module* module) {
    for (auto _ : state) {
        bool answered = chain.Ask(module);
        benchmark::DoNotOptimize(answered);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void RouteOurs(benchmark::State& state) {
    OurChain chain(static_cast<std::size_t>(state.range(0)));
    Ask(state, chain, &chain.ids.back());
}
BENCHMARK(RouteOurs)->Name("DynaModule_Route/ours")->RangeMultiplier(10)->Range(10, 1000);

void RoutePlain(benchmark::State& state) {
    PlainChain chain(static_cast<std::size_t>(state.range(0)));
    Ask(state, chain, &chain.last);
}
BENCHMARK(RoutePlain)->Name("DynaModule_Route/plain")->RangeMultiplier(10)->Range(10, 1000);

void OfferOurs(benchmark::State& state) {
    OurChain chain(static_cast<std::size_t>(state.range(0)));
    Ask(state, chain, static_cast<_GUID*>(nullptr));
}
BENCHMARK(OfferOurs)->Name("DynaModule_Offer/ours")->RangeMultiplier(10)->Range(10, 1000);

void OfferPlain(benchmark::State& state) {
    PlainChain chain(static_cast<std::size_t>(state.range(0)));
    Ask(state, chain, static_cast<const _GUID*>(nullptr));
}
BENCHMARK(OfferPlain)->Name("DynaModule_Offer/plain")->RangeMultiplier(10)->Range(10, 1000);

}  // namespace
