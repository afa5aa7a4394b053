#include "companion/spending/SpendingFigures.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// Colours for buckets without one, told apart on light and dark grounds.
constexpr std::array<const char*, 8> palette{"#34A853", "#1E90FF", "#F59E0B", "#8B5CF6",
                                             "#EF4444", "#14B8A6", "#EC4899", "#64748B"};

/// The same for the same account each time, whatever else there is.
QString colorFor(const QString& account) {
    size_t sum = 0;
    for (const char byte : account.toUtf8())
        sum = sum * 31 + static_cast<unsigned char>(byte);
    return QString::fromLatin1(palette[sum % palette.size()]);
}

/// "Eating out" for "expenses:eating out".
QString labelFor(const QString& account) {
    QString label = account.section(u':', -1);
    if (!label.isEmpty())
        label[0] = label[0].toUpper();
    return label;
}

BucketPart bucketFor(const Balance& balance, const JournalSettings& settings) {
    BucketPart bucket{
        balance.account, labelFor(balance.account), {}, colorFor(balance.account), balance.amount};
    const auto chosen =
        std::ranges::find(settings.buckets, balance.account, &BucketSettings::account);
    if (chosen == settings.buckets.end())
        return bucket;
    bucket.icon = chosen->icon;
    if (!chosen->label.isEmpty())
        bucket.label = chosen->label;
    if (!chosen->color.isEmpty())
        bucket.color = chosen->color;
    return bucket;
}

double toCents(double amount) {
    return std::round(amount * 100) / 100;
}

double sumOf(const std::vector<Balance>& balances, const QString& currency) {
    double sum = 0;
    for (const Balance& balance : balances)
        sum += balance.currency == currency ? balance.amount : 0;
    return toCents(sum);
}

tl::expected<QString, QString>
currencyOf(const SpentInMonths& spent, const JournalSettings& settings) {
    if (!settings.currency.isEmpty())
        return settings.currency;
    QSet<QString> found;
    for (const auto* month : {&spent.thisMonth, &spent.lastMonth}) {
        for (const Balance& balance : *month)
            found += balance.currency;
    }
    if (found.size() <= 1)
        return found.isEmpty() ? QString() : *found.begin();
    QStringList names(found.begin(), found.end());
    names.sort();
    return tl::unexpected(u"The journal has %1; choose one with currency in [spending]"_s.arg(
        names.join(u" and "_s)));
}

} // namespace

tl::expected<SpendingPart, QString> spendingFigures(
    const SpentInMonths& spent, const JournalSettings& settings, QDate today, double stamp) {
    const auto currency = currencyOf(spent, settings);
    if (!currency)
        return tl::unexpected(currency.error());
    SpendingPart part;
    part.mtd = sumOf(spent.thisMonth, *currency);
    part.sameDayLastMonth = sumOf(spent.lastMonth, *currency);
    if (part.sameDayLastMonth > 0)
        part.deltaFraction = (part.mtd - part.sameDayLastMonth) / part.sameDayLastMonth;
    for (const Balance& balance : spent.thisMonth) {
        if (balance.currency == *currency && balance.amount > 0)
            part.top.push_back(bucketFor(balance, settings));
    }
    std::ranges::stable_sort(part.top, std::ranges::greater(), &BucketPart::amount);
    part.asOf = today.toString(Qt::ISODate);
    part.generatedAt = stamp;
    return part;
}

} // namespace lumora::companion
