#pragma once

#include <QString>

namespace quillmender::harness {

/// Where what is kept of failed tests goes, each in a folder of its own: $QUILLMENDER_ARTIFACTS or
/// build/artifacts.
QString artifactsFolder();

} // namespace quillmender::harness
