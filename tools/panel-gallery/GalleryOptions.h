#pragma once

#include "platform/Appearance.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFont>

namespace quillmender {

/// What a desktop may choose for all windows, as options of a gallery.
class GalleryOptions {
  public:
    explicit GalleryOptions(QCommandLineParser &parser) : parser_(parser) {
        parser.addOptions({dark_, accent_, contrast_, fontSize_});
    }

    /// Once the arguments have been read, before any window is made.
    DesktopColors apply() const {
        if (parser_.isSet(fontSize_)) {
            QFont font = QApplication::font();
            font.setPointSize(parser_.value(fontSize_).toInt());
            QApplication::setFont(font);
        }
        DesktopColors colors;
        colors.scheme = parser_.isSet(dark_) ? ColorScheme::dark : ColorScheme::light;
        if (parser_.isSet(accent_))
            colors.accent = QColor::fromRgb(parser_.value(accent_).toUInt(nullptr, 16));
        if (parser_.isSet(contrast_))
            colors.contrast = ContrastPreference::higher;
        return colors;
    }

  private:
    QCommandLineParser &parser_;
    QCommandLineOption dark_{QStringLiteral("dark"), QStringLiteral("Dark colours")};
    QCommandLineOption accent_{QStringLiteral("accent"), QStringLiteral("Accent colour"),
                               QStringLiteral("RRGGBB")};
    QCommandLineOption contrast_{QStringLiteral("contrast"), QStringLiteral("More contrast")};
    QCommandLineOption fontSize_{QStringLiteral("font-size"), QStringLiteral("Text size"),
                                 QStringLiteral("points")};
};

} // namespace quillmender
