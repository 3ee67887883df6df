#pragma once

#include "LazyStack.h"
#include "SampleCover.h"
#include "ScreenFixture.h"
#include "ScrollArea.h"
#include "TranscriptController.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

namespace quillmere {

/** The screen of a transcript. */
struct TranscriptFixture : ScreenFixture
{
    explicit TranscriptFixture(bool hasTranscript = true, const VHSCover& cover = sampleCover())
    {
        Tape tape;
        tape.id = 42;
        tape.hasTranscript = hasTranscript;
        view = openScreen("import Quillmere.Playback\nTranscriptView {}", {{u"hub"_s, QVariant::fromValue(&hub)},
                                                                           {u"tape"_s, QVariant::fromValue(tape)},
                                                                           {u"cover"_s, QVariant::fromValue(cover)}});
        page = static_cast<ScrollArea*>(item("ScrollArea"));
        column = static_cast<LazyStack*>(item("LazyStack"));
        controller = view->findChild<TranscriptController*>();
        dismissals = std::make_unique<QSignalSpy>(view, SIGNAL(dismissed()));
    }

    /** The screen of a transcript that has arrived. */
    explicit TranscriptFixture(const QString& text, const VHSCover& cover = sampleCover())
        : TranscriptFixture(true, cover)
    {
        read(text);
    }

    FocusScreen* view = nullptr;
    ScrollArea* page = nullptr;
    LazyStack* column = nullptr;
    TranscriptController* controller = nullptr;
    std::unique_ptr<QSignalSpy> dismissals;

    static QByteArray record(const QString& text, qint64 words = 12408, const QString& status = u"archived"_s)
    {
        return QJsonDocument(QJsonObject{{u"status"_s, status}, {u"text"_s, text}, {u"words"_s, words}}).toJson();
    }

    /** `count` paragraphs, each beginning with its number from 1. */
    static QString paragraphs(int count)
    {
        QString text;
        for (int i = 1; i <= count; ++i)
            text += u"%1. "_s.arg(i) + u"The clerk read the minutes. "_s.repeated(16) + u'\n';
        return text;
    }

    void answer(const QByteArray& body, int status = 200)
    {
        http.answer(http.waitingFor(u"/api/meetings/42/transcript"_s), status, body);
        QTRY_VERIFY(controller->state() != TranscriptController::Loading);
    }

    void read(const QString& text)
    {
        answer(record(text));
        waitUntilIdle();
    }

    QStringList shown() const { return words(view); }

    /** The text item of a passage. */
    const QQuickItem* passageText(int row) const { return texts(column->itemAt(row)).constFirst(); }

    /** The number at the beginning of the focused passage; 0 if no passage has focus. */
    int focusedNumber() const
    {
        return focused() ? focused()->property("text").toString().section(u'.', 0, 0).toInt() : 0;
    }

    /** The geometry of the focused passage in points of the viewport. */
    QRectF focusedArea() const { return focused()->mapRectToItem(page, QRectF(QPointF(), focused()->size())); }
};

} // namespace quillmere
