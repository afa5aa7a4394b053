#include "Measuring.h"

#include <QCoreApplication>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <stdexcept>

using namespace std::chrono_literals;

namespace lumora {

void say(const QString& text) {
    QTextStream(stderr) << "    " << text << '\n';
}

void pass(std::chrono::milliseconds time) {
    QTest::qWait(static_cast<int>(time.count()));
}

void await(const std::function<bool()>& condition) {
    bool expired = false;
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, [&expired] { expired = true; });
    deadline.start(20s);
    while (!condition()) {
        if (expired)
            throw std::runtime_error("something did not happen within 20 seconds");
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

double percentile(std::vector<double> values, double percent) {
    const auto last = static_cast<double>(values.size() - 1);
    const auto wanted =
        values.begin() + static_cast<std::ptrdiff_t>(std::ceil(last * percent / 100));
    std::ranges::nth_element(values, wanted);
    return *wanted;
}

double median(const std::vector<double>& values) {
    return percentile(values, 50);
}

} // namespace lumora
