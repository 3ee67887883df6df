#pragma once

#include "HttpClient.h"
#include "HubError.h"
#include "HubURL.h"
#include "TVStatus.h"
#include "TapePage.h"
#include "TaskScope.h"
#include "TranscriptResult.h"
#include "Worker.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

template<typename T>
using HubResult = tl::expected<T, HubError>;

/**
 * The only one that talks to the hub: resolves paths, fetches, judges the answer and decodes it.
 *
 * Screen thread only. Its own steps run one at a time: they are the screen thread's, but for the decoding, which runs
 * on one background thread; its network waits overlap. Answers arrive on the screen thread. The process has one, which
 * the application entry makes and hands to everyone; it outlives them, and the HttpClient outlives it. Destroying it
 * fails, inside the destructor, whatever still waits.
 */
class HubAPI : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application entry makes the one client.")

public:
    explicit HubAPI(HttpClient& http, QUrl base = hubBase(), QObject* parent = nullptr);
    ~HubAPI() override;

    /**
     * Fetches a hub path and decodes it as T, one of the hub's records. Any status but 200 to 299 is HubError::http, a
     * path without an address badURL, all else transport. Cancelling the token fails the fetch inside the cancelling call.
     */
    template<typename T>
    QCoro::Task<HubResult<T>> get(QString path, CancelToken token = {});

    /**
     * One page of tapes. A market or query that is empty is not sent, nor is a query of nothing but spaces and tabs;
     * any other query is sent as it stands. `page` counts from 1.
     */
    QCoro::Task<HubResult<TapePage>> tapes(QString market, QString query, int page, int perPage,
                                           CancelToken token = {});
    QCoro::Task<HubResult<Tape>> tape(qint64 id, CancelToken token = {});
    QCoro::Task<HubResult<TranscriptResult>> transcript(qint64 id, CancelToken token = {});

    /** Whether a stream's playlist is there right now: status 200 and nothing else. Never fails. */
    QCoro::Task<bool> probe(QString path, CancelToken token = {});

private:
    QCoro::Task<HubResult<QByteArray>> fetch(QString path, CancelToken token);
    template<typename T>
    QCoro::Task<HubResult<T>> decode(QByteArray body, CancelToken token);

    HttpClient& m_http;
    QUrl m_base;
    Worker m_decoder;
    TaskScope m_tasks;
};
