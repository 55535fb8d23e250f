#include "platform/linux/wayland/clipboard/DataSource.h"

#include "platform/linux/wayland/clipboard/DataControl.h"
#include "platform/linux/wayland/clipboard/PipeWriter.h"

#include <QLoggingCategory>

#include <algorithm>

namespace quillmender::wayland {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)
} // namespace

struct DataSource::Events {
    using Source = zwlr_data_control_source_v1;

    static void send(void *self, Source *, const char *type, int32_t pipe) {
        static_cast<DataSource *>(self)->send(type, Descriptor(pipe));
    }
    static void cancelled(void *self, Source *) {
        Q_EMIT static_cast<DataSource *>(self)->cancelled();
    }
    static constexpr zwlr_data_control_source_v1_listener source{send, cancelled};
};

DataSource::DataSource(DataControl &control, OfferedContents contents)
    : QObject(&control),
      control_(control),
      contents_(std::move(contents)),
      source_(control.makeSource()) {
    zwlr_data_control_source_v1_add_listener(source_.get(), &Events::source, this);
    for (const OfferedType &each : contents_)
        zwlr_data_control_source_v1_offer(source_.get(), each.name.constData());
}

void DataSource::retire() {
    control_.afterRoundTrip(this, [this] { deleteLater(); });
}

void DataSource::send(const QByteArray &type, Descriptor pipe) {
    constexpr qsizetype mostTransfers = 256;
    Q_EMIT beingAsked();
    const auto found = std::ranges::find(contents_, type, &OfferedType::name);
    if (found == contents_.end() || isRefusing_)
        return;
    const auto transfers =
        control_.findChildren<PipeWriter *>(QString(), Qt::FindDirectChildrenOnly);
    if (transfers.size() >= mostTransfers) {
        qCWarning(log, "too many readers of the clipboard are being served");
        return;
    }
    auto *const transfer = new PipeWriter(std::move(pipe), found->data, &control_);
    Q_EMIT asked(type, transfer);
}

} // namespace quillmender::wayland
