#pragma once

#include "HttpClient.h"
#include "HubError.h"
#include "HubURL.h"
#include "TVStatus.h"
#include "TaskScope.h"
#include "TranscriptResult.h"
#include "Worker.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

template<typename T>
using HubResult = tl::expected<T, HubError>;

/**
 * The client of the hub's HTTP API: resolves paths, sends requests, checks the status and decodes the body.
 *
 * Use it on the screen thread only; results arrive there. Requests run concurrently. Bodies are decoded one at a time
 * on one background thread. The process has one HubAPI, created by the application entry. It outlives its users, and
 * the HttpClient outlives it. The destructor fails all pending requests.
 */
class HubAPI : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application entry creates the only HubAPI.")

public:
    explicit HubAPI(HttpClient& http, QUrl base = hubBase(), QObject* parent = nullptr);
    ~HubAPI() override;

    /**
     * Fetches a hub path and decodes the body as T, one of the hub's records. A status outside 200 to 299 gives
     * HubError::http, a path that is not an address badURL, any other failure transport. Stopping the token fails the
     * request before request_stop() returns.
     */
    template<typename T>
    QCoro::Task<HubResult<T>> get(QString path, std::stop_token token = {});

    /**
     * Fetches one page of tapes. `page` counts from 1. An empty market is not sent. A query that is empty or has only
     * spaces and tabs is not sent; any other query is sent unchanged.
     */
    QCoro::Task<HubResult<TapePage>> tapes(QString market, QString query, int page, int perPage,
                                           std::stop_token token = {});
    QCoro::Task<HubResult<Tape>> tape(qint64 id, std::stop_token token = {});
    QCoro::Task<HubResult<TranscriptResult>> transcript(qint64 id, std::stop_token token = {});

    /** Whether a stream's playlist exists now, that is, whether the status is exactly 200. A failure gives false. */
    QCoro::Task<bool> probe(QString path, std::stop_token token = {});

private:
    QCoro::Task<HubResult<QByteArray>> fetch(QString path, std::stop_token token);
    template<typename T>
    QCoro::Task<HubResult<T>> decode(QByteArray body, std::stop_token token);

    HttpClient& m_http;
    QUrl m_base;
    Worker m_decoder;
    TaskScope m_tasks;
};

} // namespace quillmere
