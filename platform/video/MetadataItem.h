#pragma once

#include <QString>

namespace quillmere {

/** One item of metadata about a stream: what it is and its text. A plain value. */
struct MetadataItem
{
    enum class Identifier { Title, SubTitle, Description, Publisher };

    Identifier identifier = Identifier::Title;
    QString value;
    QString extendedLanguageTag = QStringLiteral("und"); ///< BCP 47

    bool operator==(const MetadataItem&) const = default;
};

} // namespace quillmere
