#pragma once

#include "briefing/TextBounds.h"

#include <QHash>
#include <QString>
#include <QVBoxLayout>
#include <QWidget>

#include <utility>
#include <vector>

namespace lumora {

/// Keeps a column of widgets in step with a list of values: a value that stays keeps its widget
/// and with it hover, focus and motion. Values are told apart by the beginning of their key; equal
/// keys by their order.
template <typename Row>
class KeyedRows {
public:
    /// Rows are laid out in `layout`, which belongs to the widget that the rows belong to.
    explicit KeyedRows(QVBoxLayout& layout)
        : m_layout(layout) {}

    /// Makes one row per value: `make()` for a new one, and for each `apply(row, value)`. Costs
    /// grow with the number of values, whatever has become of their order.
    template <typename Values, typename KeyOf, typename Make, typename Apply>
    void reconcile(const Values& values, KeyOf keyOf, Make make, Apply apply) {
        QHash<QString, Row*> unused = std::exchange(m_rows, {});
        QHash<QString, int> seen;
        std::vector<Row*> order;
        order.reserve(values.size());
        for (const auto& value : values) {
            const QString key = beginning(keyOf(value), longestLine);
            const QString unique = key + u'\n' + QString::number(seen[key]++);
            Row* row = unused.take(unique);
            if (!row)
                row = make();
            m_rows.insert(unique, row);
            order.push_back(row);
            apply(*row, value);
        }
        if (isInLayout(order))
            return;
        // Hidden while it still has its place: the keyboard moves on to what comes after it.
        for (Row* row : std::as_const(unused))
            row->hide();
        layOut(order);
        qDeleteAll(unused);
        showAll(order);
    }

private:
    bool isInLayout(const std::vector<Row*>& order) const {
        if (std::size_t(m_layout.count()) != order.size())
            return false;
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (m_layout.itemAt(int(i))->widget() != order[i])
                return false;
        }
        return true;
    }

    void layOut(const std::vector<Row*>& order) {
        // Taken from the end and put back whole: looking for each row's place would take a look at
        // all the others.
        QHash<QWidget*, QLayoutItem*> items;
        while (QLayoutItem* last = m_layout.takeAt(m_layout.count() - 1))
            items.insert(last->widget(), last);
        for (Row* row : order) {
            if (QLayoutItem* item = items.take(row))
                m_layout.addItem(item);
            else
                m_layout.addWidget(row);
        }
        qDeleteAll(items);
    }

    /// Where the rows can be seen already, each new one by itself would have all of them laid out.
    void showAll(const std::vector<Row*>& order) {
        QLayout* const whole = m_layout.parentWidget()->layout();
        whole->setEnabled(false);
        for (Row* row : order)
            row->show();
        whole->setEnabled(true);
    }

    QVBoxLayout& m_layout;
    QHash<QString, Row*> m_rows;
};

} // namespace lumora
