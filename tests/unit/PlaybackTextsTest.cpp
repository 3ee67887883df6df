#include "PlaybackTexts.h"
#include "Rows.h"
#include "TestMain.h"

#include <QLocale>

#include <limits>
#include <locale.h>

using namespace Qt::StringLiterals;

namespace quillmere {

using enum VideoFailure::Cause;

class PlaybackTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // No text may depend on the system locale. If this locale is not installed, the test detects less.
        setlocale(LC_ALL, "de_DE.UTF-8");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }

    void remainingTimeIsFormattedAsClock_data()
    {
        rows<double, double, QString>({"position", "duration", "text"},
                                      {{"minutes", 60, 814, u"-12:34"_s},
                                       {"hours", 0, 3725, u"-1:02:05"_s},
                                       {"rounded with the played time, before the second", 9.99, 100.5, u"-1:31"_s},
                                       {"rounded with the played time, after the second", 10, 100.5, u"-1:30"_s},
                                       {"the end", 814, 814, u"-0:00"_s},
                                       {"beyond the end", 820, 814, u"-0:00"_s},
                                       {"not a number", std::numeric_limits<double>::quiet_NaN(), 814, u"-0:00"_s}});
    }

    void remainingTimeIsFormattedAsClock()
    {
        QFETCH(const double, position);
        QFETCH(const double, duration);
        QTEST(remainingText(position, duration), "text");
    }

    void scrubTextShowsDirectionAndSpeed()
    {
        QCOMPARE(scrubbingText(8), u"Fast forward 8×"_s);
        QCOMPARE(scrubbingText(-128), u"Rewind 128×"_s);
    }

    void trackHasName_data()
    {
        rows<QString, QString, QString>({"title", "language", "text"},
                                        {{"title", u"The clerk's notes"_s, u"en"_s, u"The clerk's notes"_s},
                                         {"language of two letters", {}, u"en"_s, u"English"_s},
                                         {"language of three letters", {}, u"spa"_s, u"Spanish"_s},
                                         {"bibliographic code of three letters", {}, u"ger"_s, u"German"_s},
                                         {"language with a country", {}, u"fr-CA"_s, u"French"_s},
                                         {"undetermined", {}, u"und"_s, u"Track 3"_s},
                                         {"invalid language", {}, u"x"_s, u"Track 3"_s},
                                         {"no title and no language", {}, {}, u"Track 3"_s},
                                         {"a title of two lines", u"one\ntwo"_s, {}, u"one two"_s}});
    }

    void trackHasName()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, language);
        QTEST(trackText({3, MediaTrack::Kind::Audio, title, language, false}), "text");
    }

    void failureHasText_data()
    {
        rows<VideoFailure::Cause, int, QString>(
            {"cause", "status", "text"},
            {{"unknown", Unknown, 0, {}},
             {"no plug-in", NoPlugin, 0, u"The player couldn't be started."_s},
             {"no picture", NoPicture, 0, u"This set has no way to show the picture."_s},
             {"address", BadAddress, 0, u"The tape's address can't be opened."_s},
             {"404", Status, 404, u"The hub answered 404."_s},
             {"503", Status, 503, u"The hub answered 503."_s},
             {"refused", Refused, 0, u"The connection was refused."_s},
             {"certificate", Certificate, 0, u"The hub's certificate isn't valid."_s},
             {"timed out", TimedOut, 0, u"The hub stopped answering."_s},
             {"network", Network, 0, u"The hub couldn't be reached."_s},
             {"unplayable", Unplayable, 0, u"What the hub sent can't be played."_s},
             {"broken stream", BrokenStream, 0, u"The tape broke off, and the hub doesn't give the rest."_s}});
    }

    void failureHasText()
    {
        QFETCH(const VideoFailure::Cause, cause);
        QFETCH(const int, status);
        QTEST(failureText(VideoFailure{cause, status, u"for developers"_s}), "text");
    }

    void withoutFailureThereIsNoText() { QCOMPARE(failureText(std::nullopt), QString()); }
};

QUILLMERE_TEST(PlaybackTextsTest, QCoreApplication)

} // namespace quillmere

#include "PlaybackTextsTest.moc"
