#include "MetadataItems.h"

using namespace Qt::StringLiterals;

QList<MetadataItem> metadataItems(const VHSCover& cover)
{
    using enum MetadataItem::Identifier;
    const MetadataItem all[] = {
        {Title, cover.title},
        {SubTitle, cover.genre + u" · "_s + cover.bodyName},
        {Description, cover.synopsis},
        {Publisher, u"Rewindery Home Video"_s},
    };
    QList<MetadataItem> items;
    for (const MetadataItem& item : all) {
        if (!item.value.isEmpty())
            items.append(item);
    }
    return items;
}
