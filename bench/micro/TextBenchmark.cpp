#include "app/TextPreview.h"
#include "bench/micro/Text.h"
#include "model/PromptAction.h"

#include <benchmark/benchmark.h>

namespace quillmender::bench {

namespace {

void renderPrompt(benchmark::State &state) {
    const QString text = plainText(state.range(0));
    CustomAction custom;
    custom.title = QStringLiteral("Shorten");
    custom.promptTemplate = QStringLiteral("Make this shorter, keep its tone:\n\n{{text}}");
    const PromptAction action = PromptAction::custom(custom);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(action.prompt(text));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void previewText(benchmark::State &state) {
    const QString text = plainText(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(textPreview(text));
}

// The worst for a preview: nothing to show until the end.
void previewBlankText(benchmark::State &state) {
    const QString text(state.range(0), u' ');
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(textPreview(text));
}

BENCHMARK(renderPrompt)->Arg(1'000)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(previewText)->Arg(1'000)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(previewBlankText)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace quillmender::bench
