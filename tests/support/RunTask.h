#pragma once

#include <QCoroTask>
#include <QEventLoop>

#include <exception>
#include <optional>
#include <type_traits>

namespace quillmender::test {

namespace detail {
template <typename T> struct Outcome {
    std::optional<std::conditional_t<std::is_void_v<T>, bool, T>> value;
    std::exception_ptr error;
    QEventLoop loop;

    bool isThere() const { return value.has_value() || error != nullptr; }
};

template <typename T> QCoro::Task<> settle(QCoro::Task<T> &task, Outcome<T> &outcome) {
    try {
        if constexpr (std::is_void_v<T>) {
            co_await task;
            outcome.value = true;
        } else {
            outcome.value = co_await task;
        }
    } catch (...) {
        outcome.error = std::current_exception();
    }
    outcome.loop.quit();
}
} // namespace detail

/// Runs the event loop until the task has ended; gives its result or throws what it threw.
/// (QCoro::waitFor never returns when the task throws.)
template <typename T> T runTask(QCoro::Task<T> task) {
    detail::Outcome<T> outcome;
    const auto settling = detail::settle(task, outcome);
    if (!outcome.isThere())
        outcome.loop.exec();
    if (outcome.error)
        std::rethrow_exception(outcome.error);
    if constexpr (!std::is_void_v<T>)
        return std::move(*outcome.value);
}

} // namespace quillmender::test
