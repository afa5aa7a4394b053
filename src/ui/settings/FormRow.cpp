#include "ui/settings/FormRow.h"

#include "ui/theme/Spacing.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace lumora {

namespace {

int heightOf(const QLayoutItem& item, int width) {
    return item.hasHeightForWidth() ? item.heightForWidth(width) : item.sizeHint().height();
}

} // namespace

/// What stands side by side; places are in pixels from the leading edge and the line's top.
struct FormRow::Line {
    std::vector<std::pair<QLayoutItem*, QRect>> items;
    int height = 0;

    void add(QLayoutItem& item, int left, int width) {
        const QRect place(left, 0, width, heightOf(item, width));
        items.emplace_back(&item, place);
        height = std::max(height, place.height());
    }

    int end() const { return items.empty() ? 0 : items.back().second.right() + 1; }
};

FormRow::FormRow(const ThemeSource& themes, int gap) {
    keepSpaced(*this, themes, {}, gap);
}

FormRow::~FormRow() = default;

void FormRow::addItem(QLayoutItem* item) {
    m_items.emplace_back(item);
}

int FormRow::count() const {
    return int(m_items.size());
}

QLayoutItem* FormRow::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[std::size_t(index)].get() : nullptr;
}

QLayoutItem* FormRow::takeAt(int index) {
    if (!itemAt(index))
        return nullptr;
    QLayoutItem* const item = m_items[std::size_t(index)].release();
    m_items.erase(m_items.begin() + index);
    return item;
}

std::vector<FormRow::Line> FormRow::linesFor(int width) const {
    std::vector<Line> lines;
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const int wanted = item->sizeHint().width();
        const int left = lines.empty() ? 0 : lines.back().end() + spacing();
        const int room = width - left;
        const int taken = std::min(wanted, room);
        const bool fits = !lines.empty() && room > 0 &&
                          (item->hasHeightForWidth() ? heightOf(*item, taken) <= lines.back().height
                                                     : wanted <= room);
        if (fits)
            lines.back().add(*item, item == m_items.back() ? width - taken : left, taken);
        else
            lines.emplace_back().add(*item, 0, std::min(wanted, width));
    }
    return lines;
}

int FormRow::heightForWidth(int width) const {
    int height = -spacing();
    for (const Line& line : linesFor(width))
        height += line.height + spacing();
    return std::max(0, height);
}

QSize FormRow::sizeHint() const {
    int width = -spacing();
    int height = 0;
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        width += item->sizeHint().width() + spacing();
        height = std::max(height, item->sizeHint().height());
    }
    return {std::max(0, width), height};
}

QSize FormRow::minimumSize() const {
    int height = 0;
    for (const auto& item : m_items)
        height = std::max(height, item->isEmpty() ? 0 : item->minimumSize().height());
    return {0, height};
}

void FormRow::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    const QWidget* const owner = parentWidget();
    const Qt::LayoutDirection direction = owner ? owner->layoutDirection() : Qt::LeftToRight;
    int top = rect.top();
    for (const Line& line : linesFor(rect.width())) {
        for (const auto& [item, place] : line.items) {
            const int inset = (line.height - place.height()) / 2;
            item->setGeometry(
                QStyle::visualRect(direction, rect, place.translated(rect.left(), top + inset)));
        }
        top += line.height + spacing();
    }
}

} // namespace lumora
