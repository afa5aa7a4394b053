// A user who presses whatever there is a thousand times, faster than anything is answered.

#include "app/LumobarAppFixture.h"
#include "support/Fixtures.h"
#include "support/Patience.h"

#include <QAbstractButton>
#include <QPointer>
#include <QTest>

#include <functional>
#include <map>
#include <vector>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int clicks = 1000;

using Controls = std::vector<QPointer<QWidget>>;

/// Whatever in the open windows can be pressed or has the keyboard.
Controls controls() {
    Controls found;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        for (QWidget* const widget : window->findChildren<QWidget*>()) {
            const bool isControl =
                qobject_cast<QAbstractButton*>(widget) || widget->focusPolicy() != Qt::NoFocus;
            if (isControl && widget->isVisible())
                found.emplace_back(widget);
        }
    }
    return found;
}

class ThousandClicksTest : public LumobarAppFixture {
protected:
    void SetUp() override {
        LumobarAppFixture::SetUp();
        begin();
        transport->complete(0, day());
        Q_EMIT item->commandChosen(MenuCommand::Open, {});
        outlastTimers(50ms);
        ASSERT_TRUE(isPanelOpen());
    }

    static HttpOutcome day() {
        return FakeHttpTransport::answer(200, fixture(u"briefing-full.json"_s));
    }

    /// Presses each control again and again, wherever its window still is.
    void clickAll(const std::function<void()>& reopen) {
        for (const QPointer<QWidget>& control : controls()) {
            for (int turn = 0; turn < clicks && control; ++turn) {
                if (!control->isVisible())
                    reopen();
                if (control && control->isVisible())
                    QTest::mouseClick(control, Qt::LeftButton);
            }
            StateHarness::settle();
            ++clicked;
        }
    }

    /// How often each action was sent, by its body.
    std::map<QByteArray, int> actionsSent() const {
        std::map<QByteArray, int> counts;
        for (const HttpRequest& request : transport->requests()) {
            if (request.method == "POST")
                ++counts[request.body.value_or("none")];
        }
        return counts;
    }

    /// The next fetch of a program that is well.
    void expectGoodFetch() {
        for (std::size_t index = 1; index < transport->requests().size(); ++index) {
            if (transport->isUnderWay(index))
                transport->complete(index, FakeHttpTransport::answer(403));
        }
        StateHarness::settle();
        const std::size_t count = transport->requests().size();
        Q_EMIT item->commandChosen(MenuCommand::Refresh, {});
        ASSERT_EQ(transport->requests().size(), count + 1);
        transport->complete(count, day());
        StateHarness::settle();
        EXPECT_TRUE(item->contents.back().toolTipBody.contains(u"Updated"_s))
            << qPrintable(item->contents.back().toolTipBody);
    }

    int clicked = 0;
};

} // namespace

TEST_F(ThousandClicksTest, OnEverythingInThePanelSendEachActionOnce) {
    clickAll([this] {
        if (!isPanelOpen())
            Q_EMIT item->commandChosen(MenuCommand::Open, {});
    });
    EXPECT_GE(clicked, 10);
    const auto sent = actionsSent();
    EXPECT_FALSE(sent.empty());
    for (const auto& [body, count] : sent)
        EXPECT_EQ(count, 1) << body.toStdString();
    expectGoodFetch();
}

TEST_F(ThousandClicksTest, OnEverythingInTheSettingsLeaveThemUsable) {
    clock->advance(1min); // not the second press of a double click
    Q_EMIT item->activated({}, {});
    ASSERT_FALSE(isPanelOpen());
    const auto open = [this] { Q_EMIT item->commandChosen(MenuCommand::Settings, {}); };
    open();
    clickAll(open);
    EXPECT_GE(clicked, 8);
    EXPECT_TRUE(actionsSent().empty());
    expectGoodFetch();
}
