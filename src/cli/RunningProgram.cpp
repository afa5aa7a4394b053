#include "cli/RunningProgram.h"

#include "cli/Answers.h"
#include "cli/StandardInput.h"
#include "cli/StatusStream.h"
#include "platform/ActivationToken.h"
#include "texts/AgendaText.h"
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

int exitCode(const CommandClient::Outcome& outcome) {
    if (!outcome)
        return complain(outcome.error());
    return *outcome ? complain(**outcome, Failure) : int(Success);
}

int run(CommandClient& client, const RefreshCommand&) {
    return exitCode(client.refresh().map([](const std::optional<QString>& failure) {
        return failure ? std::optional(failureText(*failure)) : failure;
    }));
}

int run(CommandClient& client, const JoinCommand&) {
    return exitCode(client.join(inheritedActivationToken()));
}

/// Much more than is taken as a thought, which the running program says.
constexpr qsizetype longestInput = 1 << 20;

int run(CommandClient& client, const CaptureCommand& command) {
    if (!client.isRunning())
        return complain(CommandClient::Failure::NotRunning); // before anything is read
    return exitCode(client.capture(
        command.text ? *command.text : QString::fromUtf8(standardInput(longestInput))));
}

/// Prints what `text` makes of the running program's agenda.
template <typename Text>
int printAgenda(CommandClient& client, Text text) {
    const auto answer = client.agenda();
    if (!answer)
        return complain(answer.error());
    if (!*answer)
        return complain(answer->error(), Failure);
    const auto agenda = Agenda::fromJson((*answer)->toUtf8());
    return agenda ? print(text(*agenda)) : complain(CommandClient::Failure::NoAnswer);
}

int run(CommandClient& client, const AgendaCommand& command) {
    if (!command.asJson)
        return printAgenda(client, [](const Agenda& agenda) { return agendaText(agenda); });
    return printAgenda(
        client, [](const Agenda& agenda) { return QString::fromUtf8(agenda.toJson()) + u'\n'; });
}

int run(CommandClient& client, const ItemCommand& command) {
    const bool habit = command.kind == ItemCommand::Kind::Habit;
    if (!command.idOrName)
        return printAgenda(client, habit ? habitList : choreList);
    return exitCode(
        habit ? client.toggleHabit(*command.idOrName) : client.finishChore(*command.idOrName));
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
