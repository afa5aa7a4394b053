#include "companion/spending/JournalSpending.h"

#include "companion/spending/SpendingFigures.h"

#include <QDateTime>

#include <memory>
#include <utility>

namespace lumora::companion {

namespace {

using Done = std::function<void(PartOutcome<SpendingPart>)>;

/// One question, which takes two runs of the program.
struct JournalQuestion {
    JournalSettings settings;
    Commands& commands;
    QDate today;
    double stamp;
    Done done;
    SpentInMonths spent;

    /// Fills `month` with what was spent in the period, and goes on with `then`.
    void
    run(SpendingPeriod period, std::vector<Balance> SpentInMonths::* month,
        std::function<void()> then) {
        commands.run(
            {.words = balanceCommand(settings.path, period)},
            [this, month, then = std::move(then)](const CommandOutcome& printed) {
                auto balances = printed.and_then(&balancesIn);
                if (!balances)
                    return done(tl::unexpected(balances.error()));
                spent.*month = *std::move(balances);
                then();
            });
    }
};

} // namespace

AskForPart<SpendingPart>
journalSpending(JournalSettings settings, Commands& commands, std::function<QTimeZone()> zone) {
    return [settings = std::move(settings), &commands,
            zone = std::move(zone)](std::chrono::sys_seconds now, Done done) {
        const auto seconds = now.time_since_epoch().count();
        const QDate today = QDateTime::fromSecsSinceEpoch(seconds, zone()).date();
        const auto question = std::make_shared<JournalQuestion>(
            JournalQuestion{settings, commands, today, double(seconds), std::move(done), {}});
        question->run(thisMonth(today), &SpentInMonths::thisMonth, [question] {
            question->run(lastMonth(question->today), &SpentInMonths::lastMonth, [question] {
                question->done(spendingFigures(
                    question->spent, question->settings, question->today, question->stamp));
            });
        });
    };
}

} // namespace lumora::companion
