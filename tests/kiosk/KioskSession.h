#pragma once

#include "ChildProcess.h"

#include <QImage>
#include <QTemporaryDir>

#include <memory>

/**
 * The real set in a compositor of its own, both run by an ordinary user: by the one that runs the test or, where that is
 * root, by "nobody" if that can reach the build. One thread; ends with this object.
 */
class KioskSession
{
public:
    enum class Compositor {
        CageOnX11,    ///< cage, in a window of the X display that DISPLAY names
        HeadlessSway, ///< sway, with an output of 1024 x 768 that nobody sees
    };

    /** `variables` are further ones for the set, as "NAME=value"; throws std::runtime_error if nothing starts. */
    explicit KioskSession(Compositor compositor, const QStringList& variables = {});
    ~KioskSession();

    ChildProcess& compositor() { return *m_compositor; }
    /** Process of the set; 0 if there is none. */
    qint64 setPid() const;
    /** What the set has written about its display; empty if nothing yet. */
    QString displayState() const;

    // Of sway only; each throws std::runtime_error with a sentence if the compositor does not answer.
    QImage picture();
    /** Presses a key by its X keysym. */
    void press(const QString& keysym);
    bool isOutputOn();
    /** Has sway itself switch its output; false if it cannot. */
    bool switchOutput(bool on);

private:
    void startCage();
    void startSway();
    QByteArray run(const QString& program, const QStringList& arguments);
    std::unique_ptr<ChildProcess> start(const QString& program, const QStringList& arguments);

    QTemporaryDir m_folder;
    QProcessEnvironment m_variables;
    std::unique_ptr<ChildProcess> m_compositor;
    std::unique_ptr<ChildProcess> m_keyboard; ///< keeps the seat's keyboard while `press` comes and goes
    std::unique_ptr<ChildProcess> m_set;      ///< none in cage, which starts it itself
};
