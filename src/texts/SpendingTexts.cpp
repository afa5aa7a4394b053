#include "texts/SpendingTexts.h"

#include "texts/Formatters.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::SpendingTexts {

bool isRevealed(std::optional<Instant> revealedAt, Instant now) {
    return revealedAt && secondsBetween(*revealedAt, now) < revealedFor;
}

QString summary(const Spending& spending, bool revealed, const QLocale& locale) {
    return revealed ? Formatters::currency(spending.mtd, locale) + u" MTD"_s : u"hidden"_s;
}

QString pace(const Spending& spending) {
    return spending.paceLabel().value_or(u"no comparison for last month"_s);
}

QString asOf(const Spending& spending) {
    return u"as of "_s + spending.asOf;
}

} // namespace lumora::SpendingTexts
