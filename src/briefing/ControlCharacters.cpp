#include "briefing/ControlCharacters.h"

namespace lumora {

bool isControlCharacter(QChar character) {
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

BidiControl bidiControl(QChar character) {
    switch (character.direction()) {
    case QChar::DirLRE:
    case QChar::DirRLE:
    case QChar::DirLRO:
    case QChar::DirRLO:
        return BidiControl::OpensEmbedding;
    case QChar::DirPDF:
        return BidiControl::ClosesEmbedding;
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
        return BidiControl::OpensIsolate;
    case QChar::DirPDI:
        return BidiControl::ClosesIsolate;
    default:
        return BidiControl::None;
    }
}

} // namespace lumora
