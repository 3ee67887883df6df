#pragma once

#include "HubAPI.h"
#include "IniDefaults.h"
#include "QtHttpClient.h"
#include "Store.h"
#include "SystemClock.h"
#include "Timepiece.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

/**
 * What lives as long as the process: the one store and the outside world that it and the screens stand on. Screen
 * thread only; `main` owns it, and it outlives the window. The order of its members is the order of their lives.
 */
class QuillmereTVApp : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("main makes the one there is.")
    Q_PROPERTY(Store* store READ store CONSTANT FINAL)
    Q_PROPERTY(HubAPI* hub READ hub CONSTANT FINAL)
    Q_PROPERTY(Timepiece* timepiece READ timepiece CONSTANT FINAL)

public:
    QuillmereTVApp();

    Clock& clock() { return m_clock; }
    Store* store() { return &m_store; }
    HubAPI* hub() { return &m_hub; }
    Timepiece* timepiece() { return &m_timepiece; }

    /** Brings in what plays video, so that the first playback does not wait for it; another thread does the work. */
    Q_INVOKABLE void preparePlayer();

    /** Tells the sound servers that this program plays films; before the application object, as they read it once. */
    static void prepareSound();

private:
    SystemClock m_clock;
    IniDefaults m_defaults;
    QtHttpClient m_http;
    HubAPI m_hub;
    Store m_store;
    Timepiece m_timepiece;
};
