#pragma once

#include "CancelToken.h"
#include "Shelf.h"
#include "TVStatus.h"
#include "TaskScope.h"

#include <QCoroTask>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

class Defaults;
class HubAPI;

/**
 * The one model of the set: what the hub last said, the tapes of the chosen market and their shelves, the loading and
 * error state, and the stored resume positions.
 *
 * Screen thread only. The application entry owns it; the hub client and the defaults outlive it. Every published field
 * may be written from outside. `objectWillChange` comes before each change of a published field, the field's own
 * signal after it. Destroying it ends its tasks.
 */
class Store : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application entry makes the one store.")
    Q_PROPERTY(TVStatus status READ status WRITE setStatus NOTIFY statusChanged)
    Q_PROPERTY(QList<Tape> tapes READ tapes WRITE setTapes NOTIFY tapesChanged)
    Q_PROPERTY(QList<Shelf> shelves READ shelves WRITE setShelves NOTIFY shelvesChanged)
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
    /** The market that the shelves belong to; while another one is loaded, not yet the chosen one. */
    const QString& shelvesMarket() const { return m_shelvesMarket; }
    bool isLoading() const { return m_isLoading; }
    void setIsLoading(bool isLoading);
    bool hasLoadedOnce() const { return m_hasLoadedOnce; }
    void setHasLoadedOnce(bool hasLoadedOnce);

    /** The text of the last failure that the viewer should see. */
    const std::optional<QString>& lastError() const { return m_lastError; }
    void setLastError(std::optional<QString> lastError);
    bool hasError() const { return m_lastError.has_value(); }
    QString lastErrorText() const { return m_lastError.value_or(QString()); }

    /** The slug of the chosen market, empty for all. Another value starts `loadTapes()`; the old tapes stay meanwhile. */
    const QString& market() const { return m_market; }
    void setMarket(QString market);

    /** Where resume positions live: seconds under "resume.tape." and the tape's id. */
    Defaults& resumeDefaults() const { return m_resumeDefaults; }

    /** Loads the status, then the tapes. Nothing keeps two from overlapping. */
    QCoro::Task<> refresh();

    /** Loads the first 200 tapes of the current market; the answer for a market that is no longer chosen is dropped. */
    QCoro::Task<> loadTapes();

    /**
     * The tapes of the current market that match in title or transcript: the page that the hub answers with, of 200 as
     * asked for, and no more than 10,000 of it. A failure or a cancel gives none.
     */
    QCoro::Task<QList<Tape>> search(QString query, CancelToken token = {});

    /**
     * Keeps a position in seconds. Below 60 the tape's position is forgotten instead; what can be no position (not a
     * number, beyond 10^9) changes nothing.
     */
    void saveResume(qint64 id, double seconds);

    /** The position in seconds at which the viewer left a tape, 0 to 10^9; 0 when there is none or it is damaged. */
    double resumePosition(qint64 id) const;

    /** Forgets the position of a tape that was played to its end. */
    void removeResume(qint64 id);

    /** The number of tapes of the current market. */
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
