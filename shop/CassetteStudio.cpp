#include "CassetteStudio.h"

#include <algorithm>
#include <tuple>

namespace quillmere {

namespace {

constexpr qint64 megabyte = 1024 * 1024;
// About 50 visible or nearby cassettes and some enlarged ones. A long shelf needs no more memory than a short one.
constexpr qint64 budget = 28 * megabyte;
constexpr int maxNormalHeight = 1080; // device pixels
constexpr qint64 tallWindowBudget = 160 * megabyte;

} // namespace

CassetteStudio::~CassetteStudio() = default;

std::shared_ptr<CassetteStudio> CassetteStudio::shared()
{
    static std::weak_ptr<CassetteStudio> current;
    std::shared_ptr<CassetteStudio> studio = current.lock();
    if (!studio) {
        studio = std::make_shared<CassetteStudio>();
        current = studio;
    }
    return studio;
}

CassetteStudio::Picture CassetteStudio::request(Client& client, const CassetteRenderer& renderer)
{
    ++m_counter;
    if (const auto cached = m_cache.find(renderer); cached != m_cache.end()) {
        m_requests.erase(&client);
        cached->lastUse = m_counter;
        return cached->picture;
    }
    m_requests.insert_or_assign(&client, Request{renderer, m_counter});
    if (!m_isPainting) {
        m_isPainting = true;
        // Start from the event loop, after all items of a new screen have made their requests.
        m_callQueue.post([this] { paintRequests(); });
    }
    return nullptr;
}

void CassetteStudio::cancel(Client& client)
{
    m_requests.erase(&client);
}

QCoro::Task<void> CassetteStudio::paintRequests()
{
    const std::stop_token token = m_tasks.token();
    while (const std::optional<CassetteRenderer> renderer = nextRequest()) {
        const Completion<CassettePicture> painting = m_worker.run([renderer = *renderer] { return renderer.paint(); });
        CassettePicture picture = co_await painting;
        if (token.stop_requested())
            co_return;
        addPicture(*renderer, std::move(picture));
    }
    m_isPainting = false;
}

std::optional<CassetteRenderer> CassetteStudio::nextRequest() const
{
    std::optional<std::tuple<double, quint64>> first;
    const CassetteRenderer* renderer = nullptr;
    for (const auto& [client, request] : m_requests) {
        const std::tuple<double, quint64> rank(client->distance(), request.number);
        if (!first || rank < *first) {
            first = rank;
            renderer = &request.renderer;
        }
    }
    return renderer ? std::make_optional(*renderer) : std::nullopt;
}

/** Caches a picture and passes it to all clients that requested it. */
void CassetteStudio::addPicture(const CassetteRenderer& renderer, CassettePicture picture)
{
    QList<Client*> waiting;
    for (const auto& [client, request] : m_requests) {
        if (request.renderer == renderer)
            waiting.append(client);
    }
    for (Client* client : std::as_const(waiting))
        m_requests.erase(client);
    // Memory allocation failed: the clients keep what they show.
    if (picture.image.isNull())
        return;
    m_bytes += picture.image.sizeInBytes();
    const auto cached =
        m_cache.insert(renderer, {std::make_shared<const CassettePicture>(std::move(picture)), ++m_counter});
    for (Client* client : std::as_const(waiting))
        client->setPicture(cached->picture);
    evict();
}

/** Removes the least recently used pictures that no client uses, until the rest fits the budget. */
void CassetteStudio::evict()
{
    while (m_bytes > m_budget) {
        auto oldest = m_cache.end();
        for (auto cached = m_cache.begin(); cached != m_cache.end(); ++cached) {
            const bool isInUse = cached->picture.use_count() > 1;
            if (!isInUse && (oldest == m_cache.end() || cached->lastUse < oldest->lastUse))
                oldest = cached;
        }
        if (oldest == m_cache.end())
            return;
        m_bytes -= oldest->picture->image.sizeInBytes();
        m_cache.erase(oldest);
    }
}

qint64 CassetteStudio::budgetFor(int windowHeight)
{
    return windowHeight > maxNormalHeight ? tallWindowBudget : budget;
}

void CassetteStudio::setBudget(qint64 bytes)
{
    m_budget = bytes;
    evict();
}

} // namespace quillmere
