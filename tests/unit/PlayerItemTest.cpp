#include "PlayerItem.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

using Cause = VideoFailure::Cause;
using Identifier = MetadataItem::Identifier;
using Status = PlayerItem::Status;

/** Tests the metadata, kind and status of a player item. */
class PlayerItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void metadataIsFoundByIdentifier()
    {
        PlayerItem item(QUrl(u"https://hub.example/tape.m3u8"_s));
        item.setExternalMetadata({{Identifier::Title, u"Bake Sale"_s}, {Identifier::Publisher, u"Home Video"_s}});
        QCOMPARE(item.metadata(Identifier::Title), u"Bake Sale"_s);
        QCOMPARE(item.metadata(Identifier::Publisher), u"Home Video"_s);
        QCOMPARE(item.metadata(Identifier::Description), QString());
        QCOMPARE(item.externalMetadata().first().extendedLanguageTag, u"und"_s);
    }

    void itemIsRecordingByDefault()
    {
        QVERIFY(!PlayerItem(QUrl()).isLive());
        QVERIFY(PlayerItem(QUrl(), PlayerItem::Kind::Live).isLive());
    }

    void statusChangeIsNotifiedOnce()
    {
        PlayerItem item{QUrl()};
        QSignalSpy changed(&item, &PlayerItem::statusChanged);
        item.setReadyToPlay();
        item.setReadyToPlay();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(item.status(), Status::ReadyToPlay);
        QVERIFY(!item.error());
    }

    void failedStatusIsFinal()
    {
        PlayerItem item{QUrl()};
        item.setFailed({Cause::Status, 404, {}});
        QSignalSpy changed(&item, &PlayerItem::statusChanged);
        item.setReadyToPlay();
        QCOMPARE(changed.count(), 0);
        QCOMPARE(item.status(), Status::Failed);
        QCOMPARE(item.error()->httpStatus, 404);
    }
};

QUILLMERE_TEST(PlayerItemTest, QCoreApplication)

} // namespace quillmere

#include "PlayerItemTest.moc"
