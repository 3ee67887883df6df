#pragma once

#include <QObject>

class QKeyEvent;
class QWindow;

/**
 * Turns whatever a remote sends to a window into one Qt key a button, before anything else sees it; a held select,
 * back or play/pause acts once. Keys that are no remote button pass untouched.
 * Screen thread only; the window owns it.
 */
class RemoteInput : public QObject
{
    Q_OBJECT

public:
    explicit RemoteInput(QWindow* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool translate(const QKeyEvent& event);
    bool isRepeat(const QKeyEvent& event);

    QWindow* m_window;
    int m_releasedKey = 0;    ///< Qt::Key of the latest release
    quint64 m_releasedAt = 0; ///< its time, in milliseconds
    bool m_handingOn = false;
};
