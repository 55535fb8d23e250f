#include "desktop/package/InstalledPackage.h"

#include "desktop/package/DebianPackage.h"
#include "desktop/package/Tool.h"

#include <exception>
#include <iostream>

namespace quillmender {

namespace {

const QString name = QStringLiteral("quillmender");

void purgePackage() {
    requireTool(QStringLiteral("dpkg"), {QStringLiteral("--purge"), name});
}

} // namespace

InstalledPackage::InstalledPackage() {
    try {
        requireTool(QStringLiteral("dpkg"), {QStringLiteral("--force-unsafe-io"),
                                             QStringLiteral("--install"), DebianPackage::path()});
    } catch (...) {
        // One whose dependencies are missing is unpacked all the same.
        if (isThere())
            purgePackage();
        throw;
    }
    isInstalled_ = true;
}

InstalledPackage::~InstalledPackage() {
    try {
        purge();
    } catch (const std::exception &error) {
        std::cerr << error.what() << std::endl;
    }
}

void InstalledPackage::purge() {
    if (!isInstalled_)
        return;
    isInstalled_ = false;
    purgePackage();
}

bool InstalledPackage::isThere() {
    const ToolResult query = runTool(
        QStringLiteral("dpkg-query"),
        {QStringLiteral("--show"), QStringLiteral("--showformat=${db:Status-Status}"), name});
    return query.exitCode == 0 && query.output != "not-installed";
}

} // namespace quillmender
