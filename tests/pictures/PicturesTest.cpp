#include "pictures/CompressedPng.h"
#include "pictures/Picture.h"
#include "pictures/PictureComparison.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

const QString acceptedFolder = QStringLiteral(LUMORA_PICTURES "/accepted");

/// What becomes of the pictures, as script/pictures says.
enum class Mode {
    Check,     ///< they are compared, and those that differ are kept
    KeepDrawn, ///< and all others too
    Accept,    ///< those that differ are accepted
};

Mode mode() {
    const QByteArray wanted = qgetenv("LUMORA_PICTURES");
    return wanted == "accept" ? Mode::Accept : wanted == "keep" ? Mode::KeepDrawn : Mode::Check;
}

QString fileOf(const QString& folder, const Picture& picture) {
    return QDir(folder).absoluteFilePath(QString::fromStdString(picture.name) + u".png"_s);
}

/// An empty message means success.
QString write(const QImage& image, const QString& name) {
    QDir().mkpath(QFileInfo(name).path());
    QFile file(name);
    const bool written = file.open(QFile::WriteOnly) && file.write(compressedPng(image)) > 0;
    return written ? QString() : name + u": "_s + file.errorString();
}

bool isOfThisProcess(const PictureState& state) {
    return state.inArabic == (QLocale::system().language() == QLocale::Arabic);
}

std::vector<Picture> picturesOfThisProcess() {
    std::vector<Picture> pictures = allPictures();
    std::erase_if(pictures, [](const Picture& it) { return !isOfThisProcess(it.state); });
    return pictures;
}

/// What there is to say against a picture, and one that shows it.
struct Verdict {
    std::string change; ///< empty: it looks as accepted
    QImage marked;
};

Verdict judge(const QImage& accepted, const QImage& drawn) {
    if (accepted.isNull())
        return {"has never been accepted", drawn};
    const PictureDifference difference = comparePictures(accepted, drawn);
    if (difference.isNone())
        return {};
    if (!difference.sameSize)
        return {"has another size", drawn};
    const std::string first =
        std::to_string(difference.first.x()) + ", " + std::to_string(difference.first.y());
    const std::string pixels = std::to_string(difference.pixels);
    return {"differs in " + pixels + " pixels, the first at " + first, difference.marked};
}

void expectWritten(const QImage& image, const QString& file) {
    EXPECT_EQ(write(image, file), QString());
}

class PicturesTest : public testing::TestWithParam<Picture> {};

TEST_P(PicturesTest, LooksAsAccepted) {
    const Picture& picture = GetParam();
    const QImage drawn = picture.state.draw(picture.look);
    const QString accepted = fileOf(acceptedFolder, picture);
    const QString kept = fileOf(u"drawn"_s, picture);
    const QString marked = fileOf(u"differing"_s, picture);
    const Verdict verdict = judge(QImage(accepted), drawn);
    if (mode() == Mode::KeepDrawn)
        expectWritten(drawn, kept);
    if (verdict.change.empty())
        return;
    if (mode() == Mode::Accept) {
        expectWritten(drawn, accepted);
        return;
    }
    expectWritten(drawn, kept);
    expectWritten(verdict.marked, marked);
    ADD_FAILURE() << picture.name << ' ' << verdict.change << ":\n"
                  << kept.toStdString() << '\n'
                  << marked.toStdString() << "\nWhere that is right: script/pictures --accept "
                  << picture.name;
}

INSTANTIATE_TEST_SUITE_P(
    All, PicturesTest, testing::ValuesIn(picturesOfThisProcess()),
    [](const testing::TestParamInfo<Picture>& it) { return it.param.name; });

TEST(PicturesFolderTest, HasNoPictureThatNobodyDraws) {
    QStringList drawn;
    for (const Picture& picture : allPictures())
        drawn += QString::fromStdString(picture.name) + u".png"_s;
    for (const QString& file : QDir(acceptedFolder).entryList(QDir::Files)) {
        if (drawn.contains(file))
            continue;
        if (mode() == Mode::Accept) {
            EXPECT_TRUE(QFile::remove(acceptedFolder + u'/' + file));
        } else {
            ADD_FAILURE() << file.toStdString() << " is drawn by no test: delete it, or have "
                          << "script/pictures --accept do so";
        }
    }
}

TEST(PicturesFolderTest, HasEveryPairOfValuesOfALook) {
    std::set<std::pair<std::string, std::string>> pairs;
    for (const Picture& picture : allPictures()) {
        const Look& look = picture.look;
        const std::array<std::string, 4> values = {
            std::to_string(look.scale) + 'x',
            look.scheme == ColorScheme::Dark ? "dark" : "light",
            std::to_string(look.points) + "pt",
            look.direction == Qt::RightToLeft ? "rtl" : "ltr",
        };
        for (std::size_t a = 0; a < values.size(); ++a)
            for (std::size_t b = a + 1; b < values.size(); ++b)
                pairs.emplace(values.at(a), values.at(b));
    }
    // Two scales, two schemes, four font sizes and two directions.
    EXPECT_EQ(pairs.size(), 2U * 2 + 2 * 4 + 2 * 2 + 2 * 4 + 2 * 2 + 4 * 2);
}

} // namespace
} // namespace lumora::tests
