#include "Rows.h"
#include "TapeDetailFixture.h"
#include "TestMain.h"

namespace quillmere {

/** The screen of a tape: layout and focus movement. */
class TapeDetailLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_fixture.reset(); }

    void firstButtonHasFocus_data()
    {
        rows<Tape, double, QString>({"tape", "position", "button"},
                                    {{"without a resume position", TapeDetailFixture::rich(), 0.0, u"Push it in"_s},
                                     {"with a resume position", TapeDetailFixture::rich(), 125.0, u"Resume at 2:05"_s},
                                     {"long page", TapeDetailFixture::endless(), 0.0, u"Push it in"_s}});
    }

    void firstButtonHasFocus()
    {
        QFETCH(const Tape, tape);
        QFETCH(const double, position);
        open(tape, position);
        QTEST(m_fixture->focusedName(), "button");
        const QRectF area = TestScreen::area(m_fixture->view->focused());
        QVERIFY(area.top() >= 0 && area.bottom() <= 1080);
    }

    void leftAndRightMoveFocusBetweenButtons()
    {
        open(TapeDetailFixture::rich(), 125);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Left), u"Resume at 2:05"_s);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right), u"Start over"_s);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right), u"Read the transcript"_s);
        for (const int arrow : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
            QCOMPARE(m_fixture->focusedAfter(arrow), u"Read the transcript"_s);
    }

    void pageThatFitsIsNotScrolled()
    {
        open(TapeDetailFixture::rich(), 125);
        QVERIFY(m_fixture->page->contentExtent() <= m_fixture->page->height());
        QCOMPARE(m_fixture->page->position(), 0.0);
    }

    void columnsHaveDesignedGeometry()
    {
        open(TapeDetailFixture::rich());
        const QQuickItem* const box = TestScreen::first(m_fixture->view, "VHSBoxFront");
        QCOMPARE(m_fixture->areaOnPage(box), QRectF(80, 60, 420, 656.25));
        QCOMPARE(m_fixture->areaOnPage(TestScreen::texts(m_fixture->view).constFirst()).topLeft(), QPointF(560, 60));
        for (const QQuickItem* text : TestScreen::texts(m_fixture->view))
            QVERIFY(m_fixture->areaOnPage(text).left() >= 560 && m_fixture->areaOnPage(text).right() <= 1840);
    }

    void textsDoNotOverlap_data()
    {
        Tape unbroken = TapeDetailFixture::endless();
        unbroken.title = QString(3000, u'M');
        unbroken.body->name = QString(3000, u'W');
        Tape foreign = TapeDetailFixture::rich();
        foreign.title = u"港务委员会关于新渡轮码头的公开会议 "_s.repeated(5);
        foreign.body->name = u"مجلس المدينة "_s.repeated(30);
        foreign.location = u"役場 \U0001F6A2"_s;
        rows<Tape>({"tape"}, {{"ordinary", TapeDetailFixture::ordinary()},
                              {"with all fields", TapeDetailFixture::rich()},
                              {"long", TapeDetailFixture::endless()},
                              {"one long word", unbroken},
                              {"other scripts", foreign}});
    }

    void textsDoNotOverlap()
    {
        QFETCH(const Tape, tape);
        open(tape, 125);
        const auto texts = TestScreen::texts(m_fixture->view);
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const QRectF area = m_fixture->areaOnPage(texts.at(i));
            QVERIFY(area.bottom() <= m_fixture->page->contentExtent() - 59);
            // The painted text must be inside its item; otherwise the items' geometry would prove nothing.
            QVERIFY(texts.at(i)->property("contentHeight").toReal() <= area.height() + 7);
            for (qsizetype j = 0; j < i; ++j) {
                const QRectF common = area.intersected(m_fixture->areaOnPage(texts.at(j)));
                QVERIFY2(common.width() < 0.5 || common.height() < 0.5,
                         qPrintable(m_fixture->shown().at(i).left(40) + u" / "_s + m_fixture->shown().at(j).left(40)));
            }
        }
    }

    void fallbackFontsDoNotChangeLayout_data()
    {
        rows<QString>({"words"}, {{"Arabic", u"مجلس المدينة"_s},
                                  {"Devanagari", u"नगर परिषद"_s},
                                  {"Thai", u"สภาเมือง ที่นี่"_s},
                                  {"Chinese", u"市議會"_s},
                                  {"emoji", u"\U0001F469\U0001F3FD\u200D\u2696\uFE0F"_s},
                                  {"stacked marks", u"Z\u0313\u0301\u0302\u0303"_s}});
    }

    void fallbackFontsDoNotChangeLayout()
    {
        QFETCH(const QString, words);
        const auto geometryOf = [this](const QString& name) {
            Tape tape = TapeDetailFixture::rich();
            tape.title = tape.body->name = tape.market.name = tape.location = name;
            tape.documents.resize(1);
            tape.documents[0].title = name;
            open(tape);
            QStringList lines;
            const auto texts = TestScreen::texts(m_fixture->view);
            for (const QQuickItem* text : texts) {
                const QRectF area = m_fixture->areaOnPage(text);
                lines << u"from %1 to %2, on %3"_s.arg(area.top())
                             .arg(area.bottom())
                             .arg(area.top() + text->baselineOffset());
            }
            for (const QQuickItem* row : TestScreen::all(m_fixture->view, "FactRow"))
                lines << u"a row of %1"_s.arg(row->height());
            return lines;
        };
        const QStringList latin = geometryOf(u"Council"_s);
        QCOMPARE(latin.count(u"a row of 30"_s), 7);
        QCOMPARE(geometryOf(words), latin);
    }

    void arrowsScrollLongPageFromTopToEnd()
    {
        open(TapeDetailFixture::endless());
        const ScrollArea& page = *m_fixture->page;
        const qreal end = page.contentExtent() - page.viewExtent();
        QVERIFY(end > page.viewExtent());
        m_fixture->press(Qt::Key_Up, 20);
        QCOMPARE(page.targetPosition(), 0.0);
        for (int presses = 0; presses < 20; ++presses) {
            const qreal before = page.targetPosition();
            const QObject* const block = m_fixture->view->focused();
            m_fixture->press(Qt::Key_Down);
            // While one text is scrolled, its last visible line stays visible; the next text begins at its first line.
            const bool isSameText = m_fixture->view->focused() == block;
            QVERIFY(page.targetPosition() - before < page.viewExtent() - (isSameText ? 40 : 0));
        }
        QCOMPARE(qRound(page.targetPosition()), qRound(end));
        m_fixture->waitUntilIdle();
        QCOMPARE(page.position(), page.targetPosition());
    }

    void selectOnTextDoesNothing()
    {
        open(TapeDetailFixture::endless());
        QVERIFY(m_fixture->focusedAfter(Qt::Key_Down) != u"Push it in"_s);
        m_fixture->press(Qt::Key_Select);
        QVERIFY(!m_fixture->controller->isPlaying());
        QVERIFY(!m_fixture->controller->isReadingTranscript());
    }

    void focusedButtonStaysVisibleWhenTextAboveGrows()
    {
        open(TapeDetailFixture::ordinary());
        m_fixture->answer(R"({"id": 42, "title": ")" + QByteArray("Very long ").repeated(300) + R"("})");
        QTRY_VERIFY(m_fixture->page->contentExtent() > 2000);
        m_fixture->waitUntilIdle();
        QCOMPARE(m_fixture->focusedName(), u"Push it in"_s);
        const QRectF area = TestScreen::area(m_fixture->view->focused());
        QVERIFY(area.top() >= 0 && area.bottom() <= 1080);
    }

    void focusMovesToNeighbourWhenButtonDisappears()
    {
        open(TapeDetailFixture::rich());
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right), u"Read the transcript"_s);
        m_fixture->answer(R"({"id": 42, "has_transcript": false})");
        QTRY_COMPARE(m_fixture->focusedName(), u"Push it in"_s);
    }

private:
    void open(const Tape& tape, double resumePosition = 0)
    {
        m_fixture = std::make_unique<TapeDetailFixture>(tape, resumePosition);
    }

    std::unique_ptr<TapeDetailFixture> m_fixture;
};

QUILLMERE_TEST(TapeDetailLayoutTest, QGuiApplication)

} // namespace quillmere

#include "TapeDetailLayoutTest.moc"
