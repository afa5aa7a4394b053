#include "app/RemoteActions.h"

#include "briefing/ActionKeys.h"
#include "platform/LinkPolicy.h"
#include "platform/Spawn.h"
#include "platform/UrlOpener.h"
#include "state/AppState.h"
#include "state/Ticker.h"
#include "texts/ActionTargets.h"
#include "texts/Agenda.h"
#include "texts/StatusPresentation.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// Much more than anybody types, and little enough to be sent in one go.
constexpr qsizetype longestThought = 65536;

const QString underWay = u"The same is under way already"_s;

} // namespace

void RemoteActions::join(const QByteArray& activationToken, const Done& done) {
    const auto& briefing = m_with.state.lastGood();
    if (!briefing)
        return done(reasonForNoBriefing());
    const auto link = linkToJoin(*briefing, m_with.ticker.now(), linkPolicy(m_with.preferences));
    if (!link)
        return done(u"There is no meeting with a link that may be opened"_s);
    m_with.urls.open(*link, activationToken);
    done(std::nullopt);
}

void RemoteActions::capture(const QString& text, const Done& done) {
    if (text.trimmed().isEmpty())
        return done(u"There is nothing to capture"_s);
    if (text.size() > longestThought)
        return done(u"The text is too long"_s);
    if (m_with.state.pending().contains(ActionKeys::capture))
        return done(underWay);
    spawn(&m_with.state, m_with.state.capture(text), tell(done));
}

void RemoteActions::toggleHabit(const QString& idOrName, const Done& done) {
    const auto& briefing = m_with.state.lastGood();
    if (!briefing)
        return done(reasonForNoBriefing());
    const auto id = habitMeantBy(idOrName, *briefing);
    if (!id)
        return done(id.error());
    perform(LumoAction::habitToggle(*id), ActionKeys::habit(*id), done);
}

void RemoteActions::finishChore(const QString& idOrName, const Done& done) {
    const auto& briefing = m_with.state.lastGood();
    if (!briefing)
        return done(reasonForNoBriefing());
    const auto id = choreMeantBy(idOrName, *briefing);
    if (!id)
        return done(id.error());
    perform(LumoAction::choreDone(*id), ActionKeys::chore(*id), done);
}

tl::expected<QString, QString> RemoteActions::agenda() const {
    const auto& briefing = m_with.state.lastGood();
    if (!briefing)
        return tl::unexpected(reasonForNoBriefing());
    const Agenda agenda =
        Agenda::of(*briefing, m_with.ticker.now(), linkPolicy(m_with.preferences));
    return QString::fromUtf8(agenda.toJson());
}

QString RemoteActions::reasonForNoBriefing() const {
    const auto message = m_with.state.state().failureMessage();
    return message ? failureText(*message) : u"There is no briefing yet"_s;
}

void RemoteActions::perform(const LumoAction& action, const QString& key, const Done& done) {
    if (m_with.state.pending().contains(key))
        return done(underWay);
    spawn(&m_with.state, m_with.state.perform(action, key), tell(done));
}

/// What tells how an action went. The state's error is that of this action: it has just ended.
std::function<void(bool)> RemoteActions::tell(const Done& done) const {
    return [&state = m_with.state, done](bool accepted) {
        if (accepted)
            return done(std::nullopt);
        done(actionFailureText(state.actionError().value_or(QString())));
    };
}

} // namespace lumora
