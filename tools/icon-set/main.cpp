// Draws the sizes of a Mac's icon from one SVG file into one .icns file.
// Usage: icon-set drawing.svg icon.icns

#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>

#include <array>
#include <cstdio>

namespace {

struct Entry {
    const char *type;
    int pixels;
};

// The types that are PNG pictures inside an application's bundle too. "@2x" pictures stand beside
// those of the same number of pixels, since a screen of double density asks for them by name.
constexpr std::array entries = {
    Entry{"ic11", 32},  // 16@2x
    Entry{"ic12", 64},  // 32@2x
    Entry{"ic07", 128}, // 128
    Entry{"ic13", 256}, // 128@2x
    Entry{"ic08", 256}, // 256
    Entry{"ic14", 512}, // 256@2x
    Entry{"ic09", 512}, // 512
    Entry{"ic10", 1024} // 512@2x
};

// The drawing's ground is 464 of its 512 units wide; a Mac's icons leave more of the picture free,
// 824 of 1024 are used.
constexpr qreal scale = (824.0 / 1024.0) / (464.0 / 512.0);

QByteArray picture(QSvgRenderer &drawing, int pixels) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const qreal side = pixels * scale;
    const qreal margin = (pixels - side) / 2;
    drawing.render(&painter, QRectF(margin, margin, side, side));
    painter.end();

    QByteArray png;
    QBuffer buffer(&png);
    return buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "PNG") ? png : QByteArray();
}

// Every part of the container begins with a name of four characters and its own size, these eight
// bytes included.
QByteArray part(const char *name, const QByteArray &content) {
    QByteArray result(name, 4);
    const auto size = qToBigEndian(static_cast<quint32>(content.size() + 8));
    result.append(reinterpret_cast<const char *>(&size), sizeof size);
    return result + content;
}

} // namespace

int main(int argc, char *argv[]) {
    if (argc != 3) {
        std::fputs("usage: icon-set drawing.svg icon.icns\n", stderr);
        return 2;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid()) {
        std::fprintf(stderr, "%s is no drawing\n", argv[1]);
        return 1;
    }
    QByteArray pictures;
    for (const Entry &entry : entries) {
        const QByteArray png = picture(drawing, entry.pixels);
        if (png.isEmpty()) {
            std::fprintf(stderr, "%s cannot be drawn\n", argv[1]);
            return 1;
        }
        pictures += part(entry.type, png);
    }
    const QByteArray icon = part("icns", pictures);
    QFile file(QString::fromLocal8Bit(argv[2]));
    if (!file.open(QIODevice::WriteOnly) || file.write(icon) != icon.size()) {
        std::fprintf(stderr, "%s cannot be written\n", argv[2]);
        return 1;
    }
    return 0;
}
