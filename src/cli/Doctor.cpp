#include "cli/Doctor.h"

#include "cli/Answers.h"
#include "doctor/DoctorReport.h"
#include "doctor/Examination.h"
#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// Somebody waits for it, and ten seconds are long.
constexpr std::chrono::seconds longestExamination{8};

} // namespace

int runDoctor(const DoctorCommand& command) {
    const Evidence evidence = examine(longestExamination);
    const std::vector<Finding> findings = allLinks(evidence);
    const auto url = serviceUrl(evidence);
    const QString host = url ? url->host() : QString();
    const int printed =
        command.asJson
            ? print(
                  QString::fromUtf8(doctorJson(findings, QStringLiteral(LUMORA_VERSION), host)) +
                  u'\n')
            : print(doctorText(findings));
    if (printed != Success)
        return printed;
    const Finding* const broken = firstBroken(findings);
    return broken ? complain(broken->link + u": "_s + broken->found, Failure) : int(Success);
}

} // namespace lumora
