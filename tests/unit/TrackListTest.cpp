#include "TrackList.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

using Kind = MediaTrack::Kind;

namespace {

const MediaTrack english{1, Kind::Audio, {}, u"en"_s, true};
const MediaTrack spanish{2, Kind::Audio, {}, u"es"_s, false};
const MediaTrack captions{1, Kind::Subtitle, u"Captions"_s, {}, false};

/** The titles of all rows; the selected one is in brackets. */
QStringList rowsOf(const TrackList& list)
{
    QStringList rows;
    for (int row = 0; row < list.rowCount(); ++row) {
        const QString title = list.data(list.index(row), TrackList::TitleRole).toString();
        const bool isSelected = list.data(list.index(row), TrackList::SelectedRole).toBool();
        rows.append(isSelected ? u"[%1]"_s.arg(title) : title);
    }
    return rows;
}

} // namespace

class TrackListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listHasRowsOnlyIfThereIsChoice_data();
    void listHasRowsOnlyIfThereIsChoice();
    void selectionChangesWithoutReset();
    void otherTracksResetRows();
    void pickEmitsKindAndTrack();
    void invalidRowIsNotPicked();
};

void TrackListTest::listHasRowsOnlyIfThereIsChoice_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QList<MediaTrack>>("tracks");
    QTest::addColumn<QStringList>("rows");
    MediaTrack selectedCaptions = captions;
    selectedCaptions.selected = true;
    QTest::newRow("no sound") << Kind::Audio << QList<MediaTrack>{captions} << QStringList();
    QTest::newRow("one sound track") << Kind::Audio << QList<MediaTrack>{english} << QStringList();
    QTest::newRow("two sound tracks") << Kind::Audio << QList<MediaTrack>{english, captions, spanish}
                                      << QStringList{u"[English]"_s, u"Spanish"_s};
    QTest::newRow("no subtitles") << Kind::Subtitle << QList<MediaTrack>{english, spanish} << QStringList();
    QTest::newRow("subtitles off") << Kind::Subtitle << QList<MediaTrack>{english, captions}
                                   << QStringList{u"[Off]"_s, u"Captions"_s};
    QTest::newRow("subtitles on") << Kind::Subtitle << QList<MediaTrack>{english, selectedCaptions}
                                  << QStringList{u"Off"_s, u"[Captions]"_s};
}

void TrackListTest::listHasRowsOnlyIfThereIsChoice()
{
    QFETCH(const Kind, kind);
    QFETCH(const QList<MediaTrack>, tracks);
    TrackList list(kind);
    list.setTracks(tracks);
    QTEST(rowsOf(list), "rows");
}

void TrackListTest::selectionChangesWithoutReset()
{
    TrackList list(Kind::Audio);
    list.setTracks({english, spanish});
    const QSignalSpy resets(&list, &QAbstractItemModel::modelReset);
    const QSignalSpy changes(&list, &QAbstractItemModel::dataChanged);
    MediaTrack first = english;
    MediaTrack second = spanish;
    first.selected = false;
    second.selected = true;
    list.setTracks({first, second});
    QCOMPARE(rowsOf(list), (QStringList{u"English"_s, u"[Spanish]"_s}));
    QCOMPARE(resets.count(), 0);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().at(1).toModelIndex().row(), 1);
}

void TrackListTest::otherTracksResetRows()
{
    TrackList list(Kind::Audio);
    const QSignalSpy resets(&list, &QAbstractItemModel::modelReset);
    const QSignalSpy counts(&list, &TrackList::countChanged);
    list.setTracks({english, spanish});
    list.setTracks({});
    QCOMPARE(resets.count(), 2);
    QCOMPARE(counts.count(), 2);
    QCOMPARE(list.count(), 0);
}

void TrackListTest::pickEmitsKindAndTrack()
{
    TrackList list(Kind::Subtitle);
    list.setTracks({captions});
    const QSignalSpy picks(&list, &TrackList::picked);
    list.pick(1);
    list.pick(0);
    QCOMPARE(picks.count(), 2);
    QCOMPARE(picks.at(0).at(0).value<Kind>(), Kind::Subtitle);
    QCOMPARE(picks.at(0).at(1).toInt(), 1);
    QCOMPARE(picks.at(1).at(1).toInt(), MediaTrack::none);
}

void TrackListTest::invalidRowIsNotPicked()
{
    TrackList list(Kind::Subtitle);
    const QSignalSpy picks(&list, &TrackList::picked);
    list.pick(0);
    list.pick(-1);
    list.setTracks({captions});
    list.pick(2);
    QCOMPARE(picks.count(), 0);
}

QUILLMERE_TEST(TrackListTest, QCoreApplication)

} // namespace quillmere

#include "TrackListTest.moc"
