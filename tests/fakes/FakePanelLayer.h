#pragma once

#include "platform/PanelLayer.h"

#include <QWindow>

#include <optional>

namespace lumora::tests {

/// A layer whose answers the test gives.
class FakePanelLayer final : public PanelLayer {
public:
    void open(QWindow& window, const Wish& wish, const Answers& given) override {
        shown = &window;
        wishes += wish;
        answers = given;
    }

    void place(const QRect& area) override { areas += area; }

    void close() override {
        if (shown)
            wasVisibleAtClose = shown->isVisible();
        shown = nullptr;
        answers = {};
    }

    void requestToken(const std::function<void(const QByteArray& token)>& given) override {
        tokenWanted = given;
    }

    QWindow* shown = nullptr; ///< null while nothing is in the layer
    QList<Wish> wishes;
    Answers answers;
    QList<QRect> areas;
    bool wasVisibleAtClose = false;
    std::function<void(const QByteArray& token)> tokenWanted; ///< empty: nobody asked
};

} // namespace lumora::tests
