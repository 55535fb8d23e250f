#include "desktop/harness/Screenshot.h"

#include "desktop/harness/XcbConnection.h"

namespace quillmender::harness {

QImage takeScreenshot(XcbConnection &connection, QRect area) {
    const QRect whole(0, 0, connection.screen()->width_in_pixels,
                      connection.screen()->height_in_pixels);
    const QRect wanted = area.isEmpty() ? whole : area.intersected(whole);
    const auto cookie = xcb_get_image(
        connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(),
        static_cast<qint16>(wanted.x()), static_cast<qint16>(wanted.y()),
        static_cast<quint16>(wanted.width()), static_cast<quint16>(wanted.height()), UINT32_MAX);
    const XcbPointer<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(connection.get(), cookie, nullptr));
    if (!reply)
        return {};
    // 24 bits deep screens send 32 bits per pixel, the highest eight unused.
    return QImage(xcb_get_image_data(reply.get()), wanted.width(), wanted.height(),
                  QImage::Format_RGB32)
        .copy();
}

} // namespace quillmender::harness
