#include "fakes/FakeNotificationCenter.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

FakeNotificationCenter::~FakeNotificationCenter() {
    while (!m_held.empty())
        answer();
}

QCoro::Task<bool> FakeNotificationCenter::requestAuthorization() {
    calls += u"authorize"_s;
    const Question question = ask();
    co_await question->value();
    co_return grants;
}

QCoro::Task<QStringList> FakeNotificationCenter::pendingIdentifiers() {
    calls += u"list"_s;
    const Question question = ask();
    co_await question->value();
    QStringList identifiers;
    for (const NotificationRequest& request : pending)
        identifiers += request.identifier;
    co_return identifiers;
}

void FakeNotificationCenter::removePending(const QStringList& identifiers) {
    calls += u"remove "_s + identifiers.join(u',');
    std::erase_if(pending, [&identifiers](const NotificationRequest& request) {
        return identifiers.contains(request.identifier);
    });
}

void FakeNotificationCenter::removeAllPending() {
    calls += u"remove all"_s;
    pending.clear();
}

void FakeNotificationCenter::add(const NotificationRequest& request) {
    calls += u"add "_s + request.identifier;
    const auto same =
        std::ranges::find(pending, request.identifier, &NotificationRequest::identifier);
    if (same == pending.end())
        pending.push_back(request);
    else
        *same = request;
}

void FakeNotificationCenter::answer() {
    const Question question = m_held.front();
    m_held.erase(m_held.begin());
    question->complete(true);
}

FakeNotificationCenter::Question FakeNotificationCenter::ask() {
    auto question = std::make_shared<Completion<bool>>();
    if (m_holding)
        m_held.push_back(question);
    else
        question->complete(true);
    return question;
}

} // namespace lumora::tests
