#include "model/UserMessage.h"

#include "model/UserVisibleError.h"

namespace quillmender {

QString userMessage(const std::exception_ptr &error) {
    auto unknown = QStringLiteral("The operation could not be completed.");
    if (!error)
        return unknown;
    try {
        std::rethrow_exception(error);
    } catch (const UserVisibleError &described) {
        return described.errorDescription();
    } catch (const std::exception &other) {
        return QString::fromUtf8(other.what());
    } catch (...) {
        return unknown;
    }
}

} // namespace quillmender
