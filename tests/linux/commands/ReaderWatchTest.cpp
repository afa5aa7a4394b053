#include "linux/commands/ReaderWatch.h"

#include "support/Patience.h"

#include <QCoreApplication>
#include <QTemporaryFile>
#include <QTest>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace lumora;
using namespace lumora::tests;

namespace {

/// Whether a watch of `written` tells of the end, and only of that: `use` is something that happens
/// before, and `leave` has the reader go.
template <typename Use, typename Leave>
void expectToTellOfTheEnd(int written, Use use, Leave leave) {
    int told = 0;
    ReaderWatch watch(written);
    QObject::connect(&watch, &ReaderWatch::gone, [&told] { ++told; });
    use();
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 0);
    leave();
    EXPECT_TRUE(QTest::qWaitFor([&told] { return told > 0; }, patience));
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
}

void writeTo(int file) {
    EXPECT_EQ(write(file, "x\n", 2), 2);
}

} // namespace

TEST(ReaderWatch, TellsOfAPipe) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    expectToTellOfTheEnd(ends[1], [&] { writeTo(ends[1]); }, [&] { close(ends[0]); });
    close(ends[1]);
}

TEST(ReaderWatch, TellsOfASocketThatAlsoSends) {
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    expectToTellOfTheEnd(ends[1], [&] { writeTo(ends[0]); }, [&] { close(ends[0]); });
    close(ends[1]);
}

TEST(ReaderWatch, TellsOfATerminalThatIsTypedInto) {
    int terminal = -1;
    int program = -1;
    ASSERT_EQ(openpty(&terminal, &program, nullptr, nullptr, nullptr), 0);
    expectToTellOfTheEnd(program, [&] { writeTo(terminal); }, [&] { close(terminal); });
    close(program);
}

TEST(ReaderWatch, HearsNothingOfAFile) {
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    int told = 0;
    ReaderWatch watch(file.handle());
    QObject::connect(&watch, &ReaderWatch::gone, [&told] { ++told; });
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 0);
}
