#include "linux/appearance/BarThemes.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {
namespace {

const QByteArray dark = "[Colors:Window]\nBackgroundNormal=42,46,50\n";
const QByteArray light = "[Colors:Window]\nBackgroundNormal=239,240,241\n";

class BarThemesTest : public testing::Test {
protected:
    /// Writes a file below one of the folders "user", "system" and "data".
    void write(const QString& name, const QByteArray& bytes) {
        const QString path = m_root.filePath(name);
        ASSERT_TRUE(QDir().mkpath(path.section(u'/', 0, -2)));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    void writeLxqtTheme(const QString& name, const QByteArray& background) {
        write(
            u"data/lxqt/themes/%1/lxqt-panel.qss"_s.arg(name),
            "/* QToolTip { background: #fff } */\nLXQtPanelPlugin { background: #888; }\n"
            "LXQtPanel #BackgroundWidget {\n    border: 0;\n    background: " +
                background +
                ";\n}\nLXQtPanel[position=\"Top\"] #BackgroundWidget { color: red }\n");
    }

    QTemporaryDir m_root;
    XdgFolders m_folders{
        {m_root.filePath(u"user"_s), m_root.filePath(u"system"_s)}, {m_root.filePath(u"data"_s)}};
};

TEST_F(BarThemesTest, PlasmaSaysNothingWithoutFiles) {
    EXPECT_EQ(plasmaBarIsDark(m_folders), std::nullopt);
}

TEST_F(BarThemesTest, PlasmasBarHasItsThemesColor) {
    write(u"data/plasma/desktoptheme/breeze-dark/colors"_s, dark);
    write(u"user/kdeglobals"_s, light);
    write(u"system/plasmarc"_s, "[Theme]\nname=breeze-dark\n");
    EXPECT_EQ(plasmaBarIsDark(m_folders), true);
    // The look that was chosen as a whole goes before the system's, and the user's own before both.
    write(u"data/plasma/desktoptheme/breeze-light/colors"_s, light);
    write(u"user/kdedefaults/plasmarc"_s, "[Theme]\nname=breeze-light\n");
    EXPECT_EQ(plasmaBarIsDark(m_folders), false);
    write(u"user/plasmarc"_s, "[Theme]\nname=breeze-dark\n");
    EXPECT_EQ(plasmaBarIsDark(m_folders), true);
}

TEST_F(BarThemesTest, PlasmasOwnThemeTakesTheWindowsColor) {
    write(u"user/kdeglobals"_s, dark);
    EXPECT_EQ(plasmaBarIsDark(m_folders), true);
    write(u"user/plasmarc"_s, "[Theme]\nname=default\n");
    EXPECT_EQ(plasmaBarIsDark(m_folders), true);
    write(u"user/kdeglobals"_s, light);
    EXPECT_EQ(plasmaBarIsDark(m_folders), false);
}

TEST_F(BarThemesTest, PlasmasWindowsMayHaveTheNameOfAScheme) {
    write(u"user/kdedefaults/kdeglobals"_s, "[General]\nColorScheme=BreezeDark\n");
    EXPECT_EQ(plasmaBarIsDark(m_folders), std::nullopt);
    write(u"data/color-schemes/BreezeDark.colors"_s, dark);
    EXPECT_EQ(plasmaBarIsDark(m_folders), true);
}

TEST_F(BarThemesTest, LxqtSaysNothingWithoutFiles) {
    EXPECT_EQ(lxqtBarIsDark(m_folders, false), std::nullopt);
    write(u"user/lxqt/lxqt.conf"_s, "[General]\ntheme=gone\n");
    EXPECT_EQ(lxqtBarIsDark(m_folders, false), std::nullopt);
}

TEST_F(BarThemesTest, LxqtsBarHasItsThemesBackground) {
    writeLxqtTheme(u"debian"_s, "rgba(0, 0, 0, 80%)");
    writeLxqtTheme(u"Clearlooks"_s, "#edeceb");
    write(u"system/lxqt/lxqt.conf"_s, "[General]\ntheme=debian\n");
    EXPECT_EQ(lxqtBarIsDark(m_folders, false), true);
    write(u"user/lxqt/lxqt.conf"_s, "[General]\ntheme=Clearlooks\n");
    EXPECT_EQ(lxqtBarIsDark(m_folders, true), false);
}

TEST_F(BarThemesTest, LxqtsBarMayTakeTheWindowsColors) {
    writeLxqtTheme(u"frost"_s, "palette(text)");
    write(u"data/lxqt/lxqt.conf"_s, "[General]\ntheme=frost\n");
    EXPECT_EQ(lxqtBarIsDark(m_folders, false), true);
    EXPECT_EQ(lxqtBarIsDark(m_folders, true), false);
}

TEST_F(BarThemesTest, NamesTheUsersFiles) {
    EXPECT_EQ(
        plasmaBarFiles(m_folders),
        (QStringList{
            m_root.filePath(u"user/plasmarc"_s), m_root.filePath(u"user/kdeglobals"_s),
            m_root.filePath(u"user/kdedefaults/plasmarc"_s),
            m_root.filePath(u"user/kdedefaults/kdeglobals"_s)}));
    EXPECT_EQ(lxqtBarFiles(m_folders), QStringList{m_root.filePath(u"user/lxqt/lxqt.conf"_s)});
}

} // namespace
} // namespace lumora
