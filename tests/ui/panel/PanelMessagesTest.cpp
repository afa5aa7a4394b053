#include "support/PanelFixture.h"

#include <QFontMetrics>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether something is painted at the left end of `banner`, in a place as wide as high.
bool showsItsSymbol(ErrorBanner& banner) {
    const QImage image = painted(banner);
    const int left = banner.contentsMargins().left();
    int solid = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = left; x < left + image.height(); ++x)
            solid += image.pixelColor(x, y).alpha() > 100 ? 1 : 0;
    return solid > 20;
}

} // namespace

using PanelMessagesTest = PanelTest;

TEST_F(PanelMessagesTest, SaysThatItIsLoading) {
    for (const LoadState& state : {LoadState(), LoadState::loading()}) {
        m_panel.state = state;
        m_panel.render();
        EXPECT_EQ(shownTexts(*placeholder()), QStringList{u"Loading…"_s});
        const auto* row = shown<PaintedRow>(*placeholder()).front();
        EXPECT_TRUE(hasSpinner(row->content()));
        EXPECT_DOUBLE_EQ(row->content().spacing, 8);
        EXPECT_EQ(inPanel(row).left(), 12);
        EXPECT_EQ(inPanel(row).top() - inPanel(placeholder()).top(), 12);
        EXPECT_EQ(inPanel(placeholder()).bottom() - inPanel(row).bottom(), 12);
        EXPECT_TRUE(m_panel.view.capture()->isVisible());
        EXPECT_TRUE(m_panel.view.footer()->isVisible());
        EXPECT_TRUE(shown<CollapsibleSection>(m_panel.view).isEmpty());
    }
}

TEST_F(PanelMessagesTest, SaysWhatIsMissingInTheConfiguration) {
    m_panel.state = LoadState::failed(u"Not configured — open Settings"_s);
    m_panel.isConfigured = false;
    m_panel.render();
    EXPECT_EQ(banners(), QStringList{u"Not configured — open Settings"_s});
    const QString hint = u"Set your endpoint token in Settings (⌘,)."_s;
    EXPECT_EQ(shownTexts(*placeholder()), QStringList{hint});
    const auto* row = shown<PaintedRow>(*placeholder()).front();
    EXPECT_EQ(
        styleOf(row->content(), hint),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
    const auto* banner = shown<ErrorBanner>(m_panel.view).front();
    EXPECT_EQ(inPanel(row).top() - (inPanel(banner).bottom() + 1), 8);
    EXPECT_EQ(inPanel(banner).left(), 12);
}

TEST_F(PanelMessagesTest, AFailureWithAFullConfigurationHasNoHint) {
    m_panel.state = LoadState::failed(u"Server error (503)"_s);
    m_panel.render();
    EXPECT_EQ(banners(), QStringList{u"Server error (503)"_s});
    EXPECT_EQ(shownTexts(*placeholder()), QStringList());
}

TEST_F(PanelMessagesTest, ALoadedStateWithoutABriefingShowsNothing) {
    m_panel.state = LoadState::loaded(makeBriefing());
    m_panel.render();
    EXPECT_EQ(shownTexts(*placeholder()), QStringList());
    EXPECT_EQ(banners(), QStringList());
}

TEST_F(PanelMessagesTest, AMessageTurnsNothingAndKeepsItsLines) {
    const auto drawn = [this](const QString& message) {
        m_panel.state = LoadState::failed(message);
        m_panel.render();
        EXPECT_EQ(banners(), QStringList{message});
        return painted(*shown<ErrorBanner>(m_panel.view).front());
    };
    const QImage plain = drawn(u"No such habit\n again"_s);
    EXPECT_NE(drawn(u"No such habit again"_s), plain) << "or the rest proves nothing";
    EXPECT_EQ(drawn(u"No such\u202e habit\n\u009bagain"_s), plain);
}

TEST_F(PanelMessagesTest, ALaterFailureStandsAboveTheLastGoodBriefing) {
    m_panel.show(fullDay());
    m_panel.state = LoadState::failed(u"Server error (503)"_s);
    m_panel.actionError = u"No such habit"_s;
    m_panel.render();
    EXPECT_EQ(banners(), (QStringList{u"Server error (503)"_s, u"No such habit"_s}));
    EXPECT_EQ(titles().size(), 4);
    for (const auto* banner : shown<ErrorBanner>(m_panel.view)) {
        EXPECT_LT(inPanel(banner).bottom(), inPanel(section(u"Next up"_s)).top());
        EXPECT_EQ(banner->accessibleName(), *banner->message());
    }
    EXPECT_FALSE(placeholder()->isVisible());

    m_panel.actionError = std::nullopt;
    m_panel.state = LoadState::loaded(fullDay());
    m_panel.render();
    EXPECT_EQ(banners(), QStringList());
}

TEST_F(PanelMessagesTest, AFailureWithoutAMessageIsSeenAndSpokenAllTheSame) {
    m_panel.state = LoadState::failed({});
    m_panel.render();
    ASSERT_EQ(banners(), QStringList{QString()});
    EXPECT_TRUE(showsItsSymbol(*shown<ErrorBanner>(m_panel.view).front()));

    m_panel.show(fullDay());
    m_panel.state = LoadState::failed({});
    m_panel.actionError = u" "_s;
    m_panel.render();
    ASSERT_EQ(banners(), (QStringList{QString(), u" "_s}));
    for (auto* banner : shown<ErrorBanner>(m_panel.view)) {
        EXPECT_EQ(banner->accessibleName(), u"Warning"_s);
        EXPECT_TRUE(showsItsSymbol(*banner));
    }
}

TEST_F(PanelMessagesTest, ALongFailureIsReadWhole) {
    m_panel.show(fullDay());
    const int before = m_panel.view.height();
    m_panel.state = LoadState::failed(u"A very long message "_s.repeated(12).trimmed());
    m_panel.render();
    const auto* banner = shown<ErrorBanner>(m_panel.view).front();
    const QFontMetrics metrics(m_panel.themes.theme().font(TextRole::Caption));
    EXPECT_GE(banner->height(), 3 * metrics.height());
    EXPECT_EQ(m_panel.view.height(), before + banner->contentsRect().height() + 12);
}

TEST_F(PanelMessagesTest, TheBannerIsOrange) {
    m_panel.state = LoadState::failed(u"Server error (503)"_s);
    m_panel.render();
    const QImage image = painted(*shown<ErrorBanner>(m_panel.view).front());
    const QColor orange = m_panel.themes.theme().color(ColorRole::Orange);
    int solid = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() < 100)
                continue;
            ++solid;
            EXPECT_NEAR(pixel.hslHue(), orange.hslHue(), 8);
            EXPECT_GT(pixel.hslSaturation(), 200);
        }
    }
    EXPECT_GT(solid, 20);
}

TEST_F(PanelMessagesTest, ALongFailureBreaksBetweenWords) {
    const Theme theme = m_panel.themes.theme();
    const QFont font = theme.font(TextRole::Caption);
    const QString message = u"The service has changed its address and can no longer be reached"_s;
    const double width =
        QFontMetricsF(font).horizontalAdvance(u"The service has changed its addr"_s);
    const auto layout = wrappedText(message, font, width, Qt::LeftToRight);
    ASSERT_GT(layout->lineCount(), 1);
    for (int i = 1; i < layout->lineCount(); ++i)
        EXPECT_EQ(message[layout->lineAt(i).textStart() - 1], u' ');
}

TEST_F(PanelMessagesTest, AWordThatIsTooLongForALineIsBroken) {
    const QFont font = m_panel.themes.theme().font(TextRole::Caption);
    const auto layout = wrappedText(QString(200, u'W'), font, 100, Qt::LeftToRight);
    EXPECT_GT(layout->lineCount(), 1);
    for (int i = 0; i < layout->lineCount(); ++i)
        EXPECT_LE(layout->lineAt(i).naturalTextWidth(), 100);
}

TEST_F(PanelMessagesTest, ASentenceEndsWhereItsLanguageSaysOnEitherSide) {
    const QFont font = m_panel.themes.theme().font(TextRole::Caption);
    for (const auto side : {Qt::LeftToRight, Qt::RightToLeft}) {
        const auto layout = wrappedText(u"Not found."_s, font, 500, side);
        const QTextLine line = layout->lineAt(0);
        EXPECT_GT(line.cursorToX(10), line.cursorToX(0));
        EXPECT_EQ(line.cursorToX(0) > 200, side == Qt::RightToLeft);
    }
}
