// Messages to clients against a loop over function pointers.

#include <benchmark/benchmark.h>
#include <zt/interfaces/INotify.h>
#include <zt/modules/NotifyServer.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

// Counts what it hears, and does so behind the compiler's back.
struct Client final : ZT::INotify {
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 2; }
    ULONG Release() override { return 1; }
    HRESULT Notify(void* message) override {
        count += *static_cast<std::uint64_t*>(message);
        return S_OK;
    }
    std::uint64_t count = 0;
};

struct Listener {
    void (*hear)(void* self, void* message);
    void* self;
};

void Hear(void* self, void* message) {
    *static_cast<std::uint64_t*>(self) += *static_cast<std::uint64_t*>(message);
}

// A sender as one would write it: not part of its caller, as the server is not.
[[gnu::noinline]] void Send(const std::vector<Listener>& listeners, void* message) {
    for (const Listener& listener : listeners) listener.hear(listener.self, message);
}

std::size_t Count(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void NotifyOurs(benchmark::State& state) {
    std::vector<Client> clients(Count(state));
    ZT::NotifyServer server;
    // Found clients are looked for first: building a long list takes its square.
    for (Client& client : clients) server.AddClient(&client);
    std::uint64_t message = 1;
    for (auto _ : state) {
        server.Notify(&message);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(NotifyOurs)->Name("NotifyServer_Notify/ours")->Arg(1)->Arg(10)->Arg(1000);

void NotifyMaskedOurs(benchmark::State& state) {
    std::vector<Client> clients(Count(state));
    ZT::NotifyServer server;
    for (Client& client : clients) server.AddClient(&client, 1);
    std::uint64_t message = 1;
    for (auto _ : state) {
        server.Notify(&message, 1);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(NotifyMaskedOurs)->Name("NotifyServer_NotifyMasked/ours")->Arg(1)->Arg(10)->Arg(1000);

void Plain(benchmark::State& state) {
    std::vector<std::uint64_t> counts(Count(state));
    std::vector<Listener> listeners;
    for (std::uint64_t& count : counts) listeners.push_back({&Hear, &count});
    benchmark::DoNotOptimize(listeners.data());
    std::uint64_t message = 1;
    for (auto _ : state) {
        Send(listeners, &message);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Plain)->Name("NotifyServer_Notify/plain")->Arg(1)->Arg(10)->Arg(1000);
BENCHMARK(Plain)->Name("NotifyServer_NotifyMasked/plain")->Arg(1)->Arg(10)->Arg(1000);

}  // namespace
