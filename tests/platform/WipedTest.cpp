#include "platform/Wiped.h"

#include <QByteArray>
#include <QString>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A text whose memory outlives it, so that the test can look at what was left there.
struct Watched {
    char* data() { return memory->data(); }

    size_t size() const { return memory->size(); }

    bool isDetached() const { return memory.use_count() == 2; } // and the test's own

    std::shared_ptr<std::string> memory;
};

const std::string zeros(6, '\0');

} // namespace

TEST(Wiped, OverwritesWhatNobodyShares) {
    QByteArray bytes = QByteArray("secret").toUpper();
    wipe(bytes);
    EXPECT_EQ(bytes, QByteArray(6, '\0'));

    QString text = u"secret"_s.toUpper();
    wipe(text);
    EXPECT_EQ(text, QString(6, u'\0'));
}

TEST(Wiped, LeavesWhatOthersShareAndWhatIsWrittenInTheProgram) {
    QByteArray bytes = QByteArray("secret").toUpper();
    const QByteArray other = bytes;
    wipe(bytes);
    EXPECT_EQ(other, "SECRET");

    QString literal = u"secret"_s;
    wipe(literal);
    EXPECT_EQ(literal, u"secret"_s);
}

TEST(Wiped, TheLastHolderWipes) {
    const auto memory = std::make_shared<std::string>("secret");
    std::optional<Wiped<Watched>> first(std::in_place, Watched{memory});
    std::optional<Wiped<Watched>> second(first);
    first.reset();
    EXPECT_EQ(*memory, "secret");
    second.reset();
    EXPECT_EQ(*memory, zeros);
}
