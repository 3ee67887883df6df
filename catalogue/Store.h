#pragma once

#include "Shelf.h"
#include "TVStatus.h"
#include "TaskScope.h"

#include <QCoroTask>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <stop_token>

namespace quillmere {

class Defaults;
class HubAPI;

/**
 * The only model that the screens share: the last status from the hub, the tapes of the chosen market and their
 * shelves, the loading and error state, and the stored resume positions.
 *
 * Use it on the screen thread only. The application entry owns it; the hub client and the defaults must outlive it.
 * Every published field can be set from outside. `objectWillChange` is emitted before each change of a published field,
 * the field's own signal after it. The destructor cancels the store's tasks.
 */
class Store : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application entry creates the only store.")
    Q_PROPERTY(quillmere::TVStatus status READ status WRITE setStatus NOTIFY statusChanged)
    Q_PROPERTY(QList<quillmere::Tape> tapes READ tapes WRITE setTapes NOTIFY tapesChanged)
    Q_PROPERTY(QList<quillmere::Shelf> shelves READ shelves WRITE setShelves NOTIFY shelvesChanged)
    Q_PROPERTY(bool isLoading READ isLoading WRITE setIsLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool hasLoadedOnce READ hasLoadedOnce WRITE setHasLoadedOnce NOTIFY hasLoadedOnceChanged)
    Q_PROPERTY(bool hasError READ hasError NOTIFY lastErrorChanged)
    Q_PROPERTY(QString lastErrorText READ lastErrorText NOTIFY lastErrorChanged)
    Q_PROPERTY(QString market READ market WRITE setMarket NOTIFY marketChanged)

public:
    Store(HubAPI& hub, Defaults& resumeDefaults, QObject* parent = nullptr);

    const TVStatus& status() const { return m_status; }
    void setStatus(TVStatus status);
    const QList<Tape>& tapes() const { return m_tapes; }
    void setTapes(QList<Tape> tapes);
    const QList<Shelf>& shelves() const { return m_shelves; }
    void setShelves(QList<Shelf> shelves);
    /** The market that `shelves()` belong to. While a newly chosen market is loading, this is the previous one. */
    const QString& shelvesMarket() const { return m_shelvesMarket; }
    bool isLoading() const { return m_isLoading; }
    void setIsLoading(bool isLoading);
    bool hasLoadedOnce() const { return m_hasLoadedOnce; }
    void setHasLoadedOnce(bool hasLoadedOnce);

    /** The text of the last failure to show to the viewer. */
    const std::optional<QString>& lastError() const { return m_lastError; }
    void setLastError(std::optional<QString> lastError);
    bool hasError() const { return m_lastError.has_value(); }
    QString lastErrorText() const { return m_lastError.value_or(QString()); }

    /** The slug of the chosen market; empty for all. A new value starts loadTapes(); the old tapes stay meanwhile. */
    const QString& market() const { return m_market; }
    void setMarket(QString market);

    /** The store of the resume positions, in seconds. The key is "resume.tape." and the tape's id. */
    Defaults& resumeDefaults() const { return m_resumeDefaults; }

    /** Loads the status, then the tapes. Several calls can overlap. */
    QCoro::Task<> refresh();

    /** Loads the first 200 tapes of the chosen market. Drops the response if another market is chosen meanwhile. */
    QCoro::Task<> loadTapes();

    /**
     * The tapes of the chosen market whose title or transcript matches. Requests one page of 200 tapes and returns all
     * tapes of the page, at most 10,000. Returns none on failure or cancellation.
     */
    QCoro::Task<QList<Tape>> search(QString query, std::stop_token token = {});

    /**
     * Stores a position in seconds. A position below 60 removes the stored one. A value that cannot be a position (NaN,
     * or above 10^9) changes nothing.
     */
    void saveResume(qint64 id, double seconds);

    /** The stored position in seconds, 0 to 10^9. Returns 0 if there is none or it is not valid. */
    double resumePosition(qint64 id) const;

    /** Removes the stored position, after the tape was played to its end. */
    void removeResume(qint64 id);

    /** The number of tapes in the chosen market according to the status, else the number of loaded tapes. */
    qint64 stockCount() const;

Q_SIGNALS:
    void objectWillChange();
    void statusChanged();
    void tapesChanged();
    void shelvesChanged();
    void isLoadingChanged();
    void hasLoadedOnceChanged();
    void lastErrorChanged();
    void marketChanged();

private:
    HubAPI& m_hub;
    Defaults& m_resumeDefaults;
    TVStatus m_status;
    QList<Tape> m_tapes;
    QList<Shelf> m_shelves;
    QString m_shelvesMarket;
    bool m_isLoading = false;
    bool m_hasLoadedOnce = false;
    std::optional<QString> m_lastError;
    QString m_market;
    TaskScope m_tasks;
};

} // namespace quillmere
