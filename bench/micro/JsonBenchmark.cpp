#include "bench/micro/Text.h"
#include "model/Json.h"
#include "support/ProviderAnswers.h"

#include <benchmark/benchmark.h>

namespace quillmender::bench {

namespace {

void encodeText(benchmark::State &state) {
    const QString text = plainText(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(encodeJson(Json{{"input", jsonText(text)}}));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void decodeAnswer(benchmark::State &state) {
    const QByteArray body = test::openAIBody(plainText(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(decodeJson(body));
    state.SetBytesProcessed(state.iterations() * body.size());
}

BENCHMARK(encodeText)->Arg(1'000)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(decodeAnswer)->Arg(1'000)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace quillmender::bench
