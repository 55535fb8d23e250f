#pragma once

#include <QCoroTask>
#include <gtest/gtest.h>

#include <exception>
#include <optional>

namespace quillmender::fakes {

/// The outcome of a task that must have ended by now: with the fakes nothing ever suspends.
template <typename T> struct Outcome {
    std::optional<T> value;
    std::exception_ptr error;
    bool isDone = false;
};

template <typename T>
QCoro::Task<> collect(QCoro::Task<T> task, std::shared_ptr<Outcome<T>> outcome) {
    try {
        outcome->value = co_await task;
    } catch (...) {
        outcome->error = std::current_exception();
    }
    outcome->isDone = true;
}

/// The task's result; rethrows its exception.
template <typename T> T await(QCoro::Task<T> task) {
    auto outcome = std::make_shared<Outcome<T>>();
    collect(std::move(task), outcome);
    EXPECT_TRUE(outcome->isDone) << "the task is suspended";
    if (outcome->error)
        std::rethrow_exception(outcome->error);
    return std::move(outcome->value.value());
}

inline QCoro::Task<bool> completed(QCoro::Task<> task) {
    co_await task;
    co_return true;
}

inline void await(QCoro::Task<> task) {
    await(completed(std::move(task)));
}

} // namespace quillmender::fakes
