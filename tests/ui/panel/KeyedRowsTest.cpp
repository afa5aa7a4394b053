#include "ui/panel/KeyedRows.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Counts how often everything is laid out.
class CountingLayout final : public QVBoxLayout {
public:
    using QVBoxLayout::QVBoxLayout;

    void setGeometry(const QRect& rect) override {
        ++layouts;
        QVBoxLayout::setGeometry(rect);
    }

    int layouts = 0;
};

class KeyedRowsTest : public testing::Test {
protected:
    void reconcile(const std::vector<QString>& keys) {
        m_rows.reconcile(
            keys, [](const QString& key) { return key; },
            [this] { return new QLineEdit(&m_parent); },
            [](QLineEdit& row, const QString& key) { row.setText(key); });
    }

    std::vector<QLineEdit*> rows() const {
        std::vector<QLineEdit*> found;
        for (int i = 0; i < m_layout.count(); ++i)
            found.push_back(qobject_cast<QLineEdit*>(m_layout.itemAt(i)->widget()));
        return found;
    }

    std::vector<QString> texts() const {
        std::vector<QString> found;
        for (const QLineEdit* row : rows())
            found.push_back(row->text());
        return found;
    }

    QWidget m_parent;
    CountingLayout m_layout{&m_parent};
    KeyedRows<QLineEdit> m_rows{m_layout};
};

} // namespace

TEST_F(KeyedRowsTest, RowsStandInTheOrderOfTheirValuesWhateverHappens) {
    std::mt19937 random(7); // the same every time
    std::vector<QString> all;
    for (int i = 0; i < 40; ++i)
        all.push_back(QString::number(i));
    for (int round = 0; round < 50; ++round) {
        std::ranges::shuffle(all, random);
        const auto size = std::uniform_int_distribution<qsizetype>(0, 40)(random);
        const std::vector<QString> some(all.begin(), all.begin() + size);
        reconcile(some);
        EXPECT_EQ(texts(), some);
        EXPECT_EQ(m_parent.findChildren<QLineEdit*>().size(), size) << "no row is left behind";
    }
}

TEST_F(KeyedRowsTest, AValueKeepsItsRowWhereverItGoes) {
    reconcile({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    const auto before = rows();
    reconcile({u"d"_s, u"x"_s, u"b"_s, u"a"_s});
    const auto after = rows();
    EXPECT_EQ(after[0], before[3]);
    EXPECT_EQ(after[2], before[1]);
    EXPECT_EQ(after[3], before[0]);
}

TEST_F(KeyedRowsTest, EqualKeysAreToldApartByTheirOrder) {
    reconcile({u"a"_s, u"a"_s, u"b"_s});
    const auto before = rows();
    reconcile({u"b"_s, u"a"_s, u"a"_s});
    EXPECT_EQ(rows(), (std::vector{before[2], before[0], before[1]}));
}

TEST_F(KeyedRowsTest, TheSameValuesTouchNoLayout) {
    reconcile({u"a"_s, u"b"_s});
    QCoreApplication::sendPostedEvents();
    m_layout.activate();
    const QRect nowhere(0, 0, 7, 7);
    m_layout.setGeometry(nowhere);
    reconcile({u"a"_s, u"b"_s});
    EXPECT_EQ(m_layout.geometry(), nowhere);
    EXPECT_TRUE(texts() == (std::vector{u"a"_s, u"b"_s}));
}

TEST_F(KeyedRowsTest, TheKeyboardMovesOnFromARowThatGoes) {
    reconcile({u"a"_s, u"b"_s, u"c"_s});
    m_parent.show();
    m_parent.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_parent));
    rows().at(1)->setFocus();
    reconcile({u"a"_s, u"c"_s});
    EXPECT_EQ(m_parent.focusWidget(), rows().at(1));
    EXPECT_EQ(rows().at(1)->text(), u"c"_s);
}

TEST_F(KeyedRowsTest, ManyNewRowsInSightAreLaidOutTogether) {
    m_parent.show();
    QCoreApplication::processEvents();
    m_layout.layouts = 0;
    std::vector<QString> keys;
    for (int i = 0; i < 200; ++i)
        keys.push_back(QString::number(i));
    reconcile(keys);
    QCoreApplication::processEvents();
    EXPECT_LE(m_layout.layouts, 3);
    for (const QLineEdit* row : rows())
        EXPECT_TRUE(row->isVisible());
}
