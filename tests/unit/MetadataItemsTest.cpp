#include "PlaybackTexts.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

using enum MetadataItem::Identifier;

namespace {

VHSCover fullCover()
{
    VHSCover cover;
    cover.title = u"Harbour Council"_s;
    cover.genre = u"DRAMA"_s;
    cover.bodyName = u"Council"_s;
    cover.synopsis = u"They meet."_s;
    return cover;
}

} // namespace

class MetadataItemsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fourItemsAreInOrder();
    void withoutSynopsisThereAreThreeItems();
    void withoutTitleThereIsNoTitleItem();
    void subtitleAndPublisherAreAlwaysPresent();
};

void MetadataItemsTest::fourItemsAreInOrder()
{
    const QList<MetadataItem> items{{Title, u"Harbour Council"_s, u"und"_s},
                                    {SubTitle, u"DRAMA · Council"_s, u"und"_s},
                                    {Description, u"They meet."_s, u"und"_s},
                                    {Publisher, u"Rewindery Home Video"_s, u"und"_s}};
    QCOMPARE(metadataItems(fullCover()), items);
}

void MetadataItemsTest::withoutSynopsisThereAreThreeItems()
{
    VHSCover cover = fullCover();
    cover.synopsis.clear();
    const QList<MetadataItem> items = metadataItems(cover);
    QCOMPARE(items.size(), 3);
    QCOMPARE(items.last().identifier, Publisher);
}

void MetadataItemsTest::withoutTitleThereIsNoTitleItem()
{
    VHSCover cover = fullCover();
    cover.title.clear();
    QCOMPARE(metadataItems(cover).first().identifier, SubTitle);
}

void MetadataItemsTest::subtitleAndPublisherAreAlwaysPresent()
{
    const QList<MetadataItem> items{{SubTitle, u" · "_s}, {Publisher, u"Rewindery Home Video"_s}};
    QCOMPARE(metadataItems({}), items);
}

QUILLMERE_TEST(MetadataItemsTest, QCoreApplication)

} // namespace quillmere

#include "MetadataItemsTest.moc"
