// Operates the X display that DISPLAY names: sends keys and reads the screen. Run `remote-control` without arguments
// for help.

#include "Picture.h"
#include "RemoteControl.h"
#include "ScreenWatch.h"
#include "TextReader.h"

#include <QStringList>
#include <QThread>

#include <cstdio>
#include <exception>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using std::chrono::milliseconds;

namespace {

constexpr auto usage = "remote-control COMMAND ...\n"
                       "  press BUTTON...            press and release buttons in order\n"
                       "  hold BUTTON MS             keep one pressed\n"
                       "  focus                      give the input focus to the topmost large window\n"
                       "  settle QUIET_MS LIMIT_MS   wait until nothing changes for QUIET_MS\n"
                       "  grab FILE.png              save the picture\n"
                       "  read [X Y WIDTH HEIGHT]    print the text in an area of the 1920 x 1080 canvas\n"
                       "  await LIMIT_MS TEXT        wait until the screen shows a text\n"
                       "  position                   print the seconds that a sample recording shows\n";

struct Session
{
    std::shared_ptr<XConnection> connection = XConnection::open();
    ScreenWatch screen{connection};
    RemoteControl remote{connection};
};

bool await(Session& session, const QString& text, milliseconds limit)
{
    TextReader reader;
    return session.screen.waitUntil(
        [&](const QImage& picture) {
            return TextReader::contains(reader.read(picture, QRectF(0, 0, 1920, 1080)), text);
        },
        limit);
}

void read(Session& session, const QStringList& words)
{
    QRectF area(0, 0, 1920, 1080);
    if (words.size() == 5)
        area = QRectF(words[1].toDouble(), words[2].toDouble(), words[3].toDouble(), words[4].toDouble());
    std::printf("%s\n", qUtf8Printable(TextReader().read(session.screen.grab(), area)));
}

void hold(Session& session, const QString& button, milliseconds span)
{
    session.remote.keyDown(button);
    QThread::msleep(quint64(span.count()));
    session.remote.keyUp(button);
}

/** Runs one command; returns whether it succeeded. */
bool obey(Session& session, const QStringList& words)
{
    const QString command = words.value(0);
    if (command == "press"_L1) {
        for (const QString& button : words.mid(1))
            session.remote.press(button);
        return true;
    }
    if (command == "hold"_L1 && words.size() == 3) {
        hold(session, words[1], milliseconds(words[2].toInt()));
        return true;
    }
    if (command == "focus"_L1)
        return session.remote.focusTopWindow();
    if (command == "settle"_L1 && words.size() == 3)
        return session.screen.waitUntilStill(milliseconds(words[1].toInt()), milliseconds(words[2].toInt()))
            .has_value();
    if (command == "grab"_L1 && words.size() == 2)
        return session.screen.grab().save(words[1]);
    if (command == "read"_L1) {
        read(session, words);
        return true;
    }
    if (command == "await"_L1 && words.size() == 3)
        return await(session, words[2], milliseconds(words[1].toInt()));
    if (command == "position"_L1) {
        const auto seconds = picture::recordedSeconds(session.screen.grab());
        std::printf("%s\n", seconds ? qUtf8Printable(QString::number(*seconds)) : "none");
        return seconds.has_value();
    }
    throw std::invalid_argument(usage);
}

} // namespace

} // namespace quillmere

int main(int count, char** arguments)
{
    using namespace quillmere;
    QStringList words;
    for (int i = 1; i < count; ++i)
        words.append(QString::fromLocal8Bit(arguments[i]));
    try {
        if (words.isEmpty())
            throw std::invalid_argument(usage);
        Session session;
        return obey(session, words) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 2;
    }
}
