#include "WellFormed.h"

#include <utility>

QString wellFormed(QString text)
{
    for (qsizetype place = 0; place < text.size(); ++place) {
        const QChar unit = std::as_const(text)[place];
        if (!unit.isSurrogate())
            continue;
        const bool isPair =
            unit.isHighSurrogate() && place + 1 < text.size() && std::as_const(text)[place + 1].isLowSurrogate();
        if (isPair)
            ++place;
        else
            text[place] = QChar::ReplacementCharacter;
    }
    return text;
}
