#include "platform/linux/WaylandModule.h"

#include "platform/linux/wayland/module/ModuleFunctions.h"

#include <QLoggingCategory>

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.platform", QtWarningMsg)

void *load() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        // A path that begins nowhere would be looked for in the folder that the program is run in.
        qCWarning(log, "no Wayland: %s", error.message().c_str());
        return nullptr;
    }
    const auto module = program.parent_path() / QUILLMENDER_MODULE_FOLDER / wayland::moduleFile;
    void *const handle = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle)
        qCWarning(log, "no Wayland: %s", ::dlerror());
    return handle;
}

template <typename Function> Function *find(void *handle, const char *name) {
    return handle ? reinterpret_cast<Function *>(::dlsym(handle, name)) : nullptr;
}

} // namespace

WaylandModule::WaylandModule() : handle_(load()) {}

WindowSystemServices WaylandModule::makeWindowSystem(const WindowSystemNeeds &needs) const {
    WindowSystemServices services;
    const auto make = find<wayland::MakeWindowSystem>(handle_, wayland::makeWindowSystemName);
    if (make)
        make(services, needs);
    return services;
}

int WaylandModule::serveClipboard(int argc, char *argv[]) const {
    const auto serve = find<wayland::ServeClipboard>(handle_, wayland::serveClipboardName);
    return serve ? serve(argc, argv) : EXIT_FAILURE;
}

} // namespace quillmender
