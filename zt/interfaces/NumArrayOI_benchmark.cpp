// Numbers through their interface against the same work behind one plain virtual call.

#include <benchmark/benchmark.h>
#include <zt/interfaces/NumArrayOI.h>

#include <cstdint>
#include <memory>

namespace {

constexpr std::int32_t kCount = 4096;

// What a class without interfaces would have: the array, and virtual operations of its own.
class Numbers {
public:
    virtual ~Numbers() = default;
    virtual HRESULT GetAt(std::int32_t index, double* value) = 0;
    virtual HRESULT SetAt(std::int32_t index, double value) = 0;
    virtual HRESULT Add(double value) = 0;
};

class PlainNumbers final : public Numbers {
public:
    HRESULT GetAt(std::int32_t index, double* value) override;
    HRESULT SetAt(std::int32_t index, double value) override;
    HRESULT Add(double value) override;

private:
    using Array = CArray<double, double>;
    std::unique_ptr<Array> m_array = std::make_unique<Array>();
};

HRESULT PlainNumbers::GetAt(std::int32_t index, double* value) {
    const Array& numbers = *m_array;
    if (index < 0 || index >= numbers.GetSize()) return DISP_E_BADINDEX;
    if (value != nullptr) *value = numbers.GetData()[index];
    return S_OK;
}

HRESULT PlainNumbers::SetAt(std::int32_t index, double value) {
    if (index < 0 || index >= m_array->GetSize() - 1) return DISP_E_BADINDEX;
    m_array->GetData()[index] = value;
    return S_OK;
}

HRESULT PlainNumbers::Add(double value) {
    m_array->Add(value);
    return S_OK;
}

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
    std::unique_ptr<Numbers> object = std::make_unique<PlainNumbers>();
    Numbers* shown = object.get();
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
