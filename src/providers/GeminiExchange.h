#pragma once

#include "model/LLMConfiguration.h"
#include "providers/HttpTransport.h"

#include <QCoroTask>
#include <QString>

namespace quillmender {

/// One exchange with the Gemini generateContent interface: the endpoint is the base URL of the
/// models; the answer is all parts of all candidates, joined.
/// Throws as LLMClient says.
QCoro::Task<QString> requestGemini(HttpTransport &transport, QString prompt,
                                   LLMConfiguration configuration);

} // namespace quillmender
