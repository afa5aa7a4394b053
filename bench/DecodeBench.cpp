// What decoding a briefing costs beside the JSON library's bare parse of the same bytes.

#include "briefing/BriefingDecoder.h"
#include "briefing/InternetDateTime.h"

#include <QByteArray>
#include <QByteArrayList>

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <vector>

namespace {

QByteArray event(int i) {
    static const char* const titles[] = {
        "Standup",
        "Quarterly planning review",
        "Café with Zoë ☕",
        "Architecture: storage and caching, part two",
    };
    const QByteArray hour = QByteArray::number(8 + i % 10).rightJustified(2, '0');
    QByteArray result = QByteArrayLiteral(R"({"title":")") + titles[i % 4];
    result += R"(","start":"2025-03-04T)" + hour + R"(:00:00Z","end":"2025-03-04T)" + hour +
              R"(:45:00.250+01:00","allDay":false,"location":)";
    result += i % 2 ? R"("Room )" + QByteArray::number(i) + R"(, second floor")" : "null";
    result += i % 3 ? R"(,"feed":"Work")" : R"(,"feed":"Family")";
    if (i % 3)
        result += R"(,"meetingUrl":"https://meet.example.com/j/)" + QByteArray::number(i * 7919) +
                  R"(?pwd=a1b2c3")";
    return result + "}";
}

QByteArray chore(int i) {
    const QByteArray number = QByteArray::number(i);
    return R"({"id":"chore-)" + number +
           R"(","name":"Water the plants","room":"Living room","daysOverdue":)" +
           (i % 5 ? number : QByteArrayLiteral("null")) + "}";
}

QByteArray habit(int i) {
    const QByteArray number = QByteArray::number(i);
    return R"({"id":"habit-)" + number + R"(","name":"Read twenty pages","done":)" +
           (i % 2 ? "true" : "false") + R"(,"count":1,"target":1,"streak":)" + number + "}";
}

QByteArray bucket(int i) {
    const QByteArray number = QByteArray::number(i);
    return R"({"bucket":"bucket-)" + number +
           R"(","label":"Groceries","icon":"🛒","color":"#1E90FF","amount":)" + number + ".34}";
}

template <typename Make>
QByteArray many(int count, Make make) {
    QByteArrayList items;
    for (int i = 0; i < count; ++i)
        items.append(make(i));
    return '[' + items.join(',') + ']';
}

/// A briefing whose lists are `scale` times as long as on a busy day, as a service writes it: one
/// line, members in the order of the records' fields.
QByteArray makeBriefing(int scale) {
    return R"({"date":"2025-03-04","generatedAt":1741080600.25,"nextEvent":)" + event(0) +
           R"(,"eventsToday":)" + many(16 * scale, event) + R"(,"chores":{"count":9,"top":)" +
           many(8 * scale, chore) + R"(},"habits":{"done":3,"total":6,"items":)" +
           many(12 * scale, habit) + R"(},"focus":{"productiveShare":0.42})" +
           R"(,"spending":{"mtd":1234.56,"sameDayLastMonth":1100.5,"deltaFraction":0.12,"top":)" +
           many(6 * scale, bucket) +
           R"(,"asOf":"2025-03-04","generatedAt":1741080000,"stale":false}})";
}

const QByteArray& briefingOfScale(int scale) {
    static const QByteArray small = makeBriefing(1);
    static const QByteArray large = makeBriefing(180);
    return scale == 1 ? small : large;
}

void setThroughput(benchmark::State& state, const QByteArray& bytes) {
    state.SetBytesProcessed(state.iterations() * bytes.size());
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

void parseBare(benchmark::State& state) {
    const QByteArray& bytes = briefingOfScale(static_cast<int>(state.range(0)));
    simdjson::dom::parser parser;
    for ([[maybe_unused]] auto _ : state) {
        auto root = parser.parse(bytes.data(), static_cast<size_t>(bytes.size()));
        benchmark::DoNotOptimize(root);
    }
    setThroughput(state, bytes);
}

/// Every text of `value` that is no key, as text objects.
void collectTexts(simdjson::dom::element value, std::vector<QString>& texts) {
    simdjson::dom::array array;
    simdjson::dom::object object;
    std::string_view text;
    if (value.get(text) == simdjson::SUCCESS) {
        texts.push_back(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    } else if (value.get(array) == simdjson::SUCCESS) {
        for (const auto item : array)
            collectTexts(item, texts);
    } else if (value.get(object) == simdjson::SUCCESS) {
        for (const auto [key, member] : object)
            collectTexts(member, texts);
    }
}

/// The least any decoder must do: the bare parse, and one text object for each text.
void parseAndCopyTexts(benchmark::State& state) {
    const QByteArray& bytes = briefingOfScale(static_cast<int>(state.range(0)));
    simdjson::dom::parser parser;
    size_t count = 0;
    for ([[maybe_unused]] auto _ : state) {
        simdjson::dom::element root;
        if (parser.parse(bytes.data(), static_cast<size_t>(bytes.size())).get(root))
            state.SkipWithError("no JSON");
        std::vector<QString> texts;
        texts.reserve(count);
        collectTexts(root, texts);
        count = texts.size();
        benchmark::DoNotOptimize(texts);
    }
    state.counters["texts"] = static_cast<double>(count);
    setThroughput(state, bytes);
}

void decode(benchmark::State& state) {
    const QByteArray& bytes = briefingOfScale(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        auto briefing = lumora::decodeBriefing(bytes);
        if (!briefing)
            state.SkipWithError(briefing.error().text().toUtf8().constData());
        benchmark::DoNotOptimize(briefing);
    }
    setThroughput(state, bytes);
}

void parseDate(benchmark::State& state) {
    std::string_view text = "2025-03-04T09:30:00.250+01:00";
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(text);
        auto instant = lumora::parseInternetDateTime(text);
        benchmark::DoNotOptimize(instant);
    }
}

} // namespace

BENCHMARK(parseBare)->ArgName("scale")->Arg(1)->Arg(180);
BENCHMARK(parseAndCopyTexts)->ArgName("scale")->Arg(1)->Arg(180);
BENCHMARK(decode)->ArgName("scale")->Arg(1)->Arg(180);
BENCHMARK(parseDate);
