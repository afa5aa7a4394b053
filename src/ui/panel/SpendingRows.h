#pragma once

#include "briefing/Briefing.h"
#include "ui/rows/RowItem.h"

#include <QLocale>

namespace lumora {

/// The month's figure.
RowContent spendingTotalRow(const Spending& spending, const QLocale& locale);

/// The pace against last month. Arrow and colour follow the sign alone, however small the change.
RowContent spendingPaceRow(const Spending& spending);

/// One bucket; a colour code that means nothing only leaves the bar out.
RowContent bucketRow(const Bucket& bucket, const QLocale& locale);

/// The note below figures that are not of today.
RowContent spendingAsOfRow(const Spending& spending);

} // namespace lumora
