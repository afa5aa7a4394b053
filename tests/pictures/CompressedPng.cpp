#include "pictures/CompressedPng.h"

#include <QtEndian>

namespace lumora::tests {

namespace {

QByteArray bigEndian(quint32 number) {
    const quint32 ordered = qToBigEndian(number);
    return {reinterpret_cast<const char*>(&ordered), sizeof ordered};
}

/// The check sum of the PNG format.
quint32 crc32(const QByteArray& bytes) {
    constexpr quint32 polynomial = 0xedb88320;
    quint32 sum = ~0U;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? polynomial : 0);
    }
    return ~sum;
}

QByteArray chunk(const QByteArray& type, const QByteArray& data) {
    const QByteArray body = type + data;
    return bigEndian(quint32(data.size())) + body + bigEndian(crc32(body));
}

} // namespace

QByteArray compressedPng(const QImage& image) {
    const QImage pixels = image.convertToFormat(QImage::Format_RGB888);
    QByteArray lines;
    for (int y = 0; y < pixels.height(); ++y) {
        lines += '\0'; // no filter
        lines.append(
            reinterpret_cast<const char*>(pixels.constScanLine(y)), 3 * qsizetype(pixels.width()));
    }
    constexpr qsizetype lengthBefore = 4; // which is the toolkit's own
    constexpr int bestCompression = 9;
    const QByteArray eightBitsOfRedGreenBlue("\x08\x02\x00\x00\x00", 5);
    return QByteArray("\x89PNG\r\n\x1a\n") +
           chunk(
               "IHDR", bigEndian(quint32(pixels.width())) + bigEndian(quint32(pixels.height())) +
                           eightBitsOfRedGreenBlue) +
           chunk("IDAT", qCompress(lines, bestCompression).sliced(lengthBefore)) +
           chunk("IEND", {});
}

} // namespace lumora::tests
