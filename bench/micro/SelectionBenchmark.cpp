#include "bench/micro/Text.h"
#include "platform/CharacterBoundary.h"

#include <benchmark/benchmark.h>

namespace quillmender::bench {

namespace {

void checkBoundaries(benchmark::State &state) {
    const QString text = plainText(state.range(0));
    const TextRange range{text.size() / 2, text.size() / 4};
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(fallsOnCharacterBoundaries(text, range));
}

BENCHMARK(checkBoundaries)->Arg(1'000)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace quillmender::bench
