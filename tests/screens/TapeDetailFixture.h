#pragma once

#include "FullScreenCover.h"
#include "ScrollArea.h"
#include "ShopFixture.h"
#include "TapeDetailController.h"

namespace quillmere {

/** The screen of a tape, with a player screen that plays nothing. */
struct TapeDetailFixture : KeysFixture
{
    explicit TapeDetailFixture(const Tape& tape, double resumePosition = 0)
    {
        if (resumePosition > 0)
            store->saveResume(tape.id, resumePosition);
        loadCanvas(u"import Quillmere.Shop"_s,
                   u"property var tape\n"
                   "TapeDetailView { anchors.fill: parent; store: canvas.store; hub: canvas.hub; tape: canvas.tape\n"
                   "playerScreen: Component { FocusScreen { objectName: 'player'\n"
                   "required property TapeDetailController detail; property var tape: detail.shownTape } } }"_s,
                   {{u"tape"_s, QVariant::fromValue(tape)}});
        view = static_cast<FocusScreen*>(item("TapeDetailView"));
        page = static_cast<ScrollArea*>(item("ScrollArea"));
        controller = view->findChild<TapeDetailController*>();
        view->acquireFocus();
        Q_EMIT view->appeared();
        waitUntilIdle();
    }

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
        for (const QString& title : {u"Agenda"_s, u"Minutes"_s, u"Staff report"_s, u"Map"_s, u"Plan"_s})
            tape.documents.emplace_back().title = title;
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
    QStringList shown() const { return words(view); }
    QStringList badges() const { return textsOf("TapeBadge"); }
    QStringList buttons() const { return textsOf("PlateButton"); }
    QStringList facts() const
    {
        QStringList all;
        for (const QQuickItem* row : TestScreen::all(view, "FactRow"))
            all.append(row->property("label").toString() + u'=' + row->property("value").toString());
        return all;
    }

    /** The geometry of an item in points of the page's content. */
    QRectF areaOnPage(const QQuickItem* item) const
    {
        return item->mapRectToItem(page->contentItem(), QRectF(QPointF(), item->size()));
    }

    /** The player screen; null while it is not open. */
    QQuickItem* player() const
    {
        for (QQuickItem* cover : all(view, "FullScreenCover")) {
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
        for (const QQuickItem* item : TestScreen::all(view, type)) {
            if (item->isVisible())
                all.append(item->property("text").toString());
        }
        return all;
    }
};

} // namespace quillmere
