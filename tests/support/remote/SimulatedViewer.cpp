#include "SimulatedViewer.h"

#include <stdexcept>

using namespace std::chrono_literals;

namespace quillmere {

SimulatedViewer::SimulatedViewer() : m_connection(XConnection::open()), m_screen(m_connection), m_remote(m_connection)
{}

void SimulatedViewer::waitForEmptyScreen()
{
    if (!m_screen.waitUntil([this](const QImage&) { return !m_remote.focusTopWindow(); }, 5s))
        throw std::runtime_error("There is a window on the display that does not belong to the test.");
}

void SimulatedViewer::switchOn(const QString& log, const QMap<qint64, double>& resumePositions)
{
    switchOff();
    waitForEmptyScreen();
    m_program = std::make_unique<ProgramProcess>(log, resumePositions);
    const bool hasWindow = m_screen.waitUntil(
        [this](const QImage&) { return m_remote.focusTopWindow() || !m_program->process().isRunning(); }, 15s);
    if (!hasWindow || !m_program->process().isRunning())
        throw std::runtime_error("The set was started but showed no window.");
}

void SimulatedViewer::switchOff()
{
    m_program.reset();
}

bool SimulatedViewer::isOn()
{
    return m_program && m_program->process().isRunning();
}

bool SimulatedViewer::pressAndWaitForChange(const QString& button)
{
    m_screen.waitForDrawing(0ms);
    const QImage before = m_screen.grab();
    m_remote.press(button);
    return m_screen.waitForChange(before, 2s).has_value();
}

bool SimulatedViewer::waitForText(const QRectF& points, const QString& text, std::chrono::milliseconds limit)
{
    return m_screen.waitUntil(
        [&](const QImage& picture) { return TextReader::contains(m_reader.read(picture, points), text); }, limit);
}

} // namespace quillmere
