#pragma once

#include "ChildProcess.h"

#include <QImage>
#include <QTemporaryDir>

#include <memory>

namespace quillmere {

/**
 * Runs the real program in a compositor of its own. Both run as the user of the test; if that is root, as "nobody"
 * unless this user cannot access the build. The destructor ends both. Single thread.
 */
class KioskSession
{
public:
    enum class Compositor {
        CageOnX11,    ///< cage, in a window of the X display that DISPLAY names
        HeadlessSway, ///< sway, with a headless output of 1024 x 768 pixels
    };

    /** `variables` are added to the environment, as "NAME=value". Throws std::runtime_error if starting fails. */
    explicit KioskSession(Compositor compositor, const QStringList& variables = {});
    ~KioskSession();

    ChildProcess& compositor() { return *m_compositor; }
    /** Process id of the program; 0 if it does not run. */
    qint64 programPid() const;
    /** Contents of the program's display state file ("on" or "off"); empty if it does not exist. */
    QString displayState() const;

    // The functions below work with sway only. Each throws std::runtime_error if the compositor does not answer.
    QImage picture();
    /** Presses a key by its X keysym. */
    void press(const QString& keysym);
    bool isOutputOn();
    /** Makes sway switch its output; false if sway cannot do it. */
    bool switchOutput(bool on);

private:
    void startCage();
    void startSway();
    QByteArray run(const QString& program, const QStringList& arguments);
    std::unique_ptr<ChildProcess> start(const QString& program, const QStringList& arguments);

    QTemporaryDir m_folder;
    QProcessEnvironment m_variables;
    std::unique_ptr<ChildProcess> m_compositor;
    std::unique_ptr<ChildProcess> m_keyboard; ///< keeps the seat's keyboard present between calls of press()
    std::unique_ptr<ChildProcess> m_program;  ///< null with cage, which starts the program itself
};

} // namespace quillmere
