#include "briefing/BriefingDecoder.h"
#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding briefingLink(const Evidence& evidence) {
    const QString link = u"briefing"_s;
    const auto verdict = answerLink(evidence).verdict;
    if (verdict == Finding::Verdict::Failed || verdict == Finding::Verdict::NotTried)
        return Finding::notTried(link);
    if (evidence.service->cutOff)
        return Finding::failed(
            link, u"It is larger than is taken"_s, u"Let the service send only today"_s);
    const auto briefing = decodeBriefing(evidence.service->body);
    if (!briefing)
        return Finding::failed(
            link, briefing.error().text(),
            u"Mend that in the service; \"lumora check\" tries what it sends"_s);
    return Finding::ok(link, u"It can be read"_s);
}

} // namespace lumora
