#include "TapeDetailHouse.h"

/** Where things stand on a tape's screen, and how the focus walks them. */
class TapeDetailLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_house.reset(); }
    void theFirstButtonHasTheFocus_data();
    void theFirstButtonHasTheFocus();
    void leftAndRightWalkTheButtonsAndUpAndDownStay();
    void aPageThatFitsIsNotScrolled();
    void theColumnsStandWhereTheyShould();
    void nothingOverlaps_data();
    void nothingOverlaps();
    void lettersOfOtherFontsMoveNothing_data();
    void lettersOfOtherFontsMoveNothing();
    void aLongPageIsReadFromItsTopToItsEnd();
    void selectOnATextDoesNothing();
    void whatGrowsAboveTheFocusDoesNotPushItOutOfSight();
    void aButtonThatGoesGivesTheFocusToItsNeighbour();

private:
    void open(const Tape& tape, double resumePosition = 0)
    {
        m_house = std::make_unique<TapeDetailHouse>(tape, resumePosition);
    }

    std::unique_ptr<TapeDetailHouse> m_house;
};

void TapeDetailLayoutTest::theFirstButtonHasTheFocus_data()
{
    QTest::addColumn<Tape>("tape");
    QTest::addColumn<double>("position");
    QTest::addColumn<QString>("button");
    QTest::newRow("new to the viewer") << TapeDetailHouse::rich() << 0.0 << u"Push it in"_s;
    QTest::newRow("left part-way") << TapeDetailHouse::rich() << 125.0 << u"Resume at 2:05"_s;
    QTest::newRow("on a long page") << TapeDetailHouse::endless() << 0.0 << u"Push it in"_s;
}

void TapeDetailLayoutTest::theFirstButtonHasTheFocus()
{
    QFETCH(const Tape, tape);
    QFETCH(const double, position);
    open(tape, position);
    QTEST(m_house->focused(), "button");
    const QRectF area = Stage::area(m_house->view->focused());
    QVERIFY(area.top() >= 0 && area.bottom() <= 1080);
}

void TapeDetailLayoutTest::leftAndRightWalkTheButtonsAndUpAndDownStay()
{
    open(TapeDetailHouse::rich(), 125);
    m_house->stage.press(Qt::Key_Left);
    QCOMPARE(m_house->focused(), u"Resume at 2:05"_s);
    m_house->stage.press(Qt::Key_Right);
    QCOMPARE(m_house->focused(), u"Start over"_s);
    m_house->stage.press(Qt::Key_Right);
    QCOMPARE(m_house->focused(), u"Read the transcript"_s);
    for (const int arrow : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
        m_house->stage.press(arrow);
        QCOMPARE(m_house->focused(), u"Read the transcript"_s);
    }
}

void TapeDetailLayoutTest::aPageThatFitsIsNotScrolled()
{
    open(TapeDetailHouse::rich(), 125);
    QVERIFY(m_house->page->contentExtent() <= m_house->page->height());
    QCOMPARE(m_house->page->position(), 0.0);
}

void TapeDetailLayoutTest::theColumnsStandWhereTheyShould()
{
    open(TapeDetailHouse::rich());
    const QQuickItem* const box = Stage::first(m_house->view, "VHSBoxFront");
    QCOMPARE(m_house->place(box), QRectF(80, 60, 420, 656.25));
    QCOMPARE(m_house->place(Stage::texts(m_house->view).constFirst()).topLeft(), QPointF(560, 60));
    for (const QQuickItem* text : Stage::texts(m_house->view))
        QVERIFY(m_house->place(text).left() >= 560 && m_house->place(text).right() <= 1840);
}

void TapeDetailLayoutTest::nothingOverlaps_data()
{
    QTest::addColumn<Tape>("tape");
    QTest::newRow("ordinary") << TapeDetailHouse::ordinary();
    QTest::newRow("with everything") << TapeDetailHouse::rich();
    QTest::newRow("long") << TapeDetailHouse::endless();
    Tape unbroken = TapeDetailHouse::endless();
    unbroken.title = QString(3000, u'M');
    unbroken.body->name = QString(3000, u'W');
    QTest::newRow("without a space") << unbroken;
    Tape foreign = TapeDetailHouse::rich();
    foreign.title = u"港务委员会关于新渡轮码头的公开会议 "_s.repeated(5);
    foreign.body->name = u"مجلس المدينة "_s.repeated(30);
    foreign.location = u"役場 \U0001F6A2"_s;
    QTest::newRow("other scripts") << foreign;
}

void TapeDetailLayoutTest::nothingOverlaps()
{
    QFETCH(const Tape, tape);
    open(tape, 125);
    const auto texts = Stage::texts(m_house->view);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QRectF area = m_house->place(texts.at(i));
        QVERIFY(area.bottom() <= m_house->page->contentExtent() - 59);
        // What is painted must be in the item, or the items' places would prove nothing.
        QVERIFY(texts.at(i)->property("contentHeight").toReal() <= area.height() + 7);
        for (qsizetype j = 0; j < i; ++j) {
            const QRectF common = area.intersected(m_house->place(texts.at(j)));
            QVERIFY2(common.width() < 0.5 || common.height() < 0.5,
                     qPrintable(m_house->shown().at(i).left(40) + u" / "_s + m_house->shown().at(j).left(40)));
        }
    }
}

void TapeDetailLayoutTest::lettersOfOtherFontsMoveNothing_data()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("Arabic") << u"مجلس المدينة"_s;
    QTest::newRow("Devanagari") << u"नगर परिषद"_s;
    QTest::newRow("Thai") << u"สภาเมือง ที่นี่"_s;
    QTest::newRow("Chinese") << u"市議會"_s;
    QTest::newRow("emoji") << u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s;
    QTest::newRow("stacked marks") << u"Z\u0313\u0301\u0302\u0303"_s;
}

void TapeDetailLayoutTest::lettersOfOtherFontsMoveNothing()
{
    QFETCH(const QString, words);
    const auto placesOf = [this](const QString& name) {
        Tape tape = TapeDetailHouse::rich();
        tape.title = tape.body->name = tape.market.name = tape.location = name;
        tape.documents.resize(1);
        tape.documents[0].title = name;
        open(tape);
        QStringList places;
        const auto texts = Stage::texts(m_house->view);
        for (const QQuickItem* text : texts) {
            const QRectF place = m_house->place(text);
            places << u"from %1 to %2, on %3"_s.arg(place.top())
                          .arg(place.bottom())
                          .arg(place.top() + text->baselineOffset());
        }
        for (const QQuickItem* row : Stage::all(m_house->view, "FactRow"))
            places << u"a row of %1"_s.arg(row->height());
        return places;
    };
    const QStringList latin = placesOf(u"Council"_s);
    QCOMPARE(latin.count(u"a row of 30"_s), 7);
    QCOMPARE(placesOf(words), latin);
}

void TapeDetailLayoutTest::aLongPageIsReadFromItsTopToItsEnd()
{
    open(TapeDetailHouse::endless());
    const ScrollArea& page = *m_house->page;
    const qreal end = page.contentExtent() - page.viewExtent();
    QVERIFY(end > page.viewExtent());
    for (int presses = 0; presses < 20; ++presses)
        m_house->stage.press(Qt::Key_Up);
    QCOMPARE(page.aim(), 0.0);
    for (int presses = 0; presses < 20; ++presses) {
        const qreal before = page.aim();
        const QObject* const block = m_house->view->focused();
        m_house->stage.press(Qt::Key_Down);
        // The last line that was read is still there to read on from; the next text begins at its own first line.
        const bool readsOn = m_house->view->focused() == block;
        QVERIFY(page.aim() - before < page.viewExtent() - (readsOn ? 40 : 0));
    }
    QCOMPARE(qRound(page.aim()), qRound(end));
    m_house->stage.settle();
    QCOMPARE(page.position(), page.aim());
}

void TapeDetailLayoutTest::selectOnATextDoesNothing()
{
    open(TapeDetailHouse::endless());
    m_house->stage.press(Qt::Key_Down);
    QVERIFY(m_house->focused() != u"Push it in"_s);
    m_house->stage.press(Qt::Key_Select);
    QVERIFY(!m_house->controller->isPlaying());
    QVERIFY(!m_house->controller->isReadingTranscript());
}

void TapeDetailLayoutTest::whatGrowsAboveTheFocusDoesNotPushItOutOfSight()
{
    open(TapeDetailHouse::ordinary());
    m_house->answer(R"({"id": 42, "title": ")" + QByteArray("Very long ").repeated(300) + R"("})");
    QTRY_VERIFY(m_house->page->contentExtent() > 2000);
    m_house->stage.settle();
    QCOMPARE(m_house->focused(), u"Push it in"_s);
    const QRectF area = Stage::area(m_house->view->focused());
    QVERIFY(area.top() >= 0 && area.bottom() <= 1080);
}

void TapeDetailLayoutTest::aButtonThatGoesGivesTheFocusToItsNeighbour()
{
    open(TapeDetailHouse::rich());
    m_house->stage.press(Qt::Key_Right);
    QCOMPARE(m_house->focused(), u"Read the transcript"_s);
    m_house->answer(R"({"id": 42, "has_transcript": false})");
    QTRY_COMPARE(m_house->focused(), u"Push it in"_s);
}

QTEST_MAIN(TapeDetailLayoutTest)
#include "TapeDetailLayoutTest.moc"
