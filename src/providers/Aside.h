#pragma once

#include <QCoroTask>
#include <QString>

#include <functional>

namespace quillmender {

/// Does work that takes noticeably long on a thread of its own; the caller goes on with its result,
/// or with what it threw, on the thread that it is on.
QCoro::Task<QString> aside(std::function<QString()> work);

} // namespace quillmender
