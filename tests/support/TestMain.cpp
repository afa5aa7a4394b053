#include <QApplication>

#include <gmock/gmock.h>

#include <utility>

int main(int argc, char** argv) {
    // The same screen, texts and time zone everywhere, unless a test is started with others.
    for (const auto& [name, value] :
         {std::pair("QT_QPA_PLATFORM", "offscreen"), {"LC_ALL", "C.UTF-8"}, {"TZ", "UTC"}}) {
        if (!qEnvironmentVariableIsSet(name))
            qputenv(name, value);
    }
    testing::InitGoogleMock(&argc, argv);
    const QApplication application(argc, argv);
    // A common size, at which a point of the design is a pixel.
    constexpr double commonPoints = 10;
    QFont font = QApplication::font();
    font.setPointSizeF(commonPoints);
    QApplication::setFont(font);
    return RUN_ALL_TESTS();
}
