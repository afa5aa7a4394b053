#pragma once

#include <QHash>
#include <QString>
#include <QVBoxLayout>

#include <vector>

namespace lumora {

/// Keeps a column of widgets in step with a list of values: a value that stays keeps its widget
/// and with it hover, focus and motion. Values are told apart by key; equal keys by their order.
template <typename Row>
class KeyedRows {
public:
    /// Rows are laid out in `layout`, which belongs to the widget that the rows belong to.
    explicit KeyedRows(QVBoxLayout& layout)
        : m_layout(layout) {}

    /// Makes one row per value: `make()` for a new one, and for each `apply(row, value)`.
    template <typename Value, typename KeyOf, typename Make, typename Apply>
    void reconcile(const std::vector<Value>& values, KeyOf keyOf, Make make, Apply apply) {
        QHash<QString, Row*> unused = std::exchange(m_rows, {});
        QHash<QString, int> seen;
        int position = 0;
        for (const Value& value : values) {
            const QString key = keyOf(value);
            const QString unique = key + u'\n' + QString::number(seen[key]++);
            Row* row = unused.take(unique);
            if (!row)
                row = make();
            if (m_layout.indexOf(row) != position)
                m_layout.insertWidget(position, row);
            ++position;
            m_rows.insert(unique, row);
            apply(*row, value);
        }
        for (Row* row : std::as_const(unused)) {
            m_layout.removeWidget(row);
            delete row;
        }
    }

private:
    QVBoxLayout& m_layout;
    QHash<QString, Row*> m_rows;
};

} // namespace lumora
