#include "platform/linux/terminal/CommandEditors.h"

#include <algorithm>
#include <array>

namespace quillmender {

namespace {

constexpr std::array classes{"emacs", "gvim", "evim", "nvim-qt", "neovide"};

} // namespace

bool isCommandEditor(const QString &className) {
    return std::ranges::any_of(classes, [&](const char *known) {
        return className.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    });
}

} // namespace quillmender
