#include "CassetteStudio.h"
#include "SampleCover.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize pixels(64, 100);

CassettePrint printOf(const QString& title)
{
    CassettePrint print{CassettePrint::Form::ShelfCard, sampleCover(), 250, pixels};
    print.cover.title = title;
    return print;
}

/** What one picture takes, in bytes; they are all of one size. */
qint64 pictureSize()
{
    return printOf({}).paint().image.sizeInBytes();
}

/** Keeps what it is given, and writes down when. */
class Viewer final : public CassetteStudio::Customer
{
public:
    explicit Viewer(double distance = 0, QString name = {}, QStringList* log = nullptr)
        : m_distance(distance), m_name(std::move(name)), m_log(log)
    {}

    double distance() const override { return m_distance; }
    void take(const CassetteStudio::Picture& picture) override
    {
        shown = picture;
        ++taken;
        if (m_log)
            m_log->append(m_name);
    }

    CassetteStudio::Picture shown;
    int taken = 0;

private:
    double m_distance;
    QString m_name;
    QStringList* m_log;
};

/** Orders, and waits until it is there. */
void paintOne(CassetteStudio& studio, Viewer& viewer, const QString& title)
{
    viewer.shown = studio.order(viewer, printOf(title));
    QTRY_VERIFY(viewer.shown);
}

/** Waits until all that was ordered before is painted: its thread takes one after the other. */
void finish(CassetteStudio& studio)
{
    Viewer last(1e9);
    paintOne(studio, last, u"the last of all"_s);
}

} // namespace

/** Who gets which picture, when, and how long it is kept. */
class CassetteStudioTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPictureIsPaintedAsOnTheScreenThread();
    void aPictureAtHandIsGivenAtOnce();
    void nothingIsDeliveredInsideTheOrder();
    void theNearestIsPaintedFirst();
    void amongEquallyNearTheFirstComesFirst();
    void anOrderTakenBackIsNotPainted();
    void anOrderThatChangedBringsOnlyTheNewPicture_data();
    void anOrderThatChangedBringsOnlyTheNewPicture();
    void twoWhoWantTheSameShareOnePicture();
    void anyDifferenceIsAnotherPicture();
    void thePictureUsedLongestAgoGoesFirst();
    void whatIsShownIsNeverGivenUp();
    void aPictureThatThereIsNoMemoryForIsNotDelivered();
    void aTallWindowHasALargerBudget();
    void theSharedStudioGoesWithItsLastUser();
    void aStudioThatGoesDeliversNothingMore();
};

void CassetteStudioTest::aPictureIsPaintedAsOnTheScreenThread()
{
    CassetteStudio studio;
    Viewer viewer;
    paintOne(studio, viewer, u"市議會 Harbor Day \U0001F6A2"_s);
    QCOMPARE(viewer.shown->image, printOf(u"市議會 Harbor Day \U0001F6A2"_s).paint().image);
    QCOMPARE(viewer.shown->image.format(), QImage::Format_ARGB32_Premultiplied);
}

void CassetteStudioTest::aPictureAtHandIsGivenAtOnce()
{
    CassetteStudio studio;
    Viewer first;
    paintOne(studio, first, u"A"_s);
    Viewer second;
    QCOMPARE(studio.order(second, printOf(u"A"_s)), first.shown);
}

void CassetteStudioTest::nothingIsDeliveredInsideTheOrder()
{
    CassetteStudio studio;
    Viewer viewer;
    QVERIFY(!studio.order(viewer, printOf(u"A"_s)));
    QCOMPARE(viewer.taken, 0);
    QTRY_COMPARE(viewer.taken, 1);
}

void CassetteStudioTest::theNearestIsPaintedFirst()
{
    CassetteStudio studio;
    QStringList log;
    Viewer far(900, u"far"_s, &log);
    Viewer near(100, u"near"_s, &log);
    Viewer inSight(0, u"in sight"_s, &log);
    studio.order(far, printOf(u"far"_s));
    studio.order(near, printOf(u"near"_s));
    studio.order(inSight, printOf(u"in sight"_s));
    QTRY_COMPARE(log.size(), 3);
    QCOMPARE(log, QStringList({u"in sight"_s, u"near"_s, u"far"_s}));
}

void CassetteStudioTest::amongEquallyNearTheFirstComesFirst()
{
    CassetteStudio studio;
    QStringList log;
    std::vector<std::unique_ptr<Viewer>> viewers;
    QStringList names;
    for (int i = 0; i < 10; ++i) {
        names << QString::number(i);
        viewers.push_back(std::make_unique<Viewer>(0, names.last(), &log));
        studio.order(*viewers.back(), printOf(names.last()));
    }
    QTRY_COMPARE(log, names);
}

void CassetteStudioTest::anOrderTakenBackIsNotPainted()
{
    CassetteStudio studio;
    Viewer gone;
    Viewer stays;
    studio.order(gone, printOf(u"gone"_s));
    studio.order(stays, printOf(u"stays"_s));
    studio.cancel(gone);
    finish(studio);
    QCOMPARE(stays.taken, 1);
    QCOMPARE(gone.taken, 0);
    QCOMPARE(studio.bytesKept(), 2 * pictureSize());
}

void CassetteStudioTest::anOrderThatChangedBringsOnlyTheNewPicture_data()
{
    QTest::addColumn<bool>("isUnderWay");
    QTest::newRow("before it is painted") << false;
    QTest::newRow("while it is painted") << true;
}

void CassetteStudioTest::anOrderThatChangedBringsOnlyTheNewPicture()
{
    QFETCH(bool, isUnderWay);
    CassetteStudio studio;
    Viewer viewer;
    studio.order(viewer, printOf(u"old"_s));
    if (isUnderWay)
        QCoreApplication::processEvents();
    studio.order(viewer, printOf(u"new"_s));
    finish(studio);
    QCOMPARE(viewer.taken, 1);
    QCOMPARE(viewer.shown->image, printOf(u"new"_s).paint().image);
}

void CassetteStudioTest::twoWhoWantTheSameShareOnePicture()
{
    CassetteStudio studio;
    Viewer first;
    Viewer second;
    studio.order(first, printOf(u"A"_s));
    studio.order(second, printOf(u"A"_s));
    QTRY_VERIFY(first.shown && second.shown);
    QCOMPARE(first.shown, second.shown);
    QCOMPARE(studio.bytesKept(), pictureSize());
}

void CassetteStudioTest::anyDifferenceIsAnotherPicture()
{
    CassetteStudio studio;
    Viewer viewer;
    paintOne(studio, viewer, u"A"_s);
    CassettePrint front = printOf(u"A"_s);
    front.form = CassettePrint::Form::BoxFront;
    CassettePrint larger = printOf(u"A"_s);
    larger.pixels += QSize(1, 0);
    CassettePrint wider = printOf(u"A"_s);
    wider.width = 230;
    CassettePrint red = printOf(u"A"_s);
    red.cover.hue = 4;
    for (const CassettePrint& other : {front, larger, wider, red}) {
        Viewer another;
        QVERIFY(!studio.order(another, other));
        studio.cancel(another);
    }
}

void CassetteStudioTest::thePictureUsedLongestAgoGoesFirst()
{
    CassetteStudio studio;
    studio.setBudget(3 * pictureSize());
    for (const QString& title : {u"A"_s, u"B"_s, u"C"_s}) {
        Viewer viewer;
        paintOne(studio, viewer, title);
    }
    Viewer viewer;
    QVERIFY(studio.order(viewer, printOf(u"A"_s)));
    paintOne(studio, viewer, u"D"_s);
    QCOMPARE(studio.bytesKept(), 3 * pictureSize());
    QVERIFY(studio.order(viewer, printOf(u"A"_s)));
    QVERIFY(studio.order(viewer, printOf(u"C"_s)));
    QVERIFY(!studio.order(viewer, printOf(u"B"_s)));
    studio.cancel(viewer);
}

void CassetteStudioTest::whatIsShownIsNeverGivenUp()
{
    CassetteStudio studio;
    studio.setBudget(2 * pictureSize());
    std::vector<std::unique_ptr<Viewer>> viewers;
    for (int i = 0; i < 5; ++i) {
        viewers.push_back(std::make_unique<Viewer>());
        paintOne(studio, *viewers.back(), QString::number(i));
    }
    QCOMPARE(studio.bytesKept(), 5 * pictureSize());
    Viewer another;
    for (int i = 0; i < 5; ++i)
        QCOMPARE(studio.order(another, printOf(QString::number(i))), viewers[size_t(i)]->shown);
    viewers.clear();
    studio.setBudget(2 * pictureSize());
    QCOMPARE(studio.bytesKept(), 2 * pictureSize());
}

void CassetteStudioTest::aPictureThatThereIsNoMemoryForIsNotDelivered()
{
    CassetteStudio studio;
    Viewer viewer;
    CassettePrint huge = printOf(u"A"_s);
    huge.pixels = QSize(1, 1) * 1'000'000'000;
    studio.order(viewer, huge);
    Viewer after;
    studio.order(after, printOf(u"B"_s));
    QTRY_VERIFY(after.shown);
    QCOMPARE(viewer.taken, 0);
    QCOMPARE(studio.bytesKept(), pictureSize());
}

void CassetteStudioTest::aTallWindowHasALargerBudget()
{
    QCOMPARE(CassetteStudio::budgetFor(720), 28LL * 1024 * 1024);
    QCOMPARE(CassetteStudio::budgetFor(1080), 28LL * 1024 * 1024);
    QCOMPARE(CassetteStudio::budgetFor(1081), 160LL * 1024 * 1024);
    QCOMPARE(CassetteStudio::budgetFor(2160), 160LL * 1024 * 1024);
}

void CassetteStudioTest::theSharedStudioGoesWithItsLastUser()
{
    auto first = CassetteStudio::shared();
    auto second = CassetteStudio::shared();
    QCOMPARE(first, second);
    const std::weak_ptr<CassetteStudio> watched = first;
    first.reset();
    QVERIFY(!watched.expired());
    second.reset();
    QVERIFY(watched.expired());
    QCOMPARE(CassetteStudio::shared()->bytesKept(), 0);
}

void CassetteStudioTest::aStudioThatGoesDeliversNothingMore()
{
    Viewer viewer;
    Viewer another;
    {
        CassetteStudio studio;
        studio.order(viewer, printOf(u"A"_s));
        studio.order(another, printOf(u"B"_s));
        QCoreApplication::processEvents();
    }
    // Its end has waited for the painting under way; what that posted is delivered now, were there anyone to take it.
    QCoreApplication::processEvents();
    QCOMPARE(viewer.taken + another.taken, 0);
}

QTEST_MAIN(CassetteStudioTest)
#include "CassetteStudioTest.moc"
