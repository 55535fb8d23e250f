#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/Desktop.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/selection/SelectionReader.h"

#include <QCoroTask>
#include <benchmark/benchmark.h>

namespace quillmender::bench {

using namespace x11;

namespace {

// All targets of a clipboard that holds text, HTML and a picture of the given size.
void snapshotClipboard(benchmark::State &state) {
    const harness::Desktop desktop({.accessibilityBus = false, .keyring = false});
    QList<harness::ClipboardRepresentation> offer = harness::ClipboardOwner::textHtmlAndImage();
    offer.append({.target = "image/bmp",
                  .type = "image/bmp",
                  .format = 8,
                  .bytes = QByteArray(state.range(0), 'b')});
    const harness::ClipboardOwner owner(desktop.display(), offer);
    const auto connection = X11Connection::open(desktop.display().toLatin1());
    SelectionReader reader(*connection, connection->atom("CLIPBOARD"));
    for ([[maybe_unused]] auto _ : state) {
        const SelectionContents contents = QCoro::waitFor(reader.readAll()).contents;
        if (contents.size() < offer.size())
            state.SkipWithError("the snapshot is not whole");
    }
}

BENCHMARK(snapshotClipboard)->Arg(1'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace quillmender::bench
