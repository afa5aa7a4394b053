// Whatever answers under the program's name on the bus: what is printed of it is one line, in which
// no bar finds anything to obey.

#include "Expectations.h"
#include "StatusLines.h"
#include "Targets.h"

namespace lumora::fuzz {

void reports(QByteArrayView input) {
    const auto report = StatusReport::fromJson(input.toByteArray());
    if (!report)
        return;
    expectStatusLines(*report);
    const QByteArray json = report->toJson();
    const auto again = StatusReport::fromJson(json);
    expect(again && again->toJson() == json, "the same report when it is written anew");
}

} // namespace lumora::fuzz
