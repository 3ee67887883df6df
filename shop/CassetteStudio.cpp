#include "CassetteStudio.h"

#include <algorithm>
#include <tuple>

namespace {

constexpr qint64 megabyte = 1024 * 1024;
// About fifty cassettes in sight and near it, and what was lifted: a long shelf shall take no more memory than a short one.
constexpr qint64 budget = 28 * megabyte;
constexpr int tallestOrdinaryWindow = 1080; // device pixels
constexpr qint64 budgetOfTallWindows = 160 * megabyte;

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

CassetteStudio::Picture CassetteStudio::order(Customer& customer, const CassettePrint& print)
{
    ++m_turn;
    if (const auto kept = m_kept.find(print); kept != m_kept.end()) {
        m_orders.erase(&customer);
        kept->lastUse = m_turn;
        return kept->picture;
    }
    m_orders.insert_or_assign(&customer, Order{print, m_turn});
    if (!m_isWorking) {
        m_isWorking = true;
        // Later, so that of a whole screen's orders the most wanted is the first.
        m_mailbox.post([this] { work(); });
    }
    return nullptr;
}

void CassetteStudio::cancel(Customer& customer)
{
    m_orders.erase(&customer);
}

QCoro::Task<void> CassetteStudio::work()
{
    const CancelToken token = m_tasks.token();
    while (const std::optional<CassettePrint> print = mostWanted()) {
        const Completion<CassettePicture> painting = m_worker.run([print = *print] { return print.paint(); });
        CassettePicture picture = co_await painting;
        if (token.isCancelled())
            co_return;
        keep(*print, std::move(picture));
    }
    m_isWorking = false;
}

std::optional<CassettePrint> CassetteStudio::mostWanted() const
{
    std::optional<std::tuple<double, quint64>> first;
    const CassettePrint* print = nullptr;
    for (const auto& [customer, order] : m_orders) {
        const std::tuple<double, quint64> rank(customer->distance(), order.turn);
        if (!first || rank < *first) {
            first = rank;
            print = &order.print;
        }
    }
    return print ? std::make_optional(*print) : std::nullopt;
}

void CassetteStudio::keep(const CassettePrint& print, CassettePicture picture)
{
    QList<Customer*> waiting;
    for (const auto& [customer, order] : m_orders) {
        if (order.print == print)
            waiting.append(customer);
    }
    for (Customer* customer : std::as_const(waiting))
        m_orders.erase(customer);
    // There was no memory for it: what was shown until now stays.
    if (picture.image.isNull())
        return;
    m_bytes += picture.image.sizeInBytes();
    const auto kept = m_kept.insert(print, {std::make_shared<const CassettePicture>(std::move(picture)), ++m_turn});
    for (Customer* customer : std::as_const(waiting))
        customer->take(kept->picture);
    discard();
}

/** Gives up the pictures that were used longest ago and that nobody shows, until the rest fits the budget. */
void CassetteStudio::discard()
{
    while (m_bytes > m_budget) {
        auto oldest = m_kept.end();
        for (auto kept = m_kept.begin(); kept != m_kept.end(); ++kept) {
            const bool isShown = kept->picture.use_count() > 1;
            if (!isShown && (oldest == m_kept.end() || kept->lastUse < oldest->lastUse))
                oldest = kept;
        }
        if (oldest == m_kept.end())
            return;
        m_bytes -= oldest->picture->image.sizeInBytes();
        m_kept.erase(oldest);
    }
}

qint64 CassetteStudio::budgetFor(int windowHeight)
{
    return windowHeight > tallestOrdinaryWindow ? budgetOfTallWindows : budget;
}

void CassetteStudio::setBudget(qint64 bytes)
{
    m_budget = bytes;
    discard();
}
