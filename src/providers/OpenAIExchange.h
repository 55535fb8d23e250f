#pragma once

#include "model/LLMConfiguration.h"
#include "providers/HttpTransport.h"

#include <QCoroTask>
#include <QString>

namespace quillmender {

/// One exchange with the OpenAI Responses interface: the endpoint is the whole URL; the answer is
/// "output_text", else the first part of "output" of that type with a text that is not blank.
/// Throws as LLMClient says.
QCoro::Task<QString> requestOpenAI(HttpTransport &transport, QString prompt,
                                   LLMConfiguration configuration);

} // namespace quillmender
