#include "companion/spending/Balances.h"

#include "companion/spending/Csv.h"

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

bool isDigitOf(QChar character) {
    return character >= u'0' && character <= u'9';
}

} // namespace

SpendingPeriod thisMonth(QDate today) {
    return {QDate(today.year(), today.month(), 1), today.addDays(1)};
}

SpendingPeriod lastMonth(QDate today) {
    const QDate first = QDate(today.year(), today.month(), 1).addMonths(-1);
    return {first, first.addDays(std::min(today.day(), first.daysInMonth()))};
}

QStringList balanceCommand(const QString& journal, SpendingPeriod period) {
    return {
        u"hledger"_s,
        u"-f"_s,
        journal,
        u"balance"_s,
        u"expenses"_s,
        u"-B"_s,
        u"--flat"_s,
        u"--depth"_s,
        u"2"_s,
        u"-N"_s,
        u"--layout=bare"_s,
        u"-O"_s,
        u"csv"_s,
        u"-b"_s,
        period.first.toString(Qt::ISODate),
        u"-e"_s,
        period.end.toString(Qt::ISODate)};
}

tl::expected<std::vector<Balance>, QString> balancesIn(QByteArrayView csv) {
    const auto rows = csvRows(csv);
    if (!rows || rows->isEmpty() ||
        rows->first() != QStringList{u"account"_s, u"commodity"_s, u"balance"_s})
        return tl::unexpected(u"hledger printed something else than balances"_s);
    std::vector<Balance> balances;
    for (const QStringList& row : rows->sliced(1)) {
        const auto amount = row.size() == 3 ? amountFrom(row[2]) : std::nullopt;
        if (!amount)
            return tl::unexpected(u"hledger printed something else than amounts"_s);
        balances.push_back({row[0], row[1], *amount});
    }
    return balances;
}

std::optional<double> amountFrom(const QString& text) {
    QString number = text.trimmed();
    number.removeIf([](QChar c) { return c.isSpace() || c == u'\''; }); // between groups
    const qsizetype points = number.count(u'.');
    const qsizetype commas = number.count(u',');
    const bool endsWithPoint = number.lastIndexOf(u'.') > number.lastIndexOf(u',');
    const bool hasBoth = points > 0 && commas > 0;
    if (hasBoth)
        number.remove(endsWithPoint ? u',' : u'.');
    else if (points + commas > 1)
        number.removeIf([](QChar c) { return c == u'.' || c == u','; });
    number.replace(u',', u'.');
    const bool isPlain = std::ranges::all_of(
        number, [](QChar c) { return isDigitOf(c) || c == u'.' || c == u'-' || c == u'+'; });
    bool isNumber = false;
    const double amount = number.toDouble(&isNumber);
    return isNumber && isPlain && std::isfinite(amount) ? std::optional(amount) : std::nullopt;
}

} // namespace lumora::companion
