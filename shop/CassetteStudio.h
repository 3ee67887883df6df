#pragma once

#include "CassettePrint.h"
#include "TaskScope.h"
#include "Worker.h"

#include <QCoroTask>
#include <QHash>

#include <memory>
#include <optional>
#include <unordered_map>

/**
 * Paints cassettes on one background thread, one after the other, the most wanted first, and keeps their pictures as
 * long as they fit its budget. Screen thread only; no call waits for a picture, but the destructor does for the one
 * under way. The items that show cassettes share one, which goes with the last of them.
 */
class CassetteStudio
{
public:
    using Picture = std::shared_ptr<const CassettePicture>;

    /** Whoever shows one cassette. It takes its order back before it goes. */
    class Customer
    {
    public:
        /** How far from the viewer's sight it is, in any one unit; 0 in sight. */
        virtual double distance() const = 0;

        /** The picture that was ordered last. It counts as shown while it is held. */
        virtual void take(const Picture& picture) = 0;

    protected:
        ~Customer() = default;
    };

    CassetteStudio() = default;
    ~CassetteStudio();
    CassetteStudio(const CassetteStudio&) = delete;
    CassetteStudio& operator=(const CassetteStudio&) = delete;

    /** The one that the items share; made when there is none. */
    static std::shared_ptr<CassetteStudio> shared();

    /** The picture if it is at hand, else null, and it is delivered later. Replaces the customer's earlier order. */
    Picture order(Customer& customer, const CassettePrint& print);
    void cancel(Customer& customer);

    /** What the pictures kept may take, in bytes, for a window of so many device pixels in height. */
    static qint64 budgetFor(int windowHeight);
    /** Those that are shown are kept beyond it. */
    void setBudget(qint64 bytes);
    qint64 bytesKept() const { return m_bytes; }

private:
    struct Order
    {
        CassettePrint print;
        quint64 turn; ///< the lower, the earlier it came
    };
    struct Kept
    {
        Picture picture;
        quint64 lastUse;
    };

    QCoro::Task<void> work();
    std::optional<CassettePrint> mostWanted() const;
    void keep(const CassettePrint& print, CassettePicture picture);
    void discard();

    std::unordered_map<Customer*, Order> m_orders; ///< those still open
    QHash<CassettePrint, Kept> m_kept;
    qint64 m_bytes = 0;
    qint64 m_budget = budgetFor(0);
    quint64 m_turn = 0; ///< counts orders and uses
    bool m_isWorking = false;
    Worker m_worker;
    Mailbox m_mailbox;
    TaskScope m_tasks;
};
