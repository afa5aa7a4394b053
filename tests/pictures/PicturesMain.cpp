#include "ui/access/SpokenWidgets.h"

#include <QApplication>
#include <QPixmapCache>

#include <gmock/gmock.h>

#include <utility>

// Unlike that of the other tests: nothing of the machine may show in a picture.
int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("LC_ALL"))
        qputenv("LC_ALL", "C.UTF-8");
    for (const auto& [name, value] :
         {std::pair("QT_QPA_PLATFORM", "offscreen:configfile=" LUMORA_PICTURES "/screens.json"),
          {"FONTCONFIG_FILE", LUMORA_PICTURES "/fonts.conf"},
          {"QT_SCREEN_SCALE_FACTORS", "one=1;two=2"},
          {"TZ", "UTC"}})
        qputenv(name, value);
    for (const char* const name :
         {"FONTCONFIG_PATH", "LANGUAGE", "QT_FONT_DPI", "QT_QPA_PLATFORMTHEME", "QT_SCALE_FACTOR",
          "QT_STYLE_OVERRIDE", "XDG_CURRENT_DESKTOP"})
        qunsetenv(name);
    testing::InitGoogleMock(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setCursorFlashTime(0);
    lumora::speakWidgets();
    return RUN_ALL_TESTS();
}
