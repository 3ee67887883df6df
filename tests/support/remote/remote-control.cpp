// A remote control and a pair of eyes for the X display that DISPLAY names; `remote-control` alone says how.

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
using std::chrono::milliseconds;

namespace {

constexpr auto usage = "remote-control COMMAND ...\n"
                       "  press BUTTON...            press buttons, one after the other\n"
                       "  hold BUTTON MS             keep one down\n"
                       "  focus                      give the input focus to the topmost large window\n"
                       "  settle QUIET_MS LIMIT_MS   wait until nothing changes for so long\n"
                       "  grab FILE.png              save the picture\n"
                       "  read [X Y WIDTH HEIGHT]    print the text in an area of the 1920 x 1080 canvas\n"
                       "  await LIMIT_MS TEXT        wait until the screen shows a text\n"
                       "  position                   print the seconds that a sample recording shows\n";

struct Room
{
    std::shared_ptr<XConnection> connection = XConnection::open();
    ScreenWatch screen{connection};
    RemoteControl remote{connection};
};

bool await(Room& room, const QString& text, milliseconds limit)
{
    TextReader reader;
    return room.screen.waitUntil(
        [&](const QImage& picture) {
            return TextReader::contains(reader.read(picture, QRectF(0, 0, 1920, 1080)), text);
        },
        limit);
}

void read(Room& room, const QStringList& words)
{
    QRectF area(0, 0, 1920, 1080);
    if (words.size() == 5)
        area = QRectF(words[1].toDouble(), words[2].toDouble(), words[3].toDouble(), words[4].toDouble());
    std::printf("%s\n", qUtf8Printable(TextReader().read(room.screen.look(), area)));
}

void hold(Room& room, const QString& button, milliseconds span)
{
    room.remote.pushDown(button);
    QThread::msleep(quint64(span.count()));
    room.remote.letGo(button);
}

/** Answers whether what was asked for came about. */
bool obey(Room& room, const QStringList& words)
{
    const QString command = words.value(0);
    if (command == "press"_L1) {
        for (const QString& button : words.mid(1))
            room.remote.press(button);
        return true;
    }
    if (command == "hold"_L1 && words.size() == 3) {
        hold(room, words[1], milliseconds(words[2].toInt()));
        return true;
    }
    if (command == "focus"_L1)
        return room.remote.giveFocus();
    if (command == "settle"_L1 && words.size() == 3)
        return room.screen.waitUntilSettled(milliseconds(words[1].toInt()), milliseconds(words[2].toInt())).has_value();
    if (command == "grab"_L1 && words.size() == 2)
        return room.screen.look().save(words[1]);
    if (command == "read"_L1) {
        read(room, words);
        return true;
    }
    if (command == "await"_L1 && words.size() == 3)
        return await(room, words[2], milliseconds(words[1].toInt()));
    if (command == "position"_L1) {
        const auto seconds = picture::recordedSeconds(room.screen.look());
        std::printf("%s\n", seconds ? qUtf8Printable(QString::number(*seconds)) : "none");
        return seconds.has_value();
    }
    throw std::invalid_argument(usage);
}

} // namespace

int main(int count, char** arguments)
{
    QStringList words;
    for (int i = 1; i < count; ++i)
        words.append(QString::fromLocal8Bit(arguments[i]));
    try {
        if (words.isEmpty())
            throw std::invalid_argument(usage);
        Room room;
        return obey(room, words) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 2;
    }
}
