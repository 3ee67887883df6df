#pragma once

#include "MprisPlayer.h"

#include <QDBusAbstractAdaptor>
#include <QStringList>

namespace quillmere {

/** D-Bus interface `org.mpris.MediaPlayer2`: which program this is. Created and owned by MprisPlayer. */
class MprisRootInterface : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(QString Identity READ identity CONSTANT)
    Q_PROPERTY(QString DesktopEntry READ desktopEntry CONSTANT)
    Q_PROPERTY(bool CanQuit READ no CONSTANT)
    Q_PROPERTY(bool CanRaise READ no CONSTANT)
    Q_PROPERTY(bool HasTrackList READ no CONSTANT)
    Q_PROPERTY(QStringList SupportedUriSchemes READ none CONSTANT)
    Q_PROPERTY(QStringList SupportedMimeTypes READ none CONSTANT)

public:
    explicit MprisRootInterface(MprisPlayer* player) : QDBusAbstractAdaptor(player), m_player(player) {}

    QString identity() const { return m_player->applicationName(); }
    QString desktopEntry() const { return m_player->desktopEntry(); }
    bool no() const { return false; }
    QStringList none() const { return {}; }

public Q_SLOTS:
    void Raise() {}
    void Quit() {}

private:
    MprisPlayer* m_player;
};

} // namespace quillmere
