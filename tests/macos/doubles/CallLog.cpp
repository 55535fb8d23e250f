#include "doubles/CallLog.h"

#include <utility>

namespace quillmender::doubles {

CallLog &CallLog::shared() {
    static CallLog log;
    return log;
}

void CallLog::add(const std::string &call) {
    calls_.push_back(call);
    if (onCall)
        onCall(call);
}

std::vector<std::string> CallLog::take() {
    return std::exchange(calls_, {});
}

} // namespace quillmender::doubles
