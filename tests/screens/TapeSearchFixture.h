#pragma once

#include "ShopFixture.h"
#include "TapeSearchController.h"

#include <algorithm>
#include <numeric>

namespace quillmere {

/** The shop with its search open, with placeholder screens for the player and the transcript. */
struct TapeSearchFixture : ShopFixture
{
    TapeSearchFixture()
        : ShopFixture(
              u"searchScreen: Component { TapeSearchView { store: canvas.store; hub: canvas.hub\n"
              "playerScreen: Component { FocusScreen { objectName: 'player'; required property QtObject detail } }\n"
              "transcriptScreen: Component { FocusScreen { objectName: 'transcript'\n"
              "required property QtObject detail } } } }"_s)
    {
        show(u"A: 1 2 3"_s);
        openSearch();
    }

    void openSearch() { pressAndWait(Qt::Key_Select); }

    NavigationStack* search() const { return static_cast<NavigationStack*>(item("TapeSearchView")); }
    TapeSearchController* controller() const { return search()->findChild<TapeSearchController*>(); }
    QQuickItem* field() const { return first(search(), "SearchField"); }
    QQuickItem* spinner() const
    {
        const auto spinners = all(search(), "Spinner");
        const auto seen =
            std::find_if(spinners.cbegin(), spinners.cend(), [](auto* item) { return item->isVisible(); });
        return seen == spinners.cend() ? nullptr : *seen;
    }

    /** Sets the field's text and emits `submitted`, as the field does. */
    void submit(const QString& query)
    {
        field()->setProperty("text", query);
        QMetaObject::invokeMethod(field(), "submitted");
    }

    static QList<int> ids(int first, int count)
    {
        QList<int> all(count);
        std::iota(all.begin(), all.end(), first);
        return all;
    }

    /** The JSON of a page of tapes with these ids; the titles contain the ids. */
    static QByteArray pageOf(const QList<int>& ids)
    {
        QByteArrayList items;
        for (const int id : ids) {
            const QByteArray number = QByteArray::number(id);
            items.append(R"({"id": )" + number + R"(, "title": "Tape )" + number + R"(", "has_transcript": true})");
        }
        return R"({"items": [)" + items.join(",") + "]}";
    }

    void find(const QString& query, const QList<int>& ids)
    {
        submit(query);
        answer(path(query), pageOf(ids));
        QTRY_VERIFY(!controller()->isBusy());
        waitUntilIdle();
    }

    static QString path(const QString& query) { return u"/api/tv/tapes?page=1&per_page=200&q="_s + query; }
};

} // namespace quillmere
