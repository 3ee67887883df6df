#include "TranscriptController.h"
#include "StoreFixture.h"
#include "TestMain.h"
#include "TranscriptTexts.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSemaphore>
#include <QSignalSpy>

namespace quillmere {

/** Tests what the transcript's screen shows for each answer of the hub, and when. */
class TranscriptControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void transcriptIsFetchedByIdOfTape();
    void tapeWithoutTranscriptSendsNothing();
    void archivedTranscriptIsReflowed();
    void missingTranscriptShowsMessage_data();
    void missingTranscriptShowsMessage();
    void failureShowsHubErrorText_data();
    void failureShowsHubErrorText();
    void emptyReasonLeavesSentence();
    void wordCountIsThatOfHub_data();
    void wordCountIsThatOfHub();
    void emptyCoverFieldIsNotInCaption_data();
    void emptyCoverFieldIsNotInCaption();
    void answerAfterDisappearingIsIgnored();
    void disappearingCancelsRequest();
    void screenMayBeDestroyedWhileFetching();
    void screenMayBeDestroyedWhileReflowing();
    void textWithoutLineBreaksIsShownInParts();
    void nothingIsRetried();

private:
    static QByteArray record(const QString& text, const QString& status = u"archived"_s, qint64 words = 3)
    {
        return QJsonDocument(QJsonObject{{u"status"_s, status}, {u"text"_s, text}, {u"words"_s, words}}).toJson();
    }
    void answer(const QByteArray& body, int status = 200) { m_hub->answer(m_path, body, status); }
    bool isFinished() const { return m_screen->state() != TranscriptController::Loading; }

    std::unique_ptr<StoreFixture> m_hub;
    std::unique_ptr<TranscriptController> m_screen;
    const QString m_path = u"/api/meetings/9007199254740993/transcript"_s;
    const QString m_none = u"No transcript has been harvested for this tape yet."_s;
};

void TranscriptControllerTest::init()
{
    m_hub = std::make_unique<StoreFixture>();
    m_screen = std::make_unique<TranscriptController>();
    Tape tape;
    tape.id = 9007199254740993; // larger than the integers that a double represents exactly
    tape.hasTranscript = true;
    m_screen->setProperty("hub", QVariant::fromValue<HubAPI*>(&m_hub->hub));
    m_screen->setTape(tape);
}

void TranscriptControllerTest::cleanup()
{
    m_screen.reset();
    m_hub.reset();
    QCoreApplication::processEvents();
}

void TranscriptControllerTest::transcriptIsFetchedByIdOfTape()
{
    QCOMPARE(m_hub->http.count(), 0);
    m_screen->appear();
    QCOMPARE(m_screen->state(), TranscriptController::Loading);
    QCOMPARE(m_hub->http.count(), 1);
    QCOMPARE(m_hub->http.request(0).url, QUrl(u"https://hub.example"_s + m_path));
}

void TranscriptControllerTest::tapeWithoutTranscriptSendsNothing()
{
    Tape tape = m_screen->tape();
    tape.hasTranscript = false;
    m_screen->setTape(tape);
    m_screen->appear();
    QCOMPARE(m_screen->state(), TranscriptController::Empty);
    QCOMPARE(m_screen->message(), m_none);
    QCOMPARE(m_hub->http.count(), 0);
}

void TranscriptControllerTest::archivedTranscriptIsReflowed()
{
    m_screen->appear();
    const QString line = u"twenty characters it"_s;
    answer(record(u" \n\t"_s + (line + u'\n').repeated(30) + u"\u2029 "_s));
    QTRY_COMPARE(m_screen->state(), TranscriptController::Ready);
    QCOMPARE(m_screen->passages()->passages(),
             (QStringList{QStringList(21, line).join(u' '), QStringList(9, line).join(u' ')}));
    QCOMPARE(m_screen->message(), QString());
}

void TranscriptControllerTest::missingTranscriptShowsMessage_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("not archived yet") << record(u"Words."_s, u"pending"_s);
    QTest::newRow("with a capital letter") << record(u"Words."_s, u"Archived"_s);
    QTest::newRow("with a space") << record(u"Words."_s, u"archived "_s);
    QTest::newRow("empty") << record({});
    QTest::newRow("blank") << record(u" \n\t\u00A0\u2028\r\n"_s);
    QTest::newRow("an empty record") << QByteArray("{}");
}

void TranscriptControllerTest::missingTranscriptShowsMessage()
{
    QFETCH(const QByteArray, body);
    m_screen->appear();
    answer(body);
    QTRY_COMPARE(m_screen->state(), TranscriptController::Empty);
    QCOMPARE(m_screen->message(), m_none);
    QCOMPARE(m_screen->wordCount(), QString());
    QCOMPARE(m_screen->passages()->rowCount(), 0);
}

void TranscriptControllerTest::failureShowsHubErrorText_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("reason");
    QTest::newRow("error status") << 503 << HubError::http(503).errorDescription();
    QTest::newRow("unreachable") << 0 << u"The network is down."_s;
}

void TranscriptControllerTest::failureShowsHubErrorText()
{
    QFETCH(const int, status);
    QFETCH(const QString, reason);
    m_screen->appear();
    if (status == 0)
        m_hub->fail(m_path, reason);
    else
        answer({}, status);
    QTRY_COMPARE(m_screen->state(), TranscriptController::Empty);
    QCOMPARE(m_screen->message(), u"Couldn't reach the transcript. "_s + reason);
}

void TranscriptControllerTest::emptyReasonLeavesSentence()
{
    QCOMPARE(TranscriptTexts::outOfReach({}), u"Couldn't reach the transcript. "_s);
}

void TranscriptControllerTest::wordCountIsThatOfHub_data()
{
    QTest::addColumn<qint64>("words");
    QTest::addColumn<QString>("line");
    QTest::newRow("none") << qint64(0) << QString();
    QTest::newRow("one") << qint64(1) << u"1 words"_s;
    QTest::newRow("three digits") << qint64(999) << u"999 words"_s;
    QTest::newRow("four digits") << qint64(1000) << u"1,000 words"_s;
    QTest::newRow("five digits") << qint64(12408) << u"12,408 words"_s;
}

void TranscriptControllerTest::wordCountIsThatOfHub()
{
    QFETCH(const qint64, words);
    m_screen->appear();
    QCOMPARE(m_screen->wordCount(), QString());
    answer(record(u"Two words."_s, u"archived"_s, words));
    QTRY_COMPARE(m_screen->state(), TranscriptController::Ready);
    QTEST(m_screen->wordCount(), "line");
    QCOMPARE(m_screen->passages()->rowCount(), 1);
}

void TranscriptControllerTest::emptyCoverFieldIsNotInCaption_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("caption");
    QTest::newRow("both") << u"Comité d’urbanisme"_s << u"June 18, 2026"_s
                          << u"THE SPOKEN RECORD · COMITÉ D’URBANISME · JUNE 18, 2026"_s;
    QTest::newRow("no date") << u"City Council"_s << QString() << u"THE SPOKEN RECORD · CITY COUNCIL"_s;
}

void TranscriptControllerTest::emptyCoverFieldIsNotInCaption()
{
    QFETCH(const QString, body);
    QFETCH(const QString, date);
    VHSCover cover;
    cover.bodyName = body;
    cover.dateLabel = date;
    m_screen->setCover(cover);
    QTEST(m_screen->caption(), "caption");
}

void TranscriptControllerTest::answerAfterDisappearingIsIgnored()
{
    m_screen->appear();
    QSignalSpy changed(m_screen.get(), &TranscriptController::stateChanged);
    answer(record(u"Words."_s));
    m_screen->disappear();
    m_hub->waitForDecoding();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_screen->state(), TranscriptController::Loading);
}

void TranscriptControllerTest::disappearingCancelsRequest()
{
    m_screen->appear();
    QVERIFY(m_hub->http.isWaiting(0));
    m_screen->disappear();
    QVERIFY(m_hub->http.wasCancelled(0));
}

void TranscriptControllerTest::screenMayBeDestroyedWhileFetching()
{
    m_screen->appear();
    m_screen.reset();
    QVERIFY(m_hub->http.wasCancelled(0));
    m_hub->waitForDecoding();
}

void TranscriptControllerTest::screenMayBeDestroyedWhileReflowing()
{
    QSemaphore mayReflow;
    m_screen->reflowWorker().run([&mayReflow] {
        mayReflow.acquire();
        return true;
    });
    m_screen->appear();
    answer(record(u"Words."_s));
    // The request of waitForDecoding() is decoded after the transcript. By then the reflow waits for the worker.
    m_hub->waitForDecoding();
    QVERIFY(!isFinished());
    mayReflow.release();
    // The worker ends first, and its result is delivered after the screen is destroyed.
    m_screen.reset();
    QCoreApplication::processEvents();
}

void TranscriptControllerTest::textWithoutLineBreaksIsShownInParts()
{
    m_screen->appear();
    const QString text = u"Words without a line break. "_s.repeated(2000).trimmed();
    answer(record(text));
    QTRY_COMPARE(m_screen->state(), TranscriptController::Ready);
    QCOMPARE(m_screen->passages()->passages().join(QString()), text);
    for (const QString& passage : m_screen->passages()->passages())
        QVERIFY(passage.size() <= 20'000);
}

void TranscriptControllerTest::nothingIsRetried()
{
    m_screen->appear();
    answer({}, 503);
    QTRY_VERIFY(isFinished());
    m_hub->waitForDecoding();
    QCOMPARE(m_hub->http.count(), 2); // the transcript's request and that of waitForDecoding()
}

QUILLMERE_TEST(TranscriptControllerTest, QCoreApplication)

} // namespace quillmere

#include "TranscriptControllerTest.moc"
