#pragma once

#include "FocusScreen.h"
#include "FullScreenCover.h"
#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "ScriptedHttpClient.h"
#include "ScrollArea.h"
#include "Stage.h"
#include "Store.h"
#include "TapeDetailController.h"

#include <QTest>

using namespace Qt::StringLiterals;

/** The screen of a tape, with a scripted hub and a player screen that plays nothing. */
class TapeDetailHouse
{
public:
    explicit TapeDetailHouse(const Tape& tape, double resumePosition = 0, QSize size = {1920, 1080}) : stage(size)
    {
        if (resumePosition > 0)
            store.saveResume(tape.id, resumePosition);
        QQuickItem* const root = stage.load(
            u"import Quillmere.Shop\n"
            "Canvas { id: canvas; property QtObject store; property QtObject hub; property var tape\n"
            "TapeDetailView { anchors.fill: parent; store: canvas.store; hub: canvas.hub; tape: canvas.tape\n"
            "playerScreen: Component { FocusScreen { objectName: 'player'\n"
            "required property TapeDetailController detail; property var tape: detail.shownTape } } } }"_s,
            {{u"store"_s, QVariant::fromValue<QObject*>(&store)},
             {u"hub"_s, QVariant::fromValue<QObject*>(&hub)},
             {u"tape"_s, QVariant::fromValue(tape)}});
        view = static_cast<FocusScreen*>(Stage::first(root, "TapeDetailView"));
        page = static_cast<ScrollArea*>(Stage::first(view, "ScrollArea"));
        controller = view->findChild<TapeDetailController*>();
        view->acquireFocus();
        Q_EMIT view->appeared();
        stage.waitUntilIdle();
    }

    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example"_s)};
    MemoryDefaults defaults;
    Store store{hub, defaults};
    Stage stage;
    FocusScreen* view = nullptr;
    ScrollArea* page = nullptr;
    TapeDetailController* controller = nullptr;

    static Tape ordinary()
    {
        Tape tape;
        tape.id = 42;
        tape.title = u"City Council Regular Meeting"_s;
        tape.meetingDate = u"2024-03-05"_s;
        tape.body = TapeBody{u"city-council"_s, u"City Council"_s, u"council"_s};
        tape.market.name = u"Springfield"_s;
        tape.location = u"Town Hall"_s;
        tape.sizeBytes = 1073741824;
        tape.streamURLPath = u"/media/42/index.m3u8"_s;
        return tape;
    }

    /** A tape with every optional field. */
    static Tape rich()
    {
        Tape tape = ordinary();
        tape.hasAgenda = true;
        tape.hasTranscript = true;
        for (const QString& title : {u"Agenda"_s, u"Minutes"_s, u"Staff report"_s, u"Map"_s, u"Plan"_s}) {
            TapeDocument document;
            document.title = title;
            tape.documents.append(document);
        }
        return tape;
    }

    /** A tape with a title and a synopsis (which contains the body's name) much longer than one screen. */
    static Tape endless()
    {
        Tape tape = rich();
        tape.title = u"A title of many words "_s.repeated(14) + u"ends"_s;
        tape.body->name = u"Joint Committee on Committees "_s.repeated(90);
        tape.location = QString(400, u'W');
        return tape;
    }

    /** The latest waiting request for the full record; -1 if none. */
    int request() const { return http.waitingFor(u"/api/tv/tape/42"_s); }
    void answer(const QByteArray& record, int status = 200) { http.answer(request(), status, record); }

    /** The visible texts, from top to bottom. */
    QStringList shown() const
    {
        QStringList all;
        for (const QQuickItem* item : Stage::texts(view))
            all.append(item->property("text").toString());
        return all;
    }
    QStringList badges() const { return textsOf("TapeBadge"); }
    QStringList buttons() const { return textsOf("PlateButton"); }
    QStringList facts() const
    {
        QStringList all;
        for (const QQuickItem* row : Stage::all(view, "FactRow"))
            all.append(row->property("label").toString() + u'=' + row->property("value").toString());
        return all;
    }

    /** The text of the focused button; "nothing" if no button has focus. */
    QString focused() const
    {
        const Focusable* const focusable = view->focused();
        return focusable && focusable->hasActiveFocus() ? focusable->property("text").toString() : u"nothing"_s;
    }

    /** The geometry of an item in points of the page's content. */
    QRectF areaOnPage(const QQuickItem* item) const
    {
        return item->mapRectToItem(page->contentItem(), QRectF(QPointF(), item->size()));
    }

    /** The player screen; null while it is not open. */
    QQuickItem* player() const
    {
        for (QQuickItem* cover : Stage::all(view, "FullScreenCover")) {
            FocusScreen* const screen = static_cast<FullScreenCover*>(cover)->item();
            if (screen && screen->objectName() == u"player"_s)
                return screen;
        }
        return nullptr;
    }

private:
    QStringList textsOf(const QByteArray& type) const
    {
        QStringList all;
        for (const QQuickItem* item : Stage::all(view, type)) {
            if (item->isVisible())
                all.append(item->property("text").toString());
        }
        return all;
    }
};
