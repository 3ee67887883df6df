#include "PlaybackTexts.h"
#include "Rows.h"
#include "TestMain.h"

using namespace Qt::StringLiterals;

namespace quillmere {

using enum MetadataItem::Identifier;

class MetadataItemsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyTitleAndSynopsisHaveNoItem_data()
    {
        const MetadataItem title{Title, u"Harbour Council"_s, u"und"_s};
        const MetadataItem subtitle{SubTitle, u"DRAMA · Council"_s, u"und"_s};
        const MetadataItem description{Description, u"They meet."_s, u"und"_s};
        const MetadataItem publisher{Publisher, u"Rewindery Home Video"_s, u"und"_s};
        rows<QString, QString, QList<MetadataItem>>(
            {"title", "synopsis", "items"},
            {{"title and synopsis", title.value, description.value, {title, subtitle, description, publisher}},
             {"no synopsis", title.value, {}, {title, subtitle, publisher}},
             {"no title", {}, description.value, {subtitle, description, publisher}}});
    }

    void emptyTitleAndSynopsisHaveNoItem()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, synopsis);
        VHSCover cover;
        cover.title = title;
        cover.genre = u"DRAMA"_s;
        cover.bodyName = u"Council"_s;
        cover.synopsis = synopsis;
        QTEST(metadataItems(cover), "items");
    }

    void subtitleAndPublisherAreAlwaysPresent()
    {
        const QList<MetadataItem> items{{SubTitle, u" · "_s}, {Publisher, u"Rewindery Home Video"_s}};
        QCOMPARE(metadataItems({}), items);
    }
};

QUILLMERE_TEST(MetadataItemsTest, QCoreApplication)

} // namespace quillmere

#include "MetadataItemsTest.moc"
