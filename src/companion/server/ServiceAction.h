#pragma once

#include <QByteArrayView>
#include <QString>

#include <tl/expected.hpp>

#include <variant>

namespace lumora::companion {

struct ToggleHabit {
    QString id;

    bool operator==(const ToggleHabit&) const = default;
};

struct FinishChore {
    QString id;

    bool operator==(const FinishChore&) const = default;
};

struct Capture {
    QString text;

    bool operator==(const Capture&) const = default;
};

struct RefreshSpending {
    bool operator==(const RefreshSpending&) const = default;
};

/// What Lumora asks a service to do.
using ServiceAction = std::variant<ToggleHabit, FinishChore, Capture, RefreshSpending>;

/// Reads the body of an action. The error is one line for people.
[[nodiscard]] tl::expected<ServiceAction, QString> parseAction(QByteArrayView json);

} // namespace lumora::companion
