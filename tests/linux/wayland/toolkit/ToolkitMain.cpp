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

/// Has builds that look for leaks look for none here. The toolkit's plug-ins leave some behind and
/// are unloaded by then, so that nobody can tell whose they are.
// NOLINTBEGIN(*-reserved-identifier): the name it is asked by
extern "C" int __lsan_is_turned_off();

extern "C" int __lsan_is_turned_off() {
    return 1;
}

// NOLINTEND(*-reserved-identifier)

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
