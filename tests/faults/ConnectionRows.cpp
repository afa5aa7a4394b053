#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

std::vector<FaultRow> connectionRows() {
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n";
    const QByteArray chunk = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\n{\"dat\r\n";
    const QByteArray interim = "HTTP/1.1 103 Early Hints\r\n\r\n";
    return {
        // Names are looked up by names/InventedNames.cpp.
        {"nobody listens", failed(u"Connection refused"_s), 3, 0, nobody()},
        {"nobody listens at a name", failed(u"Connection refused"_s), 3, 0,
         at(u"https://here.invalid:%1/"_s, nobody())},
        {"a name that nobody has", failed(u"Host nobody.invalid not found"_s), 3, 0,
         at(u"https://nobody.invalid/"_s, nobody())},
        {"a name server that is out of order", failed(u"Host later.invalid not found"_s), 3, 0,
         at(u"https://later.invalid/"_s, nobody())},
        {"the first of two addresses is dead", loaded(), 1, 1,
         at(u"http://localhost:%1/"_s, isWell())},

        {"closes at once", closed(), 3, 0, atOnce(says(""))},
        {"closes unanswered", closed(), 3, 3, says("")},
        {"closes in the status line", closed(), 3, 3, says("HTTP/1.")},
        {"closes after the status", closed(), 3, 3, says("HTTP/1.1 200 OK\r\n")},
        {"closes in the head", closed(), 3, 3, says("HTTP/1.1 200 OK\r\nContent-Le")},
        {"closes after the head", closed(), 3, 3, says(head)},
        {"closes in the body", closed(), 3, 3, says(head + "{\"date\"")},
        {"closes in the body of a refusal", closed(), 3, 3,
         says("HTTP/1.1 401 No\r\nContent-Length: 9\r\n\r\nno")},
        {"closes in a chunk", closed(), 3, 3, says(chunk + "9\r\n12")},
        {"closes before the last chunk", closed(), 3, 3, says(chunk)},
        {"closes after an interim answer", closed(), 3, 3, says(interim)},

        {"resets at once", closed(), 3, 0, atOnce(saysAndResets(""))},
        {"resets unanswered", closed(), 3, 3, saysAndResets("")},
        {"resets in the status line", closed(), 3, 3, saysAndResets("HTTP/1.")},
        {"resets in the head", closed(), 3, 3, saysAndResets("HTTP/1.1 200 OK\r\nContent-Le")},
        {"resets after the head", closed(), 3, 3, saysAndResets(head)},
        {"resets in the body", closed(), 3, 3, saysAndResets(head + "{\"date\"")},
        {"resets in a body without a length", closed(), 3, 3,
         saysAndResets("HTTP/1.1 200 OK\r\n\r\n{\"date\"")},
        {"resets in a chunk", closed(), 3, 3, saysAndResets(chunk + "9\r\n12")},
        {"resets after an interim answer", closed(), 3, 3, saysAndResets(interim)},
    };
}

} // namespace lumora::tests
