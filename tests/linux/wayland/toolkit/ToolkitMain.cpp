#include "linux/wayland/toolkit/ToolkitCompositor.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <utility>

namespace lumora::tests {

FakeCompositor& toolkitCompositor() {
    static FakeCompositor compositor;
    return compositor;
}

} // namespace lumora::tests

int main(int argc, char** argv) {
    const QByteArray socket = QByteArray::number(lumora::tests::toolkitCompositor().connect());
    for (const auto& [name, value] :
         {std::pair<const char*, QByteArray>("WAYLAND_SOCKET", socket),
          {"QT_QPA_PLATFORM", "wayland"},
          {"QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1"},
          {"LC_ALL", "C.UTF-8"}})
        qputenv(name, value);
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
