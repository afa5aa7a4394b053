#include "companion/capture/Inbox.h"

#include "companion/capture/CapturedLine.h"
#include "linux/files/AppendedFile.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr std::chrono::seconds repeatTime{2};
constexpr std::chrono::seconds longestCommand{10};

} // namespace

Inbox::Inbox(CaptureSettings settings, Commands& commands)
    : m_settings(std::move(settings))
    , m_commands(commands) {}

bool Inbox::isThere() const {
    return !std::holds_alternative<std::monostate>(m_settings);
}

void Inbox::keep(
    const QString& text, std::chrono::sys_seconds now, QDate day,
    std::function<void(Outcome)> done) {
    const auto thought = thoughtLine(text);
    if (!isThere())
        return done(tl::unexpected(u"There is no place for thoughts; see [capture]"_s));
    if (!thought)
        return done(tl::unexpected(u"There is nothing to capture"_s));
    if (m_last && m_last->thought == *thought && std::chrono::abs(now - m_last->at) < repeatTime)
        return done({});
    if (const auto* file = std::get_if<CaptureFile>(&m_settings)) {
        const auto kept = appendLines(file->path, capturedLine(*thought, file->format, day));
        if (kept)
            m_last = {*thought, now};
        return done(kept);
    }
    m_last = {*thought, now};
    m_commands.run(
        {std::get<CommandLine>(m_settings), thought->toUtf8() + '\n', longestCommand},
        [this, done = std::move(done)](const CommandOutcome& outcome) {
            if (!outcome)
                m_last.reset();
            done(outcome ? Outcome() : tl::unexpected(outcome.error()));
        });
}

} // namespace lumora::companion
