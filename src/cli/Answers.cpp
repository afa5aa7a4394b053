#include "cli/Answers.h"

#include "texts/PlainText.h"

#include <QTextStream>

#include <cerrno>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

int complain(const QString& sentence, int code) {
    QTextStream(stderr) << "lumora: " << singleLine(sentence).simplified() << '\n';
    return code;
}

int complain(CommandClient::Failure failure) {
    if (failure == CommandClient::Failure::NotRunning)
        return complain(u"Lumora is not running"_s, NotRunning);
    return complain(u"Lumora does not answer"_s, Failure);
}

tl::expected<void, std::error_code> write(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return {};
    return tl::unexpected(std::error_code(errno, std::generic_category()));
}

int complainOfWriting(const std::error_code& error) {
    const QString reason = QString::fromStdString(error.message());
    return complain(u"The answer could not be written: %1"_s.arg(reason), Failure);
}

int print(const QString& text) {
    const auto written = write(text);
    return written ? int(Success) : complainOfWriting(written.error());
}

} // namespace lumora
