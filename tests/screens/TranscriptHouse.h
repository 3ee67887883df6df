#pragma once

#include "FocusScreen.h"
#include "HubAPI.h"
#include "LazyStack.h"
#include "SampleCover.h"
#include "ScriptedHttpClient.h"
#include "ScrollArea.h"
#include "Stage.h"
#include "TranscriptController.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlComponent>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** The screen of a transcript, with a scripted hub. */
class TranscriptHouse
{
public:
    explicit TranscriptHouse(bool hasTranscript = true, const VHSCover& cover = sampleCover(),
                             QSize size = {1920, 1080})
        : stage(size)
    {
        Tape tape;
        tape.id = 42;
        tape.hasTranscript = hasTranscript;
        // Added to the canvas after its first frames, because the spinner's animation never ends.
        QQuickItem* const canvas = stage.load(u"Canvas { focus: true }"_s);
        QQmlComponent component(&stage.engine());
        component.setData("import Quillmere.Playback\nTranscriptView {}", {});
        view = qobject_cast<FocusScreen*>(
            component.createWithInitialProperties({{u"hub"_s, QVariant::fromValue(&hub)},
                                                   {u"tape"_s, QVariant::fromValue(tape)},
                                                   {u"cover"_s, QVariant::fromValue(cover)}}));
        if (!view)
            qFatal("%s", qPrintable(component.errorString()));
        view->setParent(canvas);
        view->setParentItem(canvas);
        view->setSize(canvas->size());
        page = static_cast<ScrollArea*>(Stage::first(view, "ScrollArea"));
        column = static_cast<LazyStack*>(Stage::first(view, "LazyStack"));
        controller = view->findChild<TranscriptController*>();
        dismissals = std::make_unique<QSignalSpy>(view, SIGNAL(dismissed()));
        view->acquireFocus();
        Q_EMIT view->appeared();
    }

    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example"_s)};
    Stage stage;
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
        stage.waitUntilIdle();
    }

    void press(int key)
    {
        stage.press(key);
        stage.waitUntilIdle();
    }

    QStringList shown() const
    {
        QStringList all;
        for (const QQuickItem* text : Stage::texts(view))
            all.append(text->property("text").toString());
        return all;
    }

    /** The visible text item with exactly these words; null if there is none. */
    QQuickItem* text(const QString& words) const
    {
        for (QQuickItem* item : Stage::texts(view)) {
            if (item->property("text").toString() == words)
                return item;
        }
        return nullptr;
    }

    Focusable* focused() const { return view->focused(); }

    /** The number at the beginning of the focused passage; 0 if no passage has focus. */
    int focusedNumber() const
    {
        const bool isOne = focused() && focused()->hasActiveFocus();
        return isOne ? focused()->property("text").toString().section(u'.', 0, 0).toInt() : 0;
    }

    /** The geometry of the focused passage in points of the viewport. */
    QRectF focusedArea() const { return focused()->mapRectToItem(page, QRectF(QPointF(), focused()->size())); }
};
