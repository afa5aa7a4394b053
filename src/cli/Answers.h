#pragma once

#include "linux/commands/CommandClient.h"

#include <QString>

#include <tl/expected.hpp>

#include <system_error>

namespace lumora {

/// How a command ends.
enum ExitCode {
    Success = 0,
    Failure = 1,        ///< it was refused, or went wrong
    WrongArguments = 2, ///< nothing was tried
    NotRunning = 3,     ///< there is no program to ask
};

/// Says on standard error what is wrong, on one line that no terminal obeys, whatever the sentence
/// quotes. Returns `code`.
int complain(const QString& sentence, int code);

/// Says that the running program could not be asked. Returns the exit code for that.
int complain(CommandClient::Failure failure);

/// Writes `text` to standard output. The error says why not all of it is there.
[[nodiscard]] tl::expected<void, std::error_code> write(const QString& text);

/// Says that an answer could not be written. Returns the exit code for that.
int complainOfWriting(const std::error_code& error);

/// Writes an answer. Returns the exit code: one that is not there whole, as on a full disk, is a
/// failure.
int print(const QString& text);

} // namespace lumora
