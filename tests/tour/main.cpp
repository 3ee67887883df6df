// Drives the real program through every screen and state there is, and leaves a picture of each.
//   tour FOLDER [STATE]     the states, on the display that DISPLAY names: pictures in FOLDER/WIDTHxHEIGHT;
//                           with the name of a state that switches the set on: only those from it on
//   tour --sheet FOLDER     one contact sheet of all pictures in FOLDER

#include "Album.h"
#include "State.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using namespace tour;

constexpr auto limit = 10s; // for a state to be seen once its way is done

/** The first sight of the state that the picture does not give; nothing when it gives them all. */
const Sight* missing(Stage& stage, const State& state, const QImage& picture)
{
    for (const Sight& sight : state.proof) {
        if (!sight.holds(stage, picture))
            return &sight;
    }
    return nullptr;
}

/** Goes there and takes its picture; answers what is wrong, or nothing. */
QString visit(Stage& stage, const State& state, QImage& picture)
{
    try {
        for (const Step& step : state.way)
            step(stage);
    } catch (const std::exception& failure) {
        picture = stage.room.screen().look();
        return QString::fromUtf8(failure.what());
    }
    const Sight* lacking = nullptr;
    const auto isSeen = [&](const QImage& now) {
        picture = now;
        lacking = missing(stage, state, now);
        return lacking == nullptr;
    };
    ScreenWatch& screen = stage.room.screen();
    screen.waitUntilSettled(150ms, 500ms); // reading what still moves takes time and tells nothing
    if (screen.waitUntil(isSeen, limit)) {
        // A change on its way is let come to rest before the picture is taken; a playing tape never does.
        screen.waitUntilSettled(200ms, 600ms);
        if (screen.look() != picture)
            screen.waitUntil(isSeen, limit);
    }
    return lacking ? u"It cannot be seen that "_s + lacking->what + u'.' : QString();
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

int visitAll(const QString& folder, const QList<State>& states)
{
    Stage stage;
    const QSize size = stage.room.screen().size();
    const QString pictures = u"%1/%2x%3"_s.arg(folder).arg(size.width()).arg(size.height());
    Album album(pictures);
    stage.log = pictures + u"/set.log"_s;
    int failures = 0;
    QElapsedTimer whole;
    whole.start();
    for (const State& state : states) {
        QElapsedTimer time;
        time.start();
        QImage picture;
        const QString wrong = visit(stage, state, picture);
        album.add(wrong.isEmpty() ? state.name : state.name + u" FAILED"_s, picture);
        if (wrong.isEmpty())
            stage.pictures.insert(state.name, picture);
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

int main(int count, char** arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // this program itself shows nothing
    QGuiApplication application(count, arguments);
    const QStringList words = application.arguments();
    try {
        if (words.size() == 3 && words[1] == "--sheet"_L1) {
            tour::makeContactSheet(words[2]);
            return 0;
        }
        if (words.size() == 2)
            return visitAll(words[1], allStates());
        if (words.size() == 3)
            return visitAll(words[1], statesFrom(words[2]));
        std::fprintf(stderr, "tour FOLDER [STATE], or tour --sheet FOLDER\n");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "tour: %s\n", failure.what());
    }
    return 2;
}
