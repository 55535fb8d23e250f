#include <QCoreApplication>
#include <benchmark/benchmark.h>

// The clipboard is read in an event loop, which needs an application object.
int main(int argc, char *argv[]) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    const QCoreApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
