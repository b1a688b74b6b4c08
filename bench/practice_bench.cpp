// Making one practice circuit, proof by the student's steps included, for the smallest and
// the largest shapes, with free and with nice values: what File > New practice circuit...
// and each circuit of a worksheet wait for.

#include "practice/practice_circuit.h"

#include <benchmark/benchmark.h>

namespace {

void BM_MakePracticeCircuit(benchmark::State& state) {
    const ampora::PracticeShape shape{static_cast<int>(state.range(0)),
                                      static_cast<int>(state.range(1)),
                                      static_cast<int>(state.range(2))};
    const bool nice = state.range(3) != 0;
    std::uint32_t seed = 0;
    for (auto _ : state) {
        const ampora::PracticeCircuit circuit = ampora::MakePracticeCircuit(shape, ++seed, nice);
        benchmark::DoNotOptimize(circuit.drawn.NumWires);
    }
}
BENCHMARK(BM_MakePracticeCircuit)
    ->ArgNames({"nodes", "supernodes", "sources", "nice"})
    ->Args({3, 0, 1, 0})
    ->Args({3, 0, 1, 1})
    ->Args({10, 3, 4, 0})
    ->Args({10, 3, 4, 1})
    ->Unit(benchmark::kMillisecond);

} // namespace
