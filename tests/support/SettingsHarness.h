#pragma once

#include "fakes/FakeLoginItems.h"
#include "support/StateHarness.h"
#include "ui/settings/SettingsModel.h"

namespace lumora::tests {

using namespace Qt::Literals::StringLiterals;

/// The settings over fakes, of a program that is configured and has fetched once.
class SettingsHarness : public StateHarness {
public:
    SettingsHarness() {
        start();
        answer(0, 1);
        settle();
    }

    /// Makes the model that the test looks at, once it has set up what the model finds.
    SettingsModel& open() {
        model.emplace(SettingsModel::Dependencies{
            .state = *state,
            .preferences = preferences,
            .secrets = secrets,
            .keychain = keychain,
            .service = service,
            .loginItems = loginItems,
            .reminders = reminders,
        });
        model->appear();
        return *model;
    }

    /// A good briefing with `count` events.
    static QByteArray bodyWithEvents(int count) {
        QByteArray events;
        for (int i = 0; i < count; ++i)
            events += (i > 0 ? "," : "") + QByteArray(R"({"title":"Talk","allDay":true})");
        return briefingBody(2).replace(R"("eventsToday":[])", R"("eventsToday":[)" + events + ']');
    }

    /// How many requests have gone out since the last question.
    std::size_t newRequests() {
        settle();
        const std::size_t before = m_seen;
        m_seen = transport.requests().size();
        return m_seen - before;
    }

    /// As the keyring has it; empty without one.
    QByteArray storedToken() const {
        const auto item = secrets.item({u"com.lumora.app"_s, u"briefingToken"_s});
        return item ? item->secret : QByteArray();
    }

    /// That the request carried; empty without one.
    QByteArray sentToken(std::size_t request) const {
        for (const auto& [name, value] : transport.requests().at(request).headers) {
            if (name == "X-Api-Key")
                return value;
        }
        return {};
    }

    FakeLoginItems loginItems;
    std::optional<SettingsModel> model;

private:
    std::size_t m_seen = 1;
};

} // namespace lumora::tests
