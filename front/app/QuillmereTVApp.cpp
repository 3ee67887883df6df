#include "QuillmereTVApp.h"

#include "Logging.h"

#include "HubURL.h"
#include "VideoPlugins.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace quillmere {

QuillmereTVApp::QuillmereTVApp()
    : m_defaults(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/resume.ini"_s),
      m_http(hubCertificates()), m_hub(m_http), m_store(m_hub, m_defaults)
{}

void QuillmereTVApp::preparePlayer()
{
    // A failure is ignored here: the first player repeats the call and reports it.
    VideoPlugins::load();
}

void QuillmereTVApp::prepareSound()
{
    // Values set by the user take precedence.
    if (!qEnvironmentVariableIsSet("PULSE_PROP"))
        qputenv("PULSE_PROP", "media.role=video application.id=quillmere-tv");
    if (!qEnvironmentVariableIsSet("PIPEWIRE_PROPS"))
        qputenv("PIPEWIRE_PROPS", "{ media.role = Movie application.id = quillmere-tv }");
    // The PipeWire library logs an error if its service is not running.
    if (!qEnvironmentVariableIsSet("PIPEWIRE_DEBUG") && !logVideo().isInfoEnabled())
        qputenv("PIPEWIRE_DEBUG", "0");
}

} // namespace quillmere
