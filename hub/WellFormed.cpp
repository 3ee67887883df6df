#include "WellFormed.h"

#include <utility>

QString wellFormed(QString text)
{
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = std::as_const(text)[index];
        if (!unit.isSurrogate())
            continue;
        const bool isPair =
            unit.isHighSurrogate() && index + 1 < text.size() && std::as_const(text)[index + 1].isLowSurrogate();
        if (isPair)
            ++index;
        else
            text[index] = QChar::ReplacementCharacter;
    }
    return text;
}
