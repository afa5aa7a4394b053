// What libFuzzer calls: the one target that LUMORA_FUZZ_TARGET names.

#include "Targets.h"

#include <QString>

#include <cstdint>
#include <cstdio>

namespace {

// Warnings about such inputs are no news, and writing them takes longer than all the rest.
void sayOnlyWhatIsFatal(
    QtMsgType kind, const QMessageLogContext& /*context*/, const QString& text) {
    if (kind == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    qInstallMessageHandler(sayOnlyWhatIsFatal);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    lumora::fuzz::LUMORA_FUZZ_TARGET(QByteArrayView(bytes, qsizetype(size)));
    return 0;
}
