#include "QuillmereTVApp.h"

#include "Logging.h"

#include "HubURL.h"
#include "VideoPlugins.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

QuillmereTVApp::QuillmereTVApp()
    : m_defaults(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/resume.ini"_s),
      m_http(hubCertificates()), m_hub(m_http), m_store(m_hub, m_defaults), m_timepiece(m_clock)
{}

void QuillmereTVApp::preparePlayer()
{
    // Should it fail, the player that asks again says so.
    VideoPlugins::load();
}

void QuillmereTVApp::prepareSound()
{
    // Whoever started the set may know better.
    if (!qEnvironmentVariableIsSet("PULSE_PROP"))
        qputenv("PULSE_PROP", "media.role=video application.id=quillmere-tv");
    if (!qEnvironmentVariableIsSet("PIPEWIRE_PROPS"))
        qputenv("PIPEWIRE_PROPS", "{ media.role = Movie application.id = quillmere-tv }");
    // It complains of a machine without its service.
    if (!qEnvironmentVariableIsSet("PIPEWIRE_DEBUG") && !logVideo().isInfoEnabled())
        qputenv("PIPEWIRE_DEBUG", "0");
}
