#pragma once

#include <QString>

#include <optional>

namespace lumora {

/// Writes what was measured to standard output, a row a line and columns set apart by tabs: what,
/// Lumora's figure, the floor's, the compared value, the target, and "pass" or "miss".
class ResultTable {
public:
    /// A figure with one decimal, in `unit`; the floor's and the target may be absent. Lumora's is
    /// compared with the target as it is.
    static void addFigure(
        const QString& what, const QString& unit, double lumora, std::optional<double> floor,
        std::optional<double> most = std::nullopt);

    /// The same, but what is compared with the target is the ratio of the two.
    static void addRatio(
        const QString& what, const QString& unit, double lumora, double floor, double ratio,
        std::optional<double> most = std::nullopt);

    /// A fact that should hold.
    static void
    addFact(const QString& what, const QString& lumora, const QString& floor, bool holds);
};

} // namespace lumora
