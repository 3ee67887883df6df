#pragma once

#include <QString>

/** One thing to be known about what is playing, as the platform's player shows it. A plain value. */
struct MetadataItem
{
    enum class Identifier { Title, SubTitle, Description, Publisher };

    Identifier identifier = Identifier::Title;
    QString value;
    QString extendedLanguageTag = QStringLiteral("und"); ///< BCP 47

    bool operator==(const MetadataItem&) const = default;
};
