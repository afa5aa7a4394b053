#include "platform/Background.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>

namespace lumora {

Background::Background() {
    m_threads.setMaxThreadCount(1);
    m_threads.setExpiryTimeout(0);
}

Background::~Background() {
    while (m_open > 0) {
        m_threads.waitForDone();
        QCoreApplication::sendPostedEvents(&m_loop, QEvent::MetaCall);
    }
}

void Background::begin(std::function<void()> work, std::function<void()> tell) {
    ++m_open;
    const auto end = [this, tell = std::move(tell)] {
        --m_open;
        tell();
    };
    m_threads.start([this, work = std::move(work), end] {
        work();
        QMetaObject::invokeMethod(&m_loop, end, Qt::QueuedConnection);
    });
}

} // namespace lumora
