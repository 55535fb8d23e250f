#pragma once

#include "model/LLMConfiguration.h"
#include "providers/HttpTransport.h"

#include <QCoroTask>
#include <QString>

namespace quillmender {

/// One exchange with the Anthropic Messages interface: the endpoint is the whole URL; the answer is
/// all text blocks, joined.
/// Throws as LLMClient says.
QCoro::Task<QString> requestAnthropic(HttpTransport &transport, QString prompt,
                                      LLMConfiguration configuration);

} // namespace quillmender
