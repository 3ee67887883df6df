#pragma once

#include "HubAPI.h"
#include "IniDefaults.h"
#include "QtHttpClient.h"
#include "Store.h"
#include "SystemClock.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * Objects that live as long as the process: the store, and the clock, storage and network that it and the screens use.
 * Screen thread only; `main` owns it, and it outlives the window. Each member outlives the members after it.
 */
class QuillmereTVApp : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by main.")
    Q_PROPERTY(quillmere::Store* store READ store CONSTANT FINAL)
    Q_PROPERTY(quillmere::HubAPI* hub READ hub CONSTANT FINAL)
    Q_PROPERTY(quillmere::Clock* clock READ clock CONSTANT FINAL)

public:
    QuillmereTVApp();

    Store* store() { return &m_store; }
    HubAPI* hub() { return &m_hub; }
    Clock* clock() { return &m_clock; }

    /** Starts loading the video libraries on another thread, so that the first playback does not wait for them. */
    Q_INVOKABLE void preparePlayer();

    /**
     * Sets environment variables which announce this program to the sound servers as a video player. Call it before the
     * application object exists, because the variables are read only once.
     */
    static void prepareSound();

private:
    SystemClock m_clock;
    IniDefaults m_defaults;
    QtHttpClient m_http;
    HubAPI m_hub;
    Store m_store;
};

} // namespace quillmere
