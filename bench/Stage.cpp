#include "bench/Stage.h"

#include "bench/WaylandStage.h"
#include "bench/XStage.h"

namespace quillmender::bench {

std::unique_ptr<Stage> Stage::open(StageKind kind) {
    switch (kind) {
    case StageKind::x11:
        return std::make_unique<XStage>();
    case StageKind::sway:
        return std::make_unique<WaylandStage>(harness::CompositorKind::sway);
    case StageKind::kwin:
        return std::make_unique<WaylandStage>(harness::CompositorKind::kwin);
    }
    return nullptr;
}

} // namespace quillmender::bench
