#include "cli/RunningProgram.h"

#include "cli/Answers.h"
#include "cli/StatusStream.h"
#include "platform/ActivationToken.h"
#include "texts/StatusPresentation.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

int outcome(const tl::expected<void, CommandClient::Failure>& answer) {
    return answer ? int(Success) : complain(answer.error());
}

int run(CommandClient& client, const StatusCommand& command) {
    if (command.follow)
        return followStatus(command.format);
    const auto status = client.status();
    if (!status)
        return complain(status.error());
    const auto report = StatusReport::fromJson(status->toUtf8());
    if (!report)
        return complain(CommandClient::Failure::NoAnswer);
    return print(statusLine(*report, command.format) + u'\n');
}

int run(CommandClient& client, const RefreshCommand&) {
    const auto failure = client.refresh();
    if (!failure)
        return complain(failure.error());
    return *failure ? complain(failureText(**failure), Failure) : int(Success);
}

int run(CommandClient& client, const WindowCommand& command) {
    switch (command.action) {
    case WindowCommand::Action::Toggle:
        return outcome(client.toggle(inheritedActivationToken()));
    case WindowCommand::Action::Show:
        return outcome(client.open(inheritedActivationToken()));
    case WindowCommand::Action::Hide:
        return outcome(client.hide());
    case WindowCommand::Action::Settings:
        return outcome(client.openSettings(inheritedActivationToken()));
    }
    Q_UNREACHABLE();
}

int run(CommandClient& client, const QuitCommand&) {
    return outcome(client.quit());
}

/// What is no question to the running program is not brought here.
template <typename Other>
int run(CommandClient&, const Other&) {
    Q_UNREACHABLE();
}

} // namespace

int askRunningProgram(const Command& command) {
    CommandClient client;
    return std::visit([&client](const auto& asked) { return run(client, asked); }, command);
}

int openRunningProgram(CommandClient& client, const QByteArray& activationToken) {
    return outcome(client.open(activationToken));
}

} // namespace lumora
