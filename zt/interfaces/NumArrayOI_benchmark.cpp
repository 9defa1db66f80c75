// Numbers through their interface against the same work behind one plain virtual call.

#include <benchmark/benchmark.h>
#include <zt/interfaces/NumArrayOI.h>

#include <cstdint>
#include <memory>

// Visible from outside and not alone under their base, so that the compiler has to call through
// the table here as well.
namespace plain_numbers {

// What a class without interfaces would have: virtual operations of its own.
class Numbers {
public:
    virtual ~Numbers() = default;
    virtual HRESULT GetAt(std::int32_t index, double* value) = 0;
    virtual HRESULT SetAt(std::int32_t index, double value) = 0;
    virtual HRESULT Add(double value) = 0;
};

class NoNumbers final : public Numbers {
public:
    HRESULT GetAt(std::int32_t, double*) override { return DISP_E_BADINDEX; }
    HRESULT SetAt(std::int32_t, double) override { return DISP_E_BADINDEX; }
    HRESULT Add(double) override { return E_OUTOFMEMORY; }
};

class ArrayNumbers final : public Numbers {
public:
    [[gnu::noinline]] HRESULT GetAt(std::int32_t index, double* value) override {
        const Array& numbers = *m_array;
        if (index < 0 || index >= numbers.GetSize()) return DISP_E_BADINDEX;
        if (value != nullptr) *value = numbers.GetData()[index];
        return S_OK;
    }
    [[gnu::noinline]] HRESULT SetAt(std::int32_t index, double value) override {
        if (index < 0 || index >= m_array->GetSize() - 1) return DISP_E_BADINDEX;
        m_array->GetData()[index] = value;
        return S_OK;
    }
    [[gnu::noinline]] HRESULT Add(double value) override {
        m_array->Add(value);
        return S_OK;
    }

private:
    using Array = CArray<double, double>;
    std::unique_ptr<Array> m_array = std::make_unique<Array>();
};

std::unique_ptr<Numbers> Make(bool bNumbers) {
    if (bNumbers) return std::make_unique<ArrayNumbers>();
    return std::make_unique<NoNumbers>();
}

}  // namespace plain_numbers

namespace {

constexpr std::int32_t kCount = 4096;

template <class Shown>
void Fill(Shown& numbers) {
    for (std::int32_t i = 0; i < kCount; ++i) numbers.Add(i);
}

// Runs `work` on filled numbers behind a pointer that the compiler cannot see through.
template <class Work>
void OnOurs(benchmark::State& state, Work work) {
    auto* const object = new ZT::NumArrayOI(true);
    void* found = nullptr;
    object->QueryInterface(ZT::IID_IArrayNum, &found);
    auto* shown = static_cast<ZT::IArrayNum*>(found);
    benchmark::DoNotOptimize(shown);
    Fill(*shown);
    for (auto _ : state) work(*shown);
    state.SetItemsProcessed(state.iterations() * kCount);
    shown->Release();
    object->Release();
}

template <class Work>
void OnPlain(benchmark::State& state, Work work) {
    bool numbers = true;
    benchmark::DoNotOptimize(numbers);
    const auto object = plain_numbers::Make(numbers);
    plain_numbers::Numbers* shown = object.get();
    benchmark::DoNotOptimize(shown);
    Fill(*shown);
    for (auto _ : state) work(*shown);
    state.SetItemsProcessed(state.iterations() * kCount);
}

constexpr auto kSum = [](auto& numbers) {
    double sum = 0.0;
    for (std::int32_t i = 0; i < kCount; ++i) {
        double value = 0.0;
        numbers.GetAt(i, &value);
        sum += value;
    }
    benchmark::DoNotOptimize(sum);
};

constexpr auto kStore = [](auto& numbers) {
    for (std::int32_t i = 0; i < kCount; ++i) numbers.SetAt(i, i);
    benchmark::ClobberMemory();
};

void GetAtOurs(benchmark::State& state) {
    OnOurs(state, kSum);
}
void GetAtPlain(benchmark::State& state) {
    OnPlain(state, kSum);
}
void SetAtOurs(benchmark::State& state) {
    OnOurs(state, kStore);
}
void SetAtPlain(benchmark::State& state) {
    OnPlain(state, kStore);
}

BENCHMARK(GetAtOurs)->Name("NumArrayOI_GetAt/ours");
BENCHMARK(GetAtPlain)->Name("NumArrayOI_GetAt/plain");
BENCHMARK(SetAtOurs)->Name("NumArrayOI_SetAt/ours");
BENCHMARK(SetAtPlain)->Name("NumArrayOI_SetAt/plain");

}  // namespace
