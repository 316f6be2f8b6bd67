#pragma once

#include <QTest>

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>

namespace tessary::testing {

constexpr std::chrono::milliseconds kDeadline{20000};

/// Runs the event loop until the condition holds. @returns false when the deadline passed first.
[[nodiscard]] inline bool eventually(const std::function<bool()>& condition,
                                     std::chrono::milliseconds deadline = kDeadline)
{
    return QTest::qWaitFor(condition, static_cast<int>(deadline.count()));
}

/// Runs the event loop until the task ends; its value, or the very exception it threw.
template <typename Value>
Value await(QCoro::Task<Value> task)
{
    struct Outcome {
        bool ended = false;
        std::exception_ptr error;
        std::conditional_t<std::is_void_v<Value>, std::optional<bool>, std::optional<Value>> value;
    };
    const auto outcome = std::make_shared<Outcome>();
    const auto follow = [](QCoro::Task<Value> running, std::shared_ptr<Outcome> result) -> QCoro::Task<> {
        try {
            if constexpr (std::is_void_v<Value>)
                co_await running;
            else
                result->value.emplace(co_await running);
        } catch (...) {
            result->error = std::current_exception();
        }
        result->ended = true;
    };
    const QCoro::Task<> following = follow(std::move(task), outcome);
    if (!eventually([&] { return outcome->ended; }))
        throw std::runtime_error("the task did not end in time");
    if (outcome->error)
        std::rethrow_exception(outcome->error);
    if constexpr (!std::is_void_v<Value>)
        return std::move(*outcome->value);
}

} // namespace tessary::testing
