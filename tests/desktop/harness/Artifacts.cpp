#include "desktop/harness/Artifacts.h"

namespace quillmender::harness {

QString artifactsFolder() {
    const QString chosen = qEnvironmentVariable("QUILLMENDER_ARTIFACTS");
    return chosen.isEmpty() ? QStringLiteral(QUILLMENDER_ARTIFACTS_DEFAULT) : chosen;
}

} // namespace quillmender::harness
