#pragma once

#include "CassetteRenderer.h"
#include "TaskScope.h"
#include "Worker.h"

#include <QCoroTask>
#include <QHash>

#include <memory>
#include <optional>
#include <unordered_map>

namespace quillmere {

/**
 * Paints cassettes one at a time on a background thread, those nearest to the visible area first, and caches the
 * pictures up to a budget in bytes. Screen thread only. No call waits for a picture, except that the destructor waits
 * for the one being painted. All items that show cassettes share one studio; the last item destroys it.
 */
class CassetteStudio
{
public:
    using Picture = std::shared_ptr<const CassettePicture>;

    /** Requests one picture at a time. Must call `cancel` before it is destroyed. */
    class Client
    {
    public:
        /** Distance from the visible area, in the same unit for all clients; 0 if visible. */
        virtual double distance() const = 0;

        /** Receives the picture requested last. It is not evicted while the client keeps a reference. */
        virtual void setPicture(const Picture& picture) = 0;

    protected:
        ~Client() = default;
    };

    CassetteStudio() = default;
    ~CassetteStudio();
    CassetteStudio(const CassetteStudio&) = delete;
    CassetteStudio& operator=(const CassetteStudio&) = delete;

    /** The studio that the items share; created if there is none. */
    static std::shared_ptr<CassetteStudio> shared();

    /**
     * Returns the picture if cached; else null, and calls `setPicture` later. Replaces the client's earlier request.
     */
    Picture request(Client& client, const CassetteRenderer& renderer);
    void cancel(Client& client);

    /** The cache size, in bytes, for a window of `windowHeight` device pixels. */
    static qint64 budgetFor(int windowHeight);
    /** Pictures in use are never evicted, even if they exceed the budget. */
    void setBudget(qint64 bytes);
    qint64 cachedBytes() const { return m_bytes; }

private:
    struct Request
    {
        CassetteRenderer renderer;
        quint64 number; ///< ascending in order of arrival
    };
    struct CacheEntry
    {
        Picture picture;
        quint64 lastUse; ///< the value of m_counter at the time
    };

    QCoro::Task<void> paintRequests();
    std::optional<CassetteRenderer> nextRequest() const;
    void addPicture(const CassetteRenderer& renderer, CassettePicture picture);
    void evict();

    std::unordered_map<Client*, Request> m_requests; ///< not yet painted
    QHash<CassetteRenderer, CacheEntry> m_cache;
    qint64 m_bytes = 0; ///< of the cached pictures
    qint64 m_budget = budgetFor(0);
    quint64 m_counter = 0; ///< of requests and uses
    bool m_isPainting = false;
    Worker m_worker;
    CallQueue m_callQueue;
    TaskScope m_tasks;
};

} // namespace quillmere
