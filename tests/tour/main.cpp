// Drives the real program through all screens and states, and saves a picture of each.
//   tour FOLDER [STATE]     runs on the display that DISPLAY names and writes pictures to FOLDER/WIDTHxHEIGHT;
//                           starts at STATE, if given, which must be a state whose steps start the program
//   tour --sheet FOLDER     writes one contact sheet of all pictures in FOLDER

#include "PictureFolder.h"
#include "State.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

using namespace tour;

constexpr auto limit = 10s; // for a state to appear after its last step

/** The first check of the state that fails for the picture; null if all succeed. */
const Check* firstFailedCheck(TourContext& context, const State& state, const QImage& picture)
{
    for (const Check& check : state.checks) {
        if (!check.isMet(context, picture))
            return &check;
    }
    return nullptr;
}

/** Performs the state's steps and takes its picture; returns an error message, empty on success. */
QString reachState(TourContext& context, const State& state, QImage& picture)
{
    try {
        for (const Step& step : state.steps)
            step(context);
    } catch (const std::exception& failure) {
        picture = context.viewer.screen().grab();
        return QString::fromUtf8(failure.what());
    }
    const Check* failedCheck = nullptr;
    const auto isSeen = [&](const QImage& now) {
        picture = now;
        failedCheck = firstFailedCheck(context, state, now);
        return failedCheck == nullptr;
    };
    ScreenWatch& screen = context.viewer.screen();
    screen.waitUntilStill(150ms, 500ms); // text recognition on a moving picture would waste time
    if (screen.waitUntil(isSeen, limit)) {
        // Wait for a running change to end before taking the picture; a playing tape never comes to rest.
        screen.waitUntilStill(200ms, 600ms);
        if (screen.grab() != picture)
            screen.waitUntil(isSeen, limit);
    }
    return failedCheck ? u"The screen never showed: "_s + failedCheck->what : QString();
}

QList<State> statesFrom(const QString& name)
{
    QList<State> states = allStates();
    const auto first = std::find_if(states.begin(), states.end(), [&](const State& one) { return one.name == name; });
    if (first == states.end())
        throw std::runtime_error(("There is no state \""_L1 + name + "\"."_L1).toStdString());
    states.erase(states.begin(), first);
    return states;
}

int runTour(const QString& folder, const QList<State>& states)
{
    TourContext context;
    const QSize size = context.viewer.screen().size();
    const QString pictures = u"%1/%2x%3"_s.arg(folder).arg(size.width()).arg(size.height());
    PictureFolder pictureFolder(pictures);
    context.log = pictures + u"/set.log"_s;
    int failures = 0;
    QElapsedTimer whole;
    whole.start();
    for (const State& state : states) {
        QElapsedTimer time;
        time.start();
        QImage picture;
        const QString wrong = reachState(context, state, picture);
        pictureFolder.add(wrong.isEmpty() ? state.name : state.name + u" FAILED"_s, picture);
        if (wrong.isEmpty())
            context.pictures.insert(state.name, picture);
        std::printf("%s %-46s %5.1f s  %s\n", wrong.isEmpty() ? "ok    " : "FAILED", qUtf8Printable(state.name),
                    double(time.elapsed()) / 1000, qUtf8Printable(wrong));
        std::fflush(stdout);
        failures += wrong.isEmpty() ? 0 : 1;
    }
    std::printf("%dx%d: %d states, %d not reached, %.1f s\n", size.width(), size.height(), int(states.size()), failures,
                double(whole.elapsed()) / 1000);
    return failures == 0 ? 0 : 1;
}

} // namespace

} // namespace quillmere

int main(int count, char** arguments)
{
    using namespace quillmere;
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the tour itself shows no window
    QGuiApplication application(count, arguments);
    const QStringList words = application.arguments();
    try {
        if (words.size() == 3 && words[1] == "--sheet"_L1) {
            tour::writeContactSheet(words[2]);
            return 0;
        }
        if (words.size() == 2)
            return runTour(words[1], allStates());
        if (words.size() == 3)
            return runTour(words[1], statesFrom(words[2]));
        std::fprintf(stderr, "tour FOLDER [STATE], or tour --sheet FOLDER\n");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "tour: %s\n", failure.what());
    }
    return 2;
}
