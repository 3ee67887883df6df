#include "TrackList.h"
#include "Rows.h"
#include "TestMain.h"

#include <QSignalSpy>

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
    void listHasRowsOnlyIfThereIsChoice_data()
    {
        MediaTrack selectedCaptions = captions;
        selectedCaptions.selected = true;
        rows<Kind, QList<MediaTrack>, QStringList>(
            {"kind", "tracks", "rows"},
            {{"no sound", Kind::Audio, {captions}, {}},
             {"one sound track", Kind::Audio, {english}, {}},
             {"two sound tracks", Kind::Audio, {english, captions, spanish}, {u"[English]"_s, u"Spanish"_s}},
             {"no subtitles", Kind::Subtitle, {english, spanish}, {}},
             {"subtitles off", Kind::Subtitle, {english, captions}, {u"[Off]"_s, u"Captions"_s}},
             {"subtitles on", Kind::Subtitle, {english, selectedCaptions}, {u"Off"_s, u"[Captions]"_s}}});
    }

    void listHasRowsOnlyIfThereIsChoice()
    {
        QFETCH(const Kind, kind);
        QFETCH(const QList<MediaTrack>, tracks);
        TrackList list(kind);
        list.setTracks(tracks);
        QTEST(rowsOf(list), "rows");
    }

    void selectionChangesWithoutReset()
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

    void otherTracksResetRows()
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

    void pickEmitsKindAndTrackOfValidRow()
    {
        TrackList list(Kind::Subtitle);
        const QSignalSpy picks(&list, &TrackList::picked);
        list.pick(0);
        list.pick(-1);
        list.setTracks({captions});
        list.pick(2);
        QCOMPARE(picks.count(), 0);
        list.pick(1);
        list.pick(0);
        QCOMPARE(picks.count(), 2);
        QCOMPARE(picks.at(0).at(0).value<Kind>(), Kind::Subtitle);
        QCOMPARE(picks.at(0).at(1).toInt(), 1);
        QCOMPARE(picks.at(1).at(1).toInt(), MediaTrack::none);
    }
};

QUILLMERE_TEST(TrackListTest, QCoreApplication)

} // namespace quillmere

#include "TrackListTest.moc"
