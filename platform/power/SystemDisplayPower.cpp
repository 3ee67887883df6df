#include "SystemDisplayPower.h"

#include "DisplayOutputs.h"
#include "Logging.h"
#include "PluginFile.h"

#include <QFile>
#include <QGuiApplication>
#include <QLibrary>

using namespace Qt::StringLiterals;

namespace quillmere {

class SystemDisplayPower::Display
{
public:
    explicit Display(QString stateFile) : m_stateFile(std::move(stateFile)) {}

    void writeState(const char* state) const
    {
        QFile file(m_stateFile);
        if (!m_stateFile.isEmpty() && file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            file.write(state);
    }

    void switchOff()
    {
        writeState("off\n");
        if (!m_outputs)
            m_outputs.reset(create());
        m_outputsAreOff = m_outputs && m_outputs->switchOff();
        qCInfo(logDisplay) << (m_outputsAreOff ? "the outputs are off" : "the outputs stay on, and are black");
    }

    void switchOn()
    {
        if (std::exchange(m_outputsAreOff, false))
            m_outputs->switchOn();
    }

private:
    static DisplayOutputs* create()
    {
        QLibrary library(pluginFile(u"quillmere-display.so"_s));
        const auto function = reinterpret_cast<CreateDisplayOutputs>(library.resolve(createDisplayOutputsName));
        return function ? function(QGuiApplication::platformName().toUtf8().constData()) : nullptr;
    }

    QString m_stateFile;
    std::unique_ptr<DisplayOutputs> m_outputs;
    bool m_outputsAreOff = false;
};

SystemDisplayPower::SystemDisplayPower(const QString& stateFile) : m_display(std::make_shared<Display>(stateFile))
{
    if (!stateFile.isEmpty()) {
        m_worker.run([display = m_display] {
            display->writeState("on\n");
            return true;
        });
    }
}

SystemDisplayPower::~SystemDisplayPower()
{
    if (!m_isOff)
        return;
    m_worker.run([display = m_display] {
        display->switchOn();
        return true;
    });
}

void SystemDisplayPower::switchOff()
{
    m_isOff = true;
    m_worker.run([display = m_display] {
        display->switchOff();
        return true;
    });
}

Completion<bool> SystemDisplayPower::switchOn()
{
    m_isOff = false;
    return m_worker.run([display = m_display] {
        display->switchOn();
        display->writeState("on\n");
        return true;
    });
}

} // namespace quillmere
