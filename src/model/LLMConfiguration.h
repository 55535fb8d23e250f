#pragma once

#include "model/AIProvider.h"

namespace quillmender {

/// The settings of one request; its texts are already trimmed.
struct LLMConfiguration {
    AIProvider provider = AIProvider::openAI;
    QString apiKey;
    QString model;
    QString endpoint;
};

} // namespace quillmender
