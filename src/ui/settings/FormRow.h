#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace lumora {

class ThemeSource;

/// Controls side by side from the leading edge on, the last at the trailing edge. What has no room
/// there goes below, to the leading edge; a text that wraps has none where it would get higher than
/// the controls before it.
class FormRow : public QLayout {
    Q_OBJECT

public:
    /// `gap` is in points, beside and below; `themes` must outlive the row.
    FormRow(const ThemeSource& themes, int gap);
    ~FormRow() override;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    struct Line;

    [[nodiscard]] std::vector<Line> linesFor(int width) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

} // namespace lumora
