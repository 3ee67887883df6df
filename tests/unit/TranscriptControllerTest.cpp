#include "TranscriptController.h"
#include "Rows.h"
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
    void init()
    {
        m_hub = std::make_unique<StoreFixture>();
        m_screen = std::make_unique<TranscriptController>();
        Tape tape;
        tape.id = 9007199254740993; // larger than the integers that a double represents exactly
        tape.hasTranscript = true;
        m_screen->setProperty("hub", QVariant::fromValue<HubAPI*>(&m_hub->hub));
        m_screen->setTape(tape);
    }

    void cleanup()
    {
        m_screen.reset();
        m_hub.reset();
        QCoreApplication::processEvents();
    }

    void transcriptIsFetchedByIdOfTapeAndReflowed()
    {
        QCOMPARE(m_hub->http.count(), 0);
        m_screen->appear();
        QCOMPARE(m_screen->state(), TranscriptController::Loading);
        QCOMPARE(m_hub->http.count(), 1);
        QCOMPARE(m_hub->http.request(0).url, QUrl(u"https://hub.example"_s + m_path));
        const QString line = u"twenty characters it"_s;
        answer(record(u" \n\t"_s + (line + u'\n').repeated(30) + u"\u2029 "_s));
        QTRY_COMPARE(m_screen->state(), TranscriptController::Ready);
        QCOMPARE(m_screen->passages()->passages(),
                 (QStringList{QStringList(21, line).join(u' '), QStringList(9, line).join(u' ')}));
        QCOMPARE(m_screen->message(), QString());
    }

    void tapeWithoutTranscriptSendsNothing()
    {
        Tape tape = m_screen->tape();
        tape.hasTranscript = false;
        m_screen->setTape(tape);
        m_screen->appear();
        QCOMPARE(m_screen->state(), TranscriptController::Empty);
        QCOMPARE(m_screen->message(), m_none);
        QCOMPARE(m_hub->http.count(), 0);
    }

    void missingTranscriptShowsMessage_data()
    {
        rows<QByteArray>({"body"}, {{"not archived yet", record(u"Words."_s, u"pending"_s)},
                                    {"with a capital letter", record(u"Words."_s, u"Archived"_s)},
                                    {"with a space", record(u"Words."_s, u"archived "_s)},
                                    {"empty", record({})},
                                    {"blank", record(u" \n\t\u00A0\u2028\r\n"_s)},
                                    {"an empty record", "{}"}});
    }

    void missingTranscriptShowsMessage()
    {
        QFETCH(const QByteArray, body);
        m_screen->appear();
        answer(body);
        QTRY_COMPARE(m_screen->state(), TranscriptController::Empty);
        QCOMPARE(m_screen->message(), m_none);
        QCOMPARE(m_screen->wordCount(), QString());
        QCOMPARE(m_screen->passages()->rowCount(), 0);
    }

    void failureShowsHubErrorTextWithoutRetry_data()
    {
        rows<int, QString>({"status", "reason"}, {{"error status", 503, HubError::http(503).errorDescription()},
                                                  {"unreachable", 0, u"The network is down."_s}});
    }

    void failureShowsHubErrorTextWithoutRetry()
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
        m_hub->waitForDecoding();
        QCOMPARE(m_hub->http.count(), 2); // the transcript's request and that of waitForDecoding()
    }

    void emptyReasonLeavesSentence()
    {
        QCOMPARE(TranscriptTexts::outOfReach({}), u"Couldn't reach the transcript. "_s);
    }

    void wordCountIsThatOfHub_data()
    {
        rows<qint64, QString>({"words", "line"}, {{"none", 0, {}},
                                                  {"one", 1, u"1 words"_s},
                                                  {"three digits", 999, u"999 words"_s},
                                                  {"four digits", 1000, u"1,000 words"_s},
                                                  {"five digits", 12408, u"12,408 words"_s}});
    }

    void wordCountIsThatOfHub()
    {
        QFETCH(const qint64, words);
        m_screen->appear();
        QCOMPARE(m_screen->wordCount(), QString());
        answer(record(u"Two words."_s, u"archived"_s, words));
        QTRY_COMPARE(m_screen->state(), TranscriptController::Ready);
        QTEST(m_screen->wordCount(), "line");
        QCOMPARE(m_screen->passages()->rowCount(), 1);
    }

    void emptyCoverFieldIsNotInCaption_data()
    {
        rows<QString, QString, QString>({"body", "date", "caption"},
                                        {{"both", u"Comité d’urbanisme"_s, u"June 18, 2026"_s,
                                          u"THE SPOKEN RECORD · COMITÉ D’URBANISME · JUNE 18, 2026"_s},
                                         {"no date", u"City Council"_s, {}, u"THE SPOKEN RECORD · CITY COUNCIL"_s}});
    }

    void emptyCoverFieldIsNotInCaption()
    {
        QFETCH(const QString, body);
        QFETCH(const QString, date);
        VHSCover cover;
        cover.bodyName = body;
        cover.dateLabel = date;
        m_screen->setCover(cover);
        QTEST(m_screen->caption(), "caption");
    }

    void answerAfterDisappearingIsIgnored()
    {
        m_screen->appear();
        QSignalSpy changed(m_screen.get(), &TranscriptController::stateChanged);
        answer(record(u"Words."_s));
        m_screen->disappear();
        m_hub->waitForDecoding();
        QCOMPARE(changed.count(), 0);
        QCOMPARE(m_screen->state(), TranscriptController::Loading);
    }

    void disappearingCancelsRequest()
    {
        m_screen->appear();
        QVERIFY(m_hub->http.isWaiting(0));
        m_screen->disappear();
        QVERIFY(m_hub->http.wasCancelled(0));
    }

    void screenMayBeDestroyedWhileFetching()
    {
        m_screen->appear();
        m_screen.reset();
        QVERIFY(m_hub->http.wasCancelled(0));
        m_hub->waitForDecoding();
    }

    void screenMayBeDestroyedWhileReflowing()
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
        QCOMPARE(m_screen->state(), TranscriptController::Loading);
        mayReflow.release();
        // The worker ends first, and its result is delivered after the screen is destroyed.
        m_screen.reset();
        QCoreApplication::processEvents();
    }

    void textWithoutLineBreaksIsShownInParts()
    {
        m_screen->appear();
        const QString text = u"Words without a line break. "_s.repeated(2000).trimmed();
        answer(record(text));
        QTRY_COMPARE(m_screen->state(), TranscriptController::Ready);
        QCOMPARE(m_screen->passages()->passages().join(QString()), text);
        for (const QString& passage : m_screen->passages()->passages())
            QVERIFY(passage.size() <= 20'000);
    }

private:
    static QByteArray record(const QString& text, const QString& status = u"archived"_s, qint64 words = 3)
    {
        return QJsonDocument(QJsonObject{{u"status"_s, status}, {u"text"_s, text}, {u"words"_s, words}}).toJson();
    }
    void answer(const QByteArray& body, int status = 200) { m_hub->answer(m_path, body, status); }

    std::unique_ptr<StoreFixture> m_hub;
    std::unique_ptr<TranscriptController> m_screen;
    const QString m_path = u"/api/meetings/9007199254740993/transcript"_s;
    const QString m_none = u"No transcript has been harvested for this tape yet."_s;
};

QUILLMERE_TEST(TranscriptControllerTest, QCoreApplication)

} // namespace quillmere

#include "TranscriptControllerTest.moc"
