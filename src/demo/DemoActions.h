#pragma once

#include "briefing/Instant.h"
#include "demo/DemoData.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QTimeZone>

#include <tl/expected.hpp>

#include <chrono>

namespace lumora {

/// Why a request to the demo service was refused.
struct DemoFault {
    int status = 400; ///< HTTP status code
    QString message;  ///< for the user
};

/// How long new spending figures take to come after they were asked for.
inline constexpr std::chrono::seconds kSpendingJob{4};

/// How soon after one request for new spending figures the next is taken.
inline constexpr std::chrono::seconds kSpendingPause{60};

/// Performs the action in `body`, a JSON object with a "type", on `data` at the time `now`, and
/// gives the reply. A refused action leaves `data` as it was.
///
/// - "habit.toggle" with "id": logs the habit once more; one that was done goes back to zero.
/// - "chore.done" with "id": the chore is no longer due.
/// - "capture" with "text": the text goes to the inbox.
/// - "spending.refresh": new figures come kSpendingJob later (see settleSpending); declined with
///   "queued" false and a reason within kSpendingPause of the last request.
///
/// Errors: 400 for a body that is none of these, 404 for an id that is not in `data`.
tl::expected<QJsonObject, DemoFault>
performDemoAction(DemoData& data, const QByteArray& body, Instant now);

/// Lets figures that were asked for at least kSpendingJob before `now` come in: a little more
/// spent, computed kSpendingJob after they were asked for, no longer stale. They also come in when
/// the clock was set back to before they were asked for.
void settleSpending(DemoData& data, Instant now, const QTimeZone& zone);

} // namespace lumora
