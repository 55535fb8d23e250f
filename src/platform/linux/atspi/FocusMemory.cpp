#include "platform/linux/atspi/FocusMemory.h"

namespace quillmender::atspi {

void FocusMemory::remember(const ObjectRef &object) {
    QList<ObjectRef> &objects = latest_[object.service];
    objects.removeOne(object);
    objects.prepend(object);
    if (objects.size() > objectsPerService)
        objects.removeLast();

    services_.removeOne(object.service);
    services_.prepend(object.service);
    if (services_.size() > maximumServices)
        latest_.remove(services_.takeLast());
}

void FocusMemory::clear() {
    latest_.clear();
    services_.clear();
}

} // namespace quillmender::atspi
