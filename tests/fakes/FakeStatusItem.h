#pragma once

#include "platform/StatusItem.h"

#include <vector>

namespace lumora::tests {

/// A status item that only remembers what it was given.
class FakeStatusItem final : public StatusItem {
public:
    void show(const StatusItemContent& content) override { contents.push_back(content); }

    QString unavailableReason() const override { return reason; }

    QString reason; ///< why it is shown nowhere; empty: it is

    std::vector<StatusItemContent> contents; ///< everything shown, in order
};

} // namespace lumora::tests
