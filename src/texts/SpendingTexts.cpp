#include "texts/SpendingTexts.h"

#include "texts/Formatters.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora::SpendingTexts {

bool isRevealed(std::optional<Instant> revealedAt, Instant now) {
    return revealedAt && secondsBetween(*revealedAt, now) < revealedFor;
}

QString summary(const Spending& spending, bool revealed, const QLocale& locale) {
    return revealed ? Formatters::currency(spending.mtd, locale) + u" MTD"_s : u"hidden"_s;
}

std::optional<QString> paceLabel(const Spending& spending) {
    if (!spending.deltaFraction)
        return std::nullopt;
    const double size = std::abs(*spending.deltaFraction);
    if (size < 0.01)
        return u"same as last month"_s;
    const auto direction =
        *spending.deltaFraction > 0 ? " ahead of last month"_L1 : " under last month"_L1;
    return Formatters::percent(size) + direction;
}

QString pace(const Spending& spending) {
    return paceLabel(spending).value_or(u"no comparison for last month"_s);
}

QString asOf(const Spending& spending) {
    return u"as of "_s + spending.asOf;
}

} // namespace lumora::SpendingTexts
