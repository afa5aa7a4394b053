#pragma once

#include <QByteArrayView>
#include <QDate>
#include <QString>
#include <QStringList>

#include <tl/expected.hpp>

#include <optional>
#include <vector>

namespace lumora::companion {

/// Days from the first up to, and without, the end.
struct SpendingPeriod {
    QDate first;
    QDate end;

    bool operator==(const SpendingPeriod&) const = default;
};

/// The month of `today`, up to that day.
[[nodiscard]] SpendingPeriod thisMonth(QDate today);

/// The month before, up to the same day, or to its last one where it is shorter.
[[nodiscard]] SpendingPeriod lastMonth(QDate today);

/// The command that prints what was spent in a period as balancesIn() reads it.
[[nodiscard]] QStringList balanceCommand(const QString& journal, SpendingPeriod period);

/// What an account holds in one currency.
struct Balance {
    QString account;
    QString currency;
    double amount = 0;

    bool operator==(const Balance&) const = default;
};

/// Reads the command's CSV. The error is one line for people.
[[nodiscard]] tl::expected<std::vector<Balance>, QString> balancesIn(QByteArrayView csv);

/// A number as journals are written in any country: "1231,50", "1,231.50", "-3". Absent for
/// anything else. A single mark is a decimal one.
[[nodiscard]] std::optional<double> amountFrom(const QString& text);

} // namespace lumora::companion
