#include "CassetteStudio.h"
#include "Rows.h"
#include "SampleCover.h"
#include "TestMain.h"

#include <QTest>

#include <deque>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr QSize pixels(64, 100);

CassetteRenderer rendererFor(const QString& title)
{
    CassetteRenderer print{CassetteRenderer::Form::ShelfCard, sampleCover(), 250, pixels};
    print.cover.title = title;
    return print;
}

/** Stores the delivered picture and counts deliveries; appends its name to the log at each. */
class Viewer final : public CassetteStudio::Client
{
public:
    explicit Viewer(double distance = 0, QString name = {}, QStringList* log = nullptr)
        : m_distance(distance), m_name(std::move(name)), m_log(log)
    {}

    double distance() const override { return m_distance; }
    void setPicture(const CassetteStudio::Picture& picture) override
    {
        shown = picture;
        ++deliveries;
        if (m_log)
            m_log->append(m_name);
    }

    CassetteStudio::Picture shown;
    int deliveries = 0;

private:
    double m_distance;
    QString m_name;
    QStringList* m_log;
};

} // namespace

/** Tests which picture is delivered to whom, when, and how long it is kept. */
class CassetteStudioTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void laterDeliveredPictureEqualsOnePaintedOnScreenThread()
    {
        CassetteStudio studio;
        Viewer viewer;
        const CassetteRenderer renderer = rendererFor(u"市議會 Harbor Day \U0001F6A2"_s);
        QVERIFY(!studio.request(viewer, renderer));
        QCOMPARE(viewer.deliveries, 0);
        QTRY_COMPARE(viewer.deliveries, 1);
        QCOMPARE(viewer.shown->image, renderer.paint().image);
        QCOMPARE(viewer.shown->image.format(), QImage::Format_ARGB32_Premultiplied);
    }

    void nearestPictureIsPaintedFirst()
    {
        CassetteStudio studio;
        QStringList log;
        Viewer far(900, u"far"_s, &log);
        Viewer near(100, u"near"_s, &log);
        Viewer visible(0, u"visible"_s, &log);
        studio.request(far, rendererFor(u"far"_s));
        studio.request(near, rendererFor(u"near"_s));
        studio.request(visible, rendererFor(u"visible"_s));
        QTRY_COMPARE(log, QStringList({u"visible"_s, u"near"_s, u"far"_s}));
    }

    void firstRequestIsPaintedFirstAtEqualDistance()
    {
        CassetteStudio studio;
        QStringList log;
        std::deque<Viewer> viewers;
        QStringList names;
        for (int i = 0; i < 10; ++i) {
            names << QString::number(i);
            studio.request(viewers.emplace_back(0, names.last(), &log), rendererFor(names.last()));
        }
        QTRY_COMPARE(log, names);
    }

    void cancelledRequestIsNotDelivered()
    {
        CassetteStudio studio;
        Viewer cancelled;
        Viewer stays;
        studio.request(cancelled, rendererFor(u"cancelled"_s));
        studio.request(stays, rendererFor(u"stays"_s));
        studio.cancel(cancelled);
        waitUntilPainted(studio);
        QCOMPARE(stays.deliveries, 1);
        QCOMPARE(cancelled.deliveries, 0);
        QCOMPARE(studio.cachedBytes(), 2 * pictureSize());
    }

    void changedRequestDeliversOnlyNewPicture_data()
    {
        rows<bool>({"isInProgress"}, {{"before it is painted", false}, {"while it is painted", true}});
    }

    void changedRequestDeliversOnlyNewPicture()
    {
        QFETCH(bool, isInProgress);
        CassetteStudio studio;
        Viewer viewer;
        studio.request(viewer, rendererFor(u"old"_s));
        if (isInProgress)
            QCoreApplication::processEvents();
        studio.request(viewer, rendererFor(u"new"_s));
        waitUntilPainted(studio);
        QCOMPARE(viewer.deliveries, 1);
        QCOMPARE(viewer.shown->image, rendererFor(u"new"_s).paint().image);
    }

    void equalRequestsShareOnePicture()
    {
        CassetteStudio studio;
        Viewer first;
        Viewer second;
        studio.request(first, rendererFor(u"A"_s));
        studio.request(second, rendererFor(u"A"_s));
        QTRY_VERIFY(first.shown && second.shown);
        QCOMPARE(first.shown, second.shown);
        QCOMPARE(studio.cachedBytes(), pictureSize());
    }

    void onlyEqualRequestIsServedFromCache()
    {
        CassetteStudio studio;
        Viewer viewer;
        paintOne(studio, viewer, u"A"_s);
        Viewer another;
        QCOMPARE(studio.request(another, rendererFor(u"A"_s)), viewer.shown);
        CassetteRenderer front = rendererFor(u"A"_s);
        front.form = CassetteRenderer::Form::BoxFront;
        CassetteRenderer larger = rendererFor(u"A"_s);
        larger.pixels += QSize(1, 0);
        CassetteRenderer wider = rendererFor(u"A"_s);
        wider.width = 230;
        CassetteRenderer red = rendererFor(u"A"_s);
        red.cover.hue = 4;
        for (const CassetteRenderer& other : {front, larger, wider, red}) {
            QVERIFY(!studio.request(another, other));
            studio.cancel(another);
        }
    }

    void leastRecentlyUsedPictureIsRemovedFirst()
    {
        CassetteStudio studio;
        studio.setBudget(3 * pictureSize());
        for (const QString& title : {u"A"_s, u"B"_s, u"C"_s}) {
            Viewer viewer;
            paintOne(studio, viewer, title);
        }
        Viewer viewer;
        QVERIFY(studio.request(viewer, rendererFor(u"A"_s)));
        paintOne(studio, viewer, u"D"_s);
        QCOMPARE(studio.cachedBytes(), 3 * pictureSize());
        QVERIFY(studio.request(viewer, rendererFor(u"A"_s)));
        QVERIFY(studio.request(viewer, rendererFor(u"C"_s)));
        QVERIFY(!studio.request(viewer, rendererFor(u"B"_s)));
        studio.cancel(viewer);
    }

    void shownPictureIsNeverRemoved()
    {
        CassetteStudio studio;
        studio.setBudget(2 * pictureSize());
        std::deque<Viewer> viewers;
        for (int i = 0; i < 5; ++i)
            paintOne(studio, viewers.emplace_back(), QString::number(i));
        QCOMPARE(studio.cachedBytes(), 5 * pictureSize());
        Viewer another;
        for (int i = 0; i < 5; ++i)
            QCOMPARE(studio.request(another, rendererFor(QString::number(i))), viewers[size_t(i)].shown);
        viewers.clear();
        studio.setBudget(2 * pictureSize());
        QCOMPARE(studio.cachedBytes(), 2 * pictureSize());
    }

    void pictureIsNotDeliveredWithoutMemory()
    {
        CassetteStudio studio;
        Viewer viewer;
        CassetteRenderer huge = rendererFor(u"A"_s);
        huge.pixels = QSize(1, 1) * 1'000'000'000;
        studio.request(viewer, huge);
        Viewer after;
        studio.request(after, rendererFor(u"B"_s));
        QTRY_VERIFY(after.shown);
        QCOMPARE(viewer.deliveries, 0);
        QCOMPARE(studio.cachedBytes(), pictureSize());
    }

    void tallWindowHasLargerBudget()
    {
        QCOMPARE(CassetteStudio::budgetFor(720), 28LL * 1024 * 1024);
        QCOMPARE(CassetteStudio::budgetFor(1080), 28LL * 1024 * 1024);
        QCOMPARE(CassetteStudio::budgetFor(1081), 160LL * 1024 * 1024);
        QCOMPARE(CassetteStudio::budgetFor(2160), 160LL * 1024 * 1024);
    }

    void sharedStudioIsDestroyedWithLastUser()
    {
        auto first = CassetteStudio::shared();
        auto second = CassetteStudio::shared();
        QCOMPARE(first, second);
        const std::weak_ptr<CassetteStudio> watched = first;
        first.reset();
        QVERIFY(!watched.expired());
        second.reset();
        QVERIFY(watched.expired());
        QCOMPARE(CassetteStudio::shared()->cachedBytes(), 0);
    }

    void destroyedStudioDeliversNothing()
    {
        Viewer viewer;
        Viewer another;
        {
            CassetteStudio studio;
            studio.request(viewer, rendererFor(u"A"_s));
            studio.request(another, rendererFor(u"B"_s));
            QCoreApplication::processEvents();
        }
        // The destructor has waited for the painting in progress. An event that it posted is processed here and must
        // deliver nothing.
        QCoreApplication::processEvents();
        QCOMPARE(viewer.deliveries + another.deliveries, 0);
    }

private:
    /** The size of one picture in bytes; all pictures here have the same size. */
    static qint64 pictureSize() { return rendererFor({}).paint().image.sizeInBytes(); }

    /** Requests a picture and waits for it. */
    static void paintOne(CassetteStudio& studio, Viewer& viewer, const QString& title)
    {
        viewer.shown = studio.request(viewer, rendererFor(title));
        QTRY_VERIFY(viewer.shown);
    }

    /** Waits until all earlier requests are painted. The studio's thread paints them one after the other. */
    static void waitUntilPainted(CassetteStudio& studio)
    {
        Viewer last(1e9);
        paintOne(studio, last, u"the last of all"_s);
    }
};

QUILLMERE_TEST(CassetteStudioTest, QGuiApplication)

} // namespace quillmere

#include "CassetteStudioTest.moc"
